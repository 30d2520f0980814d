#pragma once

#include "vantkit-export.h"

#include <QComboBox>

class QDate;
class VantCalanderView;

/**
 * A one-line field that shows a date and opens a calendar. Style keys "component.date_selector" and
 * "component.menu"; those of VantCalanderView come with the popup, and so do its images and strings.
 *
 * It holds one item at all times: its data is the chosen QDate, and a null QDate while none is chosen. Its
 * text is the date as "yyyy-MM-dd", or the text for no date. A choice shows in the signals of QComboBox and
 * in VantCalanderView::sigDateSelect of getCalendarView().
 *
 * The field is 32 design pixels high, and the popup 280 wide and 260 high.
 */
class VANTKIT_EXPORT VantDateSelector : public QComboBox
{
    Q_OBJECT

public:
    /** A selector without a date, which shows @p textForNoDate until one is chosen. */
    explicit VantDateSelector(QString textForNoDate, QWidget* parent = nullptr);

    /** Back to no date, with the calendar on the present month. */
    void clearDate();

    /** The calendar in the popup, for its limits and its signal. The selector owns it. */
    VantCalanderView* getCalendarView();

    /** Opens the calendar with the focus on its days. If a date is chosen, it is the highlighted one. */
    void showPopup() override;

public Q_SLOTS:
    /**
     * Chooses @p date, selects it in the calendar, turns the calendar to its month and closes the popup.
     * Limits of the calendar are not looked at. An invalid date means no date; it leaves the calendar and an
     * open popup alone.
     */
    void dateSelect(const QDate& date);

private:
    void paintPopupOnce();
    void alignPopupRight();
    void turnCalendarTo(const QDate& date);
    void insertNoDate();

    VantCalanderView* calendarView;
    QString emptyText;
};
