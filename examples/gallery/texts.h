#pragma once

#include <QLocale>
#include <QString>

namespace gallery {

/**
 * Makes the language of the code @p language the one of the gallery's own texts; what it lacks stays English.
 */
void installTexts(const QString& language);

/** The gallery's own text of @p key; with a warning, @p key itself if there is none. */
QString text(const char* key);
QString text(const QString& key);

/**
 * @p text for what takes rich text, with every character as it is: no mark-up, and no number
 * of pixels that is scaled.
 */
QString asRichText(const QString& text);

/** A size in the units that all pages use. */
QString sizeText(qint64 bytes);

/** What writes numbers and dates in the language of the texts. */
QLocale locale();

} // namespace gallery
