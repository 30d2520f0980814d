#pragma once

#include "vantkit-export.h"

#include <QPushButton>

/**
 * A flat push button of fixed size with one of the kit's looks, which is chosen when it is made.
 *
 * | kind | style key |
 * |---|---|
 * | 0 | "component.apply_button" |
 * | 1 | "component.cancel_button" |
 * | 2 | "component.select_paging_button" |
 * | 3 | "component.nonselect_paging_button" |
 * | 4 | "component.default_button" |
 * | 5 | "component.red_button" |
 * | others | none |
 *
 * It is made without a parent: a layout or the caller gives it one.
 */
class VANTKIT_EXPORT VantButton : public QPushButton
{
    Q_OBJECT

public:
    /** A button that reads @p text, where "&" marks the key that presses it, with the look of @p kind. */
    VantButton(const QString& text, int kind);
};
