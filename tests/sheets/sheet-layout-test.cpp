#include "sheets/covered-window.h"
#include "support/display-scale.h"
#include "support/guarded-test.h"

#include <QMovie>
#include <QTextDocument>
#include <QtTest>

#include <memory>

using Type = VantMessageSheet::MessageType;

namespace {

int scaled(int designPixels)
{
    return designPixels * displayscale::dpi() / 96;
}

/** The size that the text of a label takes, laid out apart from it. */
QSizeF needed(const QLabel* label)
{
    QTextDocument document;
    document.setDefaultFont(label->font());
    document.setDocumentMargin(0);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.setDefaultTextOption(option);
    document.setHtml(label->text());
    document.setTextWidth(label->contentsRect().width());
    return document.size();
}

} // namespace

/** What sheets look like and how large they are. */
class SheetLayoutTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void widths_data();
    void widths();
    void types_data();
    void types();
    void changedTypes();
    void icons();
    void movie_data();
    void movie();
    void places();
    void wholeTexts_data();
    void wholeTexts();
    void inputStyle();

private:
    QTemporaryDir userFolder;
};

void SheetLayoutTest::initTestCase()
{
    sheets::startKit(userFolder.path());
}

void SheetLayoutTest::widths_data()
{
    QTest::addColumn<int>("parent");
    QTest::addColumn<int>("message");
    QTest::addColumn<int>("input");
    const auto row = [](int parent, int message, int input) {
        QTest::addRow("%d", parent) << parent << message << input;
    };
    row(32, 0, 0); // and not less
    row(300, 260, 260);
    row(516, 476, 476);
    row(520, 480, 480);
    row(536, 496, 480);
    row(540, 480, 480);
    row(544, 504, 480);
    row(580, 540, 480);
    row(584, 540, 480);
    row(2000, 540, 480);
    if (displayscale::dpi() == 96) {
        row(519, 479, 479);
        row(539, 499, 480);
        row(541, 501, 480);
        row(581, 540, 480);
    }
}

void SheetLayoutTest::widths()
{
    QFETCH(int, parent);
    QFETCH(int, message);
    QFETCH(int, input);
    QWidget window;
    window.resize(scaled(parent), scaled(400));
    QCOMPARE(VantMessageSheet(Type::Question, QStringLiteral("Text"), &window).width(), scaled(message));
    QCOMPARE(VantInputSheet(QStringLiteral("Text"), &window).width(), scaled(input));

    // What counts is what the sheet lies in now.
    QWidget wide;
    wide.resize(scaled(2000), scaled(400));
    VantMessageSheet moved(Type::Question, &wide);
    VantMask::createMask(&moved, &window);
    QCOMPARE(moved.width(), scaled(540));
    moved.setText(QStringLiteral("Other text"));
    QCOMPARE(moved.width(), scaled(message));
}

void SheetLayoutTest::types_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("icon");
    QTest::addColumn<QString>("okText");
    QTest::addColumn<QString>("discardText");
    QTest::addColumn<QByteArray>("style");
    const auto row = [](const char* name, int type, const char* icon, const char* okText,
                         const char* discardText, const char* style) {
        QTest::newRow(name) << type << QByteArray(icon) << QString::fromLatin1(okText)
                            << QString::fromLatin1(discardText)
                            << QByteArray("component.message_sheet_") + style;
    };
    row("Processing", 0, "app_img", "", "", "processing");
    row("Information", 1, "icon_information", "Fine", "", "other");
    row("Warning", 2, "icon_warning", "Fine", "", "other");
    row("Question", 3, "icon_question", "Fine", "Back", "other");
    row("Upgrading", 4, "icon_information", "Get it", "Back", "other");
    row("WarningQuestion", 5, "icon_warning", "Fine", "Back", "other");
    row("ProcessingMovie", 6, "", "", "", "processing");
    row("unknown", 7, "", "", "", "other");
}

