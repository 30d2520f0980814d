#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/pointer.h"
#include "support/theme-folder.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/views/vant-filter-bar.h>

#include <QMenu>
#include <QSignalSpy>
#include <QToolButton>

#include <memory>

class FilterBarTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void look();
    void reportsKeywordOnReturnOnly();
    void opensMenu_data();
    void opensMenu();
    void staysShutWithoutMenu_data();
    void staysShutWithoutMenu();
    void goesWithTheChoice();
    void tabLeavesInOneStep();
};

namespace {

int px(int designPixels)
{
    return designPixels * displayscale::dpi() / 96;
}

/** A window with the bar, which has the focus, between two fields; it counts the keys that the bar lets
 * through. */
struct Window : QWidget
{
    Window()
    {
        resize(300, 200);
        before->setGeometry(0, 0, 200, 20);
        bar->setGeometry(0, 40, 200, 20);
        after->setGeometry(0, 120, 200, 20);
        show();
        if (!QTest::qWaitForWindowActive(this)) {
            qFatal("The window does not become active");
        }
        bar->setText(QStringLiteral("report"));
        bar->setFocus();
    }

    QToolButton* button() const { return bar->findChild<QToolButton*>(); }

    void keyPressEvent(QKeyEvent* event) override
    {
        ++keysSeen;
        QWidget::keyPressEvent(event);
    }

    int keysSeen = 0;
    QLineEdit* before = new QLineEdit(this);
    VantFilterBar* bar = new VantFilterBar(this);
    QLineEdit* after = new QLineEdit(this);
};

/** A menu of two kinds that notes where it opens and closes again at once. */
struct Menu : QMenu
{
    Menu()
    {
        addAction(QStringLiteral("Pictures"));
        addAction(QStringLiteral("Texts"));
        connect(
            this, &QMenu::aboutToShow, this,
            [this] {
                ++openings;
                corner = pos();
                hide();
            },
            Qt::QueuedConnection);
    }

    int openings = 0;
    QPoint corner;
};

void open(const Window& window, const QByteArray& way)
{
    if (way == "key") {
        QTest::keyClick(window.bar, Qt::Key_Down);
    } else {
        QTest::mouseClick(window.button(), Qt::LeftButton);
    }
}

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
        "==component.filter_bar_padding==\nQLineEdit { color: blue; }\n"
        "==component.filter_search_button==\nQToolButton { border: none; }") });
}

void FilterBarTest::look()
{
    const Window window;
    QCOMPARE(window.button()->geometry(), QRect(px(4), px(2), px(34), px(24)));
    QCOMPARE(window.button()->cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(window.button()->styleSheet(), QStringLiteral("\nQToolButton { border: none; }"));
    QCOMPARE(window.bar->height(), px(28));
    QCOMPARE(
        window.bar->styleSheet(), QStringLiteral("\nQLineEdit { color: red; }\nQLineEdit { color: blue; }"));
    QVERIFY(!window.bar->testAttribute(Qt::WA_MacShowFocusRect));
    QCOMPARE(VantFilterBar().parent(), nullptr);
}

void FilterBarTest::reportsKeywordOnReturnOnly()
{
    const Window window;
    QSignalSpy keywords(window.bar, SIGNAL(sigKeywordChanged(QString)));
    QTest::keyClicks(window.bar, QStringLiteral("s 2017"));
    window.bar->setText(QStringLiteral("other"));
    window.bar->clear();
    QTest::keyClicks(window.bar, QStringLiteral("a"));
    QCOMPARE(keywords.size(), 0);

    QTest::keyClick(window.bar, Qt::Key_Return);
    QTest::keyClick(window.bar, Qt::Key_Enter);
    window.bar->clear();
    QTest::keyClick(window.bar, Qt::Key_Return);
    QStringList seen;
    for (const QList<QVariant>& arguments : qAsConst(keywords)) {
        seen << arguments.first().toString();
    }
    QCOMPARE(seen, QStringList({ QStringLiteral("a"), QStringLiteral("a"), QString() }));
}

void FilterBarTest::opensMenu_data()
{
    QTest::addColumn<QByteArray>("way");
    QTest::newRow("by key") << QByteArray("key");
    QTest::newRow("by mouse") << QByteArray("mouse");
}

void FilterBarTest::opensMenu()
{
    QFETCH(QByteArray, way);
    Menu menu;
    const Window window;
    window.bar->setMenu(&menu);
    QSignalSpy keywords(window.bar, SIGNAL(sigKeywordChanged(QString)));
    open(window, way);
    QTRY_COMPARE(menu.openings, 1);
    QCOMPARE(menu.corner, window.button()->mapToGlobal(QPoint(0, window.button()->height())));
    QCOMPARE(window.bar->text(), QStringLiteral("report"));
    QCOMPARE(window.keysSeen, 0);
    QCOMPARE(window.focusWidget(), window.bar);
    QCOMPARE(keywords.size(), 0);
}

void FilterBarTest::staysShutWithoutMenu_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("never had one") << QByteArray();
    QTest::newRow("taken away") << QByteArray("null");
    QTest::newRow("deleted by its owner") << QByteArray("delete");
}

void FilterBarTest::staysShutWithoutMenu()
{
    QFETCH(QByteArray, before);
    auto menu = std::make_unique<Menu>();
    const Window window;
    if (!before.isEmpty()) {
        window.bar->setMenu(menu.get());
    }
    if (before == "null") {
        window.bar->setMenu(nullptr);
    } else if (before == "delete") {
        menu.reset();
    }
    for (const char* way : { "key", "mouse" }) {
        open(window, way);
        QCoreApplication::processEvents();
        QVERIFY(!menu || menu->openings == 0);
    }
    QCOMPARE(window.keysSeen, 0);
    QCOMPARE(window.bar->text(), QStringLiteral("report"));

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
    auto window = std::make_unique<Window>();
    window->bar->setMenu(&menu);
    connect(&menu, &QMenu::aboutToHide, this, [&] { delete window->bar; });
    open(*window, "key");
    QTRY_COMPARE(menu.openings, 1);
    QVERIFY(!window->findChild<VantFilterBar*>());
}

void FilterBarTest::tabLeavesInOneStep()
{
    const Window window;
    QTest::keyClick(window.bar, Qt::Key_Tab);
    QVERIFY(window.after->hasFocus());
    QTest::keyClick(window.after, Qt::Key_Backtab);
    QVERIFY(window.bar->hasFocus());
}

QTEST_MAIN(FilterBarTest)

#include "filter-bar-test.moc"
