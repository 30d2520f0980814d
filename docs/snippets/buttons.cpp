#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QHBoxLayout>

//! [buttons.push]
QWidget* createPushButtons()
{
    auto* buttons = new QWidget;
    auto* layout = new QHBoxLayout(buttons);
    layout->addWidget(new VantButton("Restore", 0)); // the one primary action
    layout->addWidget(new VantButton("Cancel", 1));
    layout->addWidget(new VantButton("More ...", 4));
    layout->addWidget(new VantButton("Delete", 5)); // what cannot be undone
    return buttons;
}

//! [buttons.push]

//! [buttons.icon]
QWidget* createIconButton()
{
    auto* refresh = new VantIconButton("bt_pagebar_refresh"); // the name of its four images
    refresh->setToolTip("Refresh");
    refresh->setAccessibleName("Refresh");
    refresh->setFocusPolicy(Qt::StrongFocus);
    return refresh;
}

//! [buttons.icon]
