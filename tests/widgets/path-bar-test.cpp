#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/widgets/vant-button-path.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

class PathBarTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void row_data();
    void row();
    void hiddenFolders_data();
    void hiddenFolders();
    void endOfOneLongName();
    void clicks_data();
    void clicks();
    void clickInsideClick();
    void keyboard();
    void focusStaysInRow();
    void changesUnderOpenMenu();
};

namespace {

int designSize(int n)
{
    return displayscale::dpi() * n / 96;
}

/** A window with the bar between two fields. */
struct Window : QWidget
{
    explicit Window(int width = 400)
    {
        auto* layout = new QVBoxLayout(this);
        for (QWidget* widget : std::initializer_list<QWidget*> { before, bar, after }) {
            layout->addWidget(widget);
        }
        setViewWidth(width);
        show();
        if (!QTest::qWaitForWindowActive(this)) {
            qFatal("The window does not become active");
        }
    }

    void setViewWidth(int width) const
    {
        bar->setFixedWidth(width + 2 * bar->frameWidth());
        bar->parentWidget()->layout()->activate();
    }

    QPushButton* button(int column) const { return qobject_cast<QPushButton*>(bar->cellWidget(0, column)); }

    QList<QPushButton*> cellWidgets() const
    {
        QList<QPushButton*> widgets;
        for (int column = 0; column < bar->columnCount(); ++column) {
            widgets << button(column);
        }
        return widgets;
    }

    QToolButton* folderButton() const { return bar->findChild<QToolButton*>(); }

    QStringList menuTexts() const
    {
        QStringList texts;
        const QList<QAction*> actions = folderButton()->menu()->actions();
        for (const QAction* action : actions) {
            texts << action->text();
        }
        return texts;
    }

    QLineEdit* before = new QLineEdit;
    QPointer<VantButtonPath> bar = new VantButtonPath;
    QLineEdit* after = new QLineEdit;
};

/** Opens the menu from the keyboard and chooses its entry number @p index. */
void chooseFromMenu(QToolButton* opener, int index)
{
    QTimer::singleShot(0, opener, [index] {
        QWidget* menu = QApplication::activePopupWidget();
        QVERIFY(qobject_cast<QMenu*>(menu));
        for (int count = 0; count <= index; ++count) {
            QTest::keyClick(menu, Qt::Key_Down);
        }
        QTest::keyClick(menu, Qt::Key_Return);
    });
    opener->setFocus(Qt::TabFocusReason);
    QTest::keyClick(opener, Qt::Key_Space);
}

/** Runs an event loop that does @p deed and goes round a few times before it ends. */
void runLoop(const std::function<void()>& deed)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, deed);
    QTimer::singleShot(20, &loop, [&loop] { loop.quit(); });
    loop.exec();
}

const QString fiveNames = QStringLiteral("hidden folder/hidden too/partly/visible name/last");

/** The row of the five names, of which the first two are hidden and the third partly. */
void showEndOf(const Window& window)
{
    window.bar->refresh(fiveNames);
    int width = -10;
    for (int column = 4; column < window.bar->columnCount(); ++column) {
        width += window.bar->columnWidth(column);
    }
    window.setViewWidth(width);
    window.bar->refresh(fiveNames);
}

void add(const char* name, const QString& path, const QString& told)
{
    QTest::newRow(name) << path << told;
}

} // namespace

void PathBarTest::initTestCase()
{
    const ThemeFolder theme;
    theme.writeImage(QStringLiteral("folder"), { 80, 80 });
    theme.writeImage(QStringLiteral("bt_next"), { 32, 32 });
    theme.writeList({ QStringLiteral("folder"), QStringLiteral("bt_next") });
    theme.initializeImages(ImageManager::EagerLoad);
    StyleManager::getInstance().initialize({ theme.write(QStringLiteral("a.style"),
        "==component.button_path==\nQTableView { border: 1px solid black }\n"
        "==component.button_path_name_button==\nQPushButton { border: none }\n"
        "==component.button_path_arrow==\nQPushButton { border: none }\n"
        "==component.button_path_change_folder_btn==\nQToolButton { border: none }\n"
        "==component.menu==\nQMenu { color: black }\n") });
}

