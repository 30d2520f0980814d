#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/views/vant-filter-bar.h>

#include <QAccessible>
#include <QMenu>
#include <QSignalSpy>
#include <QStyleOptionFrame>
#include <QTest>
#include <QToolButton>

class FilterBarTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void keyword();
    void opensMenu();
    void staysShutWithoutMenu();
    void goesWithTheChoice();
};

namespace {

/** A window with the bar, which has the focus, before a field; it counts the keys that the bar lets
 * through. */
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

    void open(bool byKey) const
    {
        if (byKey) {
            QTest::keyClick(bar, Qt::Key_Down);
        } else {
            QTest::mouseClick(button, Qt::LeftButton);
        }
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
    const ThemeFolder theme;
    for (const char* state : { "", "_hover", "_click", "_disable" }) {
        theme.writeImage(QStringLiteral("bt_search_dropdown") + state, { 112, 64 });
    }
    theme.writeList({ QStringLiteral("bt_search_dropdown") });
    theme.initializeImages(ImageManager::EagerLoad);
    StyleManager::getInstance().initialize({ theme.write(QStringLiteral("a.style"),
        "==component.icon_button==\nQToolButton { border: 9px solid red; }\n"
        "==component.lineedit==\nQLineEdit { color: red; }\n"
        "==component.filter_bar_padding==\nQLineEdit { padding-left: 38px; }\n"
        "==component.filter_search_button==\nQToolButton { border: none; }") });
}

void FilterBarTest::keyword()
{
    const Window window;
    const auto px = [](int designPixels) { return designPixels * displayscale::dpi() / 96; };
    QCOMPARE(window.clearPlace(), QRect(px(4), px(2), px(34), px(24)));
    QCOMPARE(window.button->styleSheet(), QStringLiteral("\nQToolButton { border: none; }"));
    QCOMPARE(window.bar->height(), px(28));
    QCOMPARE(window.bar->styleSheet(),
        getStyleSheet("component.lineedit", false) + getStyleSheet("component.filter_bar_padding", false));
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
    for (const QByteArray how : { "key", "mouse", "screen reader" }) {
        Menu menu;
        const Window window;
        window.bar->setMenu(&menu);
        if (how == "screen reader") {
            QVERIFY(window.told()->state().hasPopup);
            window.told()->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
        } else {
            window.open(how == "key");
        }
        const QPoint corner = window.button->mapToGlobal(QPoint(0, window.button->height()));
        QTRY_COMPARE(menu.corners, QVector<QPoint> { corner });
        QCOMPARE(window.keysSeen, 0);
        QCOMPARE(window.focusWidget(), window.bar);
    }
}

void FilterBarTest::staysShutWithoutMenu()
{
    const Window window;
    Menu takenAway;
    window.bar->setMenu(&takenAway);
    window.bar->setMenu(nullptr);
    for (const bool byKey : { false, true }) {
        window.open(byKey);
        QCoreApplication::processEvents();
        QVERIFY(takenAway.corners.isEmpty());
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
    window.open(true);
    QTRY_VERIFY(!window.bar);
}

QTEST_MAIN(FilterBarTest)

#include "filter-bar-test.moc"
