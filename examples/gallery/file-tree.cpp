#include "file-tree.h"

#include "controls.h"
#include "folder-reader.h"
#include "places.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTimer>

#include <functional>

namespace gallery {

namespace {

// What a folder shows of itself in the tree. The rest is in the table.
const size_t mostChildren = 200;

using Item = FileSystemTreeWidgetItem;

QString pathOf(const QTreeWidgetItem* item)
{
    return static_cast<const Item*>(item)->userData.toString();
}

bool isPlace(const QTreeWidgetItem* item)
{
    return !item->parent();
}

bool isFolder(const QTreeWidgetItem* item)
{
    return item->data(0, Qt::UserRole).toBool();
}

Item* newItem(const QString& path, const QString& name, const QIcon& icon)
{
    auto* item = new Item; // the tree takes it over
    item->userData = path;
    item->setText(0, name);
    item->setIcon(0, icon);
    item->setCheckState(0, Qt::Unchecked);
    return item;
}

void makeFolder(Item* item)
{
    item->setData(0, Qt::UserRole, true);
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
}

Item* newEntryItem(const QString& folder, const FileEntry& entry)
{
    Item* item = newItem(QDir(folder).filePath(entry.name), entry.name, iconOf(entry));
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    if (entry.kind == Kind::Folder) {
        makeFolder(item);
    }
    return item;
}

Item* newRest(size_t count)
{
    auto* item = new Item; // the tree takes it over
    item->setText(0, text("files.more").arg(count));
    item->setFlags(Qt::ItemIsEnabled);
    return item;
}

void forEachItem(QTreeWidgetItem* item, const std::function<void(Item*)>& act)
{
    act(static_cast<Item*>(item));
    for (int i = 0; i < item->childCount(); ++i) {
        forEachItem(item->child(i), act);
    }
}

} // namespace

QIcon iconOf(const FileEntry& entry)
{
    if (entry.kind == Kind::Folder) {
        return getGlobalImage("folder");
    }
    static QHash<QString, QIcon> icons;
    QIcon& icon = icons[entry.icon];
    if (icon.isNull()) {
        icon = QIcon(UIPathManager::getInstance().getPath(QStringLiteral("resource_path"))
            + QStringLiteral("/filetypes/") + entry.icon);
    }
    return icon;
}

FileTree::FileTree()
    : VantTreeWidget(nullptr)
    , m_reader(new FolderReader(this))
{
    setStyleSheet(getStyleSheet("theme.tree") + getStyleSheet("component.scrollbar"));
    setBackgroundColor(QColor(0xE6, 0xF1, 0xFB), QColor(0xEB, 0xF0, 0xF4));
    setAccessibleName(text("files.folders"));
    setHeaderHidden(true);
    setIconSize({ px(20), px(20) });
    setIndentation(px(20));
    setUniformRowHeights(true);
    setEditTriggers(EditKeyPressed | SelectedClicked);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* delegate = new ItemDelegate;
    delegate->setParent(this); // goes with the tree
    setItemDelegate(delegate);

    connect(m_reader, &FolderReader::done, this, &FileTree::take);
    connect(this, &QTreeWidget::itemExpanded, this, &FileTree::open);
    connect(this, &QTreeWidget::itemChanged, this, &FileTree::takeChange);
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item && isFolder(item)) {
            updateScrollArea(item);
            Q_EMIT folderChosen(pathOf(item));
        }
    });
    addPlaces();
}

void FileTree::addPlaces()
{
    const QList<Place> all = places();
    for (const Place& place : all) {
        Item* item = newItem(place.folder, place.name, getGlobalImage("folder"));
        item->itemKey = place.key;
        makeFolder(item);
        addTopLevelItem(item);
    }
    sortItems(0, Qt::AscendingOrder);
    topLevelItem(0)->setExpanded(true);
}

void FileTree::open(QTreeWidgetItem* item)
{
    auto* folder = static_cast<Item*>(item);
    if (!folder->isLoaded) {
        folder->isLoaded = true;
        m_toRead.removeAll(pathOf(folder));
        m_toRead.append(pathOf(folder));
        readNext();
    }
}

bool FileTree::isReading() const
{
    return m_reader->isReading();
}

void FileTree::readNext()
{
    if (!m_reader->isReading() && !m_toRead.isEmpty()) {
        m_reader->read(m_toRead.first());
    }
}

