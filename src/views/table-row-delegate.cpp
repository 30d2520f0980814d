#include "views/table-row-delegate_p.h"

#include <QHoverEvent>
#include <QScrollBar>

namespace vantkit::internal {

TableRowDelegate::TableRowDelegate(QTableView* view)
    : QStyledItemDelegate(view)
    , viewport(view->viewport())
{
    view->viewport()->setAttribute(Qt::WA_Hover);
    view->viewport()->installEventFilter(this);
    connect(view->verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(follow()));
}

// Null while the table is being destroyed: it is no table any more when the pointer leaves its viewport then.
QTableView* TableRowDelegate::table() const
{
    return qobject_cast<QTableView*>(parent());
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
    QTableView* view = table();
    if (!view) {
        return;
    }
    const int row = view->indexAt(pointer).row();
    if (row != hoveredRow) {
        repaintRow(view, hoveredRow);
        hoveredRow = row;
        repaintRow(view, row);
    }
}

void TableRowDelegate::repaintRow(QTableView* table, int row)
{
    if (row >= 0) {
        table->viewport()->update(
            0, table->rowViewportPosition(row), table->viewport()->width(), table->rowHeight(row));
    }
}

} // namespace vantkit::internal
