#pragma once

#include "vantkit-export.h"

#include <QRadioButton>

/** A radio button with the kit's look. Style key "component.radio_button". */
class VANTKIT_EXPORT VantRadioButton : public QRadioButton
{
    Q_OBJECT

public:
    /** A button that is not chosen, and reads @p text, where "&" marks the key that chooses it. */
    explicit VantRadioButton(const QString& text, QWidget* parent = nullptr);
};
