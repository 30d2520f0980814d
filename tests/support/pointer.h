#pragma once

#include <QScreen>
#include <QtTest>

/**
 * A mouse pointer that acts on the screen, as the platform does, so that Qt itself finds the widget, sends
 * enter and leave events and gives the focus. The widgets have to be shown, in the upper left quarter of
 * their window: at a device pixel ratio of 2 the offscreen platform takes what lies beyond it to be outside.
 */
namespace pointer {

/** Moves to the far corner of the screen, which no window of the tests covers. */
inline void moveAway()
{
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    QCoreApplication::processEvents();
}

inline void press(QWidget* widget)
{
    const QPoint place = widget->mapTo(widget->window(), widget->rect().center());
    QTest::mousePress(widget->window()->windowHandle(), Qt::LeftButton, {}, place);
}

inline void release(QWidget* widget)
{
    const QPoint place = widget->mapTo(widget->window(), widget->rect().center());
    QTest::mouseRelease(widget->window()->windowHandle(), Qt::LeftButton, {}, place);
}

/** Does to @p widget what @p step says, for rows of steps. */
inline void act(QWidget* widget, const QByteArray& step)
{
    const QHash<QByteArray, std::function<void()>> steps {
        { "enter", [=] { QTest::mouseMove(widget); } },
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
        { "nothing", [] {} },
    };
    steps.value(step)();
}

} // namespace pointer
