#include "widgets/vant-check-box.h"

#include "style-manager/style-manager.h"

VantCheckBox::VantCheckBox(const QString& text, QWidget* parent)
    : QCheckBox(text, parent)
{
    setStyleSheet(getStyleSheet("component.checkbox", false));
}
