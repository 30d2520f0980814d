#pragma once

#include "vantkit-export.h"

#include <QLabel>

/**
 * A label with the kit's look. Style key "component.label".
 *
 * With word wrap and the vertical size policy QSizePolicy::Minimum, a layout cannot squeeze the label below
 * the height that its text needs at its width.
 */
class VANTKIT_EXPORT VantLabel : public QLabel
{
    Q_OBJECT

public:
    /** A label without a text; @p flags are those of QWidget. */
    explicit VantLabel(QWidget* parent = nullptr, Qt::WindowFlags flags = {});
    /** A label that shows @p text, plain or rich as QLabel takes it. */
    explicit VantLabel(const QString& text, QWidget* parent = nullptr, Qt::WindowFlags flags = {});

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void initialize();
};
