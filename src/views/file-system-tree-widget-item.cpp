#include "views/file-system-tree-widget-item.h"

FileSystemTreeWidgetItem::FileSystemTreeWidgetItem()
    : QTreeWidgetItem(0)
{ }

bool FileSystemTreeWidgetItem::operator<(const QTreeWidgetItem& other) const
{
    const auto* folder = dynamic_cast<const FileSystemTreeWidgetItem*>(&other);
    if (folder && folder->itemKey == QLatin1String("home")) {
        return false;
    }
    return QTreeWidgetItem::operator<(other);
}
