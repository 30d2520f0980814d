#include "support/guarded-test.h"
#include "support/program.h"

#include <vantkit-qt/utils/window-close-button.h>

#include <QWindow>
#include <QtTest>

namespace {

/** Whether the hints of a window name closing among its functions. */
bool mayBeClosed(const QWidget& window)
{
    QCoreApplication::processEvents(); // sends off what the window manager is told
    const QString id = QString::number(window.windowHandle()->winId());
    const QString hints = runProgram("xprop", { "-id", id, "_MOTIF_WM_HINTS" }).output;
    const QString functions = hints.section('=', 1).section(',', 1, 1).trimmed();
    return (functions.toUInt(nullptr, 16) & 0x20) != 0;
}

} // namespace

/** What a window manager is told about the close button. */
class CloseButtonOnXTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    /** The application changes the flags of its window in between, as it may. */
    void steps()
    {
        SHAPISetCloseButtonOfWindowEnable(nullptr, false, nullptr);
        // Each step, and after it whether the window may be closed.
        for (const QByteArray row : { "grey 0 grey 0 give 1 give 1", "grey 0 other-flag 1 grey 0 give 1",
                 "grey 0 take 0 give 0", "take 0 grey 0 give 0 grey 0 return 1" }) {
            QWidget window;
            SHAPISetCloseButtonOfWindowEnable(&window, false, nullptr);
            QVERIFY(!window.windowHandle());
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            QVERIFY(mayBeClosed(window));
            const QList<QByteArray> steps = row.split(' ');
            for (int i = 0; i < steps.size(); i += 2) {
                const QByteArray& step = steps.at(i);
                if (step == "grey" || step == "give") {
                    const WId id = window.winId();
                    SHAPISetCloseButtonOfWindowEnable(&window, step == "give", nullptr);
                    QCOMPARE(window.winId(), id); // not made anew
                } else {
                    window.setWindowFlag(
                        step == "other-flag" ? Qt::WindowStaysOnTopHint : Qt::WindowCloseButtonHint,
                        step != "take");
                    window.show();
                }
                QTRY_VERIFY2(mayBeClosed(window) == (steps.at(i + 1) == "1"), row + " at " + step);
            }
        }
    }
};

QTEST_MAIN(CloseButtonOnXTest)

#include "close-button-on-x-test.moc"
