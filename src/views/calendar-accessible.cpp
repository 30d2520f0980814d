#include "views/calendar-accessible_p.h"
#include "views/vant-calander-view.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLayout>

namespace {

/**
 * What Qt tells of an item view ends at its viewport. Here it is what lies in the layout, and nothing else.
 */
class CalendarAccessible : public QAccessibleWidget
{
public:
    explicit CalendarAccessible(VantCalanderView* view)
        : QAccessibleWidget(view, QAccessible::Grouping)
    { }

    int childCount() const override { return widget()->layout()->count(); }

    QAccessibleInterface* child(int index) const override
    {
        QLayoutItem* item = widget()->layout()->itemAt(index);
        return item ? QAccessible::queryAccessibleInterface(item->widget()) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return widget()->layout()->indexOf(qobject_cast<QWidget*>(child->object()));
    }
};

QAccessibleInterface* calendarInterface(const QString& /*className*/, QObject* object)
{
    auto* view = qobject_cast<VantCalanderView*>(object);
    return view ? new CalendarAccessible(view) : nullptr; // the cache of QAccessible owns it
}

} // namespace

void vantkit::internal::installCalendarAccessibility()
{
    QAccessible::installFactory(calendarInterface);
}
