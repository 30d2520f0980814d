#include "snippets.h"

#include <vantkit-qt/vantkit.h>

//! [tree.folders]
FileSystemTreeWidgetItem* createFolder(const QString& name)
{
    auto* folder = new FileSystemTreeWidgetItem; // belongs to what it is added to
    folder->setText(0, name);
    folder->setIcon(0, getGlobalImage("folder"));
    folder->setFlags(folder->flags() | Qt::ItemIsEditable | Qt::ItemIsAutoTristate);
    folder->setCheckState(0, Qt::Unchecked); // a row without a box looks disabled
    return folder;
}

VantTreeWidget* createFolderTree()
{
    auto* tree = new VantTreeWidget;
    tree->setStyleSheet(getStyleSheet("theme.tree") + getStyleSheet("component.scrollbar"));
    tree->setBackgroundColor(QColor("#E6F1FB"), QColor("#EBF0F4")); // selected, under the pointer
    tree->setHeaderHidden(true);
    tree->setAccessibleName("Folders");
    auto* delegate = new ItemDelegate; // rows of one height, and names that a file can have
    delegate->setParent(tree);
    tree->setItemDelegate(delegate);

    FileSystemTreeWidgetItem* home = createFolder("Home");
    home->itemKey = "home"; // stays the first
    FileSystemTreeWidgetItem* documents = createFolder("Documents");
    documents->addChildren({ createFolder("Letters"), createFolder("Invoices") });
    tree->addTopLevelItems({ home, documents, createFolder("Archive") });
    tree->sortItems(0, Qt::AscendingOrder);
    tree->expandAll();
    tree->setCurrentItem(documents);
    return tree;
}

//! [tree.folders]

//! [tree.deep]
void showFolder(VantTreeWidget* tree, QTreeWidgetItem* folder)
{
    tree->setCurrentItem(folder);
    tree->updateScrollArea(folder); // sideways, where its name begins
}

//! [tree.deep]
