#pragma once

#include "vantkit-export.h"

#include <QString>

/**
 * The scale of the display.
 *
 * Sizes in the kit are design pixels, written for a screen of 96 DPI. A design value times getDPI(), cut
 * toward zero, is what Qt is given. The factors are read from the desktop once, at the first getInstance(),
 * which needs a running QApplication and the GUI thread; they do not follow a later change of display.
 */
class VANTKIT_EXPORT DPIinfo
{
public:
    /** The one instance, created on the first call. */
    static DPIinfo& getInstance();

    DPIinfo(const DPIinfo&) = delete;
    DPIinfo& operator=(const DPIinfo&) = delete;

    /** The logical DPI of the desktop relative to 96: 1.0 at 96, 1.25 at 120, 1.5 at 144. */
    double getDPI();

    /** The device pixel ratio of the desktop. */
    double getDPR();

    /**
     * @p text with every number that stands directly before "px" multiplied by getDPI() and cut toward zero.
     *
     * @p text may be any text: a style sheet or rich text. The unit is case-sensitive; everything else stays
     * as it is.
     */
    QString getScaledStyleSheet(QString text);

private:
    DPIinfo();

    double m_dpi;
    double m_dpr;
};
