#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QActionGroup>
#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int comboWidth = 280;
const int longListLength = 60;

class InputsPage : public Page
{
public:
    explicit InputsPage(QWidget* parent);

    void enterState(const QString& state) override;
    QWidget* opener(const QString& state) const override;

private:
    void addCheckBoxes();
    void addRadioButtons();
    void addComboBoxes();
    VantComboBox* addComboBox(QGridLayout* grid, const char* key, const QStringList& entries);
    void addMenus();
    VantIconButton* menuIconButton();
    VantMenu* createMenu();
    void addOrder(VantMenu* menu);
    void openMenu();
    void openMenuInCorner();

    VantCheckBox* m_firstBox = nullptr;
    VantComboBox* m_longList = nullptr;
    VantButton* m_menuButton = nullptr;
    VantMenu* m_menu = nullptr;
};

VantCheckBox* checkBox(const char* key, Qt::CheckState state)
{
    auto* box = new VantCheckBox(text(key));
    box->setTristate(state == Qt::PartiallyChecked);
    box->setCheckState(state);
    return box;
}

// The first button of a group is the chosen one.
VantRadioButton* radioButton(const char* key, QButtonGroup* group)
{
    auto* button = new VantRadioButton(text(key));
    button->setChecked(group->buttons().isEmpty());
    group->addButton(button);
    return button;
}

InputsPage::InputsPage(QWidget* parent)
    : Page(parent)
{
    addComboBoxes();
    addMenus();
    addCheckBoxes();
    addRadioButtons();
}

void InputsPage::addCheckBoxes()
{
    const struct
    {
        const char* key;
        Qt::CheckState state;
    } rows[] = {
        { "inputs.check.off", Qt::Unchecked },
        { "inputs.check.on", Qt::Checked },
        { "inputs.check.partial", Qt::PartiallyChecked },
    };

    QGridLayout* grid = addLiveAndDisabled(addSection("inputs.check", "VantCheckBox"));
    for (const auto& row : rows) {
        VantCheckBox* box = live(checkBox(row.key, row.state));
        m_firstBox = m_firstBox ? m_firstBox : box;
        connect(box, &QCheckBox::stateChanged, this,
            [this, box] { Q_EMIT happened(text(eventOf(box->checkState())).arg(box->text())); });
        addPair(grid, box, checkBox(row.key, row.state));
    }
}

void InputsPage::addRadioButtons()
{
    auto* liveGroup = new QButtonGroup(this);
    auto* disabledGroup = new QButtonGroup(this);
    QGridLayout* grid = addLiveAndDisabled(addSection("inputs.radio", "VantRadioButton"));
    for (const char* key : { "inputs.daily", "inputs.weekly", "inputs.never" }) {
        VantRadioButton* button = live(radioButton(key, liveGroup));
        connect(button, &QRadioButton::clicked, this,
            [this, button] { Q_EMIT happened(text("event.chosen").arg(button->text())); });
        addPair(grid, button, radioButton(key, disabledGroup));
    }
}

void InputsPage::addComboBoxes()
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(24));
    grid->setVerticalSpacing(px(12));
    grid->setColumnStretch(2, 1);
    addSection("inputs.combo", "VantComboBox")->addLayout(grid);

    const QStringList few = { text("inputs.daily"), text("inputs.weekly"), text("inputs.never") };
    QStringList many;
    for (int number = 1; number <= longListLength; ++number) {
        many << text("inputs.combo.entry").arg(number);
    }
    live(addComboBox(grid, "inputs.combo.few", few));
    m_longList = live(addComboBox(grid, "inputs.combo.many", many));
    live(addComboBox(grid, "inputs.combo.wide", { text("sample.short"), text("sample.long") }));
    addComboBox(grid, "state.disabled", few)->setEnabled(false);
}

VantComboBox* InputsPage::addComboBox(QGridLayout* grid, const char* key, const QStringList& entries)
{
    VantComboBox* box = comboBox(text(key), entries, comboWidth);
    connect(box, QOverload<int>::of(&QComboBox::activated), this,
        [this, box] { Q_EMIT happened(text("event.chosen").arg(box->currentText())); });
    QLabel* label = styledLabel(text(key), "gallery.text");
    label->setBuddy(box);

    const int row = grid->rowCount();
    grid->addWidget(label, row, 0, Qt::AlignVCenter);
    grid->addWidget(box, row, 1);
    return box;
}

