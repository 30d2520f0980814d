#pragma once

#include "sheet.h"

/** The widgets that one style key draws, in all their looks. */
Specimens buttonSpecimens();
Specimens inputSpecimens();
Specimens fieldSpecimens();
Specimens labelSpecimens();
Specimens pagingSpecimens();
Specimens pathSpecimens();
