#pragma once

#include "folder-listing.h"

#include <vantkit-qt/views/vant-tree-widget.h>

#include <QIcon>

class FileSystemTreeWidgetItem;

namespace gallery {

class FolderReader;

QIcon iconOf(const FileEntry& entry);

/** The places with what is in them, read as they are opened. Everything can be ticked. */
class FileTree : public VantTreeWidget
{
    Q_OBJECT

public:
    FileTree();

    /** Shows @p folder as the current one, as soon as its parents are read. Says nothing of it. */
    void setCurrentFolder(const QString& folder);
    /** Reads @p folder anew, if it has been read. */
    void refresh(const QString& folder);
    bool isReading() const;
    int tickedItems() const;

Q_SIGNALS:
    void folderChosen(const QString& folder);
    /** The current folder turned out to be there no longer. */
    void currentFolderGone();
    void ticked();

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    void addPlaces();
    void open(QTreeWidgetItem* item);
    void readNext();
    bool isToBeRead(const QString& folder) const;
    void showCurrentFolder();
    void makeCurrent(QTreeWidgetItem* item);
    void announce(QTreeWidgetItem* current);
    void choose(QTreeWidgetItem* item);
    void take(const ListingPtr& listing);
    void fill(QTreeWidgetItem* folder, const FolderListing& listing);
    FileSystemTreeWidgetItem* itemOf(const QString& path) const;
    QList<FileSystemTreeWidgetItem*> itemsOf(const QString& path) const;

    FolderReader* m_reader;
    QString m_beingRead;
    QStringList m_toRead; ///< after that
    QString m_toShow; ///< the folder to make the current one; empty once it is
    QString m_current; ///< the item that was made the current one, by the page or by the user
};

} // namespace gallery
