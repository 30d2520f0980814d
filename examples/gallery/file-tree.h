#pragma once

#include "folder-listing.h"

#include <vantkit-qt/views/vant-tree-widget.h>

#include <QIcon>

class FileSystemTreeWidgetItem;

namespace gallery {

class FolderReader;

QIcon iconOf(const FileEntry& entry);

/** The places with what is in them, read as they are opened. What is in them can be given another name and be
 * ticked. */
class FileTree : public VantTreeWidget
{
    Q_OBJECT

public:
    FileTree();

    /** Shows @p folder as the current one, as soon as its parents are read. */
    void setCurrentFolder(const QString& folder);
    /** Reads @p folder anew, if it has been read. */
    void refresh(const QString& folder);
    bool isReading() const;
    int tickedItems() const;

Q_SIGNALS:
    void folderChosen(const QString& folder);
    void ticked();
    /** A name was edited. The tree shows the new one until it is told by renamed() or notRenamed(). */
    void nameEdited(const QString& path, const QString& newName);

public Q_SLOTS:
    void renamed(const QString& path, const QString& newPath);
    void notRenamed(const QString& path);

private:
    void addPlaces();
    void open(QTreeWidgetItem* item);
    void readNext();
    void showCurrentFolder();
    void take(const std::shared_ptr<const FolderListing>& listing);
    void fill(QTreeWidgetItem* folder, const FolderListing& listing);
    void takeChange(QTreeWidgetItem* item);
    FileSystemTreeWidgetItem* itemOf(const QString& path) const;

    FolderReader* m_reader;
    QStringList m_toRead;
    QString m_toShow; ///< the folder to make the current one; empty once it is
};

} // namespace gallery
