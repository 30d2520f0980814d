#pragma once

#include "vantkit-export.h"

#include <QLineEdit>

class QMenu;
class VantIconButton;

/**
 * The search field above a list, with a small button inside its left end that opens a menu; so does the Down
 * key.
 *
 * It filters nothing by itself: Return or Enter report the keyword, which is the text of the field. It is 28
 * design pixels high. Style keys "component.lineedit", then "component.filter_bar_padding" for the field, and
 * "component.filter_search_button" for the button; image name "bt_search_dropdown".
 */
class VANTKIT_EXPORT VantFilterBar : public QLineEdit
{
    Q_OBJECT

public:
    explicit VantFilterBar(QWidget* parent = nullptr);

    /** Has the button open @p menu, which stays the caller's; null takes the menu away. */
    void setMenu(QMenu* menu);

Q_SIGNALS:
    /** Return or Enter was pressed on @p keyword, which may be empty or the same as before. Typing is not
     * reported. */
    void sigKeywordChanged(QString keyword);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private Q_SLOTS:
    void slotKeywordChange();

private:
    VantIconButton* searchButton;
};
