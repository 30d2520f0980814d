#pragma once

#include "finding.h"

/**
 * Reads the theme in @p folder as the kit does and tells everything that would be a blank without a word, or
 * not look as it was meant. Needs a QApplication, and leaves the kit itself as it is.
 */
Findings checkTheme(const QString& folder);

/** Only what is unreadable or broken, which is soon found: a file that is being written is, for a moment. */
Findings findBrokenFiles(const QString& folder);

/** "folder/file:line: text" for people and editors. */
QString describe(const Finding& finding, const QString& folder);
