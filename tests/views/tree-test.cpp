#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/pointer.h"
#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QValidator>
#include <QtTest>

#include <utility>

class TreeTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void grounds();
    void hoverFollowsPointer();
    void goesFromUnderPointer();
    void scrollsSideways();
    void focus();
    void keysAndClicks();
    void renaming();
    void goesWithEscape();
    void comparison();
};

namespace {

const QColor selectedGround(0, 200, 0);
const QColor hoverGround(0, 0, 200);
const QColor white(Qt::white);

/** A shown tree with the kit's delegate that is white where no row has a ground. */
struct Tree : VantTreeWidget
{
    explicit Tree(int frame = 1)
    {
        setStyleSheet(QStringLiteral("QTreeView { border: %1px solid gray; background: white; color: black;"
                                     " selection-background-color: transparent; outline: none }"
                                     "QTreeView:disabled { color: red; selection-color: red }")
                          .arg(frame));
        setBackgroundColor(selectedGround, hoverGround);
        setHeaderHidden(true);
        setItemDelegate(&delegate);
        resize(300, 400);
    }

    QTreeWidgetItem* add(const QString& text, QTreeWidgetItem* parent = nullptr)
    {
        auto* item = new QTreeWidgetItem({ text });
        parent ? parent->addChild(item) : addTopLevelItem(item);
        return item;
    }

    /** In the tree as it is shown, with the focus. */
    QTreeWidgetItem* addEditable(const QString& text)
    {
        QTreeWidgetItem* item = add(text);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        showActive();
        setCurrentItem(item);
        return item;
    }

    void addRows(int count)
    {
        for (int row = 0; row < count; ++row) {
            add(QStringLiteral("Row %1").arg(row));
        }
    }

    void showActive()
    {
        show();
        activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }

    ItemDelegate delegate;
};

/** A picture of @p widget with its colours as they are on the screen, by the pixels of Qt. */
QImage picture(const QPixmap& pixmap, const QWidget* widget)
{
    return pixmap.toImage().scaled(widget->size());
}

bool hasRedText(const Tree& tree, const QTreeWidgetItem* item)
{
    const QImage image = picture(tree.viewport()->grab(), tree.viewport()).copy(tree.visualItemRect(item));
    for (int place = 0; place < image.width() * image.height(); ++place) {
        const QColor color = image.pixelColor(place % image.width(), place / image.width());
        if (color.red() > 150 && color.green() < 100) {
            return true;
        }
    }
    return false;
}

} // namespace

void TreeTest::initTestCase()
{
    const ThemeFolder theme;
    theme.initializeImages(ImageManager::LazyLoad);
    StyleManager::getInstance().initialize(
        { theme.write(QStringLiteral("kit.style"), "==component.tree_item==\nQLineEdit { margin: 3px }") });
}

void TreeTest::grounds()
{
    pointer::moveAway();
    Tree tree;
    tree.setRootIsDecorated(false);
    tree.addRows(3);
    QTreeWidgetItem* item = tree.topLevelItem(1);
    item->setFlags(item->flags() & ~Qt::ItemIsUserCheckable);
    tree.showActive();
    tree.clearSelection();
    const QRect row = tree.visualItemRect(item);
    const int right = tree.viewport()->width() - displayscale::pick(3, 4, 5, 6);
    const auto colorAt = [&](int x, int y) {
        return picture(tree.viewport()->grab(), tree.viewport()).pixelColor(x, row.top() + y);
    };
    QCOMPARE(row.height(), displayscale::pick(28, 35, 42, 56));
    QCOMPARE(colorAt(right - 3, 4), white);
    QTest::mouseMove(tree.viewport(), row.center());
    QCOMPARE(colorAt(right - 3, 4), hoverGround);
    item->setSelected(true);
    QCOMPARE(colorAt(right - 3, 4), selectedGround);
    QCOMPARE(colorAt(right + 1, 4), white);
    QVERIFY(colorAt(1, 0).lightness() > 200); // the corner is round and the edge white
    QVERIFY(hasRedText(tree, item));
    QVERIFY(!hasRedText(tree, tree.topLevelItem(2)));

    tree.setBackgroundColor({}, {});
    QCOMPARE(colorAt(right - 3, 4), QColor(Qt::black));
    item->setSelected(false);
    QCOMPARE(colorAt(right - 3, 4), QColor(Qt::black));
}

