#pragma once

#include "palette.h"

/**
 * Copies the theme in @p source to @p folder, which must be new or empty, with other @p colours: those that
 * differ, with their shades. Templates and the SVG sources get them, and the images are drawn anew.
 *
 * @return why it was not done; empty if it was.
 */
QString makeTheme(const QString& source, const QString& folder, const Colours& colours);
