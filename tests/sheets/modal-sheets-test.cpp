#include "sheets/covered-window.h"

#include <QtTest>

#include <memory>

using sheets::soon;

namespace {

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

/** How sheets open, wait and close, whatever happens to them meanwhile. */
class ModalSheetsTest : public SheetTest
{
    Q_OBJECT

private Q_SLOTS:

    void deleted_data()
    {
        addRows("victim",
            { "sheet", "mask", "parent", "window", "sheet, by its answer", "sheet, shown", "mask, shown",
                "window, shown" });
    }

    void deleted();
    void maskDeletedUnderMessageFunction();
    void focusGoesToNothingDying();

    void endings_data()
    {
        addRows("way", { "hidden first", "before there is a loop", "Discard", "application" });
    }

    void endings();

    void twoSheets_data() { addRows("first", { "lower", "upper", "mask" }); }

    void twoSheets();
    void windowWithTwoSheetsDies();

    void openedAgain_data() { sheets::addBothSheets(); }

    void openedAgain();

    void windowChanges_data() { addRows("moved", { "sheet", "window" }); }

    void windowChanges();

    void closing_data() { sheets::addBothSheets(); }

    void closing();
};

/** While it is waited for, or only shown. */
void ModalSheetsTest::deleted()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, victim);
    const QPointer<CoveredWindow> window = new CoveredWindow;
    auto* parent = new QWidget(window);
    parent->resize(400, 300);
    const QPointer<VantSheet> sheet = sheets::make(input, parent);
    const auto kill = [&] {
        const QHash<QByteArray, QObject*> victims { { "sheet", sheet }, { "mask", window->shownMask() },
            { "parent", parent }, { "window", window } };
        delete victims[victim.split(',').first()];
    };
    int expected = 0;
    if (victim == "parent") { // which is none any more, and so the sheet waits on
        soon(qApp, [&] { soon(qApp, [&] { window->press(Qt::Key_Escape); }); });
        expected = discard;
    }
    if (victim.endsWith("shown")) {
        sheet->showSheet();
        QVERIFY(!window->close());
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, { 3, 3 }); // nobody's
        QCOMPARE(window->mousePresses, 0);
        sheets::button(sheet, QMessageBox::Discard)->setFocus(); // which it loses only now
        kill();
        QVERIFY(!sheet); // a child like any other
    } else if (victim.endsWith("answer")) {
        connect(sheet.data(), &VantSheet::finished, kill);
        soon(qApp, [&] { window->click(sheets::button(sheet, QMessageBox::Ok)); });
        expected = ok;
    } else {
        soon(qApp, kill);
    }
    if (sheet) {
        QCOMPARE(sheets::exec(sheet), expected);
        QCOMPARE(sheet.isNull(), victim.startsWith("sheet"));
    }
    QCOMPARE(window.isNull(), victim.startsWith("window"));
    QVERIFY(!window || window->remains().isEmpty());
    QVERIFY(!sheet || sheet->isHidden());
    delete sheet;
    delete window;
}

/** Of a function whose sheet lies on the stack, and which may not have learnt of its answer. */
void ModalSheetsTest::maskDeletedUnderMessageFunction()
{
    for (const bool answered : { false, true }) {
        CoveredWindow window;
        soon(qApp, [&] {
            const std::unique_ptr<QWidget> mask(window.shownMask());
            if (answered) {
                window.press(Qt::Key_Return);
            }
        });
        QCOMPARE(showConfirmMsg({}, "Text", &window), answered ? ok : 0);
        QCOMPARE(window.remains(), QString());
    }
}

void ModalSheetsTest::focusGoesToNothingDying()
{
    CoveredWindow window;
    auto* page = new QWidget(&window);
    page->setFocusPolicy(Qt::StrongFocus);
    page->show();
    page->setFocus();
    auto* sheet = new VantInputSheet(page);
    VantMask::createMask(sheet, nullptr);
    sheet->showSheet();
    delete page;
    QVERIFY(!QApplication::focusWidget() || window.isAncestorOf(QApplication::focusWidget()));
    window.press(Qt::Key_A); // to nobody who is gone
}

void ModalSheetsTest::endings()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, way);
    CoveredWindow window;
    window.button->setFocus(); // where the focus does not come by itself
    VantSheet* sheet = sheets::make(input, &window);
    QSignalSpy finished(sheet, SIGNAL(finished(int)));
    const auto done = [&] { sheets::done(sheet, 7); };
    QMetaObject::Connection early;
    int returned = -1;
    soon(qApp, [&] {
        if (way == "before there is a loop") {
            early = connect(qApp, &QApplication::focusChanged, sheet, [&] {
                disconnect(early);
                done();
            });
        } else if (way == "hidden first") {
            soon(sheet, [&] {
                sheet->hide();
                window.press(Qt::Key_F1);
            });
            soon(sheet, done);
        } else if (way == "Discard") {
            soon(sheet, [&] { window.click(sheets::button(sheet, QMessageBox::Discard)); });
        } else {
            soon(sheet, [] { QCoreApplication::quit(); });
        }
        returned = sheets::exec(sheet);
        QCoreApplication::exit();
    });
    QCoreApplication::exec();
    QCOMPARE(returned, way == "Discard" ? discard : way == "application" ? 0 : 7);
    QVERIFY(sheet->isHidden());
    QCOMPARE(window.keys.size(), way == "hidden first" && !input ? 1 : 0);
    QCOMPARE(finished, QList<QList<QVariant>> { { returned } });
    if (way != "hidden first") { // when the focus had found another place by itself
        QCOMPARE(QApplication::focusWidget(), window.button);
    }
    QCOMPARE(window.remains(), QString());
}

