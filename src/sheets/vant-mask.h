#pragma once

#include "vantkit-export.h"

#include <QFrame>

class VantMaskPrivate;

/**
 * A faint cover over a window that holds a sheet in its middle and keeps the mouse, and what is dropped with
 * it, from what lies below.
 *
 * A mask shows and hides with its content, so an application deals with the content only, and it
 * follows the size of the window. It is a child of the widget that it covers, and stays there, hidden,
 * when the content is gone.
 */
class VANTKIT_EXPORT VantMask : public QFrame
{
    Q_OBJECT

public:
    /**
     * Covers the window of @p parent, which must not be null, with @p color, and moves @p widget into the
     * mask, which is its parent from then on. @p parent owns the mask.
     */
    VantMask(QWidget* widget, QWidget* parent, QColor color = faint());
    ~VantMask() override;

    /**
     * Makes a mask for @p widget on @p parent, or on the parent that @p widget has if @p parent is null,
     * which owns it, and returns @p widget; null, and no mask, without a widget or any parent.
     */
    static QWidget* createMask(QWidget* widget, QWidget* parent, QColor color = faint());

    /** Takes the present size of the window. */
    void resize();

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    static QColor faint() { return { 0, 0, 0, 20 }; }

    VantMaskPrivate* d;
};
