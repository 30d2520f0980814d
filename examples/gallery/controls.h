#pragma once

#include <vantkit-qt/widgets/vant-combo-box.h>

#include <QString>

class QAbstractButton;
class QFrame;
class QGridLayout;
class QLabel;
class QLayout;
class QToolButton;
class QVBoxLayout;
class QWidget;
class VantButton;

namespace gallery {

/** The length of @p designPixels on this display. */
int px(int designPixels);

/** A label with the look of the style key @p key. */
QLabel* styledLabel(const QString& text, const char* key);

/** The same with a text that wraps. */
QLabel* wrappedLabel(const QString& text, const char* key);

/** A frame with the look of the style key @p key, whose rules go by the object name @p name. */
QFrame* styledFrame(const char* name, const char* key);

/** A button that does not look lost beside a longer one. */
VantButton* button(const QString& text, int kind);

/** A combo box with @p entries that is as wide as @p width design pixels, named @p name to those who cannot
 * see it. */
VantComboBox* comboBox(const QString& name, const QStringList& entries, int width);

/** The key of the text that tells of a check box in @p state. */
const char* eventOf(Qt::CheckState state);

/** @p widget with its label @p text in front of it. */
QLayout* labelled(const QString& text, QWidget* widget);

/** A grid of two columns, "Live" and "Disabled", at the end of @p section. */
QGridLayout* addLiveAndDisabled(QVBoxLayout* section);

/** Adds a row with two widgets of a kind, and disables the second. */
void addPair(QGridLayout* grid, QWidget* live, QWidget* disabled);

/** Opens the menu of @p button below it, with the first entry active, and does not wait for it. */
void openMenu(QToolButton* button);

enum class Look { Rest, Hover, Pressed, Disabled };

/** Has @p button show one look for good, as a picture of itself that pointer and keyboard pass by. */
void freeze(QAbstractButton* button, Look look);

} // namespace gallery
