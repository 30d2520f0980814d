#pragma once

#include "folder-listing.h"

#include <QDate>

#include <optional>

namespace gallery {

struct FileFilter
{
    QString keyword; ///< somewhere in the name; empty for any name
    std::optional<Kind> kind;
    QDate day; ///< of the last change; a null date for any day

    bool accepts(const FileEntry& entry) const;
};

/** What is to be seen of a folder. */
class FileList
{
public:
    void setListing(const ListingPtr& listing);
    void setFilter(const FileFilter& filter);

    const FileFilter& filter() const { return m_filter; }

    int count() const { return static_cast<int>(m_seen.size()); }

    const FileEntry& at(int index) const { return *m_seen.at(static_cast<size_t>(index)); }

    /** Where @p name is; -1 if it is not to be seen. */
    int indexOf(const QString& name) const;

    qint64 totalSize() const;

private:
    void update();

    ListingPtr m_listing;
    FileFilter m_filter;
    std::vector<const FileEntry*> m_seen;
};

} // namespace gallery
