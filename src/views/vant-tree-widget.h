#pragma once

#include "vantkit-export.h"

#include <QColor>
#include <QTreeWidget>

#include <optional>

class QKeyEvent;
class QMouseEvent;

/**
 * A tree with a rounded ground under the selected rows and the one under the pointer, made for folders.
 *
 * It asks for no style key: give it a sheet that paints no ground under rows, such as "theme.tree" of the
 * default theme, and set the colours before it is shown. A row without a check box (one that lacks
 * Qt::ItemIsUserCheckable) draws its content in the disabled look; it can be chosen and edited all the same.
 *
 * The pointer is taken in the coordinates of the tree and compared with the row in those of the viewport,
 * which is made for a frame of one pixel and no header: a header shown moves the row that counts as being
 * under the pointer down by its height.
 */
class VANTKIT_EXPORT VantTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    /** An empty tree of one column. */
    explicit VantTreeWidget(QWidget* parent = nullptr);

    /**
     * The grounds of the selected rows, and of the row under the pointer if it is not selected. Does not
     * repaint. Until it is called, both colours are invalid ones, which Qt paints as black.
     */
    void setBackgroundColor(QColor selected, QColor hover);

    /**
     * Scrolls sideways until @p item begins in the middle of the viewport, unless it begins in the viewport
     * and at least 100 design pixels before its right edge. Null does nothing.
     */
    void updateScrollArea(QTreeWidgetItem* item);

Q_SIGNALS:
    /**
     * The right button went down over the viewport; the tree deals with it afterwards in any case. A slot
     * that wants the tree gone calls deleteLater().
     */
    void sigMouseRightClickEvent(QMouseEvent* event);

    /** A key went down; the tree deals with it afterwards in any case, so deleteLater() holds here too. */
    void sigKeyPressEvent(QKeyEvent* event);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    /**
     * Sets the current item anew, so that currentItemChanged() is sent twice. In between, what lies before
     * the upper left corner of the viewport is the current item: none, or, in a tree that is scrolled both
     * ways, the row above the first one seen. A slot that acts on an item has to bear with that. Without a
     * current item, makes the one at the top of the viewport the current one.
     *
     * The tree scrolls to the current item, but not if the focus comes with the mouse, with the window or
     * from a popup: a press that may follow meets the row that the user sees.
     */
    void focusInEvent(QFocusEvent* event) override;

    /** Asks where the pointer is once for all rows: with a display, the answer comes from another process. */
    void paintEvent(QPaintEvent* event) override;

    void drawRow(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void renewCurrentItem();
    std::optional<QColor> rowGround(const QRect& row, const QModelIndex& index) const;
    QPoint pointerPlace() const;
    QModelIndex rowUnder(const QPoint& pointer) const;

    QColor selectedColor;
    QColor hoverColor;
    std::optional<QPoint> paintedPointer; // what a paint goes by while it lasts
};
