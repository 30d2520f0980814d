#include "sheets/covered-window.h"
#include "support/display-scale.h"

#include <QMovie>
#include <QTextDocument>
#include <QtTest>

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

QRect buttonsOf(const QWidget& sheet)
{
    return sheet.findChild<QDialogButtonBox*>()->geometry();
}

} // namespace

/** What sheets look like and how large they are. */
class SheetLayoutTest : public SheetTest
{
    Q_OBJECT

private Q_SLOTS:
    void widths();
    void types();
    void movie();
    void places();
    void wholeTexts_data();
    void wholeTexts();
    void idle();
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int paints = 0;
};

void SheetLayoutTest::widths()
{
    QCOMPARE(VantMessageSheet(Type::Question, "Text", nullptr).width(), scaled(540));
    QCOMPARE(VantInputSheet("Text", nullptr).width(), scaled(480));
    const int rows[][3] { { 32, 0, 0 }, { 300, 260, 260 }, { 516, 476, 476 }, { 520, 480, 480 },
        { 536, 496, 480 }, { 540, 480, 480 }, { 544, 504, 480 }, { 580, 540, 480 }, { 584, 540, 480 } };
    for (const auto& [parent, message, input] : rows) {
        QWidget window;
        window.resize(scaled(parent), scaled(400));
        QCOMPARE(VantInputSheet("Text", &window).width(), scaled(input));

        // What counts is what the sheet lies in now.
        QWidget wide;
        wide.resize(scaled(2000), scaled(400));
        VantMessageSheet moved(Type::Question, &wide);
        VantMask::createMask(&moved, &window);
        QCOMPARE(moved.width(), scaled(540));
        moved.setText("Other text");
        QCOMPARE(moved.width(), scaled(message));
    }
}

/** That a sheet takes on one after the other. */
void SheetLayoutTest::types()
{
    // By type: the icon, the buttons, the style. The last two leave the icon, and the last one is unknown.
    const char* const rows[][3] { { "app_img", "|", "processing" }, { "icon_information", "Fine|", "other" },
        { "icon_warning", "Fine|", "other" }, { "icon_question", "Fine|Back", "other" },
        { "icon_information", "Get it|Back", "other" }, { "icon_warning", "Fine|Back", "other" },
        { "icon_warning", "|", "processing" }, { "icon_warning", "|", "other" } };
    CoveredWindow window;
    VantMessageSheet sheet(Type::Question, {}, "More", &window);
    for (int type = 0; type < 8; ++type) {
        const auto& [icon, buttons, style] = rows[type];
        sheet.setMessageType(Type(type < 7 ? type : 99));
        const QPixmap shown = sheets::labels(&sheet)[1]->pixmap(Qt::ReturnByValue);
        QCOMPARE(shown.toImage(), getGlobalImage(icon).toImage());
        QCOMPARE(sheet.styleSheet(), getStyleSheet(QString("component.message_sheet_") + style));
        const QPushButton* ok = sheets::button(&sheet, QMessageBox::Ok);
        const QPushButton* discard = sheets::button(&sheet, QMessageBox::Discard);
        QCOMPARE((ok ? ok->text() : "") + '|' + (discard ? discard->text() : ""), QString(buttons));
    }
    QCOMPARE(
        sheets::labels(&sheet)[2]->styleSheet(), getStyleSheet("component.message_sheet_informative_text"));
    for (const Type type : { Type(99), Type::ProcessingMovie }) {
        VantMessageSheet fresh(type, "Text", &window);
        QVERIFY(sheets::labels(&fresh)[1]->isHidden());
    }
    sheet.setMessageType(Type::Question);
    sheet.setDefaultButton(nullptr);
    sheet.setDefaultButton(sheets::button(&sheet, QMessageBox::Discard));
    QVERIFY(sheets::button(&sheet, QMessageBox::Discard)->isDefault());
    QSignalSpy finished(&sheet, SIGNAL(finished(int)));
    sheet.button(QMessageBox::Discard)->click();
    QCOMPARE(finished, QList<QList<QVariant>> { { int(QMessageBox::Discard) } }); // once
}

void SheetLayoutTest::movie()
{
    CoveredWindow window;
    const QString folder = ImageManager::getInstance().getImageFolder();
    for (const QString& file : { folder + "/processing.gif", folder + "/../images.json" }) {
        VantMessageSheet sheet("Text", file, &window);
        VantMask::createMask(&sheet, &window);
        const QLabel* icon = sheets::labels(&sheet)[1];
        const QPointer<QMovie> movie = icon->movie();
        QVERIFY(movie);
        QCOMPARE(movie->scaledSize(), QSize(scaled(32), scaled(32)));
        QCOMPARE(movie->state(), QMovie::NotRunning);
        sheets::soon(&sheet, [&] {
            const auto end = qScopeGuard([&] { sheet.done(0); });
            QCOMPARE(movie->state() == QMovie::Running, file.endsWith(".gif"));
            QVERIFY(icon->isVisible());
        });
        sheet.exec();
        QCOMPARE(movie->state(), QMovie::NotRunning);
        for (const QPixmap& pixmap : { QPixmap(20, 30), QPixmap() }) {
            sheet.setIcon(pixmap);
            QVERIFY(!movie);
            QCOMPARE(icon->isHidden(), pixmap.isNull());
        }
    }
}