// What is on the screen, not what a repaint of everything would show.
void TreeTest::hoverFollowsPointer()
{
    for (const bool header : { false, true }) {
        Tree tree(header ? 1 : 0);
        tree.setHeaderHidden(!header);
        tree.addRows(100);
        tree.showActive();
        tree.clearSelection();
        QWidget* viewport = tree.viewport();
        const auto hovered = [&] {
            const QImage image = picture(tree.screen()->grabWindow(tree.winId()), &tree);
            QStringList rows;
            for (int y = 6; y < viewport->height(); y += displayscale::pick(28, 35, 42, 56)) {
                if (image.pixelColor(viewport->mapTo(&tree, QPoint(200, y))) == hoverGround) {
                    rows << tree.itemAt(0, y)->text(0);
                }
            }
            return rows.join(QLatin1Char(','));
        };
        // The tree's own coordinates count, with the rows one pixel lower.
        const auto expected = [&](int y) { return tree.itemAt(0, y + viewport->y() - 1)->text(0); };
        for (int step = 0; step < 120; ++step) {
            const int y = step < 60 ? 20 + step : 140 - step;
            QCursor::setPos(viewport->mapToGlobal({ 100, y }));
            QTRY_COMPARE(hovered(), expected(y));
        }
        tree.verticalScrollBar()->setValue(7);
        QTRY_COMPARE(hovered(), expected(21));
        pointer::moveAway();
        QTRY_COMPARE(hovered(), QString());
    }
}

/** While its window stays. */
void TreeTest::goesFromUnderPointer()
{
    QWidget window;
    auto* tree = new VantTreeWidget(&window);
    tree->addTopLevelItem(new QTreeWidgetItem({ QStringLiteral("Row") }));
    tree->resize(300, 200);
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (int y : { 10, 12, 14 }) {
        QTest::mouseMove(tree->viewport(), { 20, y });
        QCoreApplication::processEvents();
    }
    QTRY_VERIFY(tree->viewport()->underMouse());
    delete tree;
    pointer::moveAway();
}

void TreeTest::scrollsSideways()
{
    const auto scrolled = [](int left, int width, int before) {
        Tree tree;
        tree.setIndentation(left + before);
        QTreeWidgetItem* parent = tree.add(QStringLiteral("Folder"));
        QTreeWidgetItem* item = tree.add(QStringLiteral("Deep"), parent);
        tree.setRootIsDecorated(false);
        parent->setExpanded(true);
        tree.header()->setStretchLastSection(false);
        tree.setColumnWidth(0, 2000);
        tree.resize(width + 2, 200);
        tree.show();
        tree.horizontalScrollBar()->setValue(before);
        tree.updateScrollArea(item);
        tree.updateScrollArea(nullptr);
        return tree.horizontalScrollBar()->value();
    };
    const int room = displayscale::pick(100, 125, 150, 200);
    QCOMPARE(scrolled(300 - room, 300, 20), 20);
    QCOMPARE(scrolled(301 - room, 300, 60), 60 + 301 - room - 150);
    QCOMPARE(scrolled(250, 301, 40), 40 + 250 - 150);
    QCOMPARE(scrolled(-20, 300, 400), 400 - 20 - 150);
}

void TreeTest::focus()
{
    Tree tree;
    QStringList changes;
    connect(&tree, &QTreeWidget::currentItemChanged, &tree,
        [&](const QTreeWidgetItem* item) { changes << (item ? item->text(0) : QStringLiteral("none")); });
    const auto focusAgain = [&] {
        changes.clear();
        tree.clearFocus();
        tree.setFocus();
        return changes.join(QLatin1Char(','));
    };
    tree.showActive();
    QCOMPARE(focusAgain(), QString());
    tree.addRows(50);
    tree.scrollToItem(tree.topLevelItem(10), QTreeWidget::PositionAtTop);
    QCOMPARE(focusAgain(), QStringLiteral("Row 10"));
    tree.setCurrentItem(tree.topLevelItem(12));
    QCOMPARE(focusAgain(), QStringLiteral("none,Row 12"));
    QVERIFY(tree.currentItem()->isSelected());

    // Scrolled both ways it goes over the row before; a press meets the row that is seen all the same.
    tree.header()->setStretchLastSection(false);
    tree.setColumnWidth(0, 1000);
    const auto scroll = [&] {
        tree.setCurrentItem(tree.topLevelItem(0));
        tree.scrollToItem(tree.topLevelItem(30), QTreeWidget::PositionAtTop);
        tree.horizontalScrollBar()->setValue(50);
    };
    scroll();
    QCOMPARE(focusAgain(), QStringLiteral("Row 29,Row 0"));
    QCOMPARE(tree.itemAt(0, 0)->text(0), QStringLiteral("Row 0"));
    scroll();
    tree.clearFocus();
    QTest::mouseClick(tree.windowHandle(), Qt::LeftButton, {}, { 50, 50 });
    QTreeWidgetItem* doomed = tree.currentItem();
    QCOMPARE(doomed->text(0), QStringLiteral("Row 31"));

    // Whoever hears of the change may delete what was current.
    connect(&tree, &QTreeWidget::currentItemChanged, &tree, [&](QTreeWidgetItem*, QTreeWidgetItem* previous) {
        delete (previous == doomed ? std::exchange(doomed, nullptr) : nullptr);
    });
    focusAgain();
    QCOMPARE(tree.topLevelItemCount(), 49);
}

