#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace gallery {

enum class Kind { Folder, Document, Picture, Music, Video, Archive, Other };

struct FileEntry
{
    QString name;
    Kind kind = Kind::Other;
    std::optional<qint64> size; ///< null if it cannot be told, as that of a folder
    QDateTime changed; ///< null if it cannot be told
};

/** What was in a folder when it was read: folders first, each group by name as a reader would sort it. */
struct FolderListing
{
    QString folder;
    bool isThere = false;
    bool isReadable = false;
    std::vector<FileEntry> entries;
};

using ListingPtr = std::shared_ptr<const FolderListing>;

/**
 * Reads a folder without what is hidden, and stops early once @p isCancelled. May run in any thread. A long
 * listing is deleted in a thread of its own, whoever lets go of it last.
 */
ListingPtr readFolder(const QString& folder, const QLocale& reader, const std::atomic_bool& isCancelled);

} // namespace gallery
