#include "sheets/dress-button_p.h"
#include "style-manager/style-manager.h"
#include "utils/component-strings.h"

#include <QAbstractButton>

QString vantkit::internal::textOrString(const QString& text, const char* stringKey)
{
    return text.isEmpty() ? ComponentStrings::getInstance().getString(QString::fromUtf8(stringKey)) : text;
}

void vantkit::internal::dressButton(QAbstractButton* button, const QString& text, const char* styleKey)
{
    button->setText(text);
    button->setIcon(QIcon()); // where the desktop gives standard buttons one, a waste bin for Discard
    button->setStyleSheet(getStyleSheet(styleKey, false));
}
