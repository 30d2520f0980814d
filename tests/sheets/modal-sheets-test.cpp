#include "sheets/covered-window.h"
#include "support/guarded-test.h"

#include <QtTest>

#include <functional>
#include <memory>
#include <optional>

using sheets::soon;

namespace {

const int ok = QMessageBox::Ok;
const int discard = QMessageBox::Discard;

} // namespace

/** How sheets open, wait and close, whatever happens to them meanwhile. */
class ModalSheetsTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void deletedWhileWaiting_data();
    void deletedWhileWaiting();
    void deletedUnderMessageFunction_data();
    void deletedUnderMessageFunction();
    void deletedByItsAnswer_data();
    void deletedByItsAnswer();
    void deletedWhileShown_data();
    void deletedWhileShown();
    void endings_data();
    void endings();
    void twoSheets_data();
    void twoSheets();
    void windowWithTwoSheetsDies_data();
    void windowWithTwoSheetsDies();
    void openedAgain_data();
    void openedAgain();
    void windowChanges_data();
    void windowChanges();
    void closing_data();
    void closing();
    void manyMessages();

private:
    template <typename Sheet>
    void deleteWhileWaiting(const QByteArray& victim, bool onStack);
    template <typename Sheet>
    void deleteByItsAnswer();
    template <typename Sheet>
    void deleteWhileShown(const QByteArray& victim);
    template <typename Sheet>
    void endWith(const QByteArray& way, int result);
    template <typename Lower, typename Upper>
    void openTwo(bool lowerFirst);
    template <typename Sheet>
    void openAgain();
    template <typename Sheet>
    void changeWindow(const QByteArray& change);
    template <typename Sheet>
    void tryToClose(bool blocks);

    QTemporaryDir userFolder;
};

void ModalSheetsTest::initTestCase()
{
    sheets::startKit(userFolder.path());
    QApplication::setQuitOnLastWindowClosed(false);
}

void ModalSheetsTest::deletedWhileWaiting_data()
{
    QTest::addColumn<bool>("input");
    QTest::addColumn<QByteArray>("victim");
    QTest::addColumn<bool>("onStack");
    for (const bool input : { false, true }) {
        for (const char* victim : { "sheet", "mask", "parent", "window" }) {
            for (const bool onStack : { false, true }) {
                if (!onStack || qstrcmp(victim, "sheet") != 0) {
                    QTest::addRow("%s of %s on the %s", victim, input ? "input sheet" : "message sheet",
                        onStack ? "stack" : "heap")
                        << input << QByteArray(victim) << onStack;
                }
            }
        }
    }
}

void ModalSheetsTest::deletedWhileWaiting()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, victim);
    QFETCH(bool, onStack);
    if (input) {
        deleteWhileWaiting<PromptSheet>(victim, onStack);
    } else {
        deleteWhileWaiting<QuestionSheet>(victim, onStack);
    }
}

template <typename Sheet>
void ModalSheetsTest::deleteWhileWaiting(const QByteArray& victim, bool onStack)
{
    const QPointer<CoveredWindow> window = new CoveredWindow;
    QVERIFY(window->open());
    auto* parent = new QWidget(window);
    std::optional<Sheet> onTheStack;
    const QPointer<Sheet> sheet = onStack ? &onTheStack.emplace(parent) : new Sheet(parent);
    VantMask::createMask(sheet, window);
    soon(qApp, [&] {
        const QHash<QByteArray, QObject*> victims { { "sheet", sheet }, { "mask", window->shownMask() },
            { "parent", parent }, { "window", window } };
        delete victims[victim];
        if (victim == "parent") { // which is none any more, and so the sheet waits on
            soon(qApp, [&] { window->press(Qt::Key_Escape); });
        }
    });
    QCOMPARE(sheet->exec(), victim == "parent" ? discard : 0);
    QCOMPARE(sheet.isNull(), victim == "sheet");
    QCOMPARE(window.isNull(), victim == "window");
    if (window) {
        QCOMPARE(window->remains(), QString());
    }
    if (sheet) {
        QVERIFY(sheet->isHidden());
        sheet->setText(QStringLiteral("Other text"));
    }
    if (!onStack) {
        delete sheet;
    }
    onTheStack.reset();
    delete window;
}

