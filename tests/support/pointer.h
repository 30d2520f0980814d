#pragma once

#include <QWidget>

/**
 * A mouse pointer that acts on the window, as the platform does, so that Qt itself finds the widget, sends
 * enter and leave events and gives the focus. The widgets have to be shown.
 */
namespace pointer {

void moveTo(QWidget* widget);

/** Moves to a corner of the window, which no widget of the test covers. */
void moveAway(QWidget* widget);

void press(QWidget* widget, Qt::MouseButton button = Qt::LeftButton);
void release(QWidget* widget, Qt::MouseButton button = Qt::LeftButton);

} // namespace pointer
