#pragma once

#include "vantkit-export.h"

/** @file
 * The close button of a window.
 */

class QWidget;

/**
 * Makes the close button of the window of @p widget unavailable, or available again with @p enable, without
 * hiding it.
 *
 * It does nothing for a window that has never been shown, and where there is no window manager. @p reserved
 * is the caller's and neither read nor written.
 */
VANTKIT_EXPORT void SHAPISetCloseButtonOfWindowEnable(QWidget* widget, bool enable, void** reserved);
