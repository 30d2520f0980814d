#include "views/view-test.h"

#include <QAccessible>

#include <functional>

namespace {

/** A window with the bar, which has the focus, before a field; it counts the keys let through. */
struct Window : QWidget
{
    Window()
    {
        bar->move(0, 40);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
        bar->setText("report");
        bar->setFocus();
    }

    void keyPressEvent(QKeyEvent* /*event*/) override { ++keysSeen; }

    int keysSeen = 0;
    QPointer<VantFilterBar> bar = new VantFilterBar(this);
    QLineEdit* after = new QLineEdit(this);
    QToolButton* button = bar->findChild<QToolButton*>();
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(bar)->child(0);
};

} // namespace

class FilterBarTest : public ViewTest
{
    Q_OBJECT

private Q_SLOTS:

    void keyword()
    {
        const Window window;
        VantFilterBar* bar = window.bar;
        bar->setLayoutDirection(Qt::RightToLeft);
        for (int width : { 200, 300 }) {
            bar->resize(width, bar->height());
            QCOMPARE(window.button->geometry(), QRect(width - px(4) - px(34), px(2), px(34), px(24)));
        }
        bar->setLayoutDirection(Qt::LeftToRight);
        QCOMPARE(window.button->x(), px(4));
        QCOMPARE(window.button->cursor().shape(), Qt::ArrowCursor);
        bar->setAccessibleName("Find");
        QCOMPARE(window.told->text(QAccessible::Name), QString("Find"));

        QSignalSpy keywords(bar, SIGNAL(sigKeywordChanged(QString)));
        QTest::keyClicks(bar, "s 2017");
        QTest::keyClick(bar, Qt::Key_Return);
        bar->clear();
        QTest::keyClick(bar, Qt::Key_Return);
        QCOMPARE(keywords, QList<QVariantList>({ { "reports 2017" }, { "" } }));
        QTest::keyClick(bar, Qt::Key_Tab); // in one step, past the button
        QVERIFY(window.after->hasFocus());
    }

    void opensMenu()
    {
        QMenu menu;
        menu.addAction("Pictures");
        const Window window;
        QVector<QPoint> corners;
        const auto close = [&] {
            corners << menu.pos();
            menu.hide();
        };
        connect(&menu, &QMenu::aboutToShow, &menu, close, Qt::QueuedConnection);
        const auto ask = [&] { window.told->actionInterface()->doAction("ShowMenu"); };
        const std::function<void()> ways[] { [&] { QTest::keyClick(window.bar, Qt::Key_Down); },
            [&] { QTest::mouseClick(window.button, Qt::LeftButton); }, ask };
        for (const bool hasMenu : { true, false }) {
            window.bar->setMenu(hasMenu ? &menu : nullptr);
            QCOMPARE(bool(window.told->state().hasPopup), hasMenu);
            const QPoint corner = window.button->mapToGlobal(QPoint(0, window.button->height()));
            for (const auto& open : ways) {
                corners.clear();
                open();
                QCoreApplication::processEvents();
                QTRY_COMPARE(corners, QVector<QPoint>(hasMenu ? 1 : 0, corner));
                QCOMPARE(window.focusWidget(), window.bar);
            }
        }
        QTest::keyClick(window.bar, Qt::Key_Up); // the only one that the bar has no use for
        QCOMPARE(window.keysSeen, 1);

        // A choice may close the whole list that the bar stands above, while its key is still on the stack.
        window.bar->setMenu(&menu);
        connect(&menu, &QMenu::aboutToHide, this, [&] { delete window.bar; });
        QTest::keyClick(window.bar, Qt::Key_Down);
        QTRY_VERIFY(!window.bar);
    }
};

QTEST_MAIN(FilterBarTest)

#include "filter-bar-test.moc"
