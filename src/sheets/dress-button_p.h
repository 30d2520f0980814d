#pragma once

#include <QString>

class QAbstractButton;

namespace vantkit::internal {

/** @p text, or the kit's string of @p stringKey if it is empty. */
QString textOrString(const QString& text, const char* stringKey);

/** Gives a standard button of a message @p text and the look of @p styleKey. */
void dressButton(QAbstractButton* button, const QString& text, const char* styleKey);

} // namespace vantkit::internal
