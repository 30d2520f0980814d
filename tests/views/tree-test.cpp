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
    void scrollsSideways_data();
    void scrollsSideways();
    void largeAndDeepTrees_data();
    void largeAndDeepTrees();
    void focus();
    void focusWhileListenersDelete();
    void keysAndRightClicks();
    void rowHeight();
    void renaming_data();
    void renaming();
    void validatorGoesWithEditor();
    void comparison_data();
    void comparison();
    void homeStaysFirst();
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

bool isRed(const QColor& color)
{
    return color.red() > 150 && color.green() < 100;
}

bool hasRedText(const QImage& image, const QRect& row)
{
    for (int y = row.top(); y <= row.bottom(); ++y) {
        for (int x = row.left(); x <= row.right(); ++x) {
            if (isRed(image.pixelColor(x, y))) {
                return true;
            }
        }
    }
    return false;
}

QLineEdit* editorOf(const QTreeWidget& tree)
{
    return tree.viewport()->findChild<QLineEdit*>();
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
    QTest::addColumn<bool>("withColors");
    QTest::addColumn<QColor>("ground");
    QTest::newRow("rest") << false << false << true << true << white;
    QTest::newRow("hovered") << false << true << true << true << hoverGround;
    QTest::newRow("selected") << true << false << true << true << selectedGround;
    QTest::newRow("selected and hovered") << true << true << true << true << selectedGround;
    QTest::newRow("no check box") << true << false << false << true << selectedGround;
    QTest::newRow("no check box, at rest") << false << false << false << true << white;
    QTest::newRow("invalid colours, selected") << true << false << true << false << QColor(Qt::black);
    QTest::newRow("invalid colours, hovered") << false << true << true << false << QColor(Qt::black);
}

void TreeTest::grounds()
{
    QFETCH(bool, selected);
    QFETCH(bool, hovered);
    QFETCH(bool, checkable);
    QFETCH(QColor, ground);
    QFETCH(bool, withColors);
    pointer::moveAway();
    Tree tree;
    tree.setRootIsDecorated(false);
    tree.addRows(3);
    if (!withColors) {
        tree.setBackgroundColor({}, {});
    }
    QTreeWidgetItem* item = tree.topLevelItem(1);
    item->setFlags(
        checkable ? item->flags() | Qt::ItemIsUserCheckable : item->flags() & ~Qt::ItemIsUserCheckable);
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
}

void TreeTest::hoverFollowsPointer_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<bool>("header");
    QTest::newRow("frame of one") << 1 << false;
    QTest::newRow("no frame") << 0 << false;
    QTest::newRow("frame of two") << 2 << false;
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
    QCOMPARE(offset == 0, frame == 1 && !header);
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
    const auto moveTo = [&](int y) {
        QCursor::setPos(viewport->mapToGlobal({ 100, y }));
        QCoreApplication::processEvents();
    };
    const auto expected = [&](int y) { return tree.itemAt(0, y + offset)->text(0); };

    for (int y = 20; y < 130; ++y) {
        moveTo(y);
        QTRY_COMPARE(hovered(), expected(y));
    }
    for (int y = 130; y > 20; --y) {
        moveTo(y);
        QTRY_COMPARE(hovered(), expected(y));
    }
    tree.verticalScrollBar()->setValue(7);
    QTRY_COMPARE(hovered(), expected(21));
    pointer::moveAway();
    QTRY_COMPARE(hovered(), QString());
}

void TreeTest::scrollsSideways_data()
{
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    const int room = displayscale::pick(100, 125, 150, 200);
    QTest::newRow("at the edge") << 0 << 300 << 0 << 0;
    QTest::newRow("just enough room") << 300 - room << 300 << 20 << 20;
    QTest::newRow("one too little") << 301 - room << 300 << 60 << 60 + 301 - room - 150;
    QTest::newRow("far right") << 250 << 300 << 40 << 40 + 250 - 150;
    QTest::newRow("odd width") << 250 << 301 << 40 << 40 + 250 - 150;
    QTest::newRow("before the edge") << -20 << 300 << 400 << 400 - 20 - 150;
    QTest::newRow("clamped to the left") << -20 << 300 << 40 << 0;
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
    tree.setColumnWidth(0, 2000);
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

void TreeTest::largeAndDeepTrees_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("levels");
    QTest::newRow("100,000 rows") << 100000 << 1;
    QTest::newRow("200 levels") << 50 << 200;
}

void TreeTest::largeAndDeepTrees()
{
    QFETCH(int, rows);
    QFETCH(int, levels);
    Tree tree;
    tree.addRows(rows);
    QTreeWidgetItem* deepest = tree.topLevelItem(rows - 1);
    for (int level = 1; level < levels; ++level) {
        deepest = tree.add(QStringLiteral("Level %1").arg(level), deepest);
    }
    tree.header()->setStretchLastSection(false);
    tree.header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tree.expandAll();
    tree.showActive();
    tree.setCurrentItem(deepest);
    tree.scrollToItem(deepest);
    tree.updateScrollArea(deepest);
    const QRect row = tree.visualItemRect(deepest);
    QVERIFY(tree.viewport()->rect().contains(QPoint(row.left(), row.center().y())));
    QCOMPARE(
        picture(tree.viewport()->grab(), tree.viewport()).pixelColor(100, row.top() + 4), selectedGround);
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
    QTest::keyClick(&tree, Qt::Key_F9);
    click(Qt::LeftButton, 4);
    click(Qt::RightButton, 3);
    QCOMPARE(seen,
        QStringList({ QStringLiteral("1000015 at Row 0"), QStringLiteral("1000038 at Row 1"),
            QStringLiteral("click on Row 3 at Row 4") }));
    QCOMPARE(tree.currentItem()->text(0), QStringLiteral("Row 3"));
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
    const QSize kit = tree.sizeHintForIndex(tree.model()->index(0, 0));
    QCOMPARE(kit.height(), displayscale::pick(28, 35, 42, 56));
    QCOMPARE(tree.visualItemRect(item).height(), kit.height());
    QItemDelegate plain;
    tree.setItemDelegate(&plain);
    QCOMPARE(kit.width(), tree.sizeHintForIndex(tree.model()->index(0, 0)).width());
}

