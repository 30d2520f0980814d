#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/views/vant-filter-bar.h>

#include <QAccessible>
#include <QMenu>
#include <QSignalSpy>
#include <QStyleOptionFrame>
#include <QTest>
#include <QToolButton>

#include <functional>

class FilterBarTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void keyword();
    void opensMenu();
    void goesWithTheChoice();

private:
    QTemporaryDir userFolder;
};

namespace {

/**
 * A window with the bar, which has the focus, before a field; it counts the keys that the bar lets through.
 */
struct Window : QWidget
{
    Window()
    {
        bar->move(0, 40);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
        bar->setText(QStringLiteral("report"));
        bar->setFocus();
    }

    QAccessibleInterface* told() const { return QAccessible::queryAccessibleInterface(bar)->child(0); }

    /** The button's place, which the text keeps clear of. */
    QRect clearPlace() const
    {
        QStyleOptionFrame field;
        field.initFrom(bar);
        const QRect text = bar->style()->subElementRect(QStyle::SE_LineEditContents, &field, bar);
        return text.intersects(button->geometry()) ? QRect() : button->geometry();
    }

    void keyPressEvent(QKeyEvent* /*event*/) override { ++keysSeen; }

    int keysSeen = 0;
    QPointer<VantFilterBar> bar = new VantFilterBar(this);
    QLineEdit* after = new QLineEdit(this);
    QToolButton* button = bar->findChild<QToolButton*>();
};

/** A menu of two kinds that notes where it opens and closes again at once. */
struct Menu : QMenu
{
    Menu()
    {
        addAction(QStringLiteral("Pictures"));
        addAction(QStringLiteral("Texts"));
        const auto close = [this] {
            corners << pos();
            hide();
        };
        connect(this, &QMenu::aboutToShow, this, close, Qt::QueuedConnection);
    }

    QVector<QPoint> corners;
};

} // namespace

void FilterBarTest::initTestCase()
{
    defaulttheme::load(userFolder.path());
}

void FilterBarTest::keyword()
{
    const Window window;
    const auto px = [](int designPixels) { return designPixels * displayscale::dpi() / 96; };
    window.bar->setLayoutDirection(Qt::RightToLeft);
    for (int width : { 200, 300 }) {
        window.bar->resize(width, window.bar->height());
        QCOMPARE(window.clearPlace(), QRect(width - px(4) - px(34), px(2), px(34), px(24)));
    }
    window.bar->setLayoutDirection(Qt::LeftToRight);
    QCOMPARE(window.clearPlace().x(), px(4));

    // The button goes by the name of the bar, whenever that is given.
    window.bar->setAccessibleName(QStringLiteral("Find"));
    QCOMPARE(window.told()->text(QAccessible::Name), QStringLiteral("Find"));

    // Told with Return only.
    QSignalSpy keywords(window.bar, SIGNAL(sigKeywordChanged(QString)));
    QTest::keyClicks(window.bar, QStringLiteral("s 2017"));
    QTest::keyClick(window.bar, Qt::Key_Return);
    window.bar->clear();
    QTest::keyClick(window.bar, Qt::Key_Return);
    QCOMPARE(keywords, QList<QVariantList>({ { QStringLiteral("reports 2017") }, { QString() } }));

    // The button is no stop of its own.
    QTest::keyClick(window.bar, Qt::Key_Tab);
    QVERIFY(window.after->hasFocus());
    QTest::keyClick(window.after, Qt::Key_Backtab);
    QVERIFY(window.bar->hasFocus());
}

void FilterBarTest::opensMenu()
{
    Menu menu;
    const Window window;
    QAccessibleInterface* bar = window.told();
    const std::function<void()> ways[] { [&] { QTest::keyClick(window.bar, Qt::Key_Down); },
        [&] { QTest::mouseClick(window.button, Qt::LeftButton); },
        [&] { bar->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction()); } };
    for (const bool hasMenu : { true, false }) {
        window.bar->setMenu(hasMenu ? &menu : nullptr);
        QCOMPARE(bool(bar->state().hasPopup), hasMenu);
        const QPoint corner = window.button->mapToGlobal(QPoint(0, window.button->height()));
        for (const auto& open : ways) {
            menu.corners.clear();
            open();
            QCoreApplication::processEvents();
            QTRY_COMPARE(menu.corners, QVector<QPoint>(hasMenu ? 1 : 0, corner));
            QCOMPARE(window.focusWidget(), window.bar);
        }
    }
    QCOMPARE(window.keysSeen, 0);

    // Every other key is the field's.
    QTest::keyClick(window.bar, Qt::Key_Home);
    QCOMPARE(window.bar->cursorPosition(), 0);
    QTest::keyClick(window.bar, Qt::Key_Up);
    QCOMPARE(window.keysSeen, 1);
}

// A choice may close the whole list that the bar stands above, while the bar's key is still on the stack.
void FilterBarTest::goesWithTheChoice()
{
    Menu menu;
    const Window window;
    window.bar->setMenu(&menu);
    connect(&menu, &QMenu::aboutToHide, this, [&] { delete window.bar; });
    QTest::keyClick(window.bar, Qt::Key_Down);
    QTRY_VERIFY(!window.bar);
}

QTEST_MAIN(FilterBarTest)

#include "filter-bar-test.moc"
