#pragma once

#include <QPoint>
#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableView>

namespace vantkit::internal {

/**
 * Has the whole row under the pointer look so. Qt marks the cell alone, also in a table that selects rows.
 */
class TableRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /** @p view owns it. */
    explicit TableRowDelegate(QTableView* view);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private Q_SLOTS:
    void follow();

private:
    void notePointer(QEvent* event);
    void setPointer(const QPoint& position);
    void repaintRow(int row);

    QPointer<QTableView> table; // gone before its viewport, which is watched, and before this
    const QObject* viewport;
    QPoint pointer { -1, -1 };
    int hoveredRow = -1;
};

} // namespace vantkit::internal
