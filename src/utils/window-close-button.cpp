#include "utils/window-close-button.h"

#include "platform/win32.h"

#include <QWidget>
#include <QWindow>

void SHAPISetCloseButtonOfWindowEnable(QWidget* widget, bool enable, void** /*reserved*/)
{
    const QWidget* top = widget ? widget->window() : nullptr;
    const QWindow* window = top ? top->windowHandle() : nullptr;
    const WId handle = window ? window->winId() : 0;
    if (handle == 0) {
        return;
    }
    if (HMENU menu = GetSystemMenu(reinterpret_cast<HWND>(handle), FALSE)) {
        EnableMenuItem(menu, SC_CLOSE, enable ? MF_ENABLED : MF_DISABLED | MF_GRAYED);
    }
}
