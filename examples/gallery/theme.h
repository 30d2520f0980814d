#pragma once

#include <QMap>
#include <QString>

#include <vector>

namespace gallery {

/** The folder of the theme that comes with the kit: the installed one, else the one in the source tree. */
QString defaultThemeFolder();

bool isTheme(const QString& folder);

/** The theme's template files in the order of their names, with the gallery's own behind them. */
std::vector<QString> templateFiles(const QString& themeFolder);

/** The theme's texts in the language of the code @p language, in English if it has none. */
QMap<QString, QString> componentStrings(const QString& themeFolder, const QString& language);

/** The flat JSON object of texts in the file @p path; empty if there is none. */
QMap<QString, QString> readTexts(const QString& path);

/**
 * The theme is drawn for a light ground: has what no theme covers be light too,
 * whatever the desktop's colours.
 */
void useLightGround();

} // namespace gallery
