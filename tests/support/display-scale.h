#pragma once

#include <QtGlobal>

/** The display scale that the test was registered for, as the environment gives it and not the kit. */
namespace displayscale {

/** 96, 120, 144 or 192. */
inline int dpi()
{
    return qEnvironmentVariableIntValue("QT_FONT_DPI");
}

/** The device pixel ratio, 1 or 2. */
inline int ratio()
{
    return qEnvironmentVariableIntValue("QT_SCALE_FACTOR");
}

/** The size on the display of @p designPixels. */
inline int px(int designPixels)
{
    return designPixels * dpi() / 96;
}

/** The one of the values that belongs to the display's DPI. */
template <typename T>
T pick(T at96, T at120, T at144, T at192)
{
    return dpi() == 96 ? at96 : dpi() == 120 ? at120 : dpi() == 144 ? at144 : at192;
}

} // namespace displayscale
