#pragma once

#include <QStyledItemDelegate>

class QTableView;

namespace vantkit::internal {

class HoveredRow;

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
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    const HoveredRow* hovered;
};

} // namespace vantkit::internal
