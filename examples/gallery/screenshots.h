#pragma once

namespace gallery {

struct Options;

/** Has the pictures come out the same on every machine. Called before the QApplication is made. */
void prepareScreenshots();

/**
 * Writes `<page>.png` and `<page>-<state>.png` for every page, or for the one asked
 * for. Returns the exit code.
 */
int takeScreenshots(const Options& options);

} // namespace gallery
