#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QHBoxLayout>
#include <QVBoxLayout>

//! [filter.list]
QWidget* createFilteredList()
{
    VantTableColumnsInfo columns;
    columns.addColumn("Name", 160, true, 1.0);
    auto* list = new VantTableWidget(columns);
    QTableWidget* table = list->getTable();
    table->setRowCount(3);
    table->setItem(0, 0, new QTableWidgetItem("accounts.xlsx"));
    table->setItem(1, 0, new QTableWidgetItem("holiday.jpg"));
    table->setItem(2, 0, new QTableWidgetItem("letter.docx"));

    auto* bar = new VantFilterBar;
    bar->setAccessibleName("Part of the name");
    auto* menu = new VantMenu(bar);
    menu->setStyleSheet(getStyleSheet("component.menu"));
    menu->addAction("All files");
    menu->addAction("Pictures");
    bar->setMenu(menu);
    // Return reports the keyword; what to do with it is the application's affair.
    QObject::connect(bar, &VantFilterBar::sigKeywordChanged, list, [table](const QString& keyword) {
        for (int row = 0; row < table->rowCount(); ++row) {
            const QString name = table->item(row, 0)->text();
            table->setRowHidden(row, !name.contains(keyword, Qt::CaseInsensitive));
        }
    });

    auto* area = new QWidget;
    auto* layout = new QVBoxLayout(area);
    layout->addWidget(bar);
    layout->addWidget(list);
    return area;
}

//! [filter.list]

//! [filter.types]
QWidget* createFileIcons()
{
    auto* icons = new QWidget;
    auto* layout = new QHBoxLayout(icons);
    for (const char* extension : { "docx", "jpg", "zip", "unknown" }) {
        auto* icon = new QLabel;
        icon->setPixmap(VantTheme::of("default").fileTypeIcon(extension));
        layout->addWidget(icon);
    }
    return icons;
}

//! [filter.types]

//! [filter.bars]
QWidget* createFilterBar()
{
    auto* bar = new VantFilterBar; // without setMenu() its button does nothing
    bar->setAccessibleName("Part of the name");
    bar->setPlaceholderText("Filter");
    bar->setClearButtonEnabled(true);
    bar->setText("report");
    return bar;
}

//! [filter.bars]
