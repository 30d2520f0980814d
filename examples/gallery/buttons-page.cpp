#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int wide = 104;
const int narrow = 28;
const int columnWidth = 112;

struct Kind
{
    int number;
    int width;
    const char* name;
    const char* styleKey;
    QString text;
};

class ButtonsPage : public Page
{
public:
    explicit ButtonsPage(QWidget* parent);

    void enterState(const QString& state) override;

private:
    void addPushButtons();
    void addIconButtons();
    QGridLayout* addStateGrid(QVBoxLayout* section);
    void addRow(QGridLayout* grid, const QString& name, const QString& hint);
    VantButton* liveButton(const Kind& kind);
    VantIconButton* liveIconButton(const QString& image, const QString& name);

    VantButton* m_firstButton = nullptr;
};

const Look frozenLooks[] = { Look::Hover, Look::Pressed, Look::Disabled };

VantButton* buttonOf(const Kind& kind)
{
    auto* button = new VantButton(kind.text, kind.number);
    button->setMinimumWidth(px(kind.width));
    return button;
}

ImageManager::ImageType imageOf(Look look)
{
    switch (look) {
    case Look::Hover:
        return ImageManager::Hover;
    case Look::Pressed:
        return ImageManager::Click;
    case Look::Disabled:
        return ImageManager::Disable;
    case Look::Rest:
        break;
    }
    return ImageManager::Normal;
}

ButtonsPage::ButtonsPage(QWidget* parent)
    : Page(parent)
{
    addPushButtons();
    addIconButtons();
}

void ButtonsPage::addPushButtons()
{
    ComponentStrings& strings = ComponentStrings::getInstance();
    const Kind kinds[] = {
        { 0, wide, "buttons.apply", "component.apply_button", strings.getString(QStringLiteral("ok")) },
        { 1, wide, "buttons.cancel", "component.cancel_button", strings.getString(QStringLiteral("cancel")) },
        { 4, wide, "buttons.default", "component.default_button", text("buttons.default.text") },
        { 5, wide, "buttons.red", "component.red_button", text("buttons.red.text") },
        { 2, narrow, "buttons.select_paging", "component.select_paging_button", QStringLiteral("3") },
        { 3, narrow, "buttons.nonselect_paging", "component.nonselect_paging_button", QStringLiteral("4") },
    };
    QGridLayout* grid = addStateGrid(addSection("buttons.push", "VantButton"));
    for (const Kind& kind : kinds) {
        addRow(grid, text(kind.name), QLatin1String(kind.styleKey));
        const int row = grid->rowCount() - 1;
        int column = 1;
        VantButton* button = liveButton(kind);
        m_firstButton = m_firstButton ? m_firstButton : button;
        grid->addWidget(button, row, column++, Qt::AlignCenter);
        for (Look look : frozenLooks) {
            VantButton* picture = buttonOf(kind);
            grid->addWidget(picture, row, column++, Qt::AlignCenter);
            freeze(picture, look);
        }
    }
}

void ButtonsPage::addIconButtons()
{
    const struct
    {
        const char* image;
        const char* name;
    } icons[] = {
        { "bt_pagebar_backend", "first_page" },
        { "bt_pagebar_back", "prev_5_pages" },
        { "bt_pagebar_next", "next_5_pages" },
        { "bt_pagebar_nextend", "last_page" },
        { "bt_pagebar_refresh", "pagebar_refresh" },
    };

    QGridLayout* grid = addStateGrid(addSection("buttons.icon", "VantIconButton"));
    for (const auto& icon : icons) {
        const QString image = QLatin1String(icon.image);
        const QString name = ComponentStrings::getInstance().getString(QLatin1String(icon.name));
        addRow(grid, name, image);
        const int row = grid->rowCount() - 1;
        int column = 1;
        grid->addWidget(liveIconButton(image, name), row, column++, Qt::AlignCenter);
        for (Look look : frozenLooks) {
            auto* picture = new VantIconButton(getGlobalImage(image, imageOf(look)));
            picture->setAccessibleName(name);
            grid->addWidget(picture, row, column++, Qt::AlignCenter);
            freeze(picture, look);
        }
    }
}

QGridLayout* ButtonsPage::addStateGrid(QVBoxLayout* section)
{
    auto* grid = new QGridLayout;
    section->addLayout(grid);
    grid->setHorizontalSpacing(px(8));
    grid->setVerticalSpacing(px(12));
    grid->setColumnStretch(0, 1);
    int column = 1;
    for (const char* state : { "state.live", "state.hover", "state.pressed", "state.disabled" }) {
        QLabel* caption = styledLabel(text(state), "gallery.caption", grid->parentWidget());
        grid->addWidget(caption, 0, column, Qt::AlignCenter);
        grid->setColumnMinimumWidth(column++, px(columnWidth));
    }
    return grid;
}

void ButtonsPage::addRow(QGridLayout* grid, const QString& name, const QString& hint)
{
    auto* words = new QVBoxLayout;
    words->setSpacing(0);
    words->addWidget(styledLabel(name, "gallery.text", grid->parentWidget()));
    words->addWidget(styledLabel(hint, "gallery.caption", grid->parentWidget()));
    grid->addLayout(words, grid->rowCount(), 0, Qt::AlignVCenter);
}

VantButton* ButtonsPage::liveButton(const Kind& kind)
{
    auto* button = live(buttonOf(kind));
    const QString name = text(kind.name);
    connect(button, &QPushButton::clicked, this,
        [this, name] { Q_EMIT happened(text("event.clicked").arg(name)); });
    return button;
}

VantIconButton* ButtonsPage::liveIconButton(const QString& image, const QString& name)
{
    auto* button = live(new VantIconButton(image));
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, this,
        [this, name] { Q_EMIT happened(text("event.clicked").arg(name)); });
    return button;
}

void ButtonsPage::enterState(const QString& state)
{
    if (state == QLatin1String("focus")) {
        m_firstButton->setFocus(Qt::TabFocusReason);
    } else if (state == QLatin1String("code")) {
        showCode(QStringLiteral("buttons.push"));
    }
}

} // namespace

Page* createButtonsPage(QWidget* parent)
{
    return new ButtonsPage(parent);
}

} // namespace gallery
