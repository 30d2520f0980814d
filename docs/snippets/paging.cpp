#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QVBoxLayout>

//! [paging.list]
QWidget* createPagedList()
{
    auto* area = new QWidget;
    VantTableColumnsInfo columns;
    columns.addColumn("Entry", 160, true, 1.0);
    auto* list = new VantTableWidget(columns);
    auto* model = new VantPagingModel(5); // five rows on a page
    auto* bar = new VantPagingBar(model);
    model->setParent(bar); // which needs it to its end

    // The bar fetches nothing: it tells when to.
    const auto fill = [list, model] {
        QTableWidget* table = list->getTable();
        table->setRowCount(qMin(model->rowLimit(), model->itemCount() - model->startItem()));
        for (int row = 0; row < table->rowCount(); ++row) {
            const int number = model->startItem() + row + 1;
            table->setItem(row, 0, new QTableWidgetItem(QString::number(number)));
        }
    };
    QObject::connect(bar, &VantPagingBar::sigPageChanged, list, fill);
    QObject::connect(bar, &VantPagingBar::sigRefresh, list, fill);
    bar->setItemCount(48);
    bar->setFooterText("48 entries");
    bar->reset(); // to the first page

    auto* layout = new QVBoxLayout(area);
    layout->addWidget(list);
    layout->addWidget(bar);
    return area;
}

//! [paging.list]

//! [paging.moment]
QWidget* createBarInTheMiddle()
{
    auto* area = new QWidget;
    auto* model = new VantPagingModel(20, area); // stays the caller's: the area's here
    auto* bar = new VantPagingBar(model);
    bar->setFooterInfo({ "1,234 entries", 136 }); // 136 wide, so that the buttons keep their place
    bar->setItemCount(1234);
    bar->setPage(31);

    auto* layout = new QVBoxLayout(area);
    layout->addWidget(bar);
    return area;
}

//! [paging.moment]