void FileTree::take(const std::shared_ptr<const FolderListing>& listing)
{
    m_toRead.removeFirst();
    if (Item* folder = itemOf(listing->folder)) {
        const QSignalBlocker silent(this);
        fill(folder, *listing);
    }
    readNext();
    showCurrentFolder();
}

// Items of what is still there stay, with their ticks and with what is open below them.
void FileTree::fill(QTreeWidgetItem* folder, const FolderListing& listing)
{
    const QString current = currentItem() ? pathOf(currentItem()) : QString();
    QList<QTreeWidgetItem*> open;
    forEachItem(folder, [&open](Item* item) {
        if (item->isExpanded()) {
            open << item;
        }
    });
    QHash<QString, QTreeWidgetItem*> former;
    const QList<QTreeWidgetItem*> children = folder->takeChildren();
    for (QTreeWidgetItem* child : children) {
        former.insert(pathOf(child), child);
    }

    const size_t shown = std::min(listing.entries.size(), mostChildren);
    for (size_t i = 0; i < shown; ++i) {
        const FileEntry& entry = listing.entries[i];
        QTreeWidgetItem* item = former.take(QDir(listing.folder).filePath(entry.name));
        if (item && isFolder(item) != (entry.kind == Kind::Folder)) {
            former.insert(pathOf(item), item);
            item = nullptr;
        }
        folder->addChild(item ? item : newEntryItem(listing.folder, entry));
    }
    if (shown < listing.entries.size()) {
        folder->addChild(newRest(listing.entries.size() - shown));
    }
    folder->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);

    for (QTreeWidgetItem* gone : qAsConst(former)) {
        forEachItem(gone, [&open](Item* item) { open.removeAll(item); });
        delete gone;
    }
    for (QTreeWidgetItem* item : qAsConst(open)) {
        item->setExpanded(true);
    }
    if (Item* item = itemOf(current)) {
        setCurrentItem(item);
    }
}

void FileTree::takeChange(QTreeWidgetItem* item)
{
    const QString path = pathOf(item);
    const QString name = item->text(0);
    if (isPlace(item) || name == QFileInfo(path).fileName()) {
        Q_EMIT ticked();
        return;
    }
    // The editor is still open, and what follows may open a sheet.
    QTimer::singleShot(0, this, [this, path, name] { Q_EMIT nameEdited(path, name); });
}

void FileTree::renamed(const QString& path, const QString& newPath)
{
    const QSignalBlocker silent(this);
    if (Item* item = itemOf(path)) {
        forEachItem(
            item, [&](Item* below) { below->userData = QString(newPath + pathOf(below).mid(path.size())); });
        item->setText(0, QFileInfo(newPath).fileName());
    }
}

void FileTree::notRenamed(const QString& path)
{
    const QSignalBlocker silent(this);
    if (Item* item = itemOf(path)) {
        item->setText(0, QFileInfo(path).fileName());
    }
}

void FileTree::setCurrentFolder(const QString& folder)
{
    m_toShow = folder;
    showCurrentFolder();
}

// Its parents may have to be read first, one after the other.
void FileTree::showCurrentFolder()
{
    if (m_toShow.isEmpty()) {
        return;
    }
    QString path = m_toShow;
    Item* item = itemOf(path);
    while (!item && !QDir(path).isRoot()) {
        path = QFileInfo(path).path();
        item = itemOf(path);
    }
    if (item && path != m_toShow && (!item->isLoaded || m_toRead.contains(path))) {
        item->setExpanded(true);
        open(item);
        return;
    }
    m_toShow.clear();
    if (item) {
        const QSignalBlocker silent(this);
        for (QTreeWidgetItem* parent = item->parent(); parent; parent = parent->parent()) {
            parent->setExpanded(true);
        }
        setCurrentItem(item);
        updateScrollArea(item);
    }
}

void FileTree::refresh(const QString& folder)
{
    Item* item = itemOf(folder);
    if (item && item->isLoaded) {
        item->isLoaded = false;
        open(item);
    }
}

int FileTree::tickedItems() const
{
    int count = 0;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        forEachItem(topLevelItem(i), [&count](Item* item) { count += item->checkState(0) == Qt::Checked; });
    }
    return count;
}

FileSystemTreeWidgetItem* FileTree::itemOf(const QString& path) const
{
    Item* found = nullptr;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        forEachItem(topLevelItem(i), [&](Item* item) {
            if (!found && !item->userData.isNull() && pathOf(item) == path) {
                found = item;
            }
        });
    }
    return found;
}

} // namespace gallery
