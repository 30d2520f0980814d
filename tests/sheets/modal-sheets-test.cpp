#include "sheets/covered-window.h"
#include "support/guarded-test.h"

#include <QtTest>

#include <functional>
#include <memory>

using sheets::soon;

/** How sheets open, wait and close, whatever happens to them meanwhile. */
class ModalSheetsTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void deleted_data();
    void deleted();
    void deletedUnderMessageFunction_data();
    void deletedUnderMessageFunction();

    void deletedByItsAnswer_data() { sheets::addBothSheets(); }

    void deletedByItsAnswer();
    void focusGoesToNothingDying();
    void endings_data();
    void endings();
    void twoSheets_data();
    void twoSheets();
    void windowWithTwoSheetsDies_data();
    void windowWithTwoSheetsDies();

    void openedAgain_data() { sheets::addBothSheets(); }

    void openedAgain();
    void windowChanges_data();
    void windowChanges();
    void closing_data();
    void closing();
    void manyMessages();

private:
    QTemporaryDir userFolder;
};

namespace {

using Steps = QHash<QByteArray, std::function<void()>>;

const int ok = QMessageBox::Ok;
const int discard = QMessageBox::Discard;

/** Rows for both sheets with each of the words, in the columns `input` and @p column. */
void addRows(const char* column, std::initializer_list<const char*> words)
{
    QTest::addColumn<bool>("input");
    QTest::addColumn<QByteArray>(column);
    for (const char* word : words) {
        QTest::addRow("%s, message sheet", word) << false << QByteArray(word);
        QTest::addRow("%s, input sheet", word) << true << QByteArray(word);
    }
}

} // namespace

void ModalSheetsTest::initTestCase()
{
    sheets::startKit(userFolder.path());
    QApplication::setQuitOnLastWindowClosed(false);
}

void ModalSheetsTest::deleted_data()
{
    addRows("victim", { "sheet", "mask", "parent", "window", "sheet shown", "mask shown", "window shown" });
}

/** While it is waited for, or only shown. */
void ModalSheetsTest::deleted()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, victim);
    const bool waits = !victim.endsWith("shown");
    const QPointer<CoveredWindow> window = new CoveredWindow;
    QVERIFY(window->open());
    auto* parent = new QWidget(window);
    const QPointer<VantSheet> sheet = sheets::make(input, parent);
    const auto kill = [&] {
        const QHash<QByteArray, QObject*> victims { { "sheet", sheet }, { "mask", window->shownMask() },
            { "parent", parent }, { "window", window } };
        delete victims[victim.split(' ').first()];
    };
    if (waits) {
        soon(qApp, [&] {
            kill();
            if (victim == "parent") { // which is none any more, and so the sheet waits on
                soon(qApp, [&] { window->press(Qt::Key_Escape); });
            }
        });
        QCOMPARE(sheets::exec(sheet), victim == "parent" ? discard : 0);
        QCOMPARE(sheet.isNull(), victim == "sheet");
    } else {
        sheet->showSheet();
        QVERIFY(!window->close());
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, { 3, 3 }); // nobody's
        QCOMPARE(window->mousePresses, 0);
        kill();
        QVERIFY(!sheet); // a child like any other
    }
    QCOMPARE(window.isNull(), victim.startsWith("window"));
    if (window) {
        QCOMPARE(window->remains(), QString());
    }
    if (sheet) {
        QVERIFY(sheet->isHidden());
        sheet->setProperty("text", QString());
    }
    delete sheet;
    delete window;
}

void ModalSheetsTest::deletedUnderMessageFunction_data()
{
    QTest::addColumn<QByteArray>("victim");
    QTest::newRow("mask") << QByteArray("mask");
    QTest::newRow("parent") << QByteArray("parent");
    QTest::newRow("window") << QByteArray("window");
    // Before the function, which still waits for its sheet, has learnt of the answer.
    QTest::newRow("mask, just answered") << QByteArray("answered mask");
    QTest::newRow("window, just answered") << QByteArray("answered window");
}

/** Whose sheet lies on the stack. */
void ModalSheetsTest::deletedUnderMessageFunction()
{
    QFETCH(QByteArray, victim);
    const QPointer<CoveredWindow> window = new CoveredWindow;
    QVERIFY(window->open());
    auto* parent = new QWidget(window);
    soon(qApp, [&] {
        const QHash<QByteArray, QObject*> victims { { "mask", window->shownMask() }, { "parent", parent },
            { "window", window } };
        if (victim.startsWith("answered")) {
            window->press(Qt::Key_Return);
        }
        delete victims[victim.split(' ').last()];
        if (victim == "parent") {
            soon(qApp, [&] { window->press(Qt::Key_Return); });
        }
    });
    const bool answered = victim == "parent" || victim.startsWith("answered");
    QCOMPARE(showConfirmMsg({}, QStringLiteral("Text"), parent), answered ? ok : 0);
    QCOMPARE(window.isNull(), victim.endsWith("window"));
    if (window) {
        QCOMPARE(window->remains(), QString());
    }
    delete window;
}

