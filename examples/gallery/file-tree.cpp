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

#include <algorithm>
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

QString childPath(const FolderListing& listing, const FileEntry& entry)
{
    return QDir(listing.folder).filePath(entry.name);
}

size_t shownChildren(const FolderListing& listing)
{
    return std::min(listing.entries.size(), mostChildren);
}

// Whether nothing would change, so that what is seen may stay as it is.
bool shows(const QTreeWidgetItem* folder, const FolderListing& listing)
{
    const size_t shown = shownChildren(listing);
    if (shown < listing.entries.size() || static_cast<int>(shown) != folder->childCount()) {
        return false;
    }
    for (size_t i = 0; i < shown; ++i) {
        const QTreeWidgetItem* child = folder->child(static_cast<int>(i));
        const FileEntry& entry = listing.entries[i];
        if (pathOf(child) != childPath(listing, entry) || isFolder(child) != (entry.kind == Kind::Folder)) {
            return false;
        }
    }
    return true;
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
    return entry.kind == Kind::Folder ? getGlobalImage("folder")
                                      : currentTheme().fileTypeIcon(QFileInfo(entry.name).suffix());
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
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* delegate = new ItemDelegate;
    delegate->setParent(this); // goes with the tree
    setItemDelegate(delegate);

    connect(m_reader, &FolderReader::done, this, &FileTree::take);
    connect(this, &QTreeWidget::itemExpanded, this, &FileTree::open);
    connect(this, &QTreeWidget::itemChanged, this, &FileTree::ticked);
    connect(this, &QTreeWidget::currentItemChanged, this, &FileTree::announce);
    connect(this, &QTreeWidget::itemClicked, this, &FileTree::choose);
    connect(this, &QTreeWidget::itemActivated, this, &FileTree::choose);
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

// The tree may go over the folder of another row, which nobody has chosen.
void FileTree::focusInEvent(QFocusEvent* event)
{
    {
        const QSignalBlocker silent(this);
        VantTreeWidget::focusInEvent(event);
    }
    announce(currentItem());
}

void FileTree::announce(QTreeWidgetItem* current)
{
    if (!current || pathOf(current) == m_current) {
        return;
    }
    m_current = pathOf(current);
    if (isFolder(current)) {
        m_toShow.clear();
        updateScrollArea(current);
        Q_EMIT folderChosen(m_current);
    }
}

// Also one that is the current item already, in place of a folder that is not in the tree.
void FileTree::choose(QTreeWidgetItem* item)
{
    if (isFolder(item)) {
        Q_EMIT folderChosen(pathOf(item));
    }
}

void FileTree::open(QTreeWidgetItem* item)
{
    auto* folder = static_cast<Item*>(item);
    if (!folder->isLoaded) {
        folder->isLoaded = true;
        if (!m_toRead.contains(pathOf(folder))) {
            m_toRead.append(pathOf(folder));
        }
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
        m_beingRead = m_toRead.takeFirst();
        m_reader->read(m_beingRead);
    }
}

bool FileTree::isToBeRead(const QString& folder) const
{
    return m_beingRead == folder || m_toRead.contains(folder);
}

void FileTree::take(const ListingPtr& listing)
{
    m_beingRead.clear();
    const QList<Item*> items = itemsOf(listing->folder);
    for (Item* item : items) {
        // The same folder may be in several places, and need not be open in all of them.
        if (item->isLoaded && !shows(item, *listing)) {
            fill(item, *listing);
        }
        item->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
    }
    if (!listing->isThere) {
        refresh(QFileInfo(listing->folder).path());
    }
    readNext();
    showCurrentFolder();
}

// Items of what is still there stay, with their ticks and with what is open below them.
void FileTree::fill(QTreeWidgetItem* folder, const FolderListing& listing)
{
    QTreeWidgetItem* current = currentItem();
    const bool hadFolder = current && isFolder(current);
    const bool hadNone = !current;
    {
        const QSignalBlocker silent(this);
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
        QList<QTreeWidgetItem*> latter;
        const size_t shown = shownChildren(listing);
        for (size_t i = 0; i < shown; ++i) {
            const FileEntry& entry = listing.entries[i];
            QTreeWidgetItem* item = former.value(childPath(listing, entry));
            if (item && isFolder(item) == (entry.kind == Kind::Folder)) {
                former.remove(pathOf(item));
                latter << item;
            } else {
                latter << newEntryItem(listing.folder, entry);
            }
        }
        if (shown < listing.entries.size()) {
            latter << newRest(listing.entries.size() - shown);
        }
        folder->addChildren(latter);

        for (QTreeWidgetItem* gone : qAsConst(former)) {
            forEachItem(gone, [&](Item* item) {
                open.removeAll(item);
                current = current == item ? nullptr : current;
            });
            delete gone;
        }
        for (QTreeWidgetItem* item : qAsConst(open)) {
            item->setExpanded(true);
        }
        setCurrentItem(current || hadNone ? current : folder);
        m_current = currentItem() ? pathOf(currentItem()) : QString();
    }
    if (!current && hadFolder) {
        Q_EMIT currentFolderGone();
    }
}

void FileTree::setCurrentFolder(const QString& folder)
{
    if (!currentItem() || pathOf(currentItem()) != folder) {
        m_toShow = folder;
        showCurrentFolder();
    }
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
    if (item && path != m_toShow && (!item->isLoaded || isToBeRead(path))) {
        if (!currentItem()) {
            makeCurrent(item);
        }
        item->setExpanded(true);
        open(item);
        return;
    }
    m_toShow.clear();
    if (item) {
        makeCurrent(item);
    }
}

void FileTree::makeCurrent(QTreeWidgetItem* item)
{
    for (QTreeWidgetItem* parent = item->parent(); parent; parent = parent->parent()) {
        parent->setExpanded(true);
    }
    const QSignalBlocker silent(this);
    setCurrentItem(item);
    m_current = pathOf(item);
    scrollToItem(item);
    updateScrollArea(item);
}

void FileTree::refresh(const QString& folder)
{
    const QList<Item*> items = itemsOf(folder);
    for (Item* item : items) {
        if (item->isLoaded) {
            item->isLoaded = false;
            open(item);
        }
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
    return itemsOf(path).value(0);
}

QList<FileSystemTreeWidgetItem*> FileTree::itemsOf(const QString& path) const
{
    QList<Item*> found;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        forEachItem(topLevelItem(i), [&](Item* item) {
            if (!item->userData.isNull() && pathOf(item) == path) {
                found << item;
            }
        });
    }
    return found;
}

} // namespace gallery
