#include "sheets/covered-window.h"

#include <QProcess>
#include <QWindow>
#include <QtTest>

namespace {

/** Counts an object's own events of one type. */
struct Counter : QObject
{
    Counter(QObject* watched, QEvent::Type counted)
        : type(counted)
    {
        watched->installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        count += event->type() == type;
        return false;
    }

    QEvent::Type type;
    int count = 0;
};

} // namespace

/** What only an X server with a window manager can tell. */
class SheetsOnXTest : public SheetTest
{
    Q_OBJECT

private Q_SLOTS:
    void closeRequests();
    void buttonOrder();
};

/** Made by the window manager when the user asks for it, in a window that its sheet does not create anew. */
void SheetsOnXTest::closeRequests()
{
    CoveredWindow window;
    const WId id = window.winId();
    const auto ask = [id] { return QProcess::execute("wmctrl", { "-i", "-c", QString::number(id) }) == 0; };
    const Counter hides(window.windowHandle(), QEvent::Hide);
    VantMessageSheet sheet(VantMessageSheet::Question, &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheetWithBlock();
    QTRY_VERIFY(window.windowHandle()->isExposed());
    const Counter refused(&window, QEvent::Close); // asked before the sheet
    QVERIFY(ask());
    QTRY_COMPARE(refused.count, 1);
    QVERIFY(window.isVisible());
    sheet.done(0);
    QCOMPARE(hides.count, 0);
    QCOMPARE(window.winId(), id);
    QVERIFY(ask());
    QTRY_VERIFY(!window.isVisible());
}

/** On a desktop that has the accepting button on the right. */
void SheetsOnXTest::buttonOrder()
{
    CoveredWindow window;
    for (const bool input : { false, true }) {
        VantSheet* sheet = sheets::make(input, &window);
        sheet->showSheet();
        QCoreApplication::processEvents();
        QCOMPARE(
            sheets::button(sheet, QMessageBox::Ok)->x() > sheets::button(sheet, QMessageBox::Discard)->x(),
            input);
    }
}

QTEST_MAIN(SheetsOnXTest)

#include "sheets-on-x-test.moc"