void ModalSheetsTest::deletedByItsAnswer()
{
    QFETCH(bool, input);
    CoveredWindow window;
    QVERIFY(window.open());
    const QPointer<VantSheet> sheet = sheets::make(input, &window);
    connect(sheet.data(), &VantSheet::finished, [&] { delete sheet; });
    soon(qApp, [&] { window.click(sheets::button(sheet, QMessageBox::Ok)); });
    QCOMPARE(sheets::exec(sheet), ok);
    QVERIFY(!sheet);
    QCOMPARE(window.remains(), QString());
}

void ModalSheetsTest::focusGoesToNothingDying()
{
    CoveredWindow window;
    QVERIFY(window.open());
    auto* page = new QWidget(&window);
    page->setFocusPolicy(Qt::StrongFocus);
    page->show();
    page->setFocus();
    QCOMPARE(window.focusWidget(), page);
    auto* sheet = new VantInputSheet(page);
    VantMask::createMask(sheet, nullptr);
    sheet->showSheet();
    delete page;
    QVERIFY(!QApplication::focusWidget() || window.isAncestorOf(QApplication::focusWidget()));
    window.press(Qt::Key_A); // to nobody who is gone
}

void ModalSheetsTest::endings_data()
{
    addRows("way",
        { "quit", "done", "hide and done", "done before there is a loop", "Ok", "Discard", "application" });
}

void ModalSheetsTest::endings()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, way);
    const QHash<QByteArray, int> results { { "done", 7 }, { "hide and done", 7 },
        { "done before there is a loop", 7 }, { "Ok", ok }, { "Discard", discard } };
    CoveredWindow window;
    QVERIFY(window.open());
    window.button->setFocus(); // where the focus does not come by itself
    VantSheet* sheet = sheets::make(input, &window);
    QSignalSpy finished(sheet, SIGNAL(finished(int)));
    const Steps ways {
        { "quit", [&] { QMetaObject::invokeMethod(sheet, "quit"); } },
        { "done", [&] { sheets::done(sheet, 7); } },
        { "hide and done",
            [&] {
                sheet->hide();
                soon(sheet, [&] { sheets::done(sheet, 7); });
            } },
        { "Ok", [&] { window.click(sheets::button(sheet, QMessageBox::Ok)); } },
        { "Discard", [&] { window.click(sheets::button(sheet, QMessageBox::Discard)); } },
        { "application", [] { QCoreApplication::quit(); } },
    };
    int returned = -1;
    soon(qApp, [&] {
        soon(qApp, ways.value(way, [] {}));
        if (!ways.contains(way)) {
            const auto once = std::make_shared<QMetaObject::Connection>();
            *once = connect(qApp, &QApplication::focusChanged, sheet, [&, once] {
                disconnect(*once);
                sheets::done(sheet, 7);
            });
        }
        returned = sheets::exec(sheet);
        QCoreApplication::exit();
    });
    QCoreApplication::exec();
    QCOMPARE(returned, results.value(way, 0));
    QVERIFY(sheet->isHidden());
    QCOMPARE(finished, QList<QList<QVariant>> { { returned } });
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
    for (int row = 0; row < 8; ++row) {
        const bool below = row & 1, above = row & 2, lowerFirst = row & 4;
        QTest::addRow("%s over %s, %s first", above ? "input" : "message", below ? "input" : "message",
            lowerFirst ? "lower" : "upper")
            << below << above << lowerFirst;
    }
}