void InputsPage::addMenus()
{
    m_menu = createMenu();
    m_menuButton = live(button(text("inputs.menu.open"), 1));
    connect(m_menuButton, &QPushButton::clicked, this, &InputsPage::openMenu);
    VantButton* cornerButton = live(button(text("inputs.menu.corner"), 1));
    connect(cornerButton, &QPushButton::clicked, this, &InputsPage::openMenuInCorner);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    row->addWidget(m_menuButton);
    row->addWidget(cornerButton);
    row->addWidget(live(menuIconButton()));
    row->addStretch(1);
    addSection("inputs.menu", "VantMenu")->addLayout(row);
}

VantIconButton* InputsPage::menuIconButton()
{
    auto* button = new VantIconButton(QStringLiteral("bt_search_dropdown"));
    button->setAccessibleName(text("inputs.menu.open"));
    button->setToolTip(text("inputs.menu.open"));
    button->setFocusPolicy(Qt::StrongFocus);
    button->setMenu(m_menu);
    return button;
}

VantMenu* InputsPage::createMenu()
{
    auto* menu = new VantMenu(this);
    menu->setStyleSheet(getStyleSheet("component.menu"));
    menu->addAction(text("inputs.menu.new"))->setShortcut(QKeySequence::New);
    menu->addAction(text("inputs.menu.rename"))->setShortcut(Qt::Key_F2);
    addOrder(menu);
    menu->addSeparator();
    QAction* hidden = menu->addAction(text("inputs.menu.hidden"));
    hidden->setCheckable(true);
    hidden->setChecked(true);
    menu->addAction(text("inputs.menu.restore"))->setEnabled(false);
    menu->addSeparator();
    menu->addAction(text("inputs.menu.delete"))->setShortcut(QKeySequence::Delete);

    // The shortcuts are there to be seen: they are the menu's, and the page does not answer to them.
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        action->setShortcutContext(Qt::WidgetShortcut);
        action->setShortcutVisibleInContextMenu(true);
    }
    connect(menu, &QMenu::triggered, this,
        [this](QAction* action) { Q_EMIT happened(text("event.chosen").arg(action->text())); });
    return menu;
}

void InputsPage::addOrder(VantMenu* menu)
{
    auto* order = new VantMenu(menu);
    order->setTitle(text("inputs.menu.order"));
    auto* group = new QActionGroup(order);
    for (const char* key : { "inputs.menu.by_name", "inputs.menu.by_date", "inputs.menu.by_size" }) {
        QAction* action = group->addAction(text(key));
        action->setCheckable(true);
        action->setChecked(group->actions().size() == 1);
    }
    order->addActions(group->actions());
    menu->addMenu(order);
}

void InputsPage::openMenu()
{
    m_menu->popup(m_menuButton->mapToGlobal(QPoint(0, m_menuButton->height() + px(4))));
}

void InputsPage::openMenuInCorner()
{
    m_menu->popup(screen()->availableGeometry().bottomRight());
}

void InputsPage::enterState(const QString& state)
{
    if (state == QLatin1String("focus")) {
        m_firstBox->setFocus(Qt::TabFocusReason);
    } else if (state == QLatin1String("combo")) {
        m_longList->setFocus(Qt::MouseFocusReason);
        m_longList->showPopup();
    } else if (state == QLatin1String("menu")) {
        m_menuButton->setFocus(Qt::MouseFocusReason);
        openMenu();
        m_menu->setActiveAction(m_menu->actions().constFirst());
    }
}

QWidget* InputsPage::opener(const QString& state) const
{
    if (state == QLatin1String("combo")) {
        return m_longList;
    }
    return state == QLatin1String("menu") ? m_menuButton : nullptr;
}

} // namespace

Page* createInputsPage(QWidget* parent)
{
    return new InputsPage(parent);
}

} // namespace gallery
