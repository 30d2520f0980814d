#include "widgets/vant-label.h"

#include "style-manager/style-manager.h"

VantLabel::VantLabel(QWidget* parent, Qt::WindowFlags flags)
    : QLabel(parent, flags)
{
    initialize();
}

VantLabel::VantLabel(const QString& text, QWidget* parent, Qt::WindowFlags flags)
    : QLabel(text, parent, flags)
{
    initialize();
}

void VantLabel::initialize()
{
    setStyleSheet(getStyleSheet("component.label", false));
}

void VantLabel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (wordWrap() && sizePolicy().verticalPolicy() == QSizePolicy::Minimum) {
        setMinimumHeight(0);
        setMinimumHeight(qMax(0, heightForWidth(width()))); // -1 without a text
    }
}
