#include "sheets/covered-window.h"
#include "support/guarded-test.h"

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

/** Presses keys as a user does. */
void type(const char* keys)
{
    run(QStringLiteral("xdotool"), { QStringLiteral("key"), QLatin1String(keys) });
}

/** Lets an object's own events of one type be counted. */
struct Counter : QObject
{
    explicit Counter(QEvent::Type counted)
        : countedType(counted)
    { }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        count += event->type() == countedType;
        return false;
    }

    QEvent::Type countedType;
    int count = 0;
};

} // namespace

/** What only an X server with a window manager can tell. */
class SheetsOnXTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void closeButton();
    void closeRequests();
    void keysAndFocus();
    void buttonOrder();

private:
    /** The functions that the window manager is told a window has: resize, move, minimise, maximise, close.
     */
    static uint functions(const QWidget& window);

    QTemporaryDir userFolder;
};

void SheetsOnXTest::initTestCase()
{
    sheets::startKit(userFolder.path());
    QApplication::setQuitOnLastWindowClosed(false);
}

uint SheetsOnXTest::functions(const QWidget& window)
{
    const QByteArray hints = run(QStringLiteral("xprop"),
        { QStringLiteral("-id"), QString::number(window.winId()), QStringLiteral("-f"),
            QStringLiteral("_MOTIF_WM_HINTS"), QStringLiteral("32x"), QStringLiteral("-notype"),
            QStringLiteral("_MOTIF_WM_HINTS") });
    return hints.mid(hints.indexOf('=') + 1).split(',').value(1).trimmed().toUInt(nullptr, 0);
}

void SheetsOnXTest::closeButton()
{
    const uint all = 0x3e;
    const uint withoutClose = 0x1e;
    CoveredWindow window;
    QVERIFY(window.open());
    const WId id = window.winId();
    Counter hides(QEvent::Hide);
    window.windowHandle()->installEventFilter(&hides);
    QTRY_COMPARE(functions(window), all);

    VantMessageSheet sheet(VantMessageSheet::Question, QStringLiteral("Text"), &window);
    VantMask::createMask(&sheet, &window);
    sheets::soon(&sheet, [&] {
        const auto end = qScopeGuard([&] { sheet.quit(); });
        QTRY_COMPARE(functions(window), withoutClose);
        QTRY_VERIFY(window.windowHandle()->isExposed());
    });
    sheet.exec();
    QTRY_COMPARE(functions(window), all);

    sheet.showSheetWithBlock();
    QTRY_COMPARE(functions(window), withoutClose);
    sheet.done(0);
    QTRY_COMPARE(functions(window), all);

    sheet.setBlockWindowButton(false);
    sheet.showSheetWithBlock();
    QCOMPARE(functions(window), all);
    sheet.done(0);
    QTRY_VERIFY(window.windowHandle()->isExposed());
    QCOMPARE(hides.count, 0);
    QCOMPARE(window.winId(), id);
}

/** Made by the window manager when the user asks for it. */
void SheetsOnXTest::closeRequests()
{
    CoveredWindow window;
    QVERIFY(window.open());
    Counter requests(QEvent::Close);
    window.installEventFilter(&requests);
    const auto ask = [&window] {
        run(QStringLiteral("wmctrl"),
            { QStringLiteral("-i"), QStringLiteral("-c"), QString::number(window.winId()) });
    };
    VantMessageSheet sheet(VantMessageSheet::Question, &window);
    VantMask::createMask(&sheet, &window);
    Counter refused(QEvent::Close);
    sheet.showSheetWithBlock();
    window.installEventFilter(&refused); // before the sheet
    ask();
    QTRY_COMPARE(refused.count, 1);
    QVERIFY(window.isVisible());
    QCOMPARE(requests.count, 0);
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
        QTRY_COMPARE(sheet.getContent(), QStringLiteral("a"));
        // To another window and back: the focus has stayed in the sheet.
        CoveredWindow other({ 200, 100 });
        QVERIFY(other.open());
        QVERIFY(window.open());
        type("b");
        QTRY_COMPARE(sheet.getContent(), QStringLiteral("ab"));
        type("Escape");
        QTRY_VERIFY(!sheet.isVisible());
    });
    QCOMPARE(sheet.exec(), int(QMessageBox::Discard));
    type("c");
    QTRY_COMPARE(window.field->text(), QStringLiteral("c"));
}

/** On a desktop that has the accepting button on the right. */
void SheetsOnXTest::buttonOrder()
{
    CoveredWindow window;
    QVERIFY(window.open());
    const auto okIsLeft = [&window](bool input) {
        VantSheet* sheet = sheets::make(input, &window);
        sheet->showSheet();
        QCoreApplication::processEvents();
        return sheets::button(sheet, QMessageBox::Ok)->x() < sheets::button(sheet, QMessageBox::Discard)->x();
    };
    QVERIFY(okIsLeft(false));
    QVERIFY(!okIsLeft(true));
}

QTEST_MAIN(SheetsOnXTest)

#include "sheets-on-x-test.moc"
