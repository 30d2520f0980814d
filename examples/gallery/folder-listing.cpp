#include "folder-listing.h"

#include <vantkit-qt/utils/file-type-map.h>

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QThreadPool>

#include <algorithm>
#include <filesystem>

namespace gallery {

namespace {

namespace fs = std::filesystem;

const size_t longListing = 1000;

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

// A file whose name is not text is shown by what can be read of it, and nothing more is known of it.
FileEntry entryOf(const QFileInfo& info)
{
    FileEntry entry;
    entry.name = info.fileName();
    entry.changed = info.lastModified();
    if (info.isDir()) {
        entry.kind = Kind::Folder;
        return entry;
    }
    entry.kind = kindOf(FileTypeMap::getInstance().getFiletypeMapping(info.suffix(), false));
    if (info.isFile()) {
        entry.size = info.size();
    }
    return entry;
}

struct SortedEntry
{
    QCollatorSortKey key;
    FileEntry entry;
};

void sort(std::vector<FileEntry>& entries, const QLocale& reader, const std::atomic_bool& isCancelled)
{
    QCollator collator(reader);
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
        if (isFolder != isOtherFolder) {
            return isFolder;
        }
        const int order = one.key.compare(other.key);
        return order == 0 ? one.entry.name < other.entry.name : order < 0;
    });
    std::transform(
        sorted.begin(), sorted.end(), entries.begin(), [](SortedEntry& one) { return std::move(one.entry); });
}

bool isHidden(const QFileInfo& info)
{
    return info.fileName().startsWith(QLatin1Char('.')) || info.isHidden();
}

// Qt's own iterators pass by names that are not text.
void readEntries(FolderListing& listing, const std::atomic_bool& isCancelled)
{
    std::error_code error;
    fs::directory_iterator files(fs::u8path(listing.folder.toStdString()), error);
    for (; !error && files != fs::directory_iterator() && !isCancelled; files.increment(error)) {
        const QString name = QString::fromStdString(files->path().filename().u8string());
        const QFileInfo info(QDir(listing.folder), name);
        if (!isHidden(info)) {
            listing.entries.push_back(entryOf(info));
        }
    }
    listing.isReadable = !error;
}

void release(const FolderListing* listing)
{
    if (listing->entries.size() < longListing) {
        delete listing;
    } else {
        QThreadPool::globalInstance()->start([listing] { delete listing; });
    }
}

} // namespace

ListingPtr readFolder(const QString& folder, const QLocale& reader, const std::atomic_bool& isCancelled)
{
    const std::shared_ptr<FolderListing> listing(new FolderListing, release);
    listing->folder = folder;
    listing->isThere = QFileInfo(folder).isDir();
    if (listing->isThere) {
        readEntries(*listing, isCancelled);
        sort(listing->entries, reader, isCancelled);
    }
    return listing;
}

} // namespace gallery
