#include "platform/win32.h"

#include <QGuiApplication>
#include <QVariant>
#include <QWindow>

// A window has no system menu here. What stands for it is the window itself, whose flags tell the window
// manager which functions it has.

namespace {

const char* const greyed = "_vantkit_close_greyed";

template <typename Matches>
QWindow* windowThat(const Matches& matches)
{
    const QWindowList windows = QGuiApplication::allWindows();
    for (QWindow* window : windows) {
        if (window->handle() && matches(window)) {
            return window;
        }
    }
    return nullptr;
}

} // namespace

HMENU GetSystemMenu(HWND window, BOOL /*revert*/)
{
    return windowThat(
        [window](const QWindow* candidate) { return candidate->winId() == reinterpret_cast<WId>(window); });
}

BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags)
{
    QWindow* window = windowThat([menu](const QWindow* candidate) { return candidate == menu; });
    if (!window || item != SC_CLOSE) {
        return -1;
    }
    const bool wasGrey = window->property(greyed).toBool();
    const bool grey = (flags & (MF_GRAYED | MF_DISABLED)) != 0;
    // A window that has no close button does not get one by being given it back.
    if (grey != wasGrey && (wasGrey || window->flags().testFlag(Qt::WindowCloseButtonHint))) {
        window->setFlag(Qt::WindowCloseButtonHint, !grey);
        window->setProperty(greyed, grey);
    }
    return static_cast<BOOL>(wasGrey ? MF_GRAYED : MF_ENABLED);
}