void TreeTest::renaming_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("result");
    const auto row = [](const char* what, const char* name, const char* typed, Qt::Key key,
                         const char* result) {
        QTest::newRow(what) << QString::fromLatin1(name) << QString::fromLatin1(typed) << int(key)
                            << QString::fromLatin1(result);
    };
    row("all replaced", "old", "new", Qt::Key_Return, "new");
    row("dot first", "old", ".a.b", Qt::Key_Return, "a.b");
    row("forbidden ones", "old", "\\a/b:c*d?e\"f<g>h|i", Qt::Key_Return, "abcdefghi");
    row("blank, dot, comma", "old", " a.,;", Qt::Key_Return, " a.,;");
    row("escape", "old", "new", Qt::Key_Escape, "old");
    row("name that breaks the rule", ".git", "", Qt::Key_Escape, ".git");
}

void TreeTest::renaming()
{
    QFETCH(QString, name);
    QFETCH(QString, typed);
    QFETCH(int, key);
    Tree tree;
    QTreeWidgetItem* item = tree.add(name);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    tree.showActive();
    tree.setCurrentItem(item);
    int escapes = 0;
    connect(&tree.delegate, &ItemDelegate::sigKeyPressed, &tree, [&] { ++escapes; });
    tree.editItem(item);
    const QPointer<QLineEdit> editor = editorOf(tree);
    QVERIFY(editor);
    QCOMPARE(editor->text(), name);
    QCOMPARE(editor->styleSheet(), getStyleSheet("component.tree_item", false));
    QTest::keyClicks(editor, typed);
    QTest::keyClick(editor, Qt::Key(key));
    QTRY_VERIFY(!editor);
    QTEST(item->text(0), "result");
    QCOMPARE(escapes, key == Qt::Key_Escape ? 1 : 0);
    QCOMPARE(tree.currentItem(), item);
}

void TreeTest::validatorGoesWithEditor()
{
    Tree tree;
    tree.add(QStringLiteral("name"));
    const QModelIndex index = tree.model()->index(0, 0);
    auto editor = std::make_unique<QLineEdit>();
    for (int time = 0; time < 3; ++time) {
        tree.delegate.setEditorData(editor.get(), index);
        QCOMPARE(editor->findChildren<QValidator*>().size(), 1);
    }
    const QPointer<const QValidator> validator = editor->validator();
    QVERIFY(validator);
    editor.reset();
    QVERIFY(!validator);

    QWidget other;
    tree.delegate.setEditorData(&other, index);
}

void TreeTest::comparison_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("leftKey");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("rightKey");
    QTest::addColumn<bool>("before");
    const auto row = [](const char* what, const char* left, const char* leftKey, const char* right,
                         const char* rightKey, bool before) {
        QTest::newRow(what) << QString::fromLatin1(left) << QString::fromLatin1(leftKey)
                            << QString::fromLatin1(right) << QString::fromLatin1(rightKey) << before;
    };
    row("texts", "a", "", "b", "", true);
    row("nothing before home", "a", "", "b", "home", false);
    row("home by its text", "b", "home", "a", "", false);
    row("home before a later text", "a", "home", "b", "", true);
    row("two homes", "a", "home", "b", "home", false);
    row("another case", "a", "", "b", "Home", true);
    row("another class", "a", "", "b", nullptr, true);
    row("another class, the other way", "b", "home", "a", nullptr, false);
}

void TreeTest::comparison()
{
    QFETCH(QString, left);
    QFETCH(QString, leftKey);
    QFETCH(QString, right);
    QFETCH(QString, rightKey);
    FileSystemTreeWidgetItem item;
    FileSystemTreeWidgetItem folder;
    QTreeWidgetItem plain;
    QTreeWidgetItem& other = rightKey.isNull() ? plain : folder;
    item.itemKey = leftKey;
    folder.itemKey = rightKey;
    item.setText(0, left);
    other.setText(0, right);
    QTEST(item < other, "before");
}

void TreeTest::homeStaysFirst()
{
    Tree tree;
    for (const char* name : { "m", "z", "c", "x", "a", "k" }) {
        auto* item = new FileSystemTreeWidgetItem;
        item->setText(0, QString::fromLatin1(name));
        item->itemKey = tree.topLevelItemCount() == 0 ? QStringLiteral("home") : QString();
        tree.addTopLevelItem(item);
    }
    tree.sortItems(0, Qt::AscendingOrder);
    QString order;
    for (int row = 0; row < tree.topLevelItemCount(); ++row) {
        order += tree.topLevelItem(row)->text(0);
    }
    QCOMPARE(order, QStringLiteral("mackxz"));
}

QTEST_MAIN(TreeTest)

#include "tree-test.moc"
