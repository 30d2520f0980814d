#pragma once

#include "json-file.h"
#include "template-text.h"

/** Tells which images and icons are missing, of the wrong size or asked for by nobody. */
void checkImages(
    const QDir& folder, const JsonFile& list, const std::vector<Section>& sections, Findings& findings);
