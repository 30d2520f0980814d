#include "support/display-scale.h"
#include "support/pointer.h"
#include "support/themed-test.h"

using displayscale::px;

namespace {

const QColor selectedGround(0, 200, 0);
const QColor hoverGround(0, 0, 200);

/** A shown tree with the focus that is white where no row has a ground. */
struct Tree : VantTreeWidget
{
    explicit Tree(int rows = 0, QWidget* parent = nullptr)
        : VantTreeWidget(parent)
    {
        setStyleSheet("QTreeView { border: 1px solid gray; background: white; color: black; outline: none;"
                      " selection-background-color: transparent } QTreeView:disabled { color: white }");
        setBackgroundColor(selectedGround, hoverGround);
        setHeaderHidden(true);
        setItemDelegate(&delegate);
        resize(300, 400);
        addRows(rows);
        window()->show();
        QVERIFY(QTest::qWaitForWindowActive(window()));
        setFocus();
        clearSelection();
    }

    void addRows(int count)
    {
        for (int row = 0; row < count; ++row) {
            addTopLevelItem(new QTreeWidgetItem({ QString("Row %1").arg(row) }));
        }
    }

    /** The field in which the first row is renamed. */
    QLineEdit* rename(const QString& name)
    {
        QTreeWidgetItem* item = topLevelItem(0);
        item->setText(0, name);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        editItem(item);
        return viewport()->findChild<QLineEdit*>();
    }

    ItemDelegate delegate;
};

} // namespace

class TreeTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void grounds()
    {
        pointer::moveAway();
        Tree tree(3);
        tree.setRootIsDecorated(false);
        QTreeWidgetItem* item = tree.topLevelItem(1);
        item->setFlags(item->flags() & ~Qt::ItemIsUserCheckable);
        const QRect row = tree.visualItemRect(item);
        const int right = tree.viewport()->width() - displayscale::pick(3, 4, 5, 6);
        const auto picture = [&](int down = 0) {
            return tree.viewport()->grab(row.translated(0, down)).toImage();
        };
        const auto groundBefore = [&](int x) { return picture().pixelColor(x, 4); };
        QCOMPARE(row.height(), px(28));
        QCOMPARE(picture(), picture(50 + px(28))); // in the disabled look, in white, as where there is no row
        QVERIFY(picture() != picture(px(28)));
        QTest::mouseMove(tree.viewport(), row.center());
        QCOMPARE(groundBefore(right - 3), hoverGround);
        item->setSelected(true);
        QCOMPARE(groundBefore(right - 3), selectedGround);
        QCOMPARE(groundBefore(right + 1), QColor(Qt::white));
        QVERIFY(picture().pixelColor(1, 0).lightness() > 200); // the corner is round and the edge white
    }

    // What is on the screen, not what a repaint of everything would show.
    void hoverFollowsPointer()
    {
        QWidget window;
        window.resize(400, 500);
        auto* tree = new Tree(100, &window);
        tree->setHeaderHidden(false);
        QWidget* viewport = tree->viewport();
        const auto hovered = [&] {
            const QImage image = window.screen()->grabWindow(window.winId()).toImage();
            QString rows;
            for (int y = 6; y < viewport->height(); y += px(28)) {
                const QColor color = image.pixelColor(viewport->mapTo(&window, QPoint(200, y)));
                rows += color == hoverGround ? tree->itemAt(0, y)->text(0) : "";
            }
            return rows;
        };
        // The tree's own coordinates count, with the rows one pixel lower.
        const auto expected = [&](int y) { return tree->itemAt(0, y + viewport->y() - 1)->text(0); };
        for (int step = 0; step < 80; ++step) {
            const int y = 20 + qAbs(40 - step);
            QCursor::setPos(viewport->mapToGlobal({ 100, y }));
            QTRY_COMPARE(hovered(), expected(y));
        }
        tree->verticalScrollBar()->setValue(7);
        QTRY_COMPARE(hovered(), expected(59));
        pointer::moveAway();
        QTRY_COMPARE(hovered(), QString());

        // Gone from under the pointer, while its window stays.
        QCursor::setPos(viewport->mapToGlobal({ 100, 20 }));
        QTRY_VERIFY(viewport->underMouse());
        delete tree;
        pointer::moveAway();
    }

    void scrollsSideways()
    {
        const int room = px(100);
        // Where the item begins, the width of the viewport, and the scroll bar before and after.
        const int rows[][4] { { 0, 300, 20, 20 }, { 300 - room, 300, 20, 20 },
            { 301 - room, 300, 60, 60 + 301 - room - 150 }, { 250, 301, 40, 40 + 250 - 150 },
            { -20, 300, 400, 400 - 20 - 150 } };
        for (const auto& [left, width, before, after] : rows) {
            Tree tree(1);
            tree.setIndentation(left + before);
            tree.setRootIsDecorated(false);
            auto* item = new QTreeWidgetItem(tree.topLevelItem(0), { "Deep" });
            tree.expandAll();
            tree.header()->setStretchLastSection(false);
            tree.setColumnWidth(0, 2000);
            tree.resize(width + 2, 200);
            tree.horizontalScrollBar()->setValue(before);
            tree.updateScrollArea(item);
            tree.updateScrollArea(nullptr);
            QCOMPARE(tree.horizontalScrollBar()->value(), after);
        }
    }

    void focus()
    {
        Tree tree;
        QStringList changes;
        connect(&tree, &QTreeWidget::currentItemChanged,
            [&](const QTreeWidgetItem* item) { changes << (item ? item->text(0) : "none"); });
        const auto focusAgain = [&](Qt::FocusReason reason = Qt::TabFocusReason) {
            changes.clear();
            tree.clearFocus();
            tree.setFocus(reason);
            return changes.join(',');
        };
        QCOMPARE(focusAgain(), QString());
        tree.addRows(50);
        tree.scrollToItem(tree.topLevelItem(10), QTreeWidget::PositionAtTop);
        QCOMPARE(focusAgain(), QString("Row 10"));
        // Scrolled both ways it goes over the row before, and to the row only if no press may follow.
        tree.header()->setStretchLastSection(false);
        tree.setColumnWidth(0, 1000);
        for (const auto reason :
            { Qt::MouseFocusReason, Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::TabFocusReason }) {
            tree.setCurrentItem(tree.topLevelItem(0));
            tree.scrollToItem(tree.topLevelItem(30), QTreeWidget::PositionAtTop);
            tree.horizontalScrollBar()->setValue(50);
            QCOMPARE(focusAgain(reason), QString("Row 29,Row 0"));
            QCOMPARE(tree.itemAt(0, 0)->text(0), QString(reason == Qt::TabFocusReason ? "Row 0" : "Row 30"));
        }

        // Whoever hears of the change may delete what was current.
        QTreeWidgetItem* doomed = tree.currentItem();
        connect(&tree, &QTreeWidget::currentItemChanged, [&](QTreeWidgetItem*, QTreeWidgetItem* previous) {
            delete (previous == doomed ? std::exchange(doomed, nullptr) : nullptr);
        });
        focusAgain();
        QCOMPARE(tree.topLevelItemCount(), 49);
    }

    // What the tree does comes after the signal.
    void keysAndClicks()
    {
        QVERIFY(g_check_rect.isNull());
        Tree tree(5);
        auto* item = new QTreeWidgetItem(tree.topLevelItem(4), { "Checked" });
        item->setCheckState(0, Qt::Unchecked);
        tree.expandAll();
        QStringList seen;
        const auto note = [&](const QString& what) { seen << what + tree.currentItem()->text(0); };
        connect(&tree, &VantTreeWidget::sigKeyPressEvent, [&](QKeyEvent* event) { note(event->text()); });
        connect(&tree, &VantTreeWidget::sigMouseRightClickEvent,
            [&](QMouseEvent* event) { note(tree.itemAt(event->pos())->text(0) + " after "); });
        const auto click = [&](Qt::MouseButton button, QTreeWidgetItem* clicked) {
            QTest::mouseClick(tree.viewport(), button, {}, tree.visualItemRect(clicked).center());
        };
        QTest::keyClick(&tree, Qt::Key_Down);
        QTest::keyClick(&tree, '7');
        click(Qt::LeftButton, tree.topLevelItem(4));
        click(Qt::RightButton, tree.topLevelItem(3));
        QCOMPARE(seen, QStringList({ "Row 0", "7Row 1", "Row 3 after Row 4" }));

        tree.grab();
        QVERIFY(tree.visualItemRect(item).contains(g_check_rect));
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, g_check_rect.center());
        QCOMPARE(item->checkState(0), Qt::Checked);
    }

    void renaming()
    {
        const std::tuple<QString, QString, QString> rows[] { { "old", ".=a.b=", "=a.b=" },
            { "old", "\\a/b:c*d?e\"f<g>h|i", "abcdefghi" }, { "old", "new", "old" },
            { ".git", "", ".git" } }; // the last breaks the rule itself
        for (const auto& [name, typed, result] : rows) {
            Tree tree(1);
            const QPointer<QLineEdit> editor = tree.rename(name);
            int escapes = 0;
            connect(&tree.delegate, &ItemDelegate::sigKeyPressed, [&] { ++escapes; });
            QCOMPARE(editor->selectedText(), name);
            QVERIFY(!editor->testAttribute(Qt::WA_MacShowFocusRect));
            QCOMPARE(editor->styleSheet(), getStyleSheet("component.tree_item"));
            // Filled again, it keeps its one validator; no editor of this kind gets one.
            for (QWidget* filled : QWidgetList { editor, &tree }) {
                tree.delegate.setEditorData(filled, tree.model()->index(0, 0));
            }
            QCOMPARE(editor->findChildren<QValidator*>().size(), 1);
            editor->selectAll();
            QTest::keyClicks(editor, typed);
            QTest::keyClick(editor, result == name ? Qt::Key_Escape : Qt::Key_Return);
            QTRY_VERIFY(!editor);
            QCOMPARE(tree.currentItem()->text(0), result);
            QCOMPARE(escapes, result == name ? 1 : 0);
        }
        for (const bool alone : { true, false }) { // a slot may delete the editor, or the tree
            auto* tree = new Tree(1);
            const QPointer<QWidget> editor(tree->rename("old"));
            connect(&tree->delegate, &ItemDelegate::sigKeyPressed, this,
                [&] { delete (alone ? editor.data() : std::exchange(tree, nullptr)); });
            QTest::keyClick(editor, Qt::Key_Escape);
            QVERIFY(!editor);
            delete tree;
        }
    }

    // Nothing stands before home, which itself goes by its text, as all others do.
    void comparison()
    {
        FileSystemTreeWidgetItem home;
        FileSystemTreeWidgetItem folder;
        const QTreeWidgetItem plain({ "c" });
        home.itemKey = "home";
        home.setText(0, "b");
        folder.itemKey = "Home";
        folder.setText(0, "a");
        QVERIFY(!(folder < home) && !(home < folder) && folder < plain);
        folder.setText(0, "z");
        QVERIFY(home < folder && !(folder < plain));
    }
};

QTEST_MAIN(TreeTest)

#include "tree-test.moc"
