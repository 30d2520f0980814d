#include "sheets/covered-window.h"

#include <QProcess>
#include <QWindow>
#include <QtTest>

/** What only an X server with a window manager can tell. */
class SheetsOnXTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:
    void closeRequests();

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        seen += event->type();
        return false;
    }

private:
    QList<int> seen;
};

/** Made by the window manager when the user asks for it, in a window that its sheet does not create anew. */
void SheetsOnXTest::closeRequests()
{
    CoveredWindow window;
    const WId id = window.winId();
    const auto ask = [id] { return QProcess::execute("wmctrl", { "-i", "-c", QString::number(id) }) == 0; };
    VantMessageSheet sheet(VantMessageSheet::Question, &window);
    VantMask::createMask(&sheet, &window);
    window.windowHandle()->installEventFilter(this);
    sheet.showSheetWithBlock();
    QTRY_VERIFY(window.windowHandle()->isExposed());
    window.installEventFilter(this); // asked before the sheet
    QVERIFY(ask());
    QTRY_VERIFY(seen.contains(QEvent::Close));
    QVERIFY(window.isVisible());
    sheet.done(0);
    QVERIFY(!seen.contains(QEvent::Hide));
    QCOMPARE(window.winId(), id);
    QVERIFY(ask());
    QTRY_VERIFY(!window.isVisible());
}

QTEST_MAIN(SheetsOnXTest)

#include "sheets-on-x-test.moc"