void ModalSheetsTest::twoSheets()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, first);
    CoveredWindow window;
    const std::unique_ptr<VantSheet> upper(sheets::make(!input, &window)); // below the other, until it opens
    const std::unique_ptr<VantSheet> lower(sheets::make(input, &window));
    int upperResult = -1;
    soon(qApp, [&] {
        soon(qApp, [&] {
            const auto end = qScopeGuard([&] { window.press(Qt::Key_Escape); });
            window.click(sheets::button(lower.get(), QMessageBox::Ok)); // out of reach
            if (first == "lower") {
                sheets::done(lower.get(), 5);
            }
            QVERIFY(!window.close() && !window.hasCloseButton());
            if (first == "mask") { // of the lower one, which has no answer then
                delete lower->parentWidget();
            }
        });
        upperResult = sheets::exec(upper.get());
        if (first == "upper") {
            soon(qApp, [&] { window.press(Qt::Key_Return); });
            QVERIFY(lower->isVisible());
            QVERIFY(lower->isAncestorOf(QApplication::focusWidget()));
            QVERIFY(!window.close() && !window.hasCloseButton());
        }
    });
    QCOMPARE(sheets::exec(lower.get()), first == "lower" ? 5 : first == "upper" ? ok : 0);
    QCOMPARE(upperResult, discard);
    QVERIFY(upper->isHidden() && lower->isHidden());
    QCOMPARE(window.remains(), QString());
}

void ModalSheetsTest::windowWithTwoSheetsDies()
{
    for (const int answer : { 0, 5 }) { // of the lower one
        auto window = std::make_unique<CoveredWindow>();
        VantInputSheet lower(window.get());
        VantMask::createMask(&lower, window.get());
        int upperResult = -1;
        soon(qApp, [&] {
            soon(qApp, [&] {
                if (answer != 0) {
                    lower.done(answer);
                }
                window.reset();
            });
            upperResult = showConfirmMsg({}, "Text", window.get());
        });
        QCOMPARE(lower.exec(), answer);
        QCOMPARE(upperResult, 0);
    }
}

void ModalSheetsTest::openedAgain()
{
    QFETCH(bool, input);
    CoveredWindow window;
    VantSheet* sheet = sheets::make(input, &window);

    // While it is open already, and while it is waited for.
    sheet->showSheet();
    soon(qApp, [&] {
        const auto end = qScopeGuard([&] { sheets::done(sheet, 1); });
        QCOMPARE(sheets::exec(sheet), 0);
        QVERIFY(sheet->isVisible());
    });
    QCOMPARE(sheets::exec(sheet), 1);

    // Because of its answer: the first answer waits for the second.
    int inner = -1;
    connect(sheet, &VantSheet::finished, [&] {
        if (inner == -1) {
            inner = 0;
            soon(sheet, [&] { window.press(Qt::Key_Return); });
            inner = sheets::exec(sheet);
        }
    });
    soon(qApp, [&] { window.press(Qt::Key_Escape); });
    QCOMPARE(sheets::exec(sheet), discard);
    QCOMPARE(inner, ok);
    QCOMPARE(window.remains(), QString());
}

/** What was moved into another window, while it was open, is at home there. */
void ModalSheetsTest::windowChanges()
{
    QFETCH(bool, input);
    QFETCH(QByteArray, moved);
    CoveredWindow other({ 900, 500 });
    CoveredWindow window;
    VantSheet* sheet = sheets::make(input, &window);
    soon(qApp, [&] {
        if (moved == "sheet") {
            VantMask::createMask(sheet, &other)->show();
        } else {
            window.setParent(&other);
            window.show();
        }
        soon(sheet, [&] {
            const auto end = qScopeGuard([&] {
                if (sheet->isVisible()) {
                    sheets::done(sheet, 0);
                }
            });
            QVERIFY(other.open());
            QCOMPARE(sheet->parentWidget()->size(), other.size());
            QVERIFY(!other.close());
            QVERIFY(sheet->isVisible());
            if (QWidget* focus = other.focusWidget()) {
                focus->clearFocus();
            }
            other.press(Qt::Key_Return);
        });
    });
    QCOMPARE(sheets::exec(sheet), ok);
    QCOMPARE(other.remains(), QString());
    QVERIFY(!window.isWindow() || window.remains().isEmpty());
}

void ModalSheetsTest::closing()
{
    QFETCH(bool, input);
    CoveredWindow window;
    VantSheet* sheet = sheets::make(input, &window);
    for (const bool blocks : { true, false }) {
        auto* message = qobject_cast<VantMessageSheet*>(sheet);
        message ? message->setBlockWindowButton(blocks)
                : static_cast<VantInputSheet*>(sheet)->setBlockWindowButton(blocks);
        const auto check = [&](bool hasCloseButton) {
            const auto end = qScopeGuard([&] { sheets::done(sheet, 0); });
            QCOMPARE(window.hasCloseButton(), hasCloseButton);
            QCOMPARE(window.close(), !blocks);
        };
        soon(sheet, [&] { check(!blocks); });
        sheets::exec(sheet);
        QVERIFY(window.open());
        QCOMPARE(window.remains(), QString());
        sheet->showSheet(); // which leaves the close button alone
        check(true);
        QVERIFY(window.open());
    }
}

QTEST_MAIN(ModalSheetsTest)

#include "modal-sheets-test.moc"
