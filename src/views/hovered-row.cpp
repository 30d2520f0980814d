#include "views/hovered-row_p.h"

#include <QCursor>
#include <QEvent>
#include <QScrollBar>
#include <QTreeView>

namespace vantkit::internal {

HoveredRow::HoveredRow(QTreeView* view)
    : QObject(view)
{
    view->viewport()->setAttribute(Qt::WA_Hover);
    view->viewport()->installEventFilter(this);
    connect(view->verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(follow()));
}

// Null while the tree is being destroyed: it is no tree any more when the pointer leaves its viewport then.
QTreeView* HoveredRow::tree() const
{
    return qobject_cast<QTreeView*>(parent());
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
    QTreeView* view = tree();
    if (!view) {
        return;
    }
    const QModelIndex row = rowUnderPointer(view);
    if (row != hovered) {
        repaint(view, hovered);
        repaint(view, row);
        hovered = row;
    }
}

QModelIndex HoveredRow::rowUnderPointer(const QTreeView* tree)
{
    const QPoint pointer = pointerAmongRows(tree);
    if (pointer.x() < 0 || pointer.x() >= tree->viewport()->width()) {
        return {};
    }
    return tree->indexAt({ tree->columnViewportPosition(0), pointer.y() });
}

void HoveredRow::repaint(QTreeView* tree, const QModelIndex& row)
{
    const QRect rect = tree->visualRect(row);
    tree->viewport()->update(0, rect.y(), tree->viewport()->width(), rect.height());
}

} // namespace vantkit::internal
