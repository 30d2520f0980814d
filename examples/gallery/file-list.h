#pragma once

#include "folder-listing.h"

#include <QDate>

#include <optional>

namespace gallery {

/** The size of all together; null if it is known of none. */
std::optional<qint64> totalSizeOf(const std::vector<const FileEntry*>& entries);

struct FileFilter
{
    QString keyword; ///< somewhere in the name; empty for any name
    std::optional<Kind> kind;
    QDate day; ///< of the last change; a null date for any day

    bool isEmpty() const { return keyword.isEmpty() && !kind && day.isNull(); }

    bool accepts(const FileEntry& entry) const;
};

/** What is to be seen of a folder. */
class FileList
{
public:
    void setListing(const ListingPtr& listing);
    void setFilter(const FileFilter& filter);

    const FileFilter& filter() const { return m_filter; }

    /** Whether a folder has been read. */
    bool isRead() const { return m_listing != nullptr; }

    int count() const { return static_cast<int>(m_seen.size()); }

    const FileEntry& at(int index) const { return *m_seen.at(static_cast<size_t>(index)); }

    /** Where @p name is; -1 if it is not to be seen. */
    int indexOf(const QString& name) const;

    const std::vector<const FileEntry*>& seen() const { return m_seen; }

private:
    void update();

    ListingPtr m_listing;
    FileFilter m_filter;
    std::vector<const FileEntry*> m_seen;
};

} // namespace gallery
