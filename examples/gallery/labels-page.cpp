#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int labelWidths[] = { 240, 360, 480, 640 };

// A LinkLabel knows the mouse only. This has it answer to the keyboard as well.
class LinkKeys : public QObject
{
public:
    explicit LinkKeys(LinkLabel* link)
        : QObject(link)
    {
        link->setFocusPolicy(Qt::StrongFocus);
        link->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
                Q_EMIT static_cast<LinkLabel*>(watched)->clicked();
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

class LabelsPage : public Page
{
public:
    explicit LabelsPage(QWidget* parent);

    void enterState(const QString& state) override;

private:
    void addLabel();
    void addMessages();
    void addLinks();
    LinkLabel* addLink(QHBoxLayout* row, const char* key);
    void applyChoices();

    VantComboBox* m_text = nullptr;
    VantComboBox* m_width = nullptr;
    QFrame* m_labelFrame = nullptr;
    VantLabel* m_label = nullptr;
    QFrame* m_messageFrame = nullptr;
    MessageLabel* m_message = nullptr;
    LinkLabel* m_firstLink = nullptr;
};

// The label tinted, in a frame that has room to spare, so that the height it takes is plain to see.
QFrame* framed(QLabel* label)
{
    label->setWordWrap(true);
    label->setStyleSheet(getStyleSheet("component.label") + getStyleSheet("gallery.tint"));
    QFrame* frame = styledFrame("well", "gallery.well");
    frame->setMinimumHeight(px(80));
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(px(12), px(12), px(12), px(12));
    layout->addWidget(label);
    return frame;
}

QLayout* named(const char* name, QWidget* widget)
{
    auto* column = new QVBoxLayout;
    column->setSpacing(px(4));
    column->addWidget(styledLabel(QLatin1String(name), "gallery.caption"));
    column->addWidget(widget);
    return column;
}

LabelsPage::LabelsPage(QWidget* parent)
    : Page(parent)
{
    addLabel();
    addMessages();
    addLinks();
    applyChoices();
}

void LabelsPage::addLabel()
{
    QVBoxLayout* section = addSection("labels.wrap", "VantLabel, MessageLabel");

    m_text = comboBox(text("labels.text"), { text("labels.text.long"), text("labels.text.short") }, 160);
    m_width = comboBox(text("labels.width"), {}, 120);
    for (int width : labelWidths) {
        m_width->addItem(text("labels.pixels").arg(width), width);
    }
    m_width->setCurrentIndex(2);
    for (VantComboBox* box : { m_text, m_width }) {
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &LabelsPage::applyChoices);
    }
    auto* choices = new QHBoxLayout;
    choices->setSpacing(px(24));
    choices->addLayout(labelled(text("labels.text"), m_text));
    choices->addLayout(labelled(text("labels.width"), m_width));
    choices->addStretch(1);
    section->addLayout(choices);

    m_label = live(new VantLabel);
    m_label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    m_labelFrame = framed(m_label);
    section->addLayout(named("VantLabel", m_labelFrame));

    m_message = live(new MessageLabel);
    m_messageFrame = framed(m_message);
    section->addLayout(named("MessageLabel", m_messageFrame));
}

void LabelsPage::applyChoices()
{
    const QString words = text(m_text->currentIndex() == 0 ? "sample.long" : "sample.short");
    m_label->setText(words);
    m_message->setText(words);
    for (QFrame* frame : { m_labelFrame, m_messageFrame }) {
        frame->setFixedWidth(px(m_width->currentData().toInt()));
    }
}

void LabelsPage::addMessages()
{
    QVBoxLayout* section = addSection("labels.message", "MessageLabel");

    const struct
    {
        const char* icon;
        const char* key;
    } messages[] = {
        { "icon_information", "labels.information" },
        { "icon_question", "labels.question" },
        { "icon_warning", "labels.warning" },
    };

    for (const auto& message : messages) {
        auto* icon = new QLabel;
        icon->setPixmap(getGlobalImage(message.icon));

        auto* words = new QVBoxLayout;
        words->setSpacing(px(4));
        for (const char* part : { ".text", ".more" }) {
            const bool main = qstrcmp(part, ".text") == 0;
            auto* label = new MessageLabel;
            label->setWordWrap(true);
            label->setStyleSheet(getStyleSheet(
                main ? "component.message_sheet_text" : "component.message_sheet_informative_text"));
            label->setText(text(QLatin1String(message.key) + QLatin1String(part)));
            words->addWidget(label);
        }
        auto* row = new QHBoxLayout;
        row->setSpacing(px(16));
        row->addWidget(icon, 0, Qt::AlignTop);
        row->addLayout(words, 1);
        section->addLayout(row);
    }
}

void LabelsPage::addLinks()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(px(24));
    m_firstLink = live(addLink(row, "labels.link.guide"));
    live(addLink(row, "labels.link.news"));
    addLink(row, "state.disabled")->setEnabled(false);
    row->addStretch(1);
    addSection("labels.link", "LinkLabel")->addLayout(row);
}

LinkLabel* LabelsPage::addLink(QHBoxLayout* row, const char* key)
{
    auto* link = new LinkLabel(text(key));
    link->setStyleSheet(getStyleSheet("gallery.link"));
    link->setIndent(0);
    link->setHyperLink(QStringLiteral("https://example.org/"));
    new LinkKeys(link); // a child of the link
    connect(link, &LinkLabel::clicked, this,
        [this, link] { Q_EMIT happened(text("event.link").arg(link->text(), link->getHyperLink())); });
    row->addWidget(link);
    return link;
}

void LabelsPage::enterState(const QString& state)
{
    if (state == QLatin1String("narrow")) {
        m_width->setCurrentIndex(0);
    } else if (state == QLatin1String("focus")) {
        m_firstLink->setFocus(Qt::TabFocusReason);
    }
}

} // namespace

Page* createLabelsPage(QWidget* parent)
{
    return new LabelsPage(parent);
}

} // namespace gallery