void ModalSheetsTest::deletedUnderMessageFunction_data()
{
    QTest::addColumn<QByteArray>("victim");
    QTest::newRow("mask") << QByteArray("mask");
    QTest::newRow("parent") << QByteArray("parent");
    QTest::newRow("window") << QByteArray("window");
}

void ModalSheetsTest::deletedUnderMessageFunction()
{
    QFETCH(QByteArray, victim);
    const QPointer<CoveredWindow> window = new CoveredWindow;
    QVERIFY(window->open());
    auto* parent = new QWidget(window);
    soon(qApp, [&] {
        const QHash<QByteArray, QObject*> victims { { "mask", window->shownMask() }, { "parent", parent },
            { "window", window } };
        delete victims[victim];
        if (victim == "parent") {
            soon(qApp, [&] { window->press(Qt::Key_Return); });
        }
    });
    const int result = showConfirmMsg(QStringLiteral("Title"), QStringLiteral("Text"), parent);
    QCOMPARE(result, victim == "parent" ? ok : 0);
    if (window) {
        QCOMPARE(window->remains(), QString());
    }
    delete window;
}

namespace {

void addBothSheets()
{
    QTest::addColumn<bool>("input");
    QTest::newRow("message sheet") << false;
    QTest::newRow("input sheet") << true;
}

} // namespace

void ModalSheetsTest::deletedByItsAnswer_data()
{
    addBothSheets();
}

void ModalSheetsTest::deletedByItsAnswer()
{
    QFETCH(bool, input);
    if (input) {
        deleteByItsAnswer<PromptSheet>();
    } else {
        deleteByItsAnswer<QuestionSheet>();
    }
}

template <typename Sheet>
void ModalSheetsTest::deleteByItsAnswer()
{
    CoveredWindow window;
    QVERIFY(window.open());
    const QPointer<Sheet> sheet = new Sheet(&window);
    VantMask::createMask(sheet, &window);
    connect(sheet.data(), &VantSheet::finished, [&] { delete sheet; });
    soon(qApp, [&] { window.click(sheet->button(QMessageBox::Ok)); });
    QCOMPARE(sheet->exec(), ok);
    QVERIFY(!sheet);
    QCOMPARE(window.remains(), QString());
}

void ModalSheetsTest::deletedWhileShown_data()
{
    QTest::addColumn<bool>("input");
    QTest::addColumn<QByteArray>("victim");
    for (const char* victim : { "sheet", "mask", "window" }) {
        QTest::addRow("%s of message sheet", victim) << false << QByteArray(victim);
        QTest::addRow("%s of input sheet", victim) << true << QByteArray(victim);
    }
}

void ModalSheetsTest::deletedWhileShown()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, victim);
    if (input) {
        deleteWhileShown<PromptSheet>(victim);
    } else {
        deleteWhileShown<QuestionSheet>(victim);
    }
}

/** A sheet that nobody waits for is a child like any other. */
template <typename Sheet>
void ModalSheetsTest::deleteWhileShown(const QByteArray& victim)
{
    auto window = std::make_unique<CoveredWindow>();
    QVERIFY(window->open());
    const QPointer<Sheet> sheet = new Sheet(window.get());
    VantMask::createMask(sheet, window.get());
    sheet->showSheet();
    QVERIFY(!window->close());
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, { 3, 3 }); // nobody's, and not the window's
    QCOMPARE(window->mousePresses, 0);
    if (victim == "window") {
        window.reset();
    } else {
        delete (victim == "sheet" ? static_cast<QWidget*>(sheet) : window->shownMask());
        QCOMPARE(window->remains(), QString());
    }
    QVERIFY(!sheet);
}

