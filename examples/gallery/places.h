#pragma once

#include <QList>
#include <QString>

namespace gallery {

/** A folder from which the file browser starts, under a name of its own. */
struct Place
{
    QString key; ///< "home" for the one that comes first
    QString name;
    QString folder;
};

/**
 * The user's home and the whole file system; after useMadeUpPlaces() folders with the same files everywhere.
 */
QList<Place> places();

/** Where the file browser begins. */
QString startFolder();

/** Makes up folders below @p folder, for pictures. */
void useMadeUpPlaces(const QString& folder);

/** A folder as the path bar shows it: below the name of the innermost place that it lies in. */
QString shownPath(const QString& folder);

/** The other way round; empty if @p path begins with no place's name. */
QString folderOf(const QString& path);

} // namespace gallery
