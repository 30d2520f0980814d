#include "support/pointer.h"

#include <QtTest>

namespace {

QPoint centreInWindow(QWidget* widget)
{
    return widget->mapTo(widget->window(), widget->rect().center());
}

QWindow* windowOf(QWidget* widget)
{
    return widget->window()->windowHandle();
}

} // namespace

void pointer::moveTo(QWidget* widget)
{
    QTest::mouseMove(windowOf(widget), centreInWindow(widget));
}

void pointer::moveAway(QWidget* widget)
{
    QTest::mouseMove(windowOf(widget), widget->window()->rect().bottomRight());
}

void pointer::press(QWidget* widget, Qt::MouseButton button)
{
    QTest::mousePress(windowOf(widget), button, Qt::NoModifier, centreInWindow(widget));
}

void pointer::release(QWidget* widget, Qt::MouseButton button)
{
    QTest::mouseRelease(windowOf(widget), button, Qt::NoModifier, centreInWindow(widget));
}
