#include "views/vant-date-selector.h"

#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"
#include "views/vant-calander-view.h"
#include "widgets/mouse-filters.h"

#include <QDate>

#include <utility>

using vantkit::internal::designPixels;

namespace {

// A combo box takes a release on its view for the choice of the current item.
void swallowReleases(QWidget* widget)
{
    auto* filter = new MouseReleaseFilter;
    filter->setParent(widget); // goes with the widget it watches
    widget->installEventFilter(filter);
}

} // namespace

VantDateSelector::VantDateSelector(QString textForNoDate, QWidget* parent)
    : QComboBox(parent)
    , calendarView(new VantCalanderView) // setView hands it to the popup
    , emptyText(std::move(textForNoDate))
{
    setView(calendarView);
    swallowReleases(view());
    swallowReleases(view()->viewport());
    insertNoDate();
    connect(calendarView, SIGNAL(sigDateSelect(QDate)), this, SLOT(dateSelect(QDate)));
    view()->setFixedWidth(designPixels(280));
    view()->setFixedHeight(designPixels(260));
    setFixedHeight(designPixels(32));
    setStyleSheet(getStyleSheet("component.date_selector", false) + getStyleSheet("component.menu", false));
}

void VantDateSelector::clearDate()
{
    const QDate today = QDate::currentDate();
    clear();
    insertNoDate();
    setCurrentIndex(0);
    calendarView->setCurrentPage(today.year(), today.month());
}

VantCalanderView* VantDateSelector::getCalendarView()
{
    return calendarView;
}

void VantDateSelector::dateSelect(const QDate& date)
{
    clear();
    if (!date.isValid()) {
        insertNoDate();
        return;
    }
    insertItem(0, date.toString(QStringLiteral("yyyy-MM-dd")), date);
    setCurrentIndex(0);
    calendarView->setCurrentPage(date.year(), date.month());
    update();
    hidePopup();
}

void VantDateSelector::insertNoDate()
{
    insertItem(0, emptyText, QDate());
}
