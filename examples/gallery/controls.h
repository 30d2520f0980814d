#pragma once

#include <vantkit-qt/theme/vant-theme.h>
#include <vantkit-qt/widgets/vant-combo-box.h>

#include <QString>

class QAbstractButton;
class QDate;
class QFrame;
class QGridLayout;
class QLabel;
class QLayout;
class QToolButton;
class QVBoxLayout;
class QWidget;
class QTableWidget;
class VantButton;
class VantCalanderView;
class VantTableWidget;

namespace gallery {

/** The theme that the kit was started on. */
VantTheme currentTheme();

/** The length of @p designPixels on this display. */
int px(int designPixels);

/**
 * A label with the look of the style key @p key. Made in the @p parent in which it is to lie, it has its
 * style sheet read once, and not anew on its way there.
 */
QLabel* styledLabel(const QString& text, const char* key, QWidget* parent = nullptr);

/** The same with a text that wraps. */
QLabel* wrappedLabel(const QString& text, const char* key, QWidget* parent = nullptr);

/** One line of text, cut short with an ellipsis where it does not fit. */
QLabel* shortenedLabel(const QString& text, const char* key, QWidget* parent = nullptr);

/** The font of code. */
QFont codeFont(int pixelSize);

/** A frame with the look of the style key @p key, whose rules go by the object name @p name. */
QFrame* styledFrame(const char* name, const char* key, QWidget* parent = nullptr);

/** A button that does not look lost beside a longer one. */
VantButton* button(const QString& text, int kind);

/**
 * A combo box with @p entries that is as wide as @p width design pixels, named @p name
 * to those who cannot see it.
 */
VantComboBox* comboBox(const QString& name, const QStringList& entries, int width);

/** Whether @p date is within the limits of @p view, which its button for today knows nothing of. */
bool isWithinLimits(const VantCalanderView* view, const QDate& date);

/**
 * A button that names what a filter lets through, as a sign that it is set: a click on it asks for @p all.
 * Hidden while showSign() has given it nothing to name.
 */
VantButton* filterSign(const QString& all);
void showSign(VantButton* sign, const QString& what);

/** The width in design pixels of a column that shows @p title and each of @p texts whole. */
int columnWidth(const QString& title, const QStringList& texts);

/** The width of a column of dates with times. */
int timeColumnWidth(const QString& title);

/** The width of a column of sizes. */
int sizeColumnWidth(const QString& title);

/** Has the title of the column @p column of @p table stand at its right, as numbers do below it. */
void alignRight(VantTableWidget* table, int column);

/** A label in the middle of @p table, for words where there are no rows. */
QLabel* addHint(QTableWidget* table);

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