void TreeTest::keysAndClicks()
{
    QVERIFY(g_check_rect.isNull());
    Tree tree;
    tree.addRows(5);
    QTreeWidgetItem* item = tree.add(QStringLiteral("Checked"), tree.topLevelItem(4));
    item->setCheckState(0, Qt::Unchecked);
    tree.expandAll();
    tree.showActive();
    QStringList seen;
    // What the tree does comes after the signal.
    const auto note = [&](const QString& what) { seen << what + tree.currentItem()->text(0); };
    connect(&tree, &VantTreeWidget::sigKeyPressEvent, &tree,
        [&](QKeyEvent* event) { note(QString::number(event->key(), 16) + QStringLiteral(" at ")); });
    connect(&tree, &VantTreeWidget::sigMouseRightClickEvent, &tree, [&](QMouseEvent* event) {
        note(QStringLiteral("click on %1 at ").arg(tree.itemAt(event->pos())->text(0)));
    });
    QTest::keyClick(&tree, Qt::Key_Down);
    for (const Qt::MouseButton button : { Qt::LeftButton, Qt::RightButton }) {
        const QRect row = tree.visualItemRect(tree.topLevelItem(button == Qt::LeftButton ? 4 : 3));
        QTest::mouseClick(tree.viewport(), button, {}, row.center());
    }
    QCOMPARE(seen, QStringList({ "1000015 at Row 0", "click on Row 3 at Row 4" }));

    tree.grab();
    QVERIFY(tree.visualItemRect(item).contains(g_check_rect));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, g_check_rect.center());
    QCOMPARE(item->checkState(0), Qt::Checked);
}

void TreeTest::renaming()
{
    const QVector<QStringList> rows { { "old", ".a.b", "a.b" },
        { "old", "\\a/b:c*d?e\"f<g>h|i", "abcdefghi" }, { "old", "new", "old" },
        { ".git", "", ".git" } }; // the last breaks the rule itself
    for (const QStringList& row : rows) {
        const QString& name = row[0];
        const QString& result = row[2];
        Tree tree;
        QTreeWidgetItem* item = tree.addEditable(name);
        int escapes = 0;
        connect(&tree.delegate, &ItemDelegate::sigKeyPressed, &tree, [&] { ++escapes; });
        tree.editItem(item);
        const QPointer<QLineEdit> editor = tree.viewport()->findChild<QLineEdit*>();
        QCOMPARE(editor->text(), name);
        QCOMPARE(editor->styleSheet(), getStyleSheet("component.tree_item", false));
        // Filled again, it keeps its one validator; no editor of this kind gets one.
        for (QWidget* filled : QWidgetList { editor, &tree }) {
            tree.delegate.setEditorData(filled, tree.model()->index(0, 0));
        }
        editor->selectAll();
        QCOMPARE(editor->findChildren<QValidator*>().size(), 1);
        QTest::keyClicks(editor, row[1]);
        QTest::keyClick(editor, result == name ? Qt::Key_Escape : Qt::Key_Return);
        QTRY_VERIFY(!editor);
        QCOMPARE(item->text(0), result);
        QCOMPARE(escapes, result == name ? 1 : 0);
        QCOMPARE(tree.currentItem(), item);
    }
}

void TreeTest::goesWithEscape()
{
    for (const bool alone : { true, false }) {
        const QPointer<Tree> tree(new Tree);
        tree->editItem(tree->addEditable(QStringLiteral("old")));
        const QPointer<QWidget> editor(tree->viewport()->findChild<QLineEdit*>());
        connect(&tree->delegate, &ItemDelegate::sigKeyPressed, this,
            [&] { delete (alone ? editor.data() : tree.data()); });
        QTest::keyClick(editor, Qt::Key_Escape);
        QVERIFY(!editor);
        delete tree;
    }
}

void TreeTest::comparison()
{
    FileSystemTreeWidgetItem home;
    FileSystemTreeWidgetItem folder;
    const QTreeWidgetItem plain({ QStringLiteral("c") });
    home.itemKey = QStringLiteral("home");
    home.setText(0, QStringLiteral("b"));
    folder.itemKey = QStringLiteral("Home");
    folder.setText(0, QStringLiteral("a"));
    // Nothing stands before home, which itself goes by its text, as all others do.
    QVERIFY(!(folder < home));
    QVERIFY(!(home < folder));
    QVERIFY(folder < plain);
    folder.setText(0, QStringLiteral("z"));
    QVERIFY(home < folder);
    QVERIFY(!(folder < plain));
    folder.itemKey = home.itemKey;
    QVERIFY(!(home < folder));
}

QTEST_MAIN(TreeTest)

#include "tree-test.moc"
