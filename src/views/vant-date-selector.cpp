#include "views/vant-date-selector.h"

#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"
#include "views/vant-calander-view.h"
#include "widgets/mouse-filters.h"

#include <QDate>
#include <QLayout>
#include <QScreen>
#include <QTableView>

#include <utility>

using vantkit::internal::designPixels;

namespace {

const QLatin1String dateFormat("yyyy-MM-dd");

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
    view()->parentWidget()->layout()->setSizeConstraint(
        QLayout::SetMinAndMaxSize); // no popup wider than the view
    setFixedHeight(designPixels(32));
    setMinimumContentsLength(dateFormat.size()); // or a short text for no date would leave no room for one
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

void VantDateSelector::showPopup()
{
    const QDate date = itemData(0).toDate();
    if (date.isValid()) {
        turnCalendarTo(date);
    }
    QComboBox::showPopup();
    paintPopupOnce();
    if (isRightToLeft()) {
        alignPopupRight();
    }
    calendarView->dayGrid()->setFocus(Qt::PopupFocusReason);
}

void VantDateSelector::dateSelect(const QDate& date)
{
    clear();
    if (!date.isValid()) {
        insertNoDate();
        return;
    }
    insertItem(0, date.toString(dateFormat), date);
    setCurrentIndex(0);
    turnCalendarTo(date);
    update();
    hidePopup();
}

// Qt marks each widget of a popup by itself for painting, and would paint most of them with their parents and
// then once more. What has changed its place in the stack is painted as a whole.
void VantDateSelector::paintPopupOnce()
{
    calendarView->lower();
    calendarView->raise();
}

// Qt puts it under the left end of the field, whatever the direction.
void VantDateSelector::alignPopupRight()
{
    QWidget* popup = view()->window();
    const int left = mapToGlobal(rect().topRight()).x() + 1 - popup->width();
    popup->move(qMax(left, popup->screen()->availableGeometry().left()), popup->y());
}

// The page comes last: of a date outside the limits, it is all that can be shown.
void VantDateSelector::turnCalendarTo(const QDate& date)
{
    calendarView->select(date);
    calendarView->setCurrentPage(date.year(), date.month());
}

void VantDateSelector::insertNoDate()
{
    insertItem(0, emptyText, QDate());
}
