#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

#include <functional>
#include <vector>

class QWidget;

/** One way a widget can look. */
enum class Look { Rest, Hover, Pressed, Focus, Disabled, Error, ErrorFocus };

/** A widget that is shown in several looks: its name, how to make it, and which looks it has. */
struct Specimen
{
    QString name;
    std::function<QWidget*()> make;
    std::vector<Look> looks;
};

using Specimens = std::vector<Specimen>;

/** A picture with one row per specimen and one column per look. */
QPixmap pictureOf(const Specimens& specimens);

/** A picture of one widget, with @p margin design pixels of @p ground around it. The widget is deleted. */
QPixmap pictureOf(QWidget* widget, int margin, const QColor& ground);

/** The same after @p prepare has run on the shown widget. */
QPixmap pictureOf(QWidget* widget, int margin, const QColor& ground, const std::function<void()>& prepare);

/** Pictures in rows with a caption below each, as many in a row as @p columns. */
QPixmap contactSheet(const std::vector<std::pair<QString, QPixmap>>& pictures, int columns);

/** The colour @p name of the theme's `palette.json`; white if it has none. */
QColor themeColour(const QString& name);

/** Makes the widget look as if the pointer were over it. */
void putPointerOn(QWidget* widget);
