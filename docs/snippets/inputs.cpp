#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QHBoxLayout>
#include <QVBoxLayout>

//! [inputs.check]
QWidget* createCheckBoxes()
{
    auto* options = new QWidget;
    auto* verify = new VantCheckBox("Verify after copying");
    auto* twice = new VantCheckBox("Read every file twice");
    verify->setChecked(true);
    QObject::connect(verify, &QCheckBox::toggled, twice, &QWidget::setEnabled);

    auto* layout = new QVBoxLayout(options);
    layout->addWidget(verify);
    layout->addWidget(twice);
    return options;
}

//! [inputs.check]

//! [inputs.radio]
QWidget* createRadioButtons()
{
    auto* schedule = new QWidget; // of the buttons in one widget, one is chosen
    auto* daily = new VantRadioButton("Every day");
    daily->setChecked(true);

    auto* layout = new QVBoxLayout(schedule);
    layout->addWidget(daily);
    layout->addWidget(new VantRadioButton("Every week"));
    layout->addWidget(new VantRadioButton("Never"));
    return schedule;
}

//! [inputs.radio]

//! [inputs.combo]
QWidget* createComboBox()
{
    auto* target = new VantComboBox;
    target->setAccessibleName("Target");
    target->addItems({ "Network drive", "External disk", "Cloud" });
    target->setCurrentIndex(1);
    return target;
}

//! [inputs.combo]

//! [inputs.menu]
QWidget* createMenu()
{
    auto* button = new VantIconButton("bt_search_dropdown");
    button->setAccessibleName("Folder");
    auto* menu = new VantMenu(button);
    menu->setStyleSheet(getStyleSheet("component.menu"));
    menu->addAction("New folder");
    menu->addAction("Rename");
    menu->addSeparator();
    menu->addAction("Delete")->setEnabled(false);
    button->setMenu(menu);
    return button;
}

//! [inputs.menu]
