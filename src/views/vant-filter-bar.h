#pragma once

#include "vantkit-export.h"

#include <QLineEdit>

class QMenu;
class VantIconButton;

/**
 * The search field above a list, with a small button inside its left end (its right end where the layout goes
 * from right to left) that opens a menu; so does the Down key. Screen readers know the button by the
 * accessible name of the bar.
 *
 * It filters nothing by itself: Return or Enter report the keyword, which is the text of the field. It is 28
 * design pixels high. Style keys "component.lineedit", then "component.filter_bar_padding" for the field, and
 * "component.filter_search_button" for the button; image name "bt_search_dropdown".
 */
class VANTKIT_EXPORT VantFilterBar : public QLineEdit
{
    Q_OBJECT

public:
    /** An empty field. Its button opens nothing until setMenu(). */
    explicit VantFilterBar(QWidget* parent = nullptr);

    /** Has the button open @p menu, which stays the caller's; null takes the menu away. */
    void setMenu(QMenu* menu);

Q_SIGNALS:
    /**
     * Return or Enter was pressed on @p keyword, which may be empty or the same as before. Typing is not
     * reported. A slot that wants the bar gone calls deleteLater().
     */
    void sigKeywordChanged(QString keyword);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private Q_SLOTS:
    void slotKeywordChange();

private:
    void placeButton();

    VantIconButton* searchButton;
};
