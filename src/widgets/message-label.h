#pragma once

#include "vantkit-export.h"

#include <QLabel>

/**
 * A label that always takes exactly the height that its text needs at its width, whatever its size policy.
 *
 * The sheets get their height from it. With word wrap, rich text breaks inside a word that is wider than the
 * label. It has no style key.
 */
class VANTKIT_EXPORT MessageLabel : public QLabel
{
public:
    /** A label without a text, and so without a height. */
    explicit MessageLabel(QWidget* parent = nullptr);

    /** Takes the height that the text needs now. Every resize does; a new text at the same width does not. */
    void fitHeight();

    /** The height in pixels that the text needs at @p width pixels; -1 without a text. */
    int heightForWidth(int width) const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    bool breakLongWords() const;
};
