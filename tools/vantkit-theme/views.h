#pragma once

#include <QPixmap>

/** Whole widgets, or put together from plain ones as the kit does it, to see several keys side by side. */
QPixmap tableView();
QPixmap treeView();
QPixmap pagingBar();
QPixmap pathBar();
QPixmap calendarPopup();
QPixmap messageSheet();
QPixmap processingSheet();
QPixmap inputSheet();
QPixmap messageBox();
QPixmap menuPopup();
QPixmap comboPopup();
QPixmap scrollBars();
