#include "sheets/covered-window.h"

#include <QElapsedTimer>
#include <QtTest>

#include <functional>

using sheets::soon;
using Show = std::function<void(QWidget*)>;
Q_DECLARE_METATYPE(Show)

class MessageFunctionsTest : public SheetTest
{
    Q_OBJECT

private Q_SLOTS:

    void overWindow_data() { addFunctions(); }

    void overWindow();

    void withoutParent_data() { addFunctions(); }

    void withoutParent();
    void countdown();
    void countsSeconds();

private:
    void addFunctions();

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

void MessageFunctionsTest::addFunctions()
{
    QTest::addColumn<QString>("boxStyle");
    QTest::addColumn<QString>("texts");
    QTest::addColumn<QString>("buttons"); // of a sheet
    QTest::addColumn<Show>("show");
    const auto row = [](const char* name, const char* style, const char* texts, const char* buttons,
                         const Show& show) { QTest::newRow(name) << style << texts << buttons << show; };
    const auto custom = [this](const MsgBoxCustomBtnText& buttons) -> Show {
        return [=](QWidget* parent) { result = showConfirmMsgCustomBtn("Title", "Text", buttons, parent); };
    };
    row("info", "info", "Text", "Fine", [](QWidget* parent) { showInfoMsg("Title", "Text", parent); });
    row("warning", "warning", "Text", "Fine",
        [](QWidget* parent) { showWarningMsg("Title", "Text", parent); });
    row("two texts", "warning", "TextMore", "Fine",
        [](QWidget* parent) { showWarningMsg("Title", "Text", "More", parent); });
    row("confirm", "confirm", "Text", "Fine|Back",
        [this](QWidget* parent) { result = showConfirmMsg("Title", "Text", parent); });
    row("own Ok", "confirm", "Text", "Own|Back", custom({ "Own", {} }));
    row("own cancel", "confirm", "Text", "Fine|Own", custom({ {}, "Own" }));
    row("upgrading", "upgrading", "Text", "Get it|Back",
        [](QWidget* parent) { showUpgradingMsg("Title", "Text", parent); });
}

void MessageFunctionsTest::overWindow()
{
    QFETCH(QString, boxStyle);
    QFETCH(Show, show);
    const QString icon = boxStyle == "warning" ? "icon_warning"
        : boxStyle == "confirm"                ? "icon_question"
                                               : "icon_information";
    CoveredWindow window;
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
            const auto* sheet = mask->findChild<VantMessageSheet*>();
            QCOMPARE(sheet->width(), 360);
            const QPixmap shown = sheets::labels(sheet)[1]->pixmap(Qt::ReturnByValue);
            QCOMPARE(shown.toImage(), getGlobalImage(icon).toImage());
            QTEST(textsOf(sheet->findChild<QDialogButtonBox*>()->buttons()), "buttons");
            QTEST(sheet->accessibleName() + sheet->accessibleDescription(), "texts");
        });
        result = answer;
        show(&narrow);
        QCOMPARE(result, answer);
        QCOMPARE(window.remains(), QString());
    }
}

void MessageFunctionsTest::withoutParent()
{
    QFETCH(QString, boxStyle);
    QFETCH(QString, buttons);
    QFETCH(Show, show);
    const auto icon = boxStyle == "info" ? QMessageBox::Information
        : boxStyle == "confirm"          ? QMessageBox::Question
                                         : QMessageBox::Warning;
    for (const auto& [key, answer] : { std::pair(Qt::Key_Return, 0x400), { Qt::Key_Escape, 0x400000 } }) {
        soon(qApp, [&, pressed = key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box);
            const auto end = qScopeGuard([&] { QTest::keyClick(box, pressed); });
            QCOMPARE(box->icon(), icon);
            QCOMPARE(box->windowTitle(), QString("Title"));
            QTEST(box->text() + box->informativeText(), "texts");
            QCOMPARE(textsOf(box->buttons()), boxStyle == "upgrading" ? "Fine" : buttons);
            QCOMPARE(box->styleSheet(), getStyleSheet("component." + boxStyle + "_message_box"));
            const QAbstractButton* last = box->buttons().last();
            QCOMPARE(last->styleSheet(),
                getStyleSheet(boxStyle == "confirm" ? "component.cancel_button" : "component.apply_button"));
        });
        result = answer;
        show(nullptr);
        QCOMPARE(result, answer);
    }
}

/** With the seconds passed by hand. */
void MessageFunctionsTest::countdown()
{
    for (const auto& [seconds, button] :
        { std::pair(3, QMessageBox::Ok), { 0, QMessageBox::Ok }, { 2, QMessageBox::Discard } }) {
        VantCountdownMessageBox box(seconds);
        box.setDefaultButton(button);
        QSignalSpy finished(&box, SIGNAL(finished(int)));
        QCOMPARE(textsOf(box.buttons()), QString("Fine(%1)|Back").arg(seconds));
        box.open();
        for (int left = seconds - 1; left >= 0; --left) {
            QCOMPARE(textsOf(box.buttons()), QString("Fine(%1)|Back").arg(left));
            QVERIFY(finished.isEmpty());
            QVERIFY(QMetaObject::invokeMethod(&box, "slotTick"));
        }
        QCOMPARE(textsOf(box.buttons()), QString("Fine(0)|Back"));
        QTRY_COMPARE(finished, QList<QList<QVariant>> { { int(button) } });
    }
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
