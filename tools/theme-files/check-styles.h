#pragma once

#include "style-rules.h"

/** Tells which style sheets Qt cannot parse. */
void checkSheets(const std::vector<Section>& sections, Findings& findings);

/** Tells which keys, place markers and parts of declarations are missing or left out. */
void checkStyles(const std::vector<Section>& sections, Findings& findings);

/** Tells which texts do not stand out enough from their ground, which is one of @p pages if no rule says. */
void checkContrast(
    const std::vector<Section>& sections, const std::vector<QColor>& pages, Findings& findings);
