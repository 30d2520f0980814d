#pragma once

#include "vantkit-export.h"

#include <QWidget>

#include <vector>

class QHBoxLayout;

/**
 * A bar at the foot of a window that lays out widgets from the left and from the right.
 *
 * Push the widgets, then call init() once. It has no style key.
 */
class VANTKIT_EXPORT VantFootbar : public QWidget
{
public:
    /** An empty bar. */
    explicit VantFootbar(QWidget* parent = nullptr);

    /** Puts @p widget behind those pushed to the left so far. The bar owns it from init() on. */
    void pushLeftWidget(QWidget* widget);

    /**
     * Puts @p widget behind those pushed to the right so far; the first one stands farthest from the edge.
     */
    void pushRightWidget(QWidget* widget);

    /**
     * Lays out what was pushed, with margins of 20, 8, 20, 8 and a spacing of 10 design pixels. Further calls
     * do nothing.
     */
    void init();

    /** The margins in design pixels. init() overwrites what was set before it. */
    void setMargins(int left, int top, int right, int bottom);

    /** The spacing in design pixels. init() overwrites what was set before it. */
    void setSpacing(int spacing);

private:
    QHBoxLayout* m_layout;
    bool isLaidOut = false;
    std::vector<QWidget*> leftWidgets;
    std::vector<QWidget*> rightWidgets;
};
