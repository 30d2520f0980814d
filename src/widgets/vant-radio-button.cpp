#include "widgets/vant-radio-button.h"

#include "style-manager/style-manager.h"

VantRadioButton::VantRadioButton(const QString& text, QWidget* parent)
    : QRadioButton(text, parent)
{
    setStyleSheet(getStyleSheet("component.radio_button", false));
}
