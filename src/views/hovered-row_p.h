#pragma once

#include <QObject>
#include <QPersistentModelIndex>

class QTreeView;

namespace vantkit::internal {

/**
 * Knows which row of a tree counts as being under the pointer, and repaints it and the one before it when
 * that changes: as the pointer moves, and as the rows move under it.
 */
class HoveredRow : public QObject
{
    Q_OBJECT

public:
    /** @p view owns it. */
    explicit HoveredRow(QTreeView* view);

    /** Where the pointer is, to be compared with the rectangle of a row in the viewport of @p tree. */
    static QPoint pointerAmongRows(const QTreeView* tree);

    bool eventFilter(QObject* viewport, QEvent* event) override;

private Q_SLOTS:
    void follow();

private:
    QModelIndex rowUnderPointer() const;
    void repaint(const QModelIndex& row);

    QTreeView* tree;
    QPersistentModelIndex hovered;
};

} // namespace vantkit::internal
