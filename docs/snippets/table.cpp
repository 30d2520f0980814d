#include "snippets.h"

#include <vantkit-qt/vantkit.h>

//! [table.tasks]
QWidget* createTable()
{
    VantTableColumnsInfo columns;
    columns.addColumn("Name", 120, true, 0.6); // at least 120 wide, and 60 % of what is free
    columns.addColumn("Target", 120, true, 0.4);
    columns.addColumn("Files", 72, false); // always 72 wide

    auto* tasks = new VantTableWidget(columns);
    QTableWidget* table = tasks->getTable();
    table->setAccessibleName("Tasks");
    table->setTabKeyNavigation(false); // Tab leaves the table, arrows move in it
    const QList<QStringList> rows = { { "Photos", "Network drive", "8214" }, { "Mail", "Cloud", "1203" } };
    for (const QStringList& texts : rows) {
        const int row = table->rowCount();
        table->insertRow(row);
        for (int column = 0; column < texts.size(); ++column) {
            table->setItem(row, column, new QTableWidgetItem(texts.at(column))); // the table owns it
        }
    }
    return tasks;
}

//! [table.tasks]
