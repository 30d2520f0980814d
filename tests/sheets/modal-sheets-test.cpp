#include "sheets/covered-window.h"

#include <QtTest>

#include <functional>
#include <memory>
#include <random>

using namespace sheets;

/** How sheets open, wait and close, whatever happens to them meanwhile. */
class ModalSheetsTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void deleted_data()
    {
        addRows({ "sheet", "mask", "parent", "window", "mask, answered", "window, answered",
            "sheet, by its answer", "sheet, shown", "mask, shown", "page, shown", "window, shown" });
    }

    /** While it is waited for, or only shown. */
    void deleted()
    {
        QFETCH(bool, input);
        QFETCH(QByteArray, way);
        const QPointer<CoveredWindow> window = new CoveredWindow;
        auto* parent = new QWidget(window);
        parent->resize(400, 300);
        const QPointer<VantSheet> sheet = make(input, parent);
        const auto kill = [&] {
            if (way.endsWith("answered")) {
                window->press(Qt::Key_Return); // of which exec() has not learnt yet
            }
            const QHash<QByteArray, QObject*> victims { { "sheet", sheet }, { "mask", sheet->parent() },
                { "parent", parent }, { "page", parent }, { "window", window } };
            delete victims[way.split(',').first()];
        };
        if (way == "parent") { // which is none any more, and so the sheet waits on
            soon(qApp, [&] { soon(qApp, [&] { window->press(Qt::Key_Escape); }); });
        }
        if (way.endsWith("shown")) {
            if (way.startsWith("page")) { // that it lies in, and that had the focus
                parent->show();
                parent->setFocus();
                VantMask::createMask(sheet, parent);
            }
            sheet->showSheet();
            QVERIFY(!window->close());
            QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, { 3, 3 }); // nobody's
            QCOMPARE(window->mousePresses, 0);
            button(sheet, discard)->setFocus(); // which it loses only now
            kill();
            QVERIFY(!sheet); // a child like any other
        } else if (way.endsWith("by its answer")) {
            connect(sheet.data(), &VantSheet::finished, kill);
            soon(qApp, [&] { window->click(button(sheet, ok)); });
        } else {
            soon(qApp, kill);
        }
        if (sheet) {
            QCOMPARE(exec(sheet), way == "parent" ? discard : way.contains("answer") ? ok : 0);
            QCOMPARE(sheet.isNull(), way.startsWith("sheet"));
        }
        QCOMPARE(window.isNull(), way.startsWith("window"));
        QCOMPARE(window ? window->remains() : QString(), QString());
        QVERIFY(!sheet || sheet->isHidden());
        delete sheet;
        delete window;
    }

    /** Some hundreds of sheets, masks and windows, under sheets that wait for each other. */
    void deletedAtRandom()
    {
        for (unsigned seed = 1; seed <= 40; ++seed) {
            std::minstd_rand random(seed);
            const QPointer<CoveredWindow> window = new CoveredWindow;
            QObject context; // of the steps
            QList<QPointer<VantSheet>> made;
            int left = 30;
            const std::function<void()> step = [&] {
                const auto chance = random() % 40;
                const QPointer<VantSheet> sheet = made.value(static_cast<int>(random() % (made.size() + 1U)));
                if (--left < 0 || !window) {
                    for (VantSheet* one : qAsConst(made)) {
                        one ? done(one, 0) : void();
                    }
                    return;
                }
                soon(&context, step);
                if (chance < 16) {
                    made += make(chance < 8, window);
                    exec(made.last());
                } else if (chance < 26) {
                    delete sheet;
                } else if (chance < 34) {
                    delete (sheet ? sheet->parentWidget() : nullptr);
                } else if (chance < 39) {
                    sheet ? done(sheet, 5) : void();
                } else {
                    delete window;
                }
            };
            while (left >= 0 && window) {
                step();
            }
            QVERIFY2(!window || window->remains().isEmpty(), qPrintable(QString::number(seed)));
            for (VantSheet* one : qAsConst(made)) {
                delete one;
            }
            delete window;
        }
    }

    void endings_data() { addRows({ "hidden first", "before there is a loop", "application" }); }

    void endings()
    {
        QFETCH(bool, input);
        QFETCH(QByteArray, way);
        CoveredWindow window;
        window.button->setFocus(); // where the focus does not come by itself
        VantSheet* sheet = make(input, &window);
        QSignalSpy finished(sheet, SIGNAL(finished(int)));
        QMetaObject::Connection early;
        int returned = -1;
        soon(qApp, [&] {
            if (way == "before there is a loop") {
                early = connect(qApp, &QApplication::focusChanged, sheet, [&](auto*, const QWidget* now) {
                    disconnect(early);
                    QCOMPARE(now, input ? static_cast<QWidget*>(sheet) : labels(sheet).first());
                    done(sheet, 7);
                });
            } else if (way == "hidden first") {
                soon(sheet, [&] {
                    sheet->hide();
                    window.press(Qt::Key_F1);
                });
                soon(sheet, [&] { done(sheet, 7); });
            } else {
                soon(sheet, [] { QCoreApplication::quit(); });
            }
            returned = exec(sheet);
            QCoreApplication::exit();
        });
        QCoreApplication::exec();
        QCOMPARE(returned, way == "application" ? 0 : 7);
        QVERIFY(sheet->isHidden());
        QCOMPARE(window.keys.size(), way == "hidden first" && !input ? 1 : 0);
        QCOMPARE(finished, QList<QList<QVariant>> { { returned } });
        if (way != "hidden first") { // when the focus had found another place by itself
            QCOMPARE(QApplication::focusWidget(), window.button);
        }
        QCOMPARE(window.remains(), QString());
    }

    void twoSheets_data() { addRows({ "lower", "upper", "mask" }); }

    void twoSheets()
    {
        QFETCH(bool, input);
        QFETCH(QByteArray, way);
        CoveredWindow window;
        const std::unique_ptr<VantSheet> upper(make(!input, &window)); // below the other, until it opens
        const std::unique_ptr<VantSheet> lower(make(input, &window));
        int upperResult = -1;
        soon(qApp, [&] {
            soon(qApp, [&] {
                const auto end = qScopeGuard([&] { window.press(Qt::Key_Escape); });
                window.click(button(lower.get(), ok)); // out of reach
                if (way == "lower") {
                    done(lower.get(), 5);
                }
                QVERIFY(!window.close() && !window.hasCloseButton());
                if (way == "mask") { // of the lower one, which has no answer then
                    delete lower->parentWidget();
                }
            });
            upperResult = exec(upper.get());
            if (way == "upper") {
                soon(qApp, [&] { window.press(Qt::Key_Return); });
                QVERIFY(lower->isVisible());
                QVERIFY(lower->isAncestorOf(QApplication::focusWidget()));
                QVERIFY(!window.close() && !window.hasCloseButton());
            }
        });
        QCOMPARE(exec(lower.get()), way == "lower" ? 5 : way == "upper" ? ok : 0);
        QCOMPARE(upperResult, discard);
        QVERIFY(upper->isHidden() && lower->isHidden());
        QCOMPARE(window.remains(), QString());
    }

    void openedAgain_data() { addRows(); }

    void openedAgain()
    {
        QFETCH(bool, input);
        CoveredWindow window;
        VantSheet* sheet = make(input, &window);

        // While it is open already, and while it is waited for.
        sheet->showSheet();
        soon(qApp, [&] {
            const auto end = qScopeGuard([&] { done(sheet, 1); });
            QCOMPARE(exec(sheet), 0);
            QVERIFY(sheet->isVisible());
        });
        QCOMPARE(exec(sheet), 1);

        // Because of its answer: the first answer waits for the second. The focus comes from elsewhere now.
        window.button->setFocus();
        int inner = -1;
        connect(sheet, &VantSheet::finished, [&] {
            if (inner == -1) {
                inner = 0;
                soon(sheet, [&] { window.press(Qt::Key_Return); });
                inner = exec(sheet);
            }
        });
        soon(qApp, [&] { window.press(Qt::Key_Escape); });
        QCOMPARE(exec(sheet), discard);
        QCOMPARE(inner, ok);
        QCOMPARE(QApplication::focusWidget(), window.button);
        QCOMPARE(window.remains(), QString());
    }

    void windowChanges_data() { addRows({ "sheet", "window" }); }

    /** What was moved into another window, while it was open, is at home there. */
    void windowChanges()
    {
        QFETCH(bool, input);
        QFETCH(QByteArray, way);
        CoveredWindow other({ 900, 500 });
        CoveredWindow window;
        VantSheet* sheet = make(input, &window);
        soon(qApp, [&] {
            if (way == "sheet") {
                VantMask::createMask(sheet, &other)->show();
            } else {
                window.setParent(&other);
                window.move(0, 0); // beside the other's button
                window.show();
            }
            soon(sheet, [&] {
                const auto end = qScopeGuard([&] { sheet->isVisible() ? done(sheet, 0) : void(); });
                QVERIFY(other.open());
                QCOMPARE(sheet->parentWidget()->size(), other.size());
                QVERIFY(!other.close() && !other.hasCloseButton());
                QVERIFY(sheet->isVisible());
                if (QWidget* focus = other.focusWidget()) {
                    focus->clearFocus();
                }
                other.press(Qt::Key_Return);
            });
        });
        QCOMPARE(exec(sheet), ok);
        CoveredWindow third;
        VantMask::createMask(sheet, &third); // closed, and nothing to it
        for (CoveredWindow* left : { &third, &other, &window }) {
            QCOMPARE(left->isWindow() ? left->remains() : QString(), QString());
        }
    }

    void closing_data() { addRows(); }

    void closing()
    {
        QFETCH(bool, input);
        CoveredWindow window;
        VantSheet* sheet = make(input, &window);
        const auto block = [](VantSheet* which, bool blocks) {
            asItIs(which, [=](auto* one) { one->setBlockWindowButton(blocks); });
        };
        for (const bool blocks : { true, false }) {
            block(sheet, blocks);
            const auto check = [&](bool hasCloseButton) {
                const auto end = qScopeGuard([&] { done(sheet, 0); });
                QCOMPARE(window.hasCloseButton(), hasCloseButton);
                QCOMPARE(window.windowHandle()->close(), !blocks); // as the platform is asked to
            };
            soon(sheet, [&] { check(!blocks); });
            exec(sheet);
            QVERIFY(window.open());
            QCOMPARE(window.remains(), QString());
            sheet->showSheet(); // which leaves the close button alone
            check(true);
            QVERIFY(window.open());
        }
        // What is wanted is asked once more when it closes; the next sheet puts right what is left.
        block(sheet, true);
        soon(sheet, [&] {
            block(sheet, false);
            done(sheet, 0);
        });
        exec(sheet);
        QVERIFY(!window.hasCloseButton());
        VantSheet* next = make(input, &window);
        soon(next, [&] { done(next, 0); });
        exec(next);
        QCOMPARE(window.remains(), QString());
    }
};

QTEST_MAIN(ModalSheetsTest)

#include "modal-sheets-test.moc"
