#include "sheets/covered-window.h"
#include "support/display-scale.h"

#include <QMovie>
#include <QProxyStyle>
#include <QtTest>

using namespace sheets;
using displayscale::px;
using Type = VantMessageSheet::MessageType;

namespace {

QRect buttonsOf(const QWidget& sheet)
{
    return sheet.findChild<QDialogButtonBox*>()->geometry();
}

/** Its desktop has the accepting button on the right, and an icon on every button. */
class OtherDesktop : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
        QStyleHintReturn* returned) const override
    {
        return hint == SH_DialogButtonLayout ? static_cast<int>(QDialogButtonBox::GnomeLayout)
            : hint == SH_DialogButtonBox_ButtonsHaveIcons
            ? 1
            : QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

} // namespace

/** What sheets look like and how large they are. */
class SheetLayoutTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void widths()
    {
        QCOMPARE(VantMessageSheet(Type::Question, "Text", nullptr).width(), px(540));
        QCOMPARE(VantInputSheet("Text", nullptr).width(), px(480));
        const int rows[][3] { { 32, 0, 0 }, { 516, 476, 476 }, { 520, 480, 480 }, { 536, 496, 480 },
            { 540, 480, 480 }, { 544, 504, 480 }, { 584, 540, 480 } };
        for (const auto& [parent, message, input] : rows) {
            QWidget window;
            window.resize(px(parent), px(400));
            VantMessageSheet other(Type::Question, nullptr);
            VantInputSheet moved(nullptr);
            VantMask::createMask(&other, &window); // what counts is what it lies in now
            VantMask::createMask(&moved, &window);
            other.setText("Other text");
            moved.setText("Other text");
            QCOMPARE(QSize(other.width(), moved.width()), QSize(px(message), px(input)));
        }
    }

    /** That a sheet takes on one after the other. */
    void types()
    {
        // By type: icon, buttons, style. The last two leave the icon, and the last one is unknown.
        const char* const rows[][3] { { "app_img", "|", "processing" },
            { "icon_information", "ok|", "other" }, { "icon_warning", "ok|", "other" },
            { "icon_question", "ok|cancel", "other" },
            { "icon_information", "wizard_client_upgrade|cancel", "other" },
            { "icon_warning", "ok|cancel", "other" }, { "icon_warning", "|", "processing" },
            { "icon_warning", "|", "other" } };
        CoveredWindow window;
        VantMessageSheet sheet(Type::Question, {}, "More", &window);
        for (int type = 0; type < 8; ++type) {
            const auto& [icon, buttons, style] = rows[type];
            sheet.setMessageType(Type(type < 7 ? type : 99));
            const QPixmap shown = labels(&sheet)[1]->pixmap(Qt::ReturnByValue);
            QCOMPARE(shown.toImage(), getGlobalImage(icon).toImage());
            QCOMPARE(sheet.styleSheet(), getStyleSheet(QString("component.message_sheet_") + style));
            const QPushButton* first = button(&sheet, ok);
            const QPushButton* second = button(&sheet, discard);
            QCOMPARE((first ? first->text() : "") + '|' + (second ? second->text() : ""), QString(buttons));
        }
        QCOMPARE(labels(&sheet)[2]->styleSheet(), getStyleSheet("component.message_sheet_informative_text"));
        sheet.setMessageType(Type::Question);
        for (QWidget* part : std::initializer_list<QWidget*> {
                 labels(&sheet)[0], labels(&sheet)[2], button(&sheet, ok), button(&sheet, discard) }) {
            QVERIFY(!part->close()); // as little as the window
        }
        VantInputSheet input("Text", &window);
        for (VantSheet* either : std::initializer_list<VantSheet*> { &sheet, &input }) {
            asItIs(either, [&](auto* one) {
                one->setDefaultButton(nullptr);
                one->setDefaultButton(button(one, discard));
            });
            QVERIFY(button(either, discard)->isDefault());
            QSignalSpy finished(either, SIGNAL(finished(int)));
            button(either, discard)->click();
            QCOMPARE(finished, QList<QList<QVariant>> { { discard } }); // once
        }
    }

    void movie()
    {
        CoveredWindow window;
        VantMessageSheet none(Type::ProcessingMovie, "Text", &window);
        soon(&none, [&] { none.quit(); });
        QCOMPARE(none.exec(), 0);
        QVERIFY(labels(&none)[1]->isHidden());
        const QString folder = ImageManager::getInstance().getImageFolder();
        for (const QString& file : { folder + "/processing.gif", folder + "/../images.json" }) {
            VantMessageSheet sheet("Text", file, &window);
            const QLabel* icon = labels(&sheet)[1];
            const QPointer<QMovie> movie = icon->movie();
            QCOMPARE(movie->parent(), icon);
            QCOMPARE(movie->scaledSize(), QSize(px(32), px(32)));
            QCOMPARE(movie->state(), QMovie::NotRunning);
            soon(&sheet, [&] {
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

    /** Where everything stands, by the distances between neighbours; the margins are those of the layouts. */
    void places()
    {
        CoveredWindow window({ px(800), px(600) });
        VantMessageSheet message(Type::Question, "Text", "More", &window);
        VantInputSheet input("Text", &window);
        for (VantSheet* sheet : std::initializer_list<VantSheet*> { &message, &input }) {
            VantMask::createMask(sheet, &window);
            sheet->showSheet();
        }
        QCoreApplication::processEvents();
        const QLabel* const text = labels(&message)[0];
        const QRect icon = labels(&message)[1]->geometry();
        const QLabel* const more = labels(&message)[2];
        const QLabel* const prompt = labels(&input)[0];
        const QString paragraph = "<p style='line-height: %1px;'>%2</p>";
        QCOMPARE(text->text(), paragraph.arg(px(24)).arg("Text"));
        QCOMPARE(more->text(), paragraph.arg(px(20)).arg("More"));
        QCOMPARE(prompt->text(), paragraph.arg(px(20)).arg("Text"));
        QCOMPARE(text->pos() - icon.topRight(), QPoint(px(20) + 1, 0));
        QCOMPARE(more->pos() - text->geometry().bottomLeft(), QPoint(0, px(6) + 1));
        QCOMPARE(buttonsOf(message).top() - more->geometry().bottom(), px(20) + 1);
        const QRect field = input.getLineEdit()->geometry();
        QCOMPARE(field.top() - prompt->geometry().bottom(), px(8) + 1);
        QCOMPARE(buttonsOf(input).top() - field.bottom(), px(24) + 1);

        const int height = message.height();
        message.setText("Several words in a line");
        QCOMPARE(message.height(), height); // at once
        message.setMessageType(Type::Processing); // without buttons, and a space above them
        message.setInformativeText({});
        QCoreApplication::processEvents();
        const int content = qMax(text->height(), icon.height());
        QCOMPARE(message.height(), content + 2 * px(22) + px(20) + px(10));
    }

    void wholeTexts()
    {
        const QString words = "Several words of a text ";
        const std::pair<QString, QSize> rows[] { { {}, { 800, 600 } }, { words.repeated(10), { 260, 900 } },
            { words + QString("Word").repeated(60), { 500, 600 } }, { words.repeated(209), { 800, 300 } } };
        for (const auto& row : rows) {
            CoveredWindow window({ px(row.second.width()), px(row.second.height()) });
            VantMessageSheet message(Type::WarningQuestion, row.first, row.first, &window);
            VantInputSheet input(row.first, &window);
            const auto check = [&](VantSheet& sheet) {
                const auto end = qScopeGuard([&] { sheet.hide(); });
                sheet.showSheet();
                QCoreApplication::processEvents();
                int bottom = 0;
                for (const QLabel* label : labels(&sheet)) {
                    if (label->text().isEmpty()) { // the icon
                        continue;
                    }
                    QCOMPARE(label->height(), qMax(0, label->heightForWidth(label->width())));
                    QVERIFY(label->y() >= bottom);
                    bottom = label->geometry().bottom();
                }
                QVERIFY(buttonsOf(sheet).y() > bottom);
                QVERIFY(sheet.contentsRect().contains(buttonsOf(sheet)));
                const QPoint offCentre = sheet.geometry().center() - sheet.parentWidget()->rect().center();
                QVERIFY(qAbs(offCentre.x()) <= 1);
                QVERIFY(qAbs(offCentre.y()) <= 1 || sheet.height() + px(40) >= window.height());
            };
            VantMask::createMask(&message, &window);
            VantMask::createMask(&input, &window);
            check(input);
            check(message);
            // Texts that change, longer and shorter, while they are shown.
            message.showSheet();
            for (const QString& other : { row.first.repeated(2), QString("Text") }) {
                message.setText(other);
                message.setInformativeText(other);
                QCoreApplication::processEvents();
                check(message);
            }
        }
    }

    void otherDesktop()
    {
        QApplication::setStyle(new OtherDesktop);
        CoveredWindow window;
        for (const bool input : { false, true }) {
            VantSheet* sheet = make(input, &window);
            sheet->showSheet();
            QCoreApplication::processEvents();
            QCOMPARE(button(sheet, ok)->x() > button(sheet, discard)->x(), input);
            QVERIFY(button(sheet, discard)->icon().isNull());
        }
    }
};

QTEST_MAIN(SheetLayoutTest)

#include "sheet-layout-test.moc"
