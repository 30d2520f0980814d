#pragma once

#include "utils/dpi-info.h"

#include <limits>

namespace vantkit::internal {

/** @p value cut toward zero; values outside the range of int go to its ends, and what is no number to 0. */
inline int cutToInt(double value)
{
    if (!(value > std::numeric_limits<int>::min())) {
        return value < 0 ? std::numeric_limits<int>::min() : 0;
    }
    return value < std::numeric_limits<int>::max() ? static_cast<int>(value)
                                                   : std::numeric_limits<int>::max();
}

/** The size on the display of @p n design pixels. */
inline int designPixels(int n)
{
    return cutToInt(n * DPIinfo::getInstance().getDPI());
}

} // namespace vantkit::internal
