#pragma once

#include <QPixmap>
#include <QStringList>

/** The names of the pages, in their order. */
QStringList pageNames();

/** Draws the page @p name of the theme that the kit was started on. */
QPixmap pictureOfPage(const QString& name);
