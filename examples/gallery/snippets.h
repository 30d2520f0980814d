#pragma once

#include <QString>

namespace gallery {

/**
 * The code that makes what the section @p section shows, as the documents have it: the snippet of that name
 * in the file that is called after its page, below what the file includes. Empty if there is none.
 */
QString snippetOf(const QString& section);

} // namespace gallery
