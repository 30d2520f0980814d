#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QDate>

//! [calendar.month]
VantCalanderView* createCalendar()
{
    auto* calendar = new VantCalanderView;
    calendar->setStyleSheet(getStyleSheet("component.date_selector") + getStyleSheet("component.menu"));
    const double scale = DPIinfo::getInstance().getDPI();
    calendar->setFixedSize(int(280 * scale), int(260 * scale));
    calendar->setCurrentPage(2026, 3);
    QObject::connect(calendar, &VantCalanderView::sigDateSelect, calendar,
        [calendar](const QDate& day) { calendar->setToolTip(day.toString(Qt::ISODate)); });
    return calendar;
}

//! [calendar.month]

//! [calendar.limits]
QWidget* createLimitedCalendar()
{
    VantCalanderView* calendar = createCalendar();
    calendar->setMinimumDate(QDate(2026, 3, 5)); // days outside can be seen and not chosen
    calendar->setMaximumDate(QDate(2026, 3, 26));
    return calendar;
}

//! [calendar.limits]
