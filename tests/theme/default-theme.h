#pragma once

#include <QDir>
#include <QJsonObject>
#include <QStringList>

/** The theme that the kit ships, as it lies in the source tree. */
namespace defaulttheme {

QDir folder();

/** The template files, in the order in which they are loaded. */
QStringList templates();

/** The object in a JSON file; fails the program if there is none. */
QJsonObject readJson(const QString& name);

/** The strings of an array in `images.json`. */
QStringList imageList(const QString& key);

/** The style keys that the kit asks for. */
QStringList kitKeys();

/** Starts the kit on the theme. */
void load(const QString& userFolder);

} // namespace defaulttheme
