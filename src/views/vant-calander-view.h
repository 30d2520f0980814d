#pragma once

#include "vantkit-export.h"

#include <QAbstractItemView>
#include <QStringList>

class QAction;
class QCalendarWidget;
class QDate;
class QTableView;
class QTableWidget;
class VantDateSelector;

/**
 * A month calendar in the kit's look: one-letter weekdays, a "today" button, translated month names and a
 * keyboard order of its own.
 *
 * It wraps a QCalendarWidget, whose weeks begin on Sunday and whose inner widgets keep the object names that
 * Qt gives them. It is an item view only so that QComboBox::setView takes it, as VantDateSelector does; as an
 * item view it is empty. Its size hint is that of an item view too: outside a combo box, give it a size.
 *
 * Style keys "component.table_header" and "component.table", for the row of weekdays; the rest comes from the
 * style sheet around it, for which the keys "component.date_selector" and "component.menu" are made. Images
 * "bt_pagebar_backend" and "bt_pagebar_nextend". String keys "today", "accessible_calendar",
 * "accessible_calendar_prev_month", "accessible_calendar_next_month", "month_jan" to "month_dec" and "sunday"
 * to "saturday". All are read once, in the constructor.
 */
class VANTKIT_EXPORT VantCalanderView : public QAbstractItemView
{
    Q_OBJECT

public:
    /** A calendar on the present month, with no day chosen and without limits. */
    explicit VantCalanderView(QWidget* parent = nullptr);

    /** Shows @p month (1 to 12) of @p year. Selects nothing. See QCalendarWidget::setCurrentPage. */
    void setCurrentPage(int year, int month);

    /** The first day that can be chosen; an invalid @p date is ignored. See QCalendarWidget. */
    void setMinimumDate(const QDate& date);

    /** The last day that can be chosen; an invalid @p date is ignored. See QCalendarWidget. */
    void setMaximumDate(const QDate& date);

    QRect visualRect(const QModelIndex& index) const override; ///< a null rectangle
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override; ///< does nothing
    QModelIndex indexAt(const QPoint& point) const override; ///< an invalid index

    /** Steps of the construction. The constructor calls them; called again, they change nothing. */
    void handleNavigationBar();
    void handleMonthMenu(); ///< @copydoc handleNavigationBar
    void handleWeekdayHeader(); ///< @copydoc handleNavigationBar
    void handleTabOrder(); ///< @copydoc handleNavigationBar

    /**
     * Moves the focus along the calendar's own order on Tab and Backtab. On the days, keeps to one what is
     * highlighted, where arrows start and what Return chooses.
     */
    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    /** Selects today, and emits sigDateSelect() even if it was selected or is outside the limits. */
    void selectToday();

Q_SIGNALS:
    /**
     * A day was chosen with the mouse, the keyboard or the "today" button. Return chooses the day that is
     * highlighted, and none if none is. A double click chooses its day more than once.
     *
     * A slot that wants to be rid of the view, or of what it lies in, calls deleteLater().
     */
    void sigDateSelect(const QDate& date);

protected:
    bool event(QEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override;
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex& index) const override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) override;
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;

private Q_SLOTS:
    void pageChanged(int year, int month);
    void slotMonthTriggered(QAction* action);
    void showNameOfPage();
    void highlightCurrentDay();

private:
    friend class VantDateSelector;

    QTableView* dayGrid() const;
    void select(const QDate& day);
    bool selectCurrentDay();
    void nameDaysAfterPage();
    void showMonthIcons();
    void showShortMonthNames();
    void showNameOfMonth(int month);
    QString nameOfMonth(int month) const;
    void restoreAfterCalendar();

    QTableWidget* weekdayView = nullptr;
    QStringList monthNames; // January first
    QCalendarWidget* calendar = nullptr;
};
