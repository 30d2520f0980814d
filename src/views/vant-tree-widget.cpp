#include "views/vant-tree-widget.h"

#include "utils/design-pixels_p.h"
#include "views/hovered-row_p.h"

#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

using vantkit::internal::cutToInt;
using vantkit::internal::designPixels;
using vantkit::internal::HoveredRow;

namespace {

void paintGround(QPainter* painter, const QRect& row, const QColor& color)
{
    const int width = cutToInt(row.width() - 3 * DPIinfo::getInstance().getDPI());
    const int radius = designPixels(3);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(QBrush(color, Qt::SolidPattern));
    painter->setPen(QColor(0xFF, 0xFF, 0xFF));
    painter->drawRoundedRect(row.left(), row.top(), width, row.height(), radius, radius, Qt::AbsoluteSize);
    painter->restore();
}

bool mayComeWithPress(Qt::FocusReason reason)
{
    return reason == Qt::MouseFocusReason || reason == Qt::ActiveWindowFocusReason
        || reason == Qt::PopupFocusReason;
}

// A row is moved down by one pixel against the tree; the pointer is moved up by it instead.
QPoint amongRows(const QPoint& pointer)
{
    return pointer - QPoint(0, 1);
}

} // namespace

VantTreeWidget::VantTreeWidget(QWidget* parent)
    : QTreeWidget(parent)
{
    new HoveredRow(this, [this](const QPoint& place) { return rowUnder(place); }); // a child of the tree
}

void VantTreeWidget::setBackgroundColor(QColor selected, QColor hover)
{
    selectedColor = selected;
    hoverColor = hover;
}

void VantTreeWidget::updateScrollArea(QTreeWidgetItem* item)
{
    if (!item) {
        return;
    }
    const int left = visualItemRect(item).left();
    const int width = viewport()->width();
    const bool isSeen = left >= 0 && left + designPixels(100) <= width;
    if (!isSeen) {
        QScrollBar* bar = horizontalScrollBar();
        bar->setValue(bar->value() + left - width / 2);
    }
}

void VantTreeWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) {
        Q_EMIT sigMouseRightClickEvent(event);
    }
    QTreeView::mousePressEvent(event);
}

void VantTreeWidget::keyPressEvent(QKeyEvent* event)
{
    Q_EMIT sigKeyPressEvent(event);
    QTreeView::keyPressEvent(event);
}

void VantTreeWidget::focusInEvent(QFocusEvent* event)
{
    const bool scrolls = hasAutoScroll();
    setAutoScroll(scrolls && !mayComeWithPress(event->reason()));
    renewCurrentItem();
    setAutoScroll(scrolls);
}

void VantTreeWidget::renewCurrentItem()
{
    // Whoever hears of the change may delete the item.
    const QPersistentModelIndex current = currentIndex();
    if (current.isValid()) {
        setCurrentItem(itemAt({ -1, -1 }));
        setCurrentItem(itemFromIndex(current));
    } else {
        setCurrentItem(itemAt({ 0, 0 }));
    }
}

void VantTreeWidget::paintEvent(QPaintEvent* event)
{
    paintedPointer = pointerPlace();
    QTreeWidget::paintEvent(event);
    paintedPointer.reset();
}

void VantTreeWidget::drawRow(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (const std::optional<QColor> ground = rowGround(option.rect, index)) {
        paintGround(painter, option.rect, *ground);
    }
    QStyleOptionViewItem content = option;
    if (!itemFromIndex(index)->flags().testFlag(Qt::ItemIsUserCheckable)) {
        content.state &= ~QStyle::State_Enabled;
    }
    QTreeView::drawRow(painter, content, index);
}

std::optional<QColor> VantTreeWidget::rowGround(const QRect& row, const QModelIndex& index) const
{
    if (selectionModel()->isRowSelected(index.row(), index.parent())) {
        return selectedColor;
    }
    if (row.contains(amongRows(paintedPointer ? *paintedPointer : pointerPlace()))) {
        return hoverColor;
    }
    return std::nullopt;
}

QPoint VantTreeWidget::pointerPlace() const
{
    return mapFromGlobal(QCursor::pos());
}

QModelIndex VantTreeWidget::rowUnder(const QPoint& pointer) const
{
    const QPoint place = amongRows(pointer);
    const bool isBeside = place.x() < 0 || place.x() >= viewport()->width();
    return isBeside ? QModelIndex() : indexAt({ columnViewportPosition(0), place.y() });
}
