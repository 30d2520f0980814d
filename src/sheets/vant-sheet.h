#pragma once

#include "vantkit-export.h"

#include <QFrame>

/**
 * The frame of every sheet: a white panel with a soft shadow, for a widget that lies inside a window, in a
 * VantMask.
 *
 * The contents rectangle is the panel; the shadow lies around it, 22 design pixels wide, drawn from the
 * images "bg_tutorial_l", "bg_tutorial_r", "bg_tutorial_t", "bg_tutorial_b", "bg_tutorial_lt",
 * "bg_tutorial_rt", "bg_tutorial_lb" and "bg_tutorial_rb" in their normal state.
 */
class VANTKIT_EXPORT VantSheet : public QFrame
{
    Q_OBJECT

public:
    /** An empty sheet, hidden until it is shown, like any child. @p parent owns it. */
    explicit VantSheet(QWidget* parent);

    /**
     * Makes @p widget the one content of the sheet, centred at its own size, in place of the layout that the
     * sheet had. The sheet owns it; a former content stays its child.
     */
    void setWidget(QWidget* widget);

    /** Shows the sheet without waiting for an answer. */
    virtual void showSheet() = 0;

    /** Draws the shadow of the sheet at its present size. */
    void drawShadow(QPainter& painter);

Q_SIGNALS:
    /** The sheet was closed with @p ret. */
    void finished(int ret);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void keepContentOffShadow();

    int shadowWidth;
};
