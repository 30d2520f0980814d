#include "views/hovered-row_p.h"

#include <QCursor>
#include <QEvent>
#include <QScrollBar>
#include <QTreeView>

namespace vantkit::internal {

HoveredRow::HoveredRow(QTreeView* view)
    : QObject(view)
    , tree(view)
{
    tree->viewport()->setAttribute(Qt::WA_Hover);
    tree->viewport()->installEventFilter(this);
    connect(tree->verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(follow()));
}

QPoint HoveredRow::pointerAmongRows(const QTreeView* tree)
{
    // A row is moved down by one pixel against the tree; the pointer is moved up by it instead.
    return tree->mapFromGlobal(QCursor::pos()) - QPoint(0, 1);
}

bool HoveredRow::eventFilter(QObject* viewport, QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
        follow();
        break;
    default:
        break;
    }
    return QObject::eventFilter(viewport, event);
}

void HoveredRow::follow()
{
    const QModelIndex row = rowUnderPointer();
    if (row != hovered) {
        repaint(hovered);
        repaint(row);
        hovered = row;
    }
}

QModelIndex HoveredRow::rowUnderPointer() const
{
    const QPoint pointer = pointerAmongRows(tree);
    if (pointer.x() < 0 || pointer.x() >= tree->viewport()->width()) {
        return {};
    }
    return tree->indexAt({ tree->columnViewportPosition(0), pointer.y() });
}

void HoveredRow::repaint(const QModelIndex& row)
{
    const QRect rect = tree->visualRect(row);
    tree->viewport()->update(0, rect.y(), tree->viewport()->width(), rect.height());
}

} // namespace vantkit::internal
