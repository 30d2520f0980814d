#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QDateTime>
#include <QDir>
#include <QHBoxLayout>

//! [files.browser]
void listFolder(const QString& folder, QTableWidget* table)
{
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    table->setRowCount(entries.size());
    for (int row = 0; row < entries.size(); ++row) {
        const QFileInfo& entry = entries.at(row);
        const QPixmap icon =
            entry.isDir() ? getGlobalImage("folder") : VantTheme::of("default").fileTypeIcon(entry.suffix());
        table->setItem(row, 0, new QTableWidgetItem(icon, entry.fileName())); // the table owns it
        table->setItem(row, 1, new QTableWidgetItem(entry.lastModified().toString("yyyy-MM-dd hh:mm")));
    }
}

QWidget* createFileBrowser(const QString& folder)
{
    auto* tree = new VantTreeWidget;
    tree->setStyleSheet(getStyleSheet("theme.tree") + getStyleSheet("component.scrollbar"));
    tree->setHeaderHidden(true);
    tree->setAccessibleName("Folders");
    for (const QString& name : QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        auto* item = new FileSystemTreeWidgetItem;
        item->setText(0, name);
        item->setIcon(0, getGlobalImage("folder"));
        item->setCheckState(0, Qt::Unchecked); // a row without a box looks disabled
        tree->addTopLevelItem(item);
    }

    VantTableColumnsInfo columns;
    columns.addColumn("Name", 144, true, 1.0);
    columns.addColumn("Changed", 144, false);
    auto* files = new VantTableWidget(columns);
    files->getTable()->setAccessibleName("Files");
    listFolder(folder, files->getTable());
    QObject::connect(tree, &QTreeWidget::itemClicked, files, [folder, files](const QTreeWidgetItem* item) {
        listFolder(folder + '/' + item->text(0), files->getTable());
    });

    auto* browser = new QWidget;
    auto* layout = new QHBoxLayout(browser);
    layout->addWidget(tree, 1);
    layout->addWidget(files, 2);
    return browser;
}

//! [files.browser]
