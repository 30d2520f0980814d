#include "views/hovered-row_p.h"
#include "views/table-row-delegate_p.h"

#include <QTableView>

namespace vantkit::internal {

namespace {

// Where the table has no cell, it has no row.
QModelIndex rowAt(const QTableView* view, const QPoint& place)
{
    const QWidget* viewport = view->viewport();
    return viewport->geometry().contains(place) ? view->indexAt(viewport->mapFromParent(place))
                                                : QModelIndex();
}

} // namespace

TableRowDelegate::TableRowDelegate(QTableView* view)
    : QStyledItemDelegate(view)
    , hovered(new HoveredRow(view, [view](const QPoint& place) { return rowAt(view, place); })) // view's
{ }

void TableRowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(
        QStyle::State_MouseOver, hovered->contains(index) && option->state.testFlag(QStyle::State_Enabled));
}

} // namespace vantkit::internal
