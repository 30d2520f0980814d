#include "page.h"

#include "controls.h"
#include "texts.h"

#include <vantkit-qt/style-manager/style-manager.h>

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

namespace gallery {

Page::Page()
    : m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(px(32), px(24), px(32), px(32));
    m_layout->setSpacing(px(16));
    m_layout->setAlignment(Qt::AlignTop);
}

void Page::setLiveEnabled(bool enabled)
{
    for (QWidget* widget : qAsConst(m_live)) {
        widget->setEnabled(enabled);
    }
}

void Page::enterState(const QString& /*state*/) { }

void Page::settle() { }

QWidget* Page::opener(const QString& /*state*/) const
{
    return nullptr;
}

QVBoxLayout* Page::addSection(const QString& key)
{
    QFrame* section = styledFrame("section", "gallery.section");
    m_layout->addWidget(section);

    auto* layout = new QVBoxLayout(section);
    layout->setContentsMargins(px(24), px(20), px(24), px(24));
    layout->setSpacing(px(4));
    layout->addWidget(styledLabel(text(key + QStringLiteral(".title")), "gallery.section_title"));
    layout->addWidget(wrappedLabel(text(key + QStringLiteral(".caption")), "gallery.caption"));
    layout->addSpacing(px(8));

    auto* content = new QVBoxLayout;
    content->setSpacing(px(12));
    layout->addLayout(content);
    return content;
}

} // namespace gallery