void PathBarTest::row_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("told");

    add("empty", QString(), QString());
    add("separators", QStringLiteral("////"), QString());
    add("separators around", QStringLiteral("/a//b/"), QStringLiteral("a/b"));
    add("plain", QStringLiteral("a/b"), QStringLiteral("a/b"));
    for (const char* name : { "R&D", "&", "A&&B", "&&&", "a b/ ", " a", "\xF0\x9F\x93\x81/\xC3\xA9",
             "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D/b" }) {
        add(name, QString::fromUtf8(name), QString::fromUtf8(name));
    }
    const QString deep = QStringLiteral("part/").repeated(300);
    add("300 parts", deep, deep.chopped(1));
    const QString longName(20000, QLatin1Char('m'));
    add("20,000 characters", QStringLiteral("/a/") + longName, QStringLiteral("a/") + longName);
}

void PathBarTest::row()
{
    QFETCH(QString, path);
    QFETCH(QString, told);

    const Window window;
    QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
    window.bar->slotUpdatePath(QStringLiteral("another/path/to/begin/with"));
    window.bar->slotUpdatePath(path);
    const QStringList names = told.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    QCOMPARE(window.bar->columnCount(), qMax(0, 2 * names.size() - 1));
    QCOMPARE(window.bar->getPath(-1), QString());
    QCOMPARE(window.bar->height(), designSize(28));
    int rowWidth = 0;
    for (int i = 0; i < names.size(); ++i) {
        const QPushButton* button = window.button(2 * i);
        const int textWidth = QFontMetrics(QPushButton().font()).horizontalAdvance(names.at(i));
        QCOMPARE(button->text(), QString(names.at(i)).replace(QLatin1Char('&'), QLatin1String("&&")));
        QCOMPARE(button->size(), QSize(designSize(textWidth + 16), designSize(26)));
        // What is wider than Qt lets a column be has all that it can get.
        QCOMPARE(window.bar->columnWidth(2 * i),
            qMin(button->width(), window.bar->horizontalHeader()->maximumSectionSize()));
        QCOMPARE(window.bar->getPath(2 * i), QStringList(names.mid(0, i + 1)).join(QLatin1Char('/')));
        rowWidth += button->width();
    }
    for (int column = 1; column < window.bar->columnCount(); column += 2) {
        QCOMPARE(window.bar->columnWidth(column), designSize(6));
        QCOMPARE(window.button(column)->size(), QSize(designSize(6), designSize(28)));
        QVERIFY(!window.button(column)->icon().isNull());
        window.button(column)->click();
        rowWidth += designSize(6);
    }
    QCOMPARE(window.folderButton()->isVisible(), rowWidth > 400);
    QCOMPARE(spy.count(), 0);

    if (!names.isEmpty()) {
        QTest::mouseClick(window.button(window.bar->columnCount() - 1), Qt::LeftButton);
        QCOMPARE(spy.takeFirst(), QVariantList { told });
    }
}

void PathBarTest::hiddenFolders_data()
{
    // What cannot be shown, in whole widths of a name and an arrow and pixels beside, and the folders listed.
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("listed");

    QTest::newRow("wider than the row") << 0 << -1 << 0;
    QTest::newRow("exactly fits") << 0 << 0 << 0;
    QTest::newRow("one pixel short") << 0 << 1 << 1;
    QTest::newRow("second begins") << 1 << 0 << 2;
    QTest::newRow("second partly hidden") << 1 << 1 << 2;
    QTest::newRow("first hidden, arrow not") << 1 << -designSize(6) << 2;
    QTest::newRow("last pixel of first not hidden") << 1 << -designSize(6) - 1 << 1;
    QTest::newRow("last one alone") << 4 << 10 << 5;
}

