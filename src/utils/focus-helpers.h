#pragma once

#include "vantkit-export.h"

#include <QList>
#include <QString>

/** @file
 * Small helpers for the keyboard focus and for tool tips.
 */

class QWidget;

/** Gives every widget of @p widgets the focus policy @p policy. None of them may be null. */
VANTKIT_EXPORT void adjustFocusPolicy(Qt::FocusPolicy policy, QList<QWidget*> widgets);

/** Rich text in which the plain text @p text keeps its blanks and line ends, for tool tips. */
VANTKIT_EXPORT QString getHtmlEscapedStringForToolTip(const QString& text);
