#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QFrame>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int mostOnOneSide = 3;

const struct
{
    int left, top, right, bottom;
} margins[] = { { 20, 8, 20, 8 }, { 8, 4, 8, 4 }, { 40, 20, 40, 20 } };

const int spacings[] = { 10, 4, 24 };

class FootbarPage : public Page
{
public:
    explicit FootbarPage(QWidget* parent);

    void enterState(const QString& state) override;

private:
    QWidget* windowPicture();
    QLayout* measures();
    QLayout* additions();
    VantButton* additionButton(const char* key, int* count);
    void buildBar();
    VantButton* barButton(const QString& text, int kind);
    void chainKeyboard();
    void applyMeasures();

    QFrame* m_foot = nullptr;
    VantFootbar* m_bar = nullptr;
    VantComboBox* m_margins = nullptr;
    VantComboBox* m_spacing = nullptr;
    VantButton* m_addLeft = nullptr;
    VantButton* m_addRight = nullptr;
    int m_left = 1;
    int m_right = 2;
};

FootbarPage::FootbarPage(QWidget* parent)
    : Page(parent)
{
    QVBoxLayout* section = addSection("footbar.bar", "VantFootbar");
    section->addLayout(measures());
    section->addLayout(additions());

    section->addWidget(windowPicture());
    buildBar();
}

QWidget* FootbarPage::windowPicture()
{
    QFrame* picture = styledFrame("picture", "gallery.picture");
    m_foot = live(styledFrame("foot", "gallery.foot"));
    auto* foot = new QVBoxLayout(m_foot);
    foot->setContentsMargins(0, px(1), 0, 0);
    auto* layout = new QVBoxLayout(picture);
    layout->setContentsMargins(px(1), px(96), px(1), px(1));
    layout->addWidget(m_foot);
    return picture;
}

QLayout* FootbarPage::measures()
{
    m_margins = comboBox(text("footbar.margins"), {}, 160);
    for (const auto& margin : margins) {
        m_margins->addItem(QStringLiteral("%1, %2, %3, %4")
                               .arg(margin.left)
                               .arg(margin.top)
                               .arg(margin.right)
                               .arg(margin.bottom));
    }
    m_spacing = comboBox(text("footbar.spacing"), {}, 96);
    for (int spacing : spacings) {
        m_spacing->addItem(QString::number(spacing));
    }
    for (VantComboBox* box : { m_margins, m_spacing }) {
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &FootbarPage::applyMeasures);
    }
    auto* row = new QHBoxLayout;
    row->setSpacing(px(24));
    row->addLayout(labelled(text("footbar.margins"), m_margins));
    row->addLayout(labelled(text("footbar.spacing"), m_spacing));
    row->addStretch(1);
    return row;
}

QLayout* FootbarPage::additions()
{
    m_addLeft = additionButton("footbar.add_left", &m_left);
    m_addRight = additionButton("footbar.add_right", &m_right);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    row->addWidget(m_addLeft);
    row->addWidget(m_addRight);
    row->addStretch(1);
    return row;
}

VantButton* FootbarPage::additionButton(const char* key, int* count)
{
    VantButton* button = gallery::button(text(key), 1);
    connect(button, &QPushButton::clicked, this, [this, button, count] {
        ++*count;
        buildBar();
        chainKeyboard();
        button->setEnabled(
            *count < mostOnOneSide); // hands the focus on, if it goes, to the bar that is there
    });
    return button;
}

// A bar takes no more widgets once it is laid out, so a new one takes its place.
void FootbarPage::buildBar()
{
    delete m_bar;
    m_bar = new VantFootbar;
    for (int number = 1; number <= m_left; ++number) {
        m_bar->pushLeftWidget(barButton(text("footbar.left").arg(number), 1));
    }
    for (int number = 1; number <= m_right; ++number) {
        m_bar->pushRightWidget(barButton(text("footbar.right").arg(number), number == 1 ? 0 : 1));
    }
    m_bar->init();
    applyMeasures();
    m_foot->layout()->addWidget(m_bar);
    m_bar->show(); // at once: the focus may go there next
}

VantButton* FootbarPage::barButton(const QString& text, int kind)
{
    VantButton* button = gallery::button(text, kind);
    connect(button, &QPushButton::clicked, this,
        [this, text] { Q_EMIT happened(gallery::text("event.clicked").arg(text)); });
    return button;
}

// New widgets come last in their window to the keyboard; these belong behind what made them.
void FootbarPage::chainKeyboard()
{
    QWidget* previous = m_addRight;
    const QList<VantButton*> buttons = m_bar->findChildren<VantButton*>();
    for (VantButton* button : buttons) {
        setTabOrder(previous, button);
        previous = button;
    }
}

void FootbarPage::applyMeasures()
{
    const auto& margin = margins[m_margins->currentIndex()];
    m_bar->setMargins(margin.left, margin.top, margin.right, margin.bottom);
    m_bar->setSpacing(spacings[m_spacing->currentIndex()]);
}

void FootbarPage::enterState(const QString& state)
{
    if (state == QLatin1String("filled")) {
        m_addLeft->click();
        m_addRight->click();
        m_margins->setCurrentIndex(2);
        m_spacing->setCurrentIndex(2);
    }
}

} // namespace

Page* createFootbarPage(QWidget* parent)
{
    return new FootbarPage(parent);
}

} // namespace gallery
