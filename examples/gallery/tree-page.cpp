#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace gallery {

namespace {

const QColor accentSoft(0xE6, 0xF1, 0xFB);
const QColor hoverGround(0xEB, 0xF0, 0xF4);

// Names of real folders, which are the same in every language.
const char* const deepPath[] = { "srv", "backup", "archive", "projects", "2017", "quarter-1",
    "correspondence", "suppliers", "north", "contracts", "signed", "copies", "march", "week-10", "monday",
    "scans", "colour", "originals", "large", "page-1" };

class TreePage : public Page
{
public:
    explicit TreePage(QWidget* parent);

    void enterState(const QString& state) override;
    QWidget* opener(const QString& state) const override;

private:
    void tellRightClick(QMouseEvent* event);
    void takeChange(QTreeWidgetItem* item);
    void openMenu(const QPoint& place);
    void addFolder();
    void rename();
    void showDeepest();
    void showTop();
    void addFolders();
    QLayout* explanations();
    void fill();
    FileSystemTreeWidgetItem* current() const;
    void addDeepFolders();

    ItemDelegate* m_delegate = nullptr;
    VantTreeWidget* m_tree = nullptr;
    VantTreeWidget* m_deepTree = nullptr;
    QTreeWidgetItem* m_deepest = nullptr;
    VantButton* m_rename = nullptr;
};

FileSystemTreeWidgetItem* folder(const QString& name)
{
    auto* item = new FileSystemTreeWidgetItem; // its tree or parent keeps it
    item->setText(0, name);
    item->userData = name;
    item->setIcon(0, getGlobalImage("folder", ImageManager::Normal));
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    return item;
}

FileSystemTreeWidgetItem* checkable(FileSystemTreeWidgetItem* item, Qt::CheckState state = Qt::Unchecked)
{
    item->setFlags(item->flags() | Qt::ItemIsAutoTristate);
    item->setCheckState(0, state);
    return item;
}

FileSystemTreeWidgetItem* keptOut(FileSystemTreeWidgetItem* item)
{
    item->isReadOnly = true;
    item->setFlags(item->flags() & ~(Qt::ItemIsUserCheckable | Qt::ItemIsEditable));
    return item;
}

VantTreeWidget* folderTree(ItemDelegate* delegate, const QString& name)
{
    auto* tree = new VantTreeWidget; // the caller's layout adopts it
    tree->setStyleSheet(getStyleSheet("theme.tree") + getStyleSheet("component.scrollbar"));
    tree->setBackgroundColor(accentSoft, hoverGround);
    tree->setItemDelegate(delegate);
    tree->setAccessibleName(name);
    tree->setHeaderHidden(true);
    tree->setIndentation(px(20));
    tree->setIconSize({ px(20), px(20) });
    tree->setEditTriggers(QAbstractItemView::EditKeyPressed);
    return tree;
}

QFrame* framed(QWidget* widget)
{
    QFrame* frame = styledFrame("well", "gallery.well");
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(px(4), px(4), px(4), px(4));
    layout->addWidget(widget);
    return frame;
}

QList<FileSystemTreeWidgetItem*> siblingsOf(const QTreeWidgetItem* item)
{
    QTreeWidgetItem* parent = item->parent() ? item->parent() : item->treeWidget()->invisibleRootItem();
    QList<FileSystemTreeWidgetItem*> siblings;
    for (int row = 0; row < parent->childCount(); ++row) {
        if (parent->child(row) != item) {
            siblings << static_cast<FileSystemTreeWidgetItem*>(parent->child(row));
        }
    }
    return siblings;
}

bool isTaken(const QString& name, const QTreeWidgetItem* item)
{
    const QList<FileSystemTreeWidgetItem*> siblings = siblingsOf(item);
    return std::any_of(siblings.begin(), siblings.end(), [&](const FileSystemTreeWidgetItem* sibling) {
        return sibling->text(0).compare(name, Qt::CaseInsensitive) == 0;
    });
}

TreePage::TreePage(QWidget* parent)
    : Page(parent)
    , m_delegate(new ItemDelegate)
{
    m_delegate->setParent(this);
    addFolders();
    addDeepFolders();
}

void TreePage::addFolders()
{
    m_tree = live(folderTree(m_delegate, text("tree.folders.title")));
    m_tree->setMinimumWidth(px(208));
    m_tree->setFixedHeight(px(12 * 28 + 2));
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    fill();
    connect(m_tree, &VantTreeWidget::sigMouseRightClickEvent, this, &TreePage::tellRightClick);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &TreePage::openMenu);
    connect(m_tree, &QTreeWidget::itemChanged, this, &TreePage::takeChange);
    connect(m_delegate, &ItemDelegate::sigKeyPressed, this,
        [this] { Q_EMIT happened(text("tree.rename.left")); });