/** Where everything stands, by the distances between neighbours. */
void SheetLayoutTest::places()
{
    CoveredWindow window({ scaled(800), scaled(600) });
    const int shadow = scaled(22);
    VantMessageSheet message(Type::Question, "Text", "More", &window);
    VantInputSheet input("Text", &window);
    for (VantSheet* sheet : std::initializer_list<VantSheet*> { &message, &input }) {
        VantMask::createMask(sheet, &window);
        sheet->showSheet();
    }
    QCoreApplication::processEvents();
    const QRect text = sheets::labels(&message)[0]->geometry();
    const QRect icon = sheets::labels(&message)[1]->geometry();
    const QRect more = sheets::labels(&message)[2]->geometry();
    QCOMPARE(icon.topLeft(), QPoint(shadow + scaled(20), shadow + scaled(20)));
    QCOMPARE(text.topLeft() - icon.topRight(), QPoint(scaled(20) + 1, 0));
    QCOMPARE(more.topLeft() - text.bottomLeft(), QPoint(0, scaled(6) + 1));
    QCOMPARE(buttonsOf(message).top() - more.bottom(), scaled(20) + 1);
    QCOMPARE(message.rect().bottomRight() - buttonsOf(message).bottomRight(),
        QPoint(shadow + scaled(20), shadow + scaled(10)));
    const QRect prompt = sheets::labels(&input)[0]->geometry();
    const QRect field = input.getLineEdit()->geometry();
    QCOMPARE(prompt.topLeft(), QPoint(shadow + scaled(10), shadow + scaled(10)));
    QCOMPARE(field.top() - prompt.bottom(), scaled(8) + 1);
    QCOMPARE(buttonsOf(input).top() - field.bottom(), scaled(24) + 1);
    QCOMPARE(input.rect().bottomRight() - buttonsOf(input).bottomRight(),
        QPoint(shadow + scaled(10), shadow + scaled(10)));

    const int height = message.height();
    message.setText("Several words in a line");
    QCOMPARE(message.height(), height); // at once
    message.setMessageType(Type::Processing); // without buttons, and a space above them
    message.setInformativeText({});
    QCoreApplication::processEvents();
    QCOMPARE(message.height(), 2 * shadow + scaled(30) + qMax(text.height(), icon.height()));
}

void SheetLayoutTest::wholeTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("window");
    const QString words = "Several words of a text ";
    QTest::newRow("empty") << QString() << QSize(800, 600);
    QTest::newRow("long word among others")
        << words + QString("Word").repeated(60) + words << QSize(500, 600);
    QTest::newRow("plain and rich") << "1 &lt; 2 <b>bold</b> <a href='x'>link</a> 14px" << QSize(800, 600);
    QTest::newRow("Japanese") << QString("キャンセル日本語").repeated(20) << QSize(800, 600);
    QTest::newRow("5000 characters in a low window") << words.repeated(209) << QSize(800, 300);
    QTest::newRow("5000 characters without a blank") << QString("Words").repeated(1000) << QSize(800, 6000);
    QTest::newRow("narrow window") << words.repeated(10) << QSize(260, 900);
}

void SheetLayoutTest::wholeTexts()
{
    QFETCH(QString, text);
    QFETCH(QSize, window);
    CoveredWindow covered(QSize(scaled(window.width()), scaled(window.height())));
    VantMessageSheet message(Type::WarningQuestion, text, text, &covered);
    VantInputSheet input(text, &covered);
    const auto check = [&](VantSheet& sheet) {
        const auto end = qScopeGuard([&] { sheet.hide(); });
        sheet.showSheet();
        QCoreApplication::processEvents();
        const QPoint offCentre = sheet.geometry().center() - sheet.parentWidget()->rect().center();
        int bottom = 0;
        for (const QLabel* label : sheets::labels(&sheet)) {
            if (label->text().isEmpty()) { // the icon
                continue;
            }
            const QSizeF size = needed(label);
            QVERIFY(label->contentsRect().height() >= qFloor(size.height()));
            QVERIFY(label->contentsRect().width() >= qFloor(size.width()));
            QVERIFY(label->height() <= size.height() + scaled(2));
            QVERIFY(label->y() >= bottom);
            bottom = label->geometry().bottom();
        }
        QVERIFY(buttonsOf(sheet).y() > bottom);
        QVERIFY(sheet.contentsRect().contains(buttonsOf(sheet)));
        QVERIFY(qAbs(offCentre.x()) <= 1);
        QVERIFY(qAbs(offCentre.y()) <= 1 || sheet.height() + scaled(40) >= covered.height());
    };
    VantMask::createMask(&message, &covered);
    VantMask::createMask(&input, &covered);
    check(message);
    check(input);
    // Texts that change, longer and shorter, while they are shown.
    message.showSheet();
    for (const QString& other : { text + text, QString("Text") }) {
        message.setText(other);
        message.setInformativeText(other);
        QCoreApplication::processEvents();
        check(message);
    }
}

/** An open sheet that nothing happens to is not painted. */
void SheetLayoutTest::idle()
{
    CoveredWindow window;
    VantMessageSheet sheet(Type::Question, "Text", QString("Word").repeated(60), &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheetWithBlock();
    sheets::labels(&sheet).first()->setFocus();
    qApp->installEventFilter(this);
    const auto isQuiet = [this](int milliseconds) {
        paints = 0;
        QTest::qWait(milliseconds);
        return paints == 0;
    };
    QTRY_VERIFY(isQuiet(20)); // after the paints of its opening
    QVERIFY(isQuiet(200));
    sheet.repaint();
    QVERIFY(paints > 0);
    qApp->removeEventFilter(this);
}

bool SheetLayoutTest::eventFilter(QObject* /*watched*/, QEvent* event)
{
    paints += event->type() == QEvent::Paint;
    return false;
}

QTEST_MAIN(SheetLayoutTest)

#include "sheet-layout-test.moc"
