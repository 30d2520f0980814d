#include "views/hovered-row_p.h"

#include <QAbstractItemView>
#include <QHoverEvent>

#include <utility>

namespace vantkit::internal {

HoveredRow::HoveredRow(QAbstractItemView* view, RowAt rowAt)
    : QObject(view)
    , rowUnder(std::move(rowAt))
{
    view->setAttribute(Qt::WA_Hover);
    view->installEventFilter(this);
    view->viewport()->installEventFilter(this);
}

// Null while the view is being destroyed: it is no view any more when the pointer leaves it then.
QAbstractItemView* HoveredRow::view() const
{
    return qobject_cast<QAbstractItemView*>(parent());
}

bool HoveredRow::contains(const QModelIndex& index) const
{
    return index.row() == hovered.row() && index.parent() == hovered.parent();
}

bool HoveredRow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent()) {
        follow(event);
    } else if (event->type() == QEvent::Paint) {
        update(); // rows may be somewhere else than at the last paint
    }
    return QObject::eventFilter(watched, event);
}

void HoveredRow::follow(QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        pointer = static_cast<QHoverEvent*>(event)->pos();
        update();
        break;
    case QEvent::HoverLeave:
        pointer = { -1, -1 };
        update();
        break;
    default:
        break;
    }
}

void HoveredRow::update()
{
    QAbstractItemView* rows = view();
    if (!rows) {
        return;
    }
    const QModelIndex row = rowUnder(pointer);
    if (!contains(row)) {
        repaint(rows, hovered);
        repaint(rows, row);
        hovered = row;
    }
}

void HoveredRow::repaint(QAbstractItemView* view, const QModelIndex& row)
{
    const QRect rect = view->visualRect(row);
    view->viewport()->update(0, rect.y(), view->viewport()->width(), rect.height());
}

} // namespace vantkit::internal
