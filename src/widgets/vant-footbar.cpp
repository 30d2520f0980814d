#include "widgets/vant-footbar.h"

#include "utils/design-pixels_p.h"

#include <QHBoxLayout>

using vantkit::internal::designPixels;

VantFootbar::VantFootbar(QWidget* parent)
    : QWidget(parent)
    , m_layout(new QHBoxLayout(this))
{ }

void VantFootbar::pushLeftWidget(QWidget* widget)
{
    leftWidgets.push_back(widget);
}

void VantFootbar::pushRightWidget(QWidget* widget)
{
    rightWidgets.push_back(widget);
}

void VantFootbar::init()
{
    if (isLaidOut) {
        return;
    }
    isLaidOut = true;
    setMargins(20, 8, 20, 8);
    setSpacing(10);
    m_layout->setAlignment(Qt::AlignLeft);
    for (QWidget* widget : leftWidgets) {
        m_layout->addWidget(widget, 0, Qt::AlignVCenter);
    }
    m_layout->addStretch(1);
    for (QWidget* widget : rightWidgets) {
        m_layout->addWidget(widget, 0, Qt::AlignVCenter);
    }
}

void VantFootbar::setMargins(int left, int top, int right, int bottom)
{
    m_layout->setContentsMargins(
        designPixels(left), designPixels(top), designPixels(right), designPixels(bottom));
}

void VantFootbar::setSpacing(int spacing)
{
    m_layout->setSpacing(designPixels(spacing));
}