void ModalSheetsTest::endings_data()
{
    QTest::addColumn<bool>("input");
    QTest::addColumn<QByteArray>("way");
    QTest::addColumn<int>("result");
    const auto row = [](const char* way, int result) {
        QTest::addRow("%s on message sheet", way) << false << QByteArray(way) << result;
        QTest::addRow("%s on input sheet", way) << true << QByteArray(way) << result;
    };
    row("quit", 0);
    row("done 7", 7);
    row("hide and done", -3);
    row("done before there is a loop", 4);
    row("Ok", ok);
    row("Discard", discard);
    row("quit application", 0);
}

void ModalSheetsTest::endings()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, way);
    QFETCH(int, result);
    if (input) {
        endWith<PromptSheet>(way, result);
    } else {
        endWith<QuestionSheet>(way, result);
    }
}

template <typename Sheet>
void ModalSheetsTest::endWith(const QByteArray& way, int result)
{
    CoveredWindow window;
    QVERIFY(window.open());
    window.button->setFocus(); // where the focus does not come by itself
    Sheet sheet(&window);
    VantMask::createMask(&sheet, &window);
    QSignalSpy finished(&sheet, SIGNAL(finished(int)));
    const QHash<QByteArray, std::function<void()>> ways {
        { "quit", [&] { sheet.quit(); } },
        { "done 7", [&] { sheet.done(7); } },
        { "hide and done",
            [&] {
                sheet.hide();
                soon(&sheet, [&] { sheet.done(-3); });
            } },
        { "Ok", [&] { window.click(sheet.button(QMessageBox::Ok)); } },
        { "Discard", [&] { window.click(sheet.button(QMessageBox::Discard)); } },
        { "quit application", [] { QCoreApplication::quit(); } },
    };
    int returned = -1;
    soon(qApp, [&] {
        soon(qApp, ways.value(way, [] {}));
        if (!ways.contains(way)) {
            const auto done = std::make_shared<QMetaObject::Connection>();
            *done = connect(qApp, &QApplication::focusChanged, &sheet, [&, done] {
                disconnect(*done);
                sheet.done(4);
            });
        }
        returned = sheet.exec();
        QCoreApplication::exit();
    });
    QCoreApplication::exec();
    QCOMPARE(returned, result);
    QVERIFY(sheet.isHidden());
    QCOMPARE(finished, QList<QList<QVariant>> { { result } });
    if (way != "hide and done") { // when the focus had found another place by itself
        QCOMPARE(QApplication::focusWidget(), window.button);
    }
    QCOMPARE(window.remains(), QString());
}

void ModalSheetsTest::twoSheets_data()
{
    QTest::addColumn<bool>("inputBelow");
    QTest::addColumn<bool>("inputAbove");
    QTest::addColumn<bool>("lowerFirst");
    for (const bool below : { false, true }) {
        for (const bool above : { false, true }) {
            for (const bool lowerFirst : { false, true }) {
                QTest::addRow("%s over %s, %s first", above ? "input" : "message",
                    below ? "input" : "message", lowerFirst ? "lower" : "upper")
                    << below << above << lowerFirst;
            }
        }
    }
}

void ModalSheetsTest::twoSheets()
{
    QFETCH(bool, inputBelow);
    QFETCH(bool, inputAbove);
    QFETCH(bool, lowerFirst);
    if (inputBelow) {
        inputAbove ? openTwo<PromptSheet, PromptSheet>(lowerFirst)
                   : openTwo<PromptSheet, QuestionSheet>(lowerFirst);
    } else {
        inputAbove ? openTwo<QuestionSheet, PromptSheet>(lowerFirst)
                   : openTwo<QuestionSheet, QuestionSheet>(lowerFirst);
    }
}

