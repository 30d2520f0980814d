#pragma once

#include <QStringList>

/** The names that the kit asks a theme for. */
namespace kitrequests {

/** The keys of style sheets. */
QStringList styleKeys();

/** The names of images. */
QStringList images();

/** Whether the kit asks for an image in all four states, and not only at rest. */
bool hasFourStates(const QString& image);

/** The keys of words. */
QStringList strings();

/** The names of the months' words, from January on. */
QStringList months();

/** The kinds of files that there are icons for. */
QStringList fileTypes();

/** The colours that an application's palette is made of. */
QStringList colours();

} // namespace kitrequests
