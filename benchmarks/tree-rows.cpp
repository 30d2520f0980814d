#include "bench.h"
#include "child-process.h"
#include "default-theme.h"
#include "families.h"
#include "virtual-display.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QWindow>

#include <memory>

namespace bench {

namespace {

constexpr int itemCount = 100000;
constexpr int deepLevels = 20;

const QString flatPaintSampler = QStringLiteral("tree-paint-flat");
const QString deepPaintSampler = QStringLiteral("tree-paint-deep");
const QString flatBuildSampler = QStringLiteral("tree-build-flat");
const QString deepBuildSampler = QStringLiteral("tree-build-deep");

/** The tree of the kit with all that belongs to it, as an application has it. */
class VantTree : public VantTreeWidget
{
public:
    VantTree()
    {
        setItemDelegate(&m_delegate);
        setBackgroundColor(QColor(0xE6, 0xF1, 0xFB), QColor(0xEB, 0xF0, 0xF4));
    }

    static QTreeWidgetItem* newItem() { return new FileSystemTreeWidgetItem; }

private:
    ItemDelegate m_delegate;
};

class PlainTree : public QTreeWidget
{
public:
    static QTreeWidgetItem* newItem() { return new QTreeWidgetItem; }
};

template <class Tree>
QTreeWidgetItem* folder(int number, const QIcon& icon)
{
    QTreeWidgetItem* item = Tree::newItem();
    item->setText(0, QStringLiteral("Folder %1").arg(number));
    item->setIcon(0, icon);
    item->setCheckState(0, number % 2 ? Qt::Checked : Qt::Unchecked);
    return item;
}

// Chains of items, each below the one before it.
template <class Tree>
QList<QTreeWidgetItem*> folders(int levels)
{
    const QIcon icon(getGlobalImage("folder", ImageManager::Normal));
    QList<QTreeWidgetItem*> items;
    for (int number = 0; number < itemCount; number += levels) {
        items << folder<Tree>(number, icon);
        QTreeWidgetItem* parent = items.constLast();
        for (int level = 1; level < levels; ++level) {
            QTreeWidgetItem* child = folder<Tree>(number + level, icon);
            parent->addChild(child);
            parent = child;
        }
    }
    return items;
}

template <class Tree>
std::shared_ptr<Tree> build(int levels)
{
    auto tree = std::make_shared<Tree>();
    tree->setStyleSheet(getStyleSheet("theme.tree", false) + getStyleSheet("component.scrollbar", false));
    tree->setHeaderHidden(true);
    tree->setIndentation(12);
    tree->resize(600, 900);
    tree->addTopLevelItems(folders<Tree>(levels));
    tree->expandAll();
    return tree;
}

void show(QTreeWidget& tree, QTreeWidgetItem* middle)
{
    tree.show();
    tree.setCurrentItem(middle);
    tree.scrollToItem(middle, QTreeWidget::PositionAtCenter);
    while (!tree.windowHandle()->isExposed()) {
        QApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    QApplication::processEvents();
}

template <class Tree>
std::shared_ptr<Tree> shown(int levels)
{
    const std::shared_ptr<Tree> tree = build<Tree>(levels);
    const int chains = itemCount / levels;
    show(*tree, tree->topLevelItem(chains / 2));
    return tree;
}

QStringList visibleRows(const QTreeWidget& tree)
{
    QStringList rows;
    for (QTreeWidgetItem* item = tree.itemAt(0, 0); item && tree.visualItemRect(item).top() < tree.height();
         item = tree.itemBelow(item)) {
        rows << item->text(0);
    }
    return rows;
}

Measurement repaintOf(const std::shared_ptr<QTreeWidget>& tree)
{
    return repeated([tree] { tree->viewport()->repaint(); });
}

Sampler repaintBoth(int levels)
{
    useDefaultTheme();
    const auto kit = shown<VantTree>(levels);
    const auto plain = shown<PlainTree>(levels);
    const QStringList rows = visibleRows(*kit);
    requireSameWork(rows.size() > 30 && rows == visibleRows(*plain));
    return interleaved(repaintOf(kit), repaintOf(plain));
}

// The trees go after the clock is stopped.
template <class Tree>
double buildingOf(int levels)
{
    std::shared_ptr<Tree> tree;
    return nanosecondsOf([&] {
        tree = build<Tree>(levels);
        tree->scrollToBottom(); // lays the rows out
    });
}

Sampler buildBoth(int levels)
{
    useDefaultTheme();
    return interleaved([levels] { return buildingOf<VantTree>(levels); },
        [levels] { return buildingOf<PlainTree>(levels); });
}

Sampler onDisplay(const QString& name)
{
    const auto display = std::make_shared<VirtualDisplay>();
    const Sampler sample = samplerInChild(name, display->environment());
    return [display, sample] { return sample(); };
}

} // namespace

void addTreeRows(Suite& suite)
{
    suite.samplers[flatPaintSampler] = [] { return repaintBoth(1); };
    suite.samplers[deepPaintSampler] = [] { return repaintBoth(deepLevels); };
    suite.samplers[flatBuildSampler] = [] { return buildBoth(1); };
    suite.samplers[deepBuildSampler] = [] { return buildBoth(deepLevels); };

    const QString kit = QStringLiteral("VantTreeWidget with its delegate and items");
    const QString plain = QStringLiteral("QTreeWidget with the same sheet and rows");
    const auto row = [&](const char* name, const char* unit, std::optional<double> ceiling, int samples,
                         const std::function<Sampler()>& prepare) {
        suite.rows.push_back(
            { QString::fromLatin1(name), QString::fromLatin1(unit), kit, plain, ceiling, samples, prepare });
    };
    row("trees.repaint", "a screen of rows out of 100,000", 1.0, 101,
        [] { return samplerInChild(flatPaintSampler, offscreen()); });
    row("trees.repaint-deep", "the same, 20 levels deep", 1.0, 101,
        [] { return samplerInChild(deepPaintSampler, offscreen()); });
    row("trees.repaint-display", "the first on Xvfb with openbox", 1.2, 101,
        [] { return onDisplay(flatPaintSampler); });
    row("trees.repaint-deep-display", "the second on Xvfb with openbox", 1.2, 101,
        [] { return onDisplay(deepPaintSampler); });
    row("trees.build", "100,000 rows, laid out", 1.1, 11,
        [] { return samplerInChild(flatBuildSampler, offscreen()); });
    row("trees.build-deep", "the same, 20 levels deep", 1.1, 11,
        [] { return samplerInChild(deepBuildSampler, offscreen()); });
}

} // namespace bench
