#pragma once

#include <vantkit-qt/theme/vant-theme.h>

namespace gallery {

class StartupTimes;

/**
 * Starts the kit on @p theme, and what the gallery adds to it: the style of its own parts, its texts, its
 * font. False if the theme is not complete, which the log tells.
 */
bool startKit(const VantTheme& theme, const QString& userFolder, const QString& language);

/** The same step by step, as VantTheme takes them, for @p times to tell what each costs. */
void startKitStepByStep(
    const VantTheme& theme, const QString& userFolder, const QString& language, StartupTimes& times);

/** Reads the files of the theme again, which have changed. False, and nothing is read, as of startKit(). */
bool readThemeAgain(const QString& language);

} // namespace gallery
