#pragma once

#include <QColor>
#include <QMap>
#include <QString>

#include <utility>
#include <vector>

/** The colours of a theme by their names, in the order of the file. */
using Palette = std::vector<std::pair<QString, QColor>>;

/** Some colours by their names. */
using Colours = QMap<QString, QColor>;

/** What the text of a `palette.json` says. */
Palette paletteOf(const QString& json);

/**
 * Adds the shades that follow from the colours "accent" and "danger", unless they are there.
 *
 * The shade under the pointer has 0.87 of the lightness, the pressed one 0.72, both with the same hue and
 * saturation. The soft one has a lightness of 94.5 % and a saturation of 75 % at most. The focus is the
 * accent.
 */
Colours withShades(Colours colours);
