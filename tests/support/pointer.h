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

inline void press(QWidget* widget)
{
    QWidget* window = widget->window();
    QTest::mousePress(
        window->windowHandle(), Qt::LeftButton, {}, widget->mapTo(window, widget->rect().center()));
}

inline void release(QWidget* widget)
{
    QWidget* window = widget->window();
    QTest::mouseRelease(
        window->windowHandle(), Qt::LeftButton, {}, widget->mapTo(window, widget->rect().center()));
}

/** Does to @p widget what @p step says, for rows of steps; false if there is no such step. */
inline bool act(QWidget* widget, const QByteArray& step)
{
    const QHash<QByteArray, std::function<void()>> steps {
        { "enter", [=] { moveTo(widget); } },
        { "leave", [] { moveAway(); } },
        { "press", [=] { press(widget); } },
        { "release", [=] { release(widget); } },
        { "focus", [=] { widget->setFocus(); } },
        { "enable", [=] { widget->setEnabled(true); } },
        { "disable", [=] { widget->setEnabled(false); } },
        { "enable-window", [=] { widget->window()->setEnabled(true); } },
        { "disable-window", [=] { widget->window()->setEnabled(false); } },
        { "show", [=] { widget->show(); } },
        { "hide", [=] { widget->hide(); } },
        { "font", [=] { widget->setFont(QFont(QStringLiteral("sans-serif"), 20)); } },
        { "delete", [=] { delete widget; } },
    };
    steps.value(step, [] {})();
    return steps.contains(step);
}

} // namespace pointer
