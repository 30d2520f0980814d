#pragma once

#include <QScreen>
#include <QtTest>

/**
 * A mouse pointer that acts on the screen, as the platform does, so that Qt itself finds the widget, sends
 * enter and leave events and gives the focus. The widgets have to be shown, in the upper left quarter of
 * their window: at a device pixel ratio of 2 the offscreen platform takes what lies beyond it to be outside.
 */
namespace pointer {

inline void moveTo(QWidget* widget)
{
    QTest::mouseMove(widget);
}

/** Moves to the far corner of the screen, which no window of the tests covers. */
inline void moveAway()
{
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    QCoreApplication::processEvents();
}

inline void press(QWidget* widget, Qt::MouseButton button = Qt::LeftButton)
{
    QWidget* window = widget->window();
    QTest::mousePress(window->windowHandle(), button, {}, widget->mapTo(window, widget->rect().center()));
}

inline void release(QWidget* widget, Qt::MouseButton button = Qt::LeftButton)
{
    QWidget* window = widget->window();
    QTest::mouseRelease(window->windowHandle(), button, {}, widget->mapTo(window, widget->rect().center()));
}

} // namespace pointer