template <typename Lower, typename Upper>
void ModalSheetsTest::openTwo(bool lowerFirst)
{
    CoveredWindow window;
    QVERIFY(window.open());
    Upper upper(&window); // whose mask lies below the other one, until the sheet opens
    VantMask::createMask(&upper, &window);
    Lower lower(&window);
    VantMask::createMask(&lower, &window);
    int upperResult = -1;
    soon(qApp, [&] {
        soon(qApp, [&] {
            const auto end = qScopeGuard([&] { window.press(Qt::Key_Escape); });
            window.click(lower.button(QMessageBox::Ok)); // out of reach
            if (lowerFirst) {
                lower.done(5);
            }
            QVERIFY(!window.close());
        });
        upperResult = upper.exec();
        if (!lowerFirst) {
            soon(qApp, [&] { window.press(Qt::Key_Return); });
            QVERIFY(lower.isVisible());
            QVERIFY(lower.isAncestorOf(QApplication::focusWidget()));
            QVERIFY(!window.close());
        }
    });
    QCOMPARE(lower.exec(), lowerFirst ? 5 : ok);
    QCOMPARE(upperResult, discard);
    QVERIFY(upper.isHidden() && lower.isHidden());
    QCOMPARE(window.remains(), QString());
}

void ModalSheetsTest::windowWithTwoSheetsDies_data()
{
    QTest::addColumn<bool>("answered");
    QTest::newRow("both open") << false;
    QTest::newRow("lower one answered") << true;
}

void ModalSheetsTest::windowWithTwoSheetsDies()
{
    QFETCH(bool, answered);
    auto window = std::make_unique<CoveredWindow>();
    QVERIFY(window->open());
    PromptSheet lower(window.get());
    VantMask::createMask(&lower, window.get());
    int upperResult = -1;
    soon(qApp, [&] {
        soon(qApp, [&] {
            if (answered) {
                lower.done(5);
            }
            window.reset();
        });
        upperResult = showConfirmMsg({}, QStringLiteral("Text"), window.get());
    });
    QCOMPARE(lower.exec(), answered ? 5 : 0);
    QCOMPARE(upperResult, 0);
}

void ModalSheetsTest::openedAgain_data()
{
    addBothSheets();
}

void ModalSheetsTest::openedAgain()
{
    QFETCH(bool, input);
    if (input) {
        openAgain<PromptSheet>();
    } else {
        openAgain<QuestionSheet>();
    }
}

template <typename Sheet>
void ModalSheetsTest::openAgain()
{
    CoveredWindow window;
    QVERIFY(window.open());
    Sheet sheet(&window);
    VantMask::createMask(&sheet, &window);

    // Again after an answer, and while it is open already.
    sheet.showSheet();
    soon(qApp, [&] {
        const auto end = qScopeGuard([&] { sheet.done(1); });
        QCOMPARE(sheet.exec(), 0);
        QVERIFY(sheet.isVisible());
    });
    QCOMPARE(sheet.exec(), 1);
    QCOMPARE(window.remains(), QString());

    // Again because of the answer: the first answer waits for the second.
    int inner = -1;
    bool first = true;
    connect(&sheet, &VantSheet::finished, [&] {
        if (first) {
            first = false;
            soon(&sheet, [&] { window.press(Qt::Key_Return); });
            inner = sheet.exec();
        }
    });
    soon(qApp, [&] { window.press(Qt::Key_Escape); });
    QCOMPARE(sheet.exec(), discard);
    QCOMPARE(inner, ok);
    QCOMPARE(window.remains(), QString());
}

void ModalSheetsTest::windowChanges_data()
{
    QTest::addColumn<bool>("input");
    QTest::addColumn<QByteArray>("change");
    for (const char* change : { "resized", "minimised", "sheet in other window", "content in other window",
             "window in other window" }) {
        QTest::addRow("%s, message sheet", change) << false << QByteArray(change);
        QTest::addRow("%s, input sheet", change) << true << QByteArray(change);
    }
}

void ModalSheetsTest::windowChanges()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, change);
    if (input) {
        changeWindow<PromptSheet>(change);
    } else {
        changeWindow<QuestionSheet>(change);
    }
}

