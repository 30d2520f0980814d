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

#include <memory>

class TreeTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void checkBoxPlace();
    void grounds_data();
    void grounds();
    void hoverFollowsPointer_data();
    void hoverFollowsPointer();
    void goesFromUnderPointer();
    void scrollsSideways_data();
    void scrollsSideways();
    void focus();
    void focusWhileListenersDelete();
    void keysAndRightClicks();
    void rowHeight();
    void renaming_data();
    void renaming();
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

    void addRows(int count)
    {
        QList<QTreeWidgetItem*> items;
        for (int row = 0; row < count; ++row) {
            items << new QTreeWidgetItem({ QStringLiteral("Row %1").arg(row) });
        }
        addTopLevelItems(items);
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

bool hasRedText(const QImage& image, const QRect& row)
{
    for (int y = row.top(); y <= row.bottom(); ++y) {
        for (int x = row.left(); x <= row.right(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.red() > 150 && color.green() < 100) {
                return true;
            }
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

void TreeTest::checkBoxPlace()
{
    QVERIFY(g_check_rect.isNull());
    Tree tree;
    QTreeWidgetItem* parent = tree.add(QStringLiteral("Folder"));
    QTreeWidgetItem* item = tree.add(QStringLiteral("Folder with a check box"), parent);
    item->setCheckState(0, Qt::Unchecked);
    parent->setExpanded(true);
    tree.showActive();
    tree.grab();
    QVERIFY(tree.visualItemRect(item).contains(g_check_rect));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, g_check_rect.center());
    QCOMPARE(item->checkState(0), Qt::Checked);
}

void TreeTest::grounds_data()
{
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("hovered");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<QColor>("ground");
    QTest::newRow("rest") << false << false << false << white;
    QTest::newRow("hovered") << false << true << true << hoverGround;
    QTest::newRow("selected and hovered") << true << true << true << selectedGround;
    QTest::newRow("no check box") << true << false << false << selectedGround;
}

void TreeTest::grounds()
{
    QFETCH(bool, selected);
    QFETCH(bool, hovered);
    QFETCH(bool, checkable);
    QFETCH(QColor, ground);
    pointer::moveAway();
    Tree tree;
    tree.setRootIsDecorated(false);
    tree.addRows(3);
    QTreeWidgetItem* item = tree.topLevelItem(1);
    item->setFlags(item->flags().setFlag(Qt::ItemIsUserCheckable, checkable));
    tree.showActive();
    tree.clearSelection();
    item->setSelected(selected);
    const QRect row = tree.visualItemRect(item);
    if (hovered) {
        QTest::mouseMove(tree.viewport(), row.center());
    }
    const QImage image = picture(tree.viewport()->grab(), tree.viewport());

    const int right = image.width() - displayscale::pick(3, 4, 5, 6);
    const int y = row.top() + 4;
    QCOMPARE(image.pixelColor(image.width() / 2, y), ground);
    QCOMPARE(image.pixelColor(right - 3, y), ground);
    QCOMPARE(image.pixelColor(right + 1, y), white);
    QVERIFY(image.pixelColor(0, row.top()).lightness() > 200); // the corner is round and the edge white
    QCOMPARE(hasRedText(image, row), !checkable);
    QVERIFY(!hasRedText(image, tree.visualItemRect(tree.topLevelItem(2))));

    tree.setBackgroundColor({}, {});
    const bool hasGround = selected || hovered;
    QCOMPARE(picture(tree.viewport()->grab(), tree.viewport()).pixelColor(image.width() / 2, y),
        hasGround ? QColor(Qt::black) : white);
}

void TreeTest::hoverFollowsPointer_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<bool>("header");
    QTest::newRow("no frame") << 0 << false;
    QTest::newRow("header") << 1 << true;
}

// What is on the screen, not what a repaint of everything would show.
void TreeTest::hoverFollowsPointer()
{
    QFETCH(int, frame);
    QFETCH(bool, header);
    Tree tree(frame);
    tree.setHeaderHidden(!header);
    tree.addRows(100);
    tree.showActive();
    tree.clearSelection();
    QWidget* viewport = tree.viewport();
    // The tree's own coordinates count, with the rows one pixel lower: by so much the row is off.
    const int offset = viewport->y() - 1;
    QVERIFY(offset != 0);
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
    const auto expected = [&](int y) { return tree.itemAt(0, y + offset)->text(0); };
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

void TreeTest::scrollsSideways_data()
{
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    const int room = displayscale::pick(100, 125, 150, 200);
    QTest::newRow("just enough room") << 300 - room << 300 << 20 << 20;
    QTest::newRow("one too little") << 301 - room << 300 << 60 << 60 + 301 - room - 150;
    QTest::newRow("odd width") << 250 << 301 << 40 << 40 + 250 - 150;
    QTest::newRow("before the edge") << -20 << 300 << 400 << 400 - 20 - 150;
}

void TreeTest::scrollsSideways()
{
    QFETCH(int, left);
    QFETCH(int, width);
    QFETCH(int, before);
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
    QScrollBar* bar = tree.horizontalScrollBar();
    bar->setValue(before);
    QCOMPARE(tree.viewport()->width(), width);
    QCOMPARE(tree.visualItemRect(item).left(), left);
    tree.updateScrollArea(item);
    QTEST(bar->value(), "after");
    tree.updateScrollArea(nullptr);
    QTEST(bar->value(), "after");
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
}

void TreeTest::focusWhileListenersDelete()
{
    Tree tree;
    tree.addRows(3);
    tree.showActive();
    tree.clearFocus();
    tree.setCurrentItem(tree.topLevelItem(1));
    connect(&tree, &QTreeWidget::currentItemChanged, &tree, [&](QTreeWidgetItem*, QTreeWidgetItem* previous) {
        if (previous && previous->text(0) == QStringLiteral("Row 1")) {
            delete previous;
        }
    });
    tree.setFocus();
    QCOMPARE(tree.topLevelItemCount(), 2);
}

void TreeTest::keysAndRightClicks()
{
    Tree tree;
    tree.addRows(5);
    tree.showActive();
    QStringList seen;
    // What the tree does comes after the signal.
    const auto note = [&](const QString& what) { seen << what + tree.currentItem()->text(0); };
    connect(&tree, &VantTreeWidget::sigKeyPressEvent, &tree,
        [&](QKeyEvent* event) { note(QString::number(event->key(), 16) + QStringLiteral(" at ")); });
    connect(&tree, &VantTreeWidget::sigMouseRightClickEvent, &tree, [&](QMouseEvent* event) {
        note(QStringLiteral("click on %1 at ").arg(tree.itemAt(event->pos())->text(0)));
    });
    const auto click = [&](Qt::MouseButton button, int row) {
        const QPoint place = tree.visualItemRect(tree.topLevelItem(row)).center();
        QTest::mouseClick(tree.viewport(), button, {}, place);
    };
    QTest::keyClick(&tree, Qt::Key_Down);
    click(Qt::LeftButton, 4);
    click(Qt::RightButton, 3);
    QCOMPARE(
        seen, QStringList({ QStringLiteral("1000015 at Row 0"), QStringLiteral("click on Row 3 at Row 4") }));
}

void TreeTest::rowHeight()
{
    Tree tree;
    QTreeWidgetItem* item = tree.add(QStringLiteral("A row with an icon"));
    QPixmap icon(90, 90);
    icon.fill(Qt::gray);
    item->setIcon(0, icon);
    tree.setIconSize(icon.size());
    tree.show();
    QCOMPARE(tree.visualItemRect(item).height(), displayscale::pick(28, 35, 42, 56));
    QVERIFY(tree.sizeHintForIndex(tree.model()->index(0, 0)).width() > 90);
}

void TreeTest::renaming_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("result");
    const QString old = QStringLiteral("old");
    QTest::newRow("dot first") << old << ".a.b" << Qt::Key_Return << "a.b";
    QTest::newRow("forbidden ones") << old << "\\a/b:c*d?e\"f<g>h|i" << Qt::Key_Return << "abcdefghi";
    QTest::newRow("escape") << old << "new" << Qt::Key_Escape << old;
    QTest::newRow("name that breaks the rule") << ".git"
                                               << "" << Qt::Key_Escape << ".git";
}

void TreeTest::renaming()
{
    QFETCH(QString, name);
    QFETCH(QString, typed);
    QFETCH(Qt::Key, key);
    Tree tree;
    QTreeWidgetItem* item = tree.add(name);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    tree.showActive();
    tree.setCurrentItem(item);
    int escapes = 0;
    connect(&tree.delegate, &ItemDelegate::sigKeyPressed, &tree, [&] { ++escapes; });
    tree.editItem(item);
    const QPointer<QLineEdit> editor = tree.viewport()->findChild<QLineEdit*>();
    QVERIFY(editor);
    QCOMPARE(editor->text(), name);
    QCOMPARE(editor->styleSheet(), getStyleSheet("component.tree_item", false));
    // Filled again, it keeps its one validator.
    tree.delegate.setEditorData(editor, tree.model()->index(0, 0));
    editor->selectAll();
    QCOMPARE(editor->findChildren<QValidator*>().size(), 1);
    tree.delegate.setEditorData(&tree, tree.model()->index(0, 0)); // no editor of this kind
    QTest::keyClicks(editor, typed);
    QTest::keyClick(editor, key);
    QTRY_VERIFY(!editor);
    QTEST(item->text(0), "result");
    QCOMPARE(escapes, key == Qt::Key_Escape ? 1 : 0);
    QCOMPARE(tree.currentItem(), item);
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
    QVERIFY(home < plain);
    QVERIFY(folder < plain);
    folder.setText(0, QStringLiteral("z"));
    QVERIFY(home < folder);
    QVERIFY(!(folder < plain));
    QVERIFY(!(home < home));
}

QTEST_MAIN(TreeTest)

#include "tree-test.moc"
