#include "task-window.h"

#include <vantkit-qt/vantkit.h>

#include <QVBoxLayout>

//! [guide.window]
TaskWindow::TaskWindow()
{
    setWindowTitle("Backup tasks");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(createList());
    layout->addWidget(createFoot());

    addTask("Photos", "Network drive");
    addTask("Documents", "External disk");
    addTask("Mail", "Cloud");

    const double scale = DPIinfo::getInstance().getDPI(); // 1.0 at 96 DPI
    resize(int(600 * scale), int(340 * scale));
}

//! [guide.window]

//! [guide.list]
VantTableWidget* TaskWindow::createList()
{
    VantTableColumnsInfo columns;
    columns.addColumn("Name", 160, true, 0.6); // at least 160 wide, and 60 % of what is free
    columns.addColumn("Target", 120, true, 0.4);
    m_tasks = new VantTableWidget(columns);
    m_tasks->getTable()->setAccessibleName("Backup tasks");
    m_tasks->getTable()->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tasks->getTable()->setTabKeyNavigation(false); // Tab leaves the table, arrows move in it
    return m_tasks;
}

void TaskWindow::addTask(const QString& name, const QString& target)
{
    QTableWidget* table = m_tasks->getTable();
    const int row = table->rowCount();
    table->insertRow(row);
    table->setItem(row, 0, new QTableWidgetItem(getGlobalImage("folder"), name)); // the table owns it
    table->setItem(row, 1, new QTableWidgetItem(target));
}

//! [guide.list]

//! [guide.foot]
QWidget* TaskWindow::createFoot()
{
    m_delete = new VantButton("Delete", 5); // the red one
    m_delete->setEnabled(false);
    connect(m_delete, &QPushButton::clicked, this, &TaskWindow::deleteTask);
    QTableWidget* table = m_tasks->getTable();
    connect(table, &QTableWidget::itemSelectionChanged, this,
        [this, table] { m_delete->setEnabled(!table->selectedItems().isEmpty()); });

    auto* close = new VantButton("Close", 1);
    connect(close, &QPushButton::clicked, this, &QWidget::close);

    auto* foot = new VantFootbar;
    foot->pushLeftWidget(m_delete);
    foot->pushRightWidget(close);
    foot->init(); // once, when all are there
    return foot;
}

//! [guide.foot]

//! [guide.delete]
void TaskWindow::deleteTask()
{
    QTableWidget* table = m_tasks->getTable();
    const QString name = table->item(table->currentRow(), 0)->text();
    const QString question = QString("Delete the task \"%1\"?").arg(name.toHtmlEscaped());
    const int answer = showConfirmMsgCustomBtn("Delete", question, { "Delete", "Keep" }, this);
    if (answer == QMessageBox::Ok) {
        table->removeRow(table->currentRow());
    }
}

//! [guide.delete]