void PathBarTest::hiddenFolders()
{
    QFETCH(int, steps);
    QFETCH(int, pixels);
    QFETCH(int, listed);

    const QStringList names { QStringLiteral("R&D 1"), QStringLiteral("R&D 2"), QStringLiteral("R&D 3"),
        QStringLiteral("R&D 4"), QStringLiteral("R&D 5") };
    const QString path = names.join(QLatin1Char('/'));
    const Window window;
    window.bar->refresh(path);
    const int step = window.bar->columnWidth(0) + designSize(6);
    const int viewWidth = names.size() * step - designSize(6) - steps * step - pixels;
    window.setViewWidth(viewWidth);
    window.bar->refresh(path);

    QCOMPARE(window.folderButton()->isVisible(), listed > 0);
    QCOMPARE(window.menuTexts(),
        QStringList(names.mid(0, listed)).replaceInStrings(QStringLiteral("&"), QStringLiteral("&&")));
    QCOMPARE(window.folderButton()->geometry(),
        QRect(designSize(1), designSize(1), designSize(26), designSize(26)));
    const QPushButton* last = window.button(8);
    QTRY_COMPARE(last->geometry().right(), qMin(viewWidth, last->geometry().right() + 1) - 1);
    if (listed > 0) {
        QCOMPARE(last->geometry().right() + 1, viewWidth);
    }

    QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
    for (int index = 0; index < listed; ++index) {
        chooseFromMenu(window.folderButton(), index);
        QCOMPARE(
            spy.takeFirst(), QVariantList { QStringList(names.mid(0, index + 1)).join(QLatin1Char('/')) });
    }

    // A wider bar shows the whole row with its next refresh, a second look lists no folder twice.
    window.bar->updateColumnSize();
    QCOMPARE(window.menuTexts().size(), listed);
    window.setViewWidth(6 * step);
    window.bar->refresh(path);
    QVERIFY(window.folderButton()->isHidden());
    QCOMPARE(window.menuTexts(), QStringList());
}

void PathBarTest::endOfOneLongName()
{
    const Window window;
    window.bar->refresh(QString(500, QLatin1Char('w')));
    QCOMPARE(window.bar->horizontalScrollBar()->value(), window.bar->columnWidth(0) - 400);
    QTRY_COMPARE(window.button(0)->geometry().right() + 1, 400);
}

void PathBarTest::clicks_data()
{
    QTest::addColumn<bool>("fromMenu");
    QTest::addColumn<bool>("inLoop");
    QTest::addColumn<bool>("deletesBar");

    for (const bool fromMenu : { false, true }) {
        for (const bool inLoop : { false, true }) {
            for (const bool deletesBar : { false, true }) {
                QTest::addRow("%s, %s %s", fromMenu ? "menu" : "button", deletesBar ? "delete" : "refresh",
                    inLoop ? "in a loop" : "at once")
                    << fromMenu << inLoop << deletesBar;
            }
        }
    }
}

// What an application does in its slot: the widgets of the row go at once, but for what was clicked.
void PathBarTest::clicks()
{
    QFETCH(bool, fromMenu);
    QFETCH(bool, inLoop);
    QFETCH(bool, deletesBar);

    const Window window(150);
    window.bar->refresh(QStringLiteral("first folder/second folder/third folder"));
    QList<QPointer<QObject>> others { window.button(0), window.button(1), window.button(3),
        window.folderButton()->menu()->actions().at(0) };
    const QPointer<QPushButton> button = window.button(2);
    const QPointer<QAction> action = window.folderButton()->menu()->actions().at(1);
    QObject* clicked = fromMenu ? static_cast<QObject*>(action) : button;
    const QPointer<QObject> kept = clicked;

    QStringList told;
    bool keptInSlot = false;
    bool othersGone = false;
    bool hiddenInSlot = false;
    connect(window.bar, &VantButtonPath::sigUpdatePath, this, [&](const QString& path) {
        told << path;
        const auto deed = [&] {
            if (deletesBar) {
                delete window.bar;
            } else {
                window.bar->refresh(path);
                othersGone = std::none_of(others.begin(), others.end(), [](auto& other) { return other; });
            }
        };
        if (inLoop) {
            runLoop(deed);
        } else {
            deed();
        }
        keptInSlot = !kept.isNull();
        hiddenInSlot = fromMenu || (button && button->isHidden());
    });
    if (fromMenu) {
        chooseFromMenu(window.folderButton(), 1);
    } else {
        QTest::mouseClick(window.button(2), Qt::LeftButton);
    }

    QCOMPARE(told, QStringList(QStringLiteral("first folder/second folder")));
    QVERIFY(keptInSlot);
    QVERIFY(hiddenInSlot);
    QTRY_VERIFY(!kept);
    if (!deletesBar) {
        QVERIFY(othersGone);
        QCOMPARE(window.bar->columnCount(), 3);
        QCOMPARE(window.bar->findChildren<QPushButton*>().size(), 3);
        QTest::mouseClick(window.button(2), Qt::LeftButton);
        QCOMPARE(told.size(), 2);
    }
}

