#include "sheets/covered-window.h"
#include "support/guarded-test.h"

#include <QElapsedTimer>
#include <QtTest>

#include <functional>

using sheets::soon;
using Show = std::function<void(QWidget*)>;
Q_DECLARE_METATYPE(Show)

class MessageFunctionsTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void overWindow_data() { addFunctions(); }

    void overWindow();

    void withoutParent_data() { addFunctions(); }

    void withoutParent();
    void countdown_data();
    void countdown();
    void countdownWithoutButtons();
    void countsSeconds();

private:
    void addFunctions();

    QTemporaryDir userFolder;
    int result = -1; // of the functions that have one
};

namespace {

QString textsOf(const QList<QAbstractButton*>& buttons)
{
    QStringList found;
    for (const QAbstractButton* button : buttons) {
        found += button->text();
    }
    return found.join('|');
}

} // namespace

void MessageFunctionsTest::initTestCase()
{
    sheets::startKit(userFolder.path());
    QApplication::setQuitOnLastWindowClosed(false);
}

void MessageFunctionsTest::addFunctions()
{
    QTest::addColumn<Show>("show");
    QTest::addColumn<QString>("more");
    QTest::addColumn<QString>("sheetIcon");
    QTest::addColumn<QString>("sheetButtons");
    QTest::addColumn<QString>("boxStyle");
    QTest::addColumn<QString>("boxButtons");
    const auto row = [](const char* name, const Show& show, const char* icon, const char* buttons,
                         const char* boxStyle, const char* boxButtons) {
        QTest::newRow(name) << show << (qstrcmp(name, "two texts") == 0 ? "More" : "") << icon << buttons
                            << boxStyle << boxButtons;
    };
    const MsgBoxCustomBtnText own { "Own", {} };
    const MsgBoxCustomBtnText other { {}, "Other" };
    row(
        "info", [](QWidget* parent) { showInfoMsg("Title", "Text", parent); }, "icon_information", "Fine",
        "info", "Fine");
    row(
        "warning", [](QWidget* parent) { showWarningMsg("Title", "Text", parent); }, "icon_warning", "Fine",
        "warning", "Fine");
    row(
        "two texts", [](QWidget* parent) { showWarningMsg("Title", "Text", "More", parent); }, "icon_warning",
        "Fine", "warning", "Fine");
    row(
        "confirm", [this](QWidget* parent) { result = showConfirmMsg("Title", "Text", parent); },
        "icon_question", "Fine|Back", "confirm", "Fine|Back");
    row(
        "own Ok", [=](QWidget* parent) { result = showConfirmMsgCustomBtn("Title", "Text", own, parent); },
        "icon_question", "Own|Back", "confirm", "Own|Back");
    row(
        "own cancel",
        [=](QWidget* parent) { result = showConfirmMsgCustomBtn("Title", "Text", other, parent); },
        "icon_question", "Fine|Other", "confirm", "Fine|Other");
    row(
        "upgrading", [](QWidget* parent) { showUpgradingMsg("Title", "Text", parent); }, "icon_information",
        "Get it|Back", "upgrading", "Fine");
}

void MessageFunctionsTest::overWindow()
{
    QFETCH(Show, show);
    QFETCH(QString, more);
    QFETCH(QString, sheetIcon);
    CoveredWindow window;
    QVERIFY(window.open());
    QWidget narrow(&window);
    narrow.resize(400, 300);
    for (const auto& [key, answer] : { std::pair(Qt::Key_Return, 0x400), { Qt::Key_Escape, 0x800000 } }) {
        soon(&window, [&, pressed = key] {
            const auto end = qScopeGuard([&] {
                window.press(pressed);
                if (window.shownMask()) {
                    window.press(Qt::Key_Return); // for want of a cancel button
                }
            });
            const VantMask* mask = window.shownMask();
            QVERIFY(mask && mask->parent() == &window);
            QCOMPARE(mask->palette().color(QPalette::Window), QColor(0, 0, 0, 20));
            const auto* sheet = mask->findChild<VantMessageSheet*>();
            QCOMPARE(sheet->width(), 360);
            QCOMPARE(sheets::labels(sheet)[1]->pixmap(Qt::ReturnByValue).toImage(),
                getGlobalImage(sheetIcon).toImage());
            QTEST(textsOf(sheet->findChild<QDialogButtonBox*>()->buttons()), "sheetButtons");
            QCOMPARE(sheet->accessibleName() + sheet->accessibleDescription(), "Text" + more);
        });
        result = answer;
        show(&narrow);
        QCOMPARE(result, answer);
        QCOMPARE(window.remains(), QString());
    }
}