void SheetLayoutTest::types()
{
    QFETCH(int, type);
    QFETCH(QByteArray, icon);
    QFETCH(QByteArray, style);
    CoveredWindow window;
    VantMessageSheet sheet(Type(type), QStringLiteral("Text"), &window);
    const QLabel* iconLabel = sheets::icon(&sheet);
    QCOMPARE(iconLabel->isHidden(), icon.isEmpty());
    if (!icon.isEmpty()) {
        QCOMPARE(iconLabel->pixmap(Qt::ReturnByValue).toImage(), getGlobalImage(icon.constData()).toImage());
    }
    const auto textOf = [&sheet](QMessageBox::StandardButton which) {
        return sheet.button(which) ? sheet.button(which)->text() : QString();
    };
    QTEST(textOf(QMessageBox::Ok), "okText");
    QTEST(textOf(QMessageBox::Discard), "discardText");
    QVERIFY(!sheet.button(QMessageBox::Cancel));
    QCOMPARE(sheet.styleSheet(), getStyleSheet(style.constData()));
    QCOMPARE(sheets::texts(&sheet).first()->styleSheet(), getStyleSheet("component.message_sheet_text"));
    if (const auto* okButton = qobject_cast<QPushButton*>(sheet.button(QMessageBox::Ok))) {
        QVERIFY(okButton->isDefault());
        QCOMPARE(okButton->styleSheet(), getStyleSheet("component.apply_button"));
        QCOMPARE(okButton->sizeHint().expandedTo(okButton->minimumSize()).width(), scaled(120));
        QCOMPARE(okButton->minimumHeight(), scaled(28));
        QCOMPARE(okButton->maximumHeight(), scaled(28));
    }
    if (const QAbstractButton* discardButton = sheet.button(QMessageBox::Discard)) {
        QCOMPARE(discardButton->styleSheet(), getStyleSheet("component.cancel_button"));
        QCOMPARE(discardButton->minimumSize(), QSize(scaled(80), scaled(28)));
        QCOMPARE(discardButton->maximumHeight(), scaled(28));
    }
}

void SheetLayoutTest::changedTypes()
{
    CoveredWindow window;
    VantMessageSheet sheet(Type::Question, {}, { QStringLiteral("&Own"), QStringLiteral("&Other") }, &window);
    QCOMPARE(sheet.button(QMessageBox::Ok)->text(), QStringLiteral("&Own"));
    QCOMPARE(sheet.button(QMessageBox::Discard)->text(), QStringLiteral("&Other"));
    sheet.setInformativeText(QStringLiteral("More"));
    QCOMPARE(sheets::texts(&sheet).last()->styleSheet(), QString());
    sheet.setMessageType(Type::Warning);
    QCOMPARE(sheets::texts(&sheet).last()->styleSheet(),
        getStyleSheet("component.message_sheet_informative_text"));
    QCOMPARE(sheet.button(QMessageBox::Ok)->text(), QStringLiteral("Fine"));
    QVERIFY(!sheet.button(QMessageBox::Discard));
    sheet.setMessageType(Type::Question);

    QSignalSpy finished(&sheet, SIGNAL(finished(int)));
    sheet.button(QMessageBox::Discard)->click();
    QCOMPARE(finished, QList<QList<QVariant>> { { int(QMessageBox::Discard) } }); // once
}

void SheetLayoutTest::icons()
{
    CoveredWindow window;
    VantMessageSheet sheet(Type::ProcessingMovie, QStringLiteral("Text"), &window);
    QVERIFY(sheets::icon(&sheet)->isHidden());
    QPixmap pixmap(20, 30);
    pixmap.fill(Qt::red);
    sheet.setIcon(pixmap);
    QVERIFY(!sheets::icon(&sheet)->isHidden());
    sheet.setIcon(QPixmap());
    QVERIFY(sheets::icon(&sheet)->isHidden());
}

void SheetLayoutTest::movie_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("runs");
    // Two frames of one pixel.
    QTest::newRow("movie") << QByteArray::fromBase64(
        "R0lGODlhAQABAIAAAP8AAAAA/yH5BAEKAAAALAAAAAABAAEAAAICRAEAIfkEAQo"
        "AAAAsAAAAAAEAAQAAAgJMAQA7")
                           << true;
    QTest::newRow("no movie") << QByteArray("text") << false;
}

