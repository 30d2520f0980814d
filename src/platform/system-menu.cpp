#include "platform/win32.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

// A window has no system menu here, and stands for it itself: the flags of its native window tell the window
// manager which functions it has, while those of the widget stay as the application wants them.

namespace {

// QWidget::find() goes wrong when the native window was made anew, which some flags have the X platform do.
QWidget* widgetOf(const void* handle)
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        const QWindow* window = widget->windowHandle();
        if (window && window->handle() && window->winId() == reinterpret_cast<WId>(handle)) {
            return widget;
        }
    }
    return nullptr;
}

} // namespace

HMENU GetSystemMenu(HWND window, BOOL /*revert*/)
{
    return widgetOf(window) ? window : nullptr;
}

BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags)
{
    const QWidget* widget = widgetOf(menu);
    if (!widget || item != SC_CLOSE) {
        return -1;
    }
    QWindow* window = widget->windowHandle();
    const bool wasGrey = !window->flags().testFlag(Qt::WindowCloseButtonHint);
    const bool grey = (flags & (MF_GRAYED | MF_DISABLED)) != 0;
    // A window that has no close button does not get one by being given it back.
    window->setFlag(
        Qt::WindowCloseButtonHint, !grey && widget->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    return static_cast<BOOL>(wasGrey ? MF_GRAYED : MF_ENABLED);
}