void MessageFunctionsTest::withoutParent()
{
    QFETCH(Show, show);
    QFETCH(QString, more);
    QFETCH(QString, boxStyle);
    for (const auto& [key, answer] : { std::pair(Qt::Key_Return, 0x400), { Qt::Key_Escape, 0x400000 } }) {
        soon(qApp, [&, pressed = key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box);
            const auto end = qScopeGuard([&] { QTest::keyClick(box, pressed); });
            QCOMPARE(box->icon(),
                boxStyle == "info"          ? QMessageBox::Information
                    : boxStyle == "confirm" ? QMessageBox::Question
                                            : QMessageBox::Warning);
            QCOMPARE(box->windowTitle() + box->text() + box->informativeText(), "TitleText" + more);
            QTEST(textsOf(box->buttons()), "boxButtons");
            QCOMPARE(box->styleSheet(), getStyleSheet("component." + boxStyle + "_message_box"));
            QCOMPARE(box->button(QMessageBox::Ok)->styleSheet(), getStyleSheet("component.apply_button"));
            if (const QAbstractButton* cancel = box->button(QMessageBox::Cancel)) {
                QCOMPARE(cancel->styleSheet(), getStyleSheet("component.cancel_button"));
            }
        });
        result = answer;
        show(nullptr);
        QCOMPARE(result, answer);
    }
}

void MessageFunctionsTest::countdown_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("defaultButton");
    QTest::newRow("3 seconds") << 3 << int(QMessageBox::Ok);
    QTest::newRow("no second") << 0 << int(QMessageBox::Ok);
    QTest::newRow("Discard") << 2 << int(QMessageBox::Discard);
}

/** With the seconds passed by hand. */
void MessageFunctionsTest::countdown()
{
    QFETCH(int, seconds);
    QFETCH(int, defaultButton);
    VantCountdownMessageBox box(seconds);
    QCOMPARE(box.styleSheet(), getStyleSheet("component.info_message_box"));
    box.setDefaultButton(QMessageBox::StandardButton(defaultButton));
    QSignalSpy finished(&box, SIGNAL(finished(int)));
    QCOMPARE(textsOf(box.buttons()), QString("Fine(%1)|Back").arg(seconds));
    box.open();
    for (int left = seconds - 1; left >= 0; --left) {
        QCOMPARE(textsOf(box.buttons()), QString("Fine(%1)|Back").arg(left));
        QVERIFY(finished.isEmpty());
        QVERIFY(QMetaObject::invokeMethod(&box, "slotTick"));
    }
    QCOMPARE(textsOf(box.buttons()), QString("Fine(0)|Back"));
    QTRY_COMPARE(finished, QList<QList<QVariant>> { { defaultButton } });
}

void MessageFunctionsTest::countdownWithoutButtons()
{
    VantCountdownMessageBox box(1);
    for (QAbstractButton* button : box.buttons()) {
        box.removeButton(button);
    }
    box.open();
    QVERIFY(QMetaObject::invokeMethod(&box, "slotTick"));
    QVERIFY(box.isVisible());
}

void MessageFunctionsTest::countsSeconds()
{
    VantCountdownMessageBox box(1);
    QElapsedTimer elapsed;
    elapsed.start();
    QCOMPARE(box.exec(), int(QMessageBox::Ok));
    QVERIFY2(elapsed.elapsed() >= 900, qPrintable(QString::number(elapsed.elapsed())));
}

QTEST_MAIN(MessageFunctionsTest)

#include "message-functions-test.moc"
