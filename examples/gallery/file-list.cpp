#include "file-list.h"

#include <algorithm>
#include <numeric>

namespace gallery {

bool FileFilter::accepts(const FileEntry& entry) const
{
    return (keyword.isEmpty() || entry.name.contains(keyword, Qt::CaseInsensitive))
        && (!kind || *kind == entry.kind) && (day.isNull() || entry.changed.date() == day);
}

void FileList::setListing(const ListingPtr& listing)
{
    m_listing = listing;
    update();
}

void FileList::setFilter(const FileFilter& filter)
{
    m_filter = filter;
    update();
}

int FileList::indexOf(const QString& name) const
{
    const auto found = std::find_if(
        m_seen.begin(), m_seen.end(), [&name](const FileEntry* entry) { return entry->name == name; });
    return found == m_seen.end() ? -1 : static_cast<int>(found - m_seen.begin());
}

qint64 FileList::totalSize() const
{
    return std::accumulate(m_seen.begin(), m_seen.end(), qint64 { 0 },
        [](qint64 sum, const FileEntry* entry) { return sum + entry->size; });
}

void FileList::update()
{
    m_seen.clear();
    if (!m_listing) {
        return;
    }
    for (const FileEntry& entry : m_listing->entries) {
        if (m_filter.accepts(entry)) {
            m_seen.push_back(&entry);
        }
    }
}

} // namespace gallery
