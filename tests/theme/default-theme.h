#pragma once

#include <QDir>
#include <QStringList>

/** The theme that the kit ships, as it lies in the source tree. */
namespace defaulttheme {

QDir folder();

/** The template files, in the order in which they are loaded. */
QStringList templates();

/** Starts the kit on the theme. */
void load(const QString& userFolder);

} // namespace defaulttheme
