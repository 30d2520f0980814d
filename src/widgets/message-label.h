#pragma once

#include "vantkit-export.h"

#include <QLabel>

/**
 * A label that always takes exactly the height that its text needs at its width, whatever its size policy.
 *
 * The sheets get their height from it. It has no style key.
 */
class VANTKIT_EXPORT MessageLabel : public QLabel
{
public:
    explicit MessageLabel(QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;
};
