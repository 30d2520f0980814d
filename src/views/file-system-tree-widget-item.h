#pragma once

#include "vantkit-export.h"

#include <QString>
#include <QTreeWidgetItem>
#include <QVariant>

/**
 * An item for a folder in a tree, before which nothing is sorted if its key is "home".
 *
 * The fields are the application's: but for the key, nothing in the kit reads them, and nothing writes them.
 *
 * To keep the home folder first, add it first and sort with QTreeWidget::sortItems(), which leaves equal
 * items where they are. A tree that sorts by itself (QTreeView::setSortingEnabled()) looks for the place of a
 * changed item by comparing home's text too, and may put the item before it.
 */
class VANTKIT_EXPORT FileSystemTreeWidgetItem : public QTreeWidgetItem
{
public:
    /** An item without a text and without a parent; the tree or the item that it is added to owns it. */
    FileSystemTreeWidgetItem();

    /**
     * False if the key of @p other is exactly "home"; else Qt's comparison by the sort column, as also with
     * an item of another class.
     */
    bool operator<(const QTreeWidgetItem& other) const override;

    /** The folder's key. */
    QString itemKey;

    /** The folders in it have been read. */
    bool isLoaded = false;

    /** Nothing may be created, renamed or removed in it. */
    bool isReadOnly = false;

    /** It is a link to a folder elsewhere. */
    bool isLink = false;

    /** It was there once and is no more. */
    bool isRemoved = false;

    /** How many files are in it. */
    int fileCount = 0;

    /** Whatever else belongs to the folder. */
    QVariant userData;

protected:
    /** For clone() of a derived class. */
    FileSystemTreeWidgetItem(const FileSystemTreeWidgetItem& other) = default;
    /** For derived classes: copies what the item shows, and the fields, but no children. */
    FileSystemTreeWidgetItem& operator=(const FileSystemTreeWidgetItem& other) = default;
};
