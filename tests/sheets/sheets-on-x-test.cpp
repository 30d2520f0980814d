#include "sheets/covered-window.h"

#include <QProcess>
#include <QWindow>
#include <QtTest>

namespace {

/** What a program prints. */
QByteArray run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished() ? process.readAllStandardOutput() : QByteArray();
}

/** Presses a key as a user does. */
void type(const char* key)
{
    run("xdotool", { "key", key });
}

/** The functions that the window manager is told a window has: resize, move, minimise, maximise, close. */
uint functions(const QWidget& window)
{
    const QByteArray hints = run("xprop",
        { "-id", QString::number(window.winId()), "-f", "_MOTIF_WM_HINTS", "32x", "-notype",
            "_MOTIF_WM_HINTS" });
    return hints.mid(hints.indexOf('=') + 1).split(',').value(1).trimmed().toUInt(nullptr, 0);
}

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
    void closeButton();
    void closeRequests();
    void keysAndFocus();
    void buttonOrder();
};

void SheetsOnXTest::closeButton()
{
    const uint all = 0x3e;
    const uint withoutClose = 0x1e;
    CoveredWindow window;
    QVERIFY(window.open());
    const WId id = window.winId();
    const Counter hides(window.windowHandle(), QEvent::Hide);
    QTRY_COMPARE(functions(window), all);

    VantMessageSheet sheet(VantMessageSheet::Question, "Text", &window);
    VantMask::createMask(&sheet, &window);
    for (const bool blocks : { true, false }) {
        sheet.setBlockWindowButton(blocks);
        sheet.showSheetWithBlock();
        QTRY_COMPARE(functions(window), blocks ? withoutClose : all);
        QTRY_VERIFY(window.windowHandle()->isExposed());
        sheet.done(0);
        QTRY_COMPARE(functions(window), all);
    }
    QCOMPARE(hides.count, 0);
    QCOMPARE(window.winId(), id);
}

/** Made by the window manager when the user asks for it. */
void SheetsOnXTest::closeRequests()
{
    CoveredWindow window;
    QVERIFY(window.open());
    const auto ask = [&window] { run("wmctrl", { "-i", "-c", QString::number(window.winId()) }); };
    VantMessageSheet sheet(VantMessageSheet::Question, &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheetWithBlock();
    const Counter refused(&window, QEvent::Close); // asked before the sheet
    ask();
    QTRY_COMPARE(refused.count, 1);
    QVERIFY(window.isVisible());
    sheet.done(0);
    ask();
    QTRY_VERIFY(!window.isVisible());
}

void SheetsOnXTest::keysAndFocus()
{
    CoveredWindow window;
    QVERIFY(window.open());
    window.field->setFocus();
    VantInputSheet sheet(&window);
    VantMask::createMask(&sheet, &window);
    sheets::soon(&sheet, [&] {
        const auto end = qScopeGuard([&] {
            if (sheet.isVisible()) {
                sheet.quit();
            }
        });
        type("a");
        QTRY_COMPARE(sheet.getContent(), QString("a"));
        // To another window and back: the focus has stayed in the sheet.
        CoveredWindow other({ 200, 100 });
        QVERIFY(other.open());
        QVERIFY(window.open());
        type("b");
        QTRY_COMPARE(sheet.getContent(), QString("ab"));
        type("Escape");
        QTRY_VERIFY(!sheet.isVisible());
    });
    QCOMPARE(sheet.exec(), int(QMessageBox::Discard));
    type("c");
    QTRY_COMPARE(window.field->text(), QString("c"));
}

/** On a desktop that has the accepting button on the right. */
void SheetsOnXTest::buttonOrder()
{
    CoveredWindow window;
    QVERIFY(window.open());
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
