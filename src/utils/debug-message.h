#pragma once

#include "vantkit-export.h"

#include <QLoggingCategory>

/** @file
 * The category of all that the kit logs.
 */

/**
 * The kit's logging category, named "debug.message".
 *
 * Every line of the kit is a warning written with `qCWarning(debug_message)`. Applications may write through
 * the category too, and switch its lines off with `debug_message.setEnabled(QtWarningMsg, false)` or a filter
 * rule. The kit installs no message handler.
 */
extern VANTKIT_EXPORT QLoggingCategory debug_message;
