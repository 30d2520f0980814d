#include "views/table-row-delegate_p.h"

#include <QHoverEvent>
#include <QScrollBar>

namespace vantkit::internal {

TableRowDelegate::TableRowDelegate(QTableView* view)
    : QStyledItemDelegate(view)
    , table(view)
    , viewport(view->viewport())
{
    table->viewport()->setAttribute(Qt::WA_Hover);
    table->viewport()->installEventFilter(this);
    connect(table->verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(follow()));
}

bool TableRowDelegate::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == viewport) {
        notePointer(event);
    }
    return watched != viewport && QStyledItemDelegate::eventFilter(watched, event); // which is for editors
}

void TableRowDelegate::notePointer(QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        setPointer(static_cast<QHoverEvent*>(event)->pos());
        break;
    case QEvent::HoverLeave:
        setPointer({ -1, -1 });
        break;
    default:
        break;
    }
}

void TableRowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(
        QStyle::State_MouseOver, index.row() == hoveredRow && option->state.testFlag(QStyle::State_Enabled));
}

void TableRowDelegate::setPointer(const QPoint& position)
{
    pointer = position;
    follow();
}

void TableRowDelegate::follow()
{
    if (table.isNull()) {
        return;
    }
    const int row = table->indexAt(pointer).row();
    if (row != hoveredRow) {
        repaintRow(hoveredRow);
        hoveredRow = row;
        repaintRow(row);
    }
}

void TableRowDelegate::repaintRow(int row)
{
    if (row >= 0) {
        table->viewport()->update(
            0, table->rowViewportPosition(row), table->viewport()->width(), table->rowHeight(row));
    }
}

} // namespace vantkit::internal