// The slot of a click runs a loop in which the next one comes, and the bar goes in the slot of that.
void PathBarTest::clickInsideClick()
{
    const Window window(150);
    window.bar->refresh(QStringLiteral("first folder/second folder/third folder"));
    QList<QPointer<QPushButton>> clicked;
    int depth = 0;
    connect(window.bar, &VantButtonPath::sigUpdatePath, this, [&](const QString& path) {
        const int level = ++depth;
        if (level == 3) {
            delete window.bar;
            return;
        }
        runLoop([&] {
            window.bar->refresh(path);
            clicked << window.button(0);
            window.button(0)->click();
        });
        QVERIFY(clicked.at(level - 1));
    });
    clicked << window.button(2);
    window.button(2)->click();
    QCOMPARE(depth, 3);
    QVERIFY(!window.bar);
    QCOMPARE(clicked.size(), 3);
    for (const QPointer<QPushButton>& button : clicked) {
        QTRY_VERIFY(!button);
    }
}

void PathBarTest::keyboard()
{
    const Window window;
    showEndOf(window);
    QVERIFY(window.folderButton()->isVisible());
    window.before->setFocus();
    QList<QWidget*> visited;
    for (int count = 0; count < 10 && QApplication::focusWidget() != window.after; ++count) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited << QApplication::focusWidget();
    }
    QCOMPARE(visited,
        (QList<QWidget*> {
            window.folderButton(), window.button(4), window.button(6), window.button(8), window.after }));
    QTest::keyClick(window.after, Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget(), window.button(8));
    QTest::keyClick(window.button(8), Qt::Key_Left);
    QCOMPARE(QApplication::focusWidget(), window.button(6));

    QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
    for (const Qt::Key key : { Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter }) {
        QTest::keyClick(window.button(6), key);
        QCOMPARE(
            spy.takeFirst(), QVariantList { QStringLiteral("hidden folder/hidden too/partly/visible name") });
    }
}

void PathBarTest::focusStaysInRow()
{
    const Window window;
    connect(window.bar, SIGNAL(sigUpdatePath(QString)), window.bar, SLOT(slotUpdatePath(QString)));
    QSignalSpy lost(window.before, &QLineEdit::editingFinished);
    showEndOf(window);
    window.button(6)->setFocus();
    QTest::keyClick(window.button(6), Qt::Key_Space);
    QCOMPARE(window.bar->columnCount(), 7);
    QCOMPARE(window.focusWidget(), window.button(6));
    chooseFromMenu(window.folderButton(), 1);
    QCOMPARE(window.bar->columnCount(), 3);
    QCOMPARE(window.focusWidget(), window.button(2));

    // Through an empty row, and from a name that is hidden then to the menu that it is in.
    window.bar->refresh(QString());
    window.bar->refresh(QStringLiteral("first"));
    QCOMPARE(window.focusWidget(), window.button(0));
    window.bar->refresh(fiveNames);
    QCOMPARE(window.focusWidget(), window.folderButton());
    QCOMPARE(lost.count(), 0);

    window.after->setFocus();
    window.bar->refresh(QStringLiteral("first"));
    QCOMPARE(window.focusWidget(), window.after);
}

void PathBarTest::changesUnderOpenMenu()
{
    const Window window(150);
    for (const bool deletesBar : { false, true }) {
        window.bar->refresh(QStringLiteral("first folder/second folder/third folder"));
        QTimer::singleShot(0, this, [&] {
            QVERIFY(QApplication::activePopupWidget());
            if (deletesBar) {
                delete window.bar;
            } else {
                window.bar->refresh(QStringLiteral("a"));
            }
            QVERIFY(!QApplication::activePopupWidget());
        });
        QTest::keyClick(window.folderButton(), Qt::Key_Space);
        QVERIFY(deletesBar ? !window.bar : window.folderButton()->isHidden());
    }
}

QTEST_MAIN(PathBarTest)

#include "path-bar-test.moc"