void SheetLayoutTest::movie()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, runs);
    const QString path = userFolder.filePath(QStringLiteral("movie.gif"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    CoveredWindow window;
    QVERIFY(window.open());
    QPointer<QMovie> movie;
    {
        VantMessageSheet sheet(QStringLiteral("Text"), path, &window);
        VantMask::createMask(&sheet, &window);
        movie = sheets::icon(&sheet)->movie();
        QVERIFY(movie);
        QCOMPARE(movie->scaledSize(), QSize(scaled(32), scaled(32)));
        QCOMPARE(movie->state(), QMovie::NotRunning);
        sheets::soon(&sheet, [&] {
            const auto end = qScopeGuard([&] { sheet.done(0); });
            QCOMPARE(movie->state() == QMovie::Running, runs);
            QVERIFY(sheets::icon(&sheet)->isVisible());
        });
        sheet.exec();
    }
    QVERIFY(!movie);
}

/** Where everything stands, by the distances between neighbours. */
void SheetLayoutTest::places()
{
    CoveredWindow window({ scaled(800), scaled(600) });
    window.show();
    const int shadow = scaled(22);
    VantMessageSheet message(Type::Question, QStringLiteral("Text"), QStringLiteral("More"), &window);
    VantMask::createMask(&message, &window);
    message.showSheet();
    QCoreApplication::processEvents();
    const QRect icon = sheets::icon(&message)->geometry();
    const QRect text = sheets::texts(&message).first()->geometry();
    const QRect more = sheets::texts(&message).last()->geometry();
    const QRect buttons = message.findChild<QDialogButtonBox*>()->geometry();
    QCOMPARE(icon.topLeft(), QPoint(shadow + scaled(20), shadow + scaled(20)));
    QCOMPARE(text.left() - icon.right() - 1, scaled(20));
    QCOMPARE(text.top(), icon.top());
    QCOMPARE(more.left(), text.left());
    QCOMPARE(more.top() - text.bottom() - 1, scaled(6));
    QCOMPARE(buttons.top() - more.bottom() - 1, scaled(20));
    QCOMPARE(message.rect().bottomRight() - buttons.bottomRight(),
        QPoint(shadow + scaled(20), shadow + scaled(10)));
    message.quit();

    message.setMessageType(Type::Processing);
    message.setInformativeText({});
    message.showSheet();
    QCoreApplication::processEvents();
    QCOMPARE(message.height(),
        2 * shadow + scaled(20) + scaled(10)
            + qMax(sheets::icon(&message)->height(), sheets::texts(&message).first()->height()));
    message.quit();

    VantInputSheet input(QStringLiteral("Text"), &window);
    VantMask::createMask(&input, &window);
    input.showSheet();
    QCoreApplication::processEvents();
    const QRect prompt = sheets::texts(&input).first()->geometry();
    const QRect field = input.getLineEdit()->geometry();
    const QRect inputButtons = input.findChild<QDialogButtonBox*>()->geometry();
    QCOMPARE(prompt.topLeft(), QPoint(shadow + scaled(10), shadow + scaled(10)));
    QCOMPARE(field.top() - prompt.bottom() - 1, scaled(8));
    QCOMPARE(field.height(), scaled(28));
    QCOMPARE(inputButtons.top() - field.bottom() - 1, scaled(24));
    QCOMPARE(input.rect().bottomRight() - inputButtons.bottomRight(),
        QPoint(shadow + scaled(10), shadow + scaled(10)));
}

void SheetLayoutTest::wholeTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("window");
    const QString words = QStringLiteral("Several words of a text ");
    QTest::newRow("empty") << QString() << QSize(800, 600);
    QTest::newRow("short") << words << QSize(800, 600);
    QTest::newRow("long word") << QStringLiteral("Word").repeated(60) << QSize(800, 600);
    QTest::newRow("long word among others")
        << words + QStringLiteral("Word").repeated(60) + words << QSize(500, 600);
    QTest::newRow("long path") << QStringLiteral("/folder").repeated(40) << QSize(800, 600);
    QTest::newRow("plain and rich") << QStringLiteral("1 &lt; 2 <b>bold</b> <a href='x'>link</a> 14px")
                                    << QSize(800, 600);
    QTest::newRow("Japanese") << QString::fromUtf8("キャンセル日本語").repeated(20) << QSize(800, 600);
    QTest::newRow("5000 characters") << words.repeated(209) << QSize(800, 6000);
    QTest::newRow("5000 characters in a low window") << words.repeated(209) << QSize(800, 300);
    QTest::newRow("5000 characters without a blank")
        << QStringLiteral("Words").repeated(1000) << QSize(800, 6000);
    QTest::newRow("narrow window") << words.repeated(10) << QSize(260, 900);
}

