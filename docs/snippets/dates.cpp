#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QDate>
#include <QHBoxLayout>

//! [dates.selector]
QWidget* createDateSelector()
{
    auto* day = new VantDateSelector("Any day");
    day->setAccessibleName("Changed on");
    day->dateSelect(QDate(2026, 3, 8)); // clearDate() takes it back
    return day;
}

//! [dates.selector]

//! [dates.span]
QWidget* createSpan()
{
    auto* from = new VantDateSelector("From");
    auto* to = new VantDateSelector("To");
    // Each keeps the other in order.
    QObject::connect(from->getCalendarView(), &VantCalanderView::sigDateSelect, to,
        [to](const QDate& day) { to->getCalendarView()->setMinimumDate(day); });
    QObject::connect(to->getCalendarView(), &VantCalanderView::sigDateSelect, from,
        [from](const QDate& day) { from->getCalendarView()->setMaximumDate(day); });

    auto* span = new QWidget;
    auto* layout = new QHBoxLayout(span);
    layout->addWidget(from);
    layout->addWidget(to);
    return span;
}

//! [dates.span]
