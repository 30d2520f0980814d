#pragma once

#include "vantkit-export.h"

#include <QCheckBox>

/** A check box with the kit's look. Style key "component.checkbox". */
class VANTKIT_EXPORT VantCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    /** A box that is not checked, and reads @p text, where "&" marks the key that toggles it. */
    explicit VantCheckBox(const QString& text, QWidget* parent = nullptr);
};