    auto* row = new QHBoxLayout;
    row->setSpacing(px(24));
    row->addWidget(framed(m_tree), 3);
    row->addLayout(explanations(), 2);
    addSection("tree.folders", "VantTreeWidget")->addLayout(row);
}

QLayout* TreePage::explanations()
{
    VantButton* add = live(button(text("inputs.menu.new"), 1));
    connect(add, &QPushButton::clicked, this, &TreePage::addFolder);
    m_rename = live(button(text("inputs.menu.rename"), 1));
    connect(m_rename, &QPushButton::clicked, this, &TreePage::rename);
    connect(m_tree, &QTreeWidget::currentItemChanged, this,
        [this] { m_rename->setEnabled(current() && !current()->isReadOnly && m_tree->isEnabled()); });

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(px(8));
    buttons->addWidget(add);
    buttons->addWidget(m_rename);
    buttons->addStretch(1);

    auto* column = new QVBoxLayout;
    column->setSpacing(px(12));
    column->addLayout(buttons);
    for (const char* key : { "tree.explain.home", "tree.explain.names", "tree.explain.check" }) {
        column->addWidget(wrappedLabel(text(key), "gallery.caption"));
    }
    column->addStretch(1);
    return column;
}

void TreePage::fill()
{
    FileSystemTreeWidgetItem* home = folder(text("tree.home"));
    home->itemKey = QStringLiteral("home");
    FileSystemTreeWidgetItem* documents = folder(text("tree.documents"));
    FileSystemTreeWidgetItem* archive = folder(text("tree.archive"));
    FileSystemTreeWidgetItem* system = folder(text("tree.system"));
    m_tree->addTopLevelItems({ checkable(home), checkable(folder(text("tree.pictures")), Qt::Checked),
        keptOut(system), checkable(documents), checkable(archive) });
    documents->addChildren(
        { checkable(folder(text("tree.letters"))), checkable(folder(text("tree.invoices")), Qt::Checked) });
    archive->addChildren({ checkable(folder(QStringLiteral("2017"))),
        checkable(folder(QStringLiteral("2016"))), checkable(folder(QStringLiteral("2015"))) });
    system->addChild(keptOut(folder(text("tree.temporary"))));
    m_tree->sortItems(0, Qt::AscendingOrder);
    m_tree->expandAll();
    m_tree->setCurrentItem(documents);
}

FileSystemTreeWidgetItem* TreePage::current() const
{
    return static_cast<FileSystemTreeWidgetItem*>(m_tree->currentItem());
}

void TreePage::tellRightClick(QMouseEvent* event)
{
    if (const QTreeWidgetItem* item = m_tree->itemAt(event->pos())) {
        Q_EMIT happened(text("tree.right_click").arg(item->text(0)));
    }
}

// A change of the check box is told of the folder that the user changed, not of those that follow it.
void TreePage::takeChange(QTreeWidgetItem* item)
{
    auto* changed = static_cast<FileSystemTreeWidgetItem*>(item);
    const QString before = changed->userData.toString();
    if (changed->text(0) == before) {
        if (changed == current()) {
            Q_EMIT happened(text(eventOf(changed->checkState(0))).arg(changed->text(0)));
        }
    } else if (changed->text(0).trimmed().isEmpty()) {
        Q_EMIT happened(text("tree.rename.left"));
        changed->setText(0, before);
    } else if (isTaken(changed->text(0), changed)) {
        Q_EMIT happened(text("tree.rename.taken").arg(changed->text(0)));
        changed->setText(0, before);
    } else {
        changed->userData = changed->text(0);
        Q_EMIT happened(text("tree.renamed").arg(before, changed->text(0)));
        m_tree->sortItems(0, Qt::AscendingOrder);
        m_tree->scrollToItem(changed);
    }
}

