#include "page.h"

#include "code-window.h"
#include "controls.h"
#include "snippets.h"
#include "texts.h"

#include <vantkit-qt/style-manager/style-manager.h>

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int margin = 32;
const int narrowMargin = 16;
const int narrowPage = 560;
const int spacing = 16;
const int narrowestColumn = 520; // of two
const int widestColumn = 960;
const int widestPage = 1760;

} // namespace

Page::Page(QWidget* parent)
    : QWidget(parent)
    , m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(px(margin), px(24), px(margin), px(margin));
    m_layout->setSpacing(px(spacing));
    for (QVBoxLayout*& column : m_columns) {
        column = new QVBoxLayout;
        column->setSpacing(px(spacing));
        column->setAlignment(Qt::AlignTop);
        m_layout->addLayout(column);
    }
    m_layout->setStretch(0, 1);
}

void Page::fitTo(int width)
{
    const int side = px(width < px(narrowPage) ? narrowMargin : margin);
    m_layout->setContentsMargins(side, px(24), side, px(margin));
    int column = px(narrowestColumn);
    for (const QFrame* section : qAsConst(m_sections)) {
        column = qMax(column, section->minimumSizeHint().width());
    }
    const bool isAlone = m_sections.size() == 1;
    const bool isWide = !isAlone && width >= 2 * (column + px(margin)) + px(spacing);
    setMaximumWidth(px(isWide || isAlone ? widestPage : widestColumn));
    if (isWide == m_isWide) {
        return;
    }
    m_isWide = isWide;
    m_layout->setStretch(1, isWide ? 1 : 0);
    const int inFirst = isWide ? sectionsOfHalf() : m_sections.size();
    for (int i = 0; i < m_sections.size(); ++i) {
        m_columns[i < inFirst ? 0 : 1]->addWidget(m_sections.at(i)); // and no longer in the other
    }
}

// As many as leave the higher of the two columns the lowest.
int Page::sectionsOfHalf() const
{
    int whole = 0;
    for (const QFrame* section : m_sections) {
        whole += section->sizeHint().height();
    }
    int best = 1;
    int lowest = whole;
    int first = 0;
    for (int count = 1; count < m_sections.size(); ++count) {
        first += m_sections.at(count - 1)->sizeHint().height();
        const int higher = qMax(first, whole - first);
        if (higher < lowest) {
            lowest = higher;
            best = count;
        }
    }
    return best;
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

QVBoxLayout* Page::addSection(const char* key, const char* classes)
{
    const QString name = QLatin1String(key);
    QFrame* section = styledFrame("section", "gallery.section", this);
    m_columns[0]->addWidget(section);
    m_sections << section;

    auto* layout = new QVBoxLayout(section);
    layout->setContentsMargins(px(24), px(20), px(24), px(24));
    layout->setSpacing(px(4));
    layout->addLayout(sectionHead(section, name, QLatin1String(classes)));
    layout->addWidget(wrappedLabel(text(name + QStringLiteral(".caption")), "gallery.caption", section));
    layout->addSpacing(px(8));

    auto* content = new QVBoxLayout;
    content->setSpacing(px(12));
    layout->addLayout(content);
    return content;
}

QLayout* Page::sectionHead(QWidget* section, const QString& key, const QString& classes)
{
    const QString title = text(key + QStringLiteral(".title"));
    QLabel* ofClasses = shortenedLabel(classes, "gallery.class", section);
    ofClasses->setObjectName(QStringLiteral("class"));
    ofClasses->setFont(codeFont(12));
    ofClasses->setLayoutDirection(Qt::LeftToRight);
    ofClasses->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* code = new QPushButton(text("window.code"), section);
    code->setObjectName(key);
    code->setStyleSheet(getStyleSheet("gallery.code_button"));
    code->setAccessibleName(QStringLiteral("%1: %2").arg(text("window.code"), title));
    connect(code, &QPushButton::clicked, this, [this, key] { showCode(key); });

    auto* head = new QHBoxLayout;
    head->setSpacing(px(12));
    head->addWidget(styledLabel(title, "gallery.section_title", section), 0, Qt::AlignBaseline);
    head->addWidget(ofClasses, 0, Qt::AlignBaseline);
    head->addStretch(1);
    head->addWidget(code, 0, Qt::AlignBaseline);
    return head;
}

void Page::showCode(const QString& key)
{
    auto* window =
        new CodeWindow(text(key + QStringLiteral(".title")), snippetOf(key), this); // goes when closed
    window->show();
}

} // namespace gallery
