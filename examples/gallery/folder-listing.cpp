#include "folder-listing.h"

#include <vantkit-qt/utils/file-type-map.h>

#include <QCollator>
#include <QDirIterator>
#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace gallery {

namespace {

Kind kindOf(const QString& icon)
{
    static const QHash<QString, Kind> kinds {
        { "doc.png", Kind::Document },
        { "htm.png", Kind::Document },
        { "pdf.png", Kind::Document },
        { "ppt.png", Kind::Document },
        { "txt.png", Kind::Document },
        { "xls.png", Kind::Document },
        { "ai.png", Kind::Picture },
        { "image.png", Kind::Picture },
        { "psd.png", Kind::Picture },
        { "audio.png", Kind::Music },
        { "video.png", Kind::Video },
        { "swf.png", Kind::Video },
        { "bkpi.png", Kind::Archive },
        { "iso.png", Kind::Archive },
        { "zip.png", Kind::Archive },
    };
    return kinds.value(icon, Kind::Other);
}

FileEntry entryOf(const QFileInfo& info)
{
    FileEntry entry;
    entry.name = info.fileName();
    entry.changed = info.lastModified();
    if (info.isDir()) {
        entry.kind = Kind::Folder;
        return entry;
    }
    entry.icon = FileTypeMap::getInstance().getFiletypeMapping(info.suffix(), false);
    entry.kind = kindOf(entry.icon);
    entry.size = info.size();
    return entry;
}

struct SortedEntry
{
    QCollatorSortKey key;
    FileEntry entry;
};

void sort(std::vector<FileEntry>& entries, const std::atomic_bool& isCancelled)
{
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<SortedEntry> sorted;
    sorted.reserve(entries.size());
    for (FileEntry& entry : entries) {
        if (isCancelled) {
            return;
        }
        sorted.push_back({ collator.sortKey(entry.name), std::move(entry) });
    }
    std::sort(sorted.begin(), sorted.end(), [](const SortedEntry& one, const SortedEntry& other) {
        const bool isFolder = one.entry.kind == Kind::Folder;
        const bool isOtherFolder = other.entry.kind == Kind::Folder;
        return isFolder == isOtherFolder ? one.key < other.key : isFolder;
    });
    std::transform(
        sorted.begin(), sorted.end(), entries.begin(), [](SortedEntry& one) { return std::move(one.entry); });
}

} // namespace

std::shared_ptr<const FolderListing> readFolder(const QString& folder, const std::atomic_bool& isCancelled)
{
    auto listing = std::make_shared<FolderListing>();
    listing->folder = folder;
    listing->isReadable = QFileInfo(folder).isDir() && QDir(folder).isReadable();
    if (!listing->isReadable) {
        return listing;
    }
    QDirIterator files(folder, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    while (files.hasNext() && !isCancelled) {
        files.next();
        listing->entries.push_back(entryOf(files.fileInfo()));
    }
    sort(listing->entries, isCancelled);
    return listing;
}

} // namespace gallery