void TreePage::openMenu(const QPoint& place)
{
    if (!current()) {
        return;
    }
    auto* menu = new VantMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(getStyleSheet("component.menu"));
    menu->addAction(text("inputs.menu.new"), this, &TreePage::addFolder);
    menu->addAction(text("inputs.menu.rename"), this, &TreePage::rename)->setEnabled(!current()->isReadOnly);
    // The keyboard asks for the menu somewhere in the view.
    const QRect row = m_tree->visualItemRect(current());
    const QPoint corner = row.contains(place) ? place : row.bottomLeft();
    menu->popup(m_tree->viewport()->mapToGlobal(corner));
}

void TreePage::addFolder()
{
    QTreeWidgetItem* parent = current() ? current() : m_tree->invisibleRootItem();
    const QString name = text("inputs.menu.new");
    FileSystemTreeWidgetItem* item = checkable(folder(name));
    parent->insertChild(0, item);
    for (int number = 2; isTaken(item->text(0), item); ++number) {
        item->userData = QStringLiteral("%1 %2").arg(name).arg(number);
        item->setText(0, item->userData.toString());
    }
    parent->setExpanded(true);
    m_tree->setCurrentItem(item);
    rename();
}

void TreePage::rename()
{
    if (current()) {
        m_tree->setFocus();
        m_tree->scrollToItem(current());
        m_tree->editItem(current());
    }
}

void TreePage::addDeepFolders()
{
    m_deepTree = live(folderTree(m_delegate, text("tree.deep.title")));
    m_deepTree->setMinimumWidth(px(208));
    m_deepTree->setFixedHeight(px(6 * 28 + 2) + m_deepTree->horizontalScrollBar()->sizeHint().height());
    m_deepTree->header()->setStretchLastSection(false);
    m_deepTree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    for (const char* name : deepPath) {
        FileSystemTreeWidgetItem* item = folder(QString::fromLatin1(name));
        item->setFlags(item->flags() & ~Qt::ItemIsEditable);
        m_deepest ? m_deepest->addChild(item) : m_deepTree->addTopLevelItem(item);
        m_deepest = item;
    }
    m_deepTree->expandAll();
    m_deepTree->setCurrentItem(m_deepTree->topLevelItem(0));

    VantButton* deepest = live(button(text("tree.deep.show"), 1));
    connect(deepest, &QPushButton::clicked, this, &TreePage::showDeepest);
    VantButton* top = live(button(text("tree.deep.top"), 1));
    connect(top, &QPushButton::clicked, this, &TreePage::showTop);
    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(px(8));
    buttons->addWidget(deepest, 0, Qt::AlignLeft);
    buttons->addWidget(top, 0, Qt::AlignLeft);
    buttons->addStretch(1);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(24));
    row->addWidget(framed(m_deepTree), 3);
    row->addLayout(buttons, 2);
    addSection("tree.deep", "VantTreeWidget")->addLayout(row);
}

void TreePage::showDeepest()
{
    m_deepTree->setCurrentItem(m_deepest);
    m_deepTree->updateScrollArea(m_deepest);
    Q_EMIT happened(text("event.chosen").arg(m_deepest->text(0)));
}

void TreePage::showTop()
{
    QTreeWidgetItem* top = m_deepTree->topLevelItem(0);
    m_deepTree->setCurrentItem(top);
    m_deepTree->updateScrollArea(top);
    Q_EMIT happened(text("event.chosen").arg(top->text(0)));
}

void TreePage::enterState(const QString& state)
{
    if (state == QLatin1String("hover")) {
        m_tree->setFocus(Qt::TabFocusReason);
        const QRect row = m_tree->visualItemRect(m_tree->topLevelItem(1));
        QCursor::setPos(m_tree->viewport()->mapToGlobal(row.center()));
    } else if (state == QLatin1String("rename")) {
        rename();
    } else if (state == QLatin1String("menu")) {
        openMenu(m_tree->visualItemRect(current()).center());
    } else if (state == QLatin1String("deep")) {
        m_deepTree->setFocus(Qt::TabFocusReason);
        showDeepest();
    }
}

QWidget* TreePage::opener(const QString& state) const
{
    // The header is hidden at the top of the tree.
    return state == QLatin1String("menu") ? m_tree->header() : nullptr;
}

} // namespace

Page* createTreePage(QWidget* parent)
{
    return new TreePage(parent);
}

} // namespace gallery