void SheetLayoutTest::wholeTexts()
{
    QFETCH(QString, text);
    QFETCH(QSize, window);
    CoveredWindow covered(QSize(scaled(window.width()), scaled(window.height())));
    QVERIFY(covered.open());
    VantMessageSheet message(Type::WarningQuestion, text, text, &covered);
    VantInputSheet input(text, &covered);
    const auto check = [&](VantSheet& sheet) {
        const auto end = qScopeGuard([&] { sheet.hide(); });
        sheet.showSheet();
        QCoreApplication::processEvents();
        QWidget* mask = sheet.parentWidget();
        int bottom = 0;
        for (const MessageLabel* label : sheets::texts(&sheet)) {
            const QSizeF size = needed(label);
            QVERIFY2(label->contentsRect().height() >= qFloor(size.height())
                    && label->contentsRect().width() >= qFloor(size.width()),
                qPrintable(QStringLiteral("%1x%2 for a text of %3x%4")
                               .arg(label->width())
                               .arg(label->height())
                               .arg(size.width())
                               .arg(size.height())));
            QVERIFY(label->height() <= size.height() + scaled(2));
            QVERIFY(label->y() >= bottom);
            bottom = label->geometry().bottom();
        }
        QVERIFY(sheet.findChild<QDialogButtonBox*>()->y() > bottom);
        QVERIFY(sheet.contentsRect().contains(sheet.findChild<QDialogButtonBox*>()->geometry()));
        QCOMPARE(mask->geometry(), covered.rect());
        QVERIFY(qAbs(sheet.geometry().center().x() - mask->rect().center().x()) <= 1);
        if (sheet.height() + scaled(40) < mask->height()) {
            QVERIFY(qAbs(sheet.geometry().center().y() - mask->rect().center().y()) <= 1);
        }
    };
    for (VantSheet* sheet : std::initializer_list<VantSheet*> { &message, &input }) {
        VantMask::createMask(sheet, &covered);
        check(*sheet);
    }
    // Texts that change, longer and shorter, while they are shown.
    message.showSheet();
    for (const QString& other : { text + text, QStringLiteral("Text") }) {
        message.setText(other);
        message.setInformativeText(other);
        QCoreApplication::processEvents();
        check(message);
    }
}

/** The field gets its look with every text, the buttons theirs from the style. */
void SheetLayoutTest::inputStyle()
{
    CoveredWindow window;
    VantInputSheet sheet(&window);
    QCOMPARE(sheet.styleSheet(), getStyleSheet("component.message_sheet_other"));
    QCOMPARE(sheet.button(QMessageBox::Ok)->styleSheet(), getStyleSheet("component.apply_button"));
    QCOMPARE(sheet.button(QMessageBox::Discard)->styleSheet(), getStyleSheet("component.cancel_button"));
    QCOMPARE(sheet.button(QMessageBox::Ok)->text(), QStringLiteral("Fine"));
    QCOMPARE(sheet.button(QMessageBox::Discard)->text(), QStringLiteral("Back"));
    sheet.getLineEdit()->setText(QStringLiteral("typed"));
    sheet.getLineEdit()->setStyleSheet(QString());
    sheet.setText(QStringLiteral("Other text"));
    QCOMPARE(sheet.getLineEdit()->styleSheet(), getStyleSheet("component.lineedit"));
    sheet.done(0);
    QCOMPARE(sheet.getContent(), QStringLiteral("typed"));
}

QTEST_MAIN(SheetLayoutTest)

#include "sheet-layout-test.moc"
