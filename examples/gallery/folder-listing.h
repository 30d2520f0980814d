#pragma once

#include <QDateTime>
#include <QString>

#include <atomic>
#include <memory>
#include <vector>

namespace gallery {

enum class Kind { Folder, Document, Picture, Music, Video, Archive, Other };

struct FileEntry
{
    QString name;
    QString icon; ///< the file below the theme's folder of file types; empty for a folder
    Kind kind = Kind::Other;
    qint64 size = 0;
    QDateTime changed;
};

/** What was in a folder when it was read: folders first, each group by name as a reader would sort it. */
struct FolderListing
{
    QString folder;
    bool isReadable = false;
    std::vector<FileEntry> entries;
};

/** Reads a folder without what is hidden, and stops early once @p isCancelled. May run in any thread. */
std::shared_ptr<const FolderListing> readFolder(const QString& folder, const std::atomic_bool& isCancelled);

} // namespace gallery
