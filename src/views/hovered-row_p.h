#pragma once

#include <QObject>
#include <QPersistentModelIndex>
#include <QPoint>

#include <functional>

class QAbstractItemView;

namespace vantkit::internal {

/**
 * Knows which row of a view is under the pointer, and has it and the one before it painted again when that
 * changes: as the pointer moves, and as the rows move under it.
 */
class HoveredRow : public QObject
{
    Q_OBJECT

public:
    /** The row, by any of its cells, under a place in the coordinates of the view, not of its viewport. */
    using RowAt = std::function<QModelIndex(const QPoint& place)>;

    /** @p view owns it. */
    HoveredRow(QAbstractItemView* view, RowAt rowAt);

    /** Whether @p index is in the row. */
    bool contains(const QModelIndex& index) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow(QEvent* event);
    void update();
    QAbstractItemView* view() const;
    static void repaint(QAbstractItemView* view, const QModelIndex& row);

    RowAt rowUnder;
    QPoint pointer { -1, -1 };
    QPersistentModelIndex hovered;
};

} // namespace vantkit::internal
