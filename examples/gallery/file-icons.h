#pragma once

#include <QPixmap>

namespace gallery {

/**
 * The theme's icon for files with the extension @p extension, 20 design pixels wide; if @p removed, in the
 * form for one that is gone.
 */
QPixmap fileIcon(const QString& extension, bool removed = false);

} // namespace gallery
