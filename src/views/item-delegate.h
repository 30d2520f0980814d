#pragma once

#include "vantkit-export.h"

#include <QItemDelegate>
#include <QRect>

/** @file
 * The delegate of trees of folders.
 */

class QKeyEvent;

/**
 * The rectangle of the check box that was drawn last by any ItemDelegate, in the coordinates of its view's
 * viewport. Null at the start; a row without a check box leaves an empty one. The kit only writes it.
 */
extern VANTKIT_EXPORT QRect g_check_rect;

/**
 * The delegate for trees of folders: rows of one height, and renaming in place to names that a file can have.
 *
 * Nothing is told to it: set it with setItemDelegate(), which does not take it over, and give it a parent or
 * keep it as long as the view. Style key "component.tree_item" for the editor.
 */
class VANTKIT_EXPORT ItemDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    /** A delegate without a parent. */
    ItemDelegate();

    /**
     * Besides what every delegate does, tells of Escape in the editor, which closes it as ever.
     */
    bool eventFilter(QObject* object, QEvent* event) override;

    /** The base class's width, and a height of 28 design pixels whatever the content. */
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /**
     * Fills @p editor and, if it is a QLineEdit, dresses it and lets it take file names only: none of
     * \ / : * ? " < > | and no dot at the beginning. A name that breaks the rule already is shown, and cannot
     * be left by Return until it is mended.
     */
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;

Q_SIGNALS:
    /** Escape went down in the editor. A slot may delete the editor, the view or this delegate. */
    void sigKeyPressed(QKeyEvent* event);

protected:
    /** Notes @p rect in g_check_rect. */
    void drawCheck(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect,
        Qt::CheckState state) const override;

private:
    bool reportEscape(QObject* editor, QKeyEvent* event);
};
