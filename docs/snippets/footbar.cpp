#include "snippets.h"

#include <vantkit-qt/vantkit.h>

//! [footbar.bar]
QWidget* createFootBar()
{
    auto* bar = new VantFootbar;
    bar->pushLeftWidget(new VantButton("Log ...", 1));
    bar->pushRightWidget(new VantButton("Back up", 0));
    bar->pushRightWidget(new VantButton("Close", 1));
    bar->init(); // once, when all are there
    return bar;
}

//! [footbar.bar]
