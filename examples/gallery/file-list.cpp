#include "file-list.h"

#include <algorithm>

namespace gallery {

std::optional<qint64> totalSizeOf(const std::vector<const FileEntry*>& entries)
{
    std::optional<qint64> total;
    for (const FileEntry* entry : entries) {
        if (entry->size) {
            total = total.value_or(0) + *entry->size;
        }
    }
    return total;
}

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
