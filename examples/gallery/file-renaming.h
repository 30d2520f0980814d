#pragma once

#include <QString>

namespace gallery {

/**
 * Renames a file or folder within its folder. Nothing that is there already is ever written over. Returns
 * what went wrong, in words for the user; empty if nothing did.
 */
QString renameFile(const QString& path, const QString& newName);

} // namespace gallery