template <typename Sheet>
void ModalSheetsTest::changeWindow(const QByteArray& change)
{
    CoveredWindow other({ 900, 500 });
    QVERIFY(other.open());
    CoveredWindow window;
    QVERIFY(window.open());
    auto* content = new QWidget(&window);
    content->resize(700, 500);
    content->lower();
    content->show();
    Sheet sheet(content);
    VantMask::createMask(&sheet, change.startsWith("content") ? content : &window);
    CoveredWindow* now = change.endsWith("other window") ? &other : &window;
    const QHash<QByteArray, std::function<void()>> changes {
        { "resized", [&] { window.resize(640, 900); } },
        { "minimised",
            [&] {
                window.showMinimized();
                QCoreApplication::processEvents();
                window.showNormal();
            } },
        { "sheet in other window", [&] { VantMask::createMask(&sheet, &other)->show(); } },
        { "content in other window",
            [&] {
                content->setParent(&other);
                content->show();
            } },
        { "window in other window",
            [&] {
                window.setParent(&other);
                window.show();
            } },
    };
    soon(qApp, [&] {
        changes[change]();
        soon(&sheet, [&] {
            const auto end = qScopeGuard([&] {
                if (sheet.isVisible()) {
                    sheet.quit();
                }
            });
            now->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(now));
            QVERIFY(sheet.isVisible());
            const QWidget* mask = sheet.parentWidget();
            QCOMPARE(mask->size(), now->size());
            QVERIFY((sheet.geometry().center() - mask->rect().center()).manhattanLength() <= 2);
            QVERIFY(!now->close());
            if (QWidget* focus = now->focusWidget()) {
                focus->clearFocus();
            }
            now->press(Qt::Key_Return);
        });
    });
    QCOMPARE(sheet.exec(), ok);
    QCOMPARE(other.remains(), QString());
    if (window.isWindow()) {
        QCOMPARE(window.remains(), QString());
    }
}

void ModalSheetsTest::closing_data()
{
    QTest::addColumn<bool>("input");
    QTest::addColumn<bool>("blocks");
    QTest::newRow("blocking message sheet") << false << true;
    QTest::newRow("message sheet") << false << false;
    QTest::newRow("blocking input sheet") << true << true;
    QTest::newRow("input sheet") << true << false;
}

void ModalSheetsTest::closing()
{
    QFETCH(bool, input);
    QFETCH(bool, blocks);
    if (input) {
        tryToClose<PromptSheet>(blocks);
    } else {
        tryToClose<QuestionSheet>(blocks);
    }
}

template <typename Sheet>
void ModalSheetsTest::tryToClose(bool blocks)
{
    CoveredWindow window;
    QVERIFY(window.open());
    Sheet sheet(&window);
    VantMask::createMask(&sheet, &window);
    if (!blocks) {
        sheet.setBlockWindowButton(false);
    }
    const auto hasCloseButton = [&] {
        return window.windowHandle()->flags().testFlag(Qt::WindowCloseButtonHint);
    };
    soon(&sheet, [&] {
        const auto end = qScopeGuard([&] { sheet.quit(); });
        QCOMPARE(hasCloseButton(), !blocks);
        QCOMPARE(window.close(), !blocks);
    });
    sheet.exec();
    QVERIFY(window.open());
    QCOMPARE(window.remains(), QString());

    sheet.showSheet(); // which leaves the close button alone
    QVERIFY(hasCloseButton());
    QCOMPARE(window.close(), !blocks);
    sheet.done(0);
    QVERIFY(window.open());
    QCOMPARE(window.remains(), QString());
}

void ModalSheetsTest::manyMessages()
{
    CoveredWindow window;
    QVERIFY(window.open());
    const auto message = [&] {
        soon(&window, [&] { window.press(Qt::Key_Return); });
        showWarningMsg({}, QStringLiteral("Text"), QStringLiteral("More"), &window);
    };
    message();
    const int widgets = QApplication::allWidgets().size();
    const int objects = window.findChildren<QObject*>().size();
    for (int i = 0; i < 500; ++i) {
        message();
    }
    QCOMPARE(QApplication::allWidgets().size() - widgets, 500);
    // The mask with its private part, its layout and its filter.
    QCOMPARE(window.findChildren<QObject*>().size() - objects, 4 * 500);
    QCOMPARE(window.remains(), QString());
}

QTEST_MAIN(ModalSheetsTest)

#include "modal-sheets-test.moc"