void ModalSheetsTest::twoSheets()
{
    QFETCH(bool, inputBelow);
    QFETCH(bool, inputAbove);
    QFETCH(bool, lowerFirst);
    CoveredWindow window;
    QVERIFY(window.open());
    VantSheet* upper = sheets::make(inputAbove, &window); // under the other one's mask, until it opens
    VantSheet* lower = sheets::make(inputBelow, &window);
    int upperResult = -1;
    soon(qApp, [&] {
        soon(qApp, [&] {
            const auto end = qScopeGuard([&] { window.press(Qt::Key_Escape); });
            window.click(sheets::button(lower, QMessageBox::Ok)); // out of reach
            if (lowerFirst) {
                sheets::done(lower, 5);
            }
            QVERIFY(!window.close());
        });
        upperResult = sheets::exec(upper);
        if (!lowerFirst) {
            soon(qApp, [&] { window.press(Qt::Key_Return); });
            QVERIFY(lower->isVisible());
            QVERIFY(lower->isAncestorOf(QApplication::focusWidget()));
            QVERIFY(!window.close());
        }
    });
    QCOMPARE(sheets::exec(lower), lowerFirst ? 5 : ok);
    QCOMPARE(upperResult, discard);
    QVERIFY(upper->isHidden() && lower->isHidden());
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
    VantInputSheet lower(window.get());
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

void ModalSheetsTest::openedAgain()
{
    QFETCH(bool, input);
    CoveredWindow window;
    QVERIFY(window.open());
    VantSheet* sheet = sheets::make(input, &window);

    // While it is open already, and while it is waited for.
    sheet->showSheet();
    soon(qApp, [&] {
        const auto end = qScopeGuard([&] { sheets::done(sheet, 1); });
        QCOMPARE(sheets::exec(sheet), 0);
        QVERIFY(sheet->isVisible());
    });
    QCOMPARE(sheets::exec(sheet), 1);
    QCOMPARE(window.remains(), QString());

    // Because of its answer: the first answer waits for the second.
    int inner = -1;
    bool first = true;
    connect(sheet, &VantSheet::finished, [&] {
        if (first) {
            first = false;
            soon(sheet, [&] { window.press(Qt::Key_Return); });
            inner = sheets::exec(sheet);
        }
    });
    soon(qApp, [&] { window.press(Qt::Key_Escape); });
    QCOMPARE(sheets::exec(sheet), discard);
    QCOMPARE(inner, ok);
    QCOMPARE(window.remains(), QString());
}

void ModalSheetsTest::windowChanges_data()
{
    addRows("change",
        { "resized", "minimised", "sheet in other window", "content in other window",
            "window in other window" });
}

void ModalSheetsTest::windowChanges()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, change);
    CoveredWindow other({ 900, 500 });
    QVERIFY(other.open());
    CoveredWindow window;
    QVERIFY(window.open());
    auto* content = new QWidget(&window);
    content->resize(700, 500);
    content->lower();
    content->show();
    VantSheet* sheet = sheets::make(input, &window);
    if (change.startsWith("content")) {
        VantMask::createMask(sheet, content);
    }
    CoveredWindow* now = change.endsWith("other window") ? &other : &window;
    const Steps changes {
        { "resized", [&] { window.resize(640, 900); } },
        { "minimised",
            [&] {
                window.showMinimized();
                QCoreApplication::processEvents();
                window.showNormal();
            } },
        { "sheet in other window", [&] { VantMask::createMask(sheet, &other)->show(); } },
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
        soon(sheet, [&] {
            const auto end = qScopeGuard([&] {
                if (sheet->isVisible()) {
                    sheets::done(sheet, 0);
                }
            });
            now->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(now));
            QVERIFY(sheet->isVisible());
            const QWidget* mask = sheet->parentWidget();
            QCOMPARE(mask->size(), now->size());
            QVERIFY((sheet->geometry().center() - mask->rect().center()).manhattanLength() <= 2);
            QVERIFY(!now->close());
            if (QWidget* focus = now->focusWidget()) {
                focus->clearFocus();
            }
            now->press(Qt::Key_Return);
        });
    });
    QCOMPARE(sheets::exec(sheet), ok);
    QCOMPARE(other.remains(), QString());
    if (window.isWindow()) {
        QCOMPARE(window.remains(), QString());
    }
}

void ModalSheetsTest::closing_data()
{
    addRows("block", { "blocking", "open" });
}

void ModalSheetsTest::closing()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, block);
    const bool blocks = block == "blocking";
    CoveredWindow window;
    QVERIFY(window.open());
    VantSheet* sheet = sheets::make(input, &window);
    if (auto* message = qobject_cast<VantMessageSheet*>(sheet)) {
        message->setBlockWindowButton(blocks);
    } else {
        qobject_cast<VantInputSheet*>(sheet)->setBlockWindowButton(blocks);
    }
    const auto hasCloseButton = [&] {
        return window.windowHandle()->flags().testFlag(Qt::WindowCloseButtonHint);
    };
    soon(sheet, [&] {
        const auto end = qScopeGuard([&] { sheets::done(sheet, 0); });
        QCOMPARE(hasCloseButton(), !blocks);
        QCOMPARE(window.close(), !blocks);
    });
    sheets::exec(sheet);
    QVERIFY(window.open());
    QCOMPARE(window.remains(), QString());

    sheet->showSheet(); // which leaves the close button alone
    QVERIFY(hasCloseButton());
    QCOMPARE(window.close(), !blocks);
    sheets::done(sheet, 0);
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
