#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QCalendarWidget>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace gallery {

namespace {

const QDate shownDay(2017, 3, 9);
const QDate firstDay(2017, 3, 6);
const QDate lastDay(2017, 3, 24);

class CalendarPage : public Page
{
public:
    explicit CalendarPage(QWidget* parent);

    void enterState(const QString& state) override;
    QWidget* opener(const QString& state) const override;

private:
    void addMonth();
    void addLimits();
    VantCalanderView* reporting(VantCalanderView* view);
    QToolButton* monthButton() const;

    VantCalanderView* m_view = nullptr;
};

// A calendar that stands alone takes the sheets that a date selector gives to its own.
VantCalanderView* calendar()
{
    auto* view = new VantCalanderView;
    view->setStyleSheet(getStyleSheet("component.date_selector") + getStyleSheet("component.menu"));
    view->setFixedSize(px(280), px(260));
    view->findChild<QCalendarWidget*>()->setSelectedDate(shownDay);
    return view;
}

QString isoDate(const QDate& date)
{
    return date.toString(Qt::ISODate);
}

CalendarPage::CalendarPage(QWidget* parent)
    : Page(parent)
{
    addMonth();
    addLimits();
}

void CalendarPage::addMonth()
{
    QGridLayout* grid = addLiveAndDisabled(addSection("calendar.month", "VantCalanderView"));
    m_view = live(reporting(calendar()));
    addPair(grid, m_view, calendar());
}

void CalendarPage::addLimits()
{
    VantCalanderView* view = live(reporting(calendar()));
    view->setMinimumDate(firstDay);
    view->setMaximumDate(lastDay);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(16));
    row->addWidget(view, 1, Qt::AlignLeft);
    row->addWidget(
        wrappedLabel(text("calendar.limits.text").arg(isoDate(firstDay), isoDate(lastDay)), "gallery.text"),
        1, Qt::AlignTop);
    addSection("calendar.limits", "VantCalanderView")->addLayout(row);
}

VantCalanderView* CalendarPage::reporting(VantCalanderView* view)
{
    connect(view, &VantCalanderView::sigDateSelect, this, [this, view](const QDate& date) {
        Q_EMIT happened(
            text(isWithinLimits(view, date) ? "event.chosen" : "dates.outside").arg(isoDate(date)));
    });
    return view;
}

void CalendarPage::enterState(const QString& state)
{
    if (state == QLatin1String("focus")) {
        m_view->findChild<QWidget*>(QStringLiteral("qt_calendar_calendarview"))->setFocus(Qt::TabFocusReason);
    } else if (state == QLatin1String("bar")) {
        m_view->findChild<QWidget*>(QStringLiteral("qt_calendar_nextmonth"))->setFocus(Qt::TabFocusReason);
    } else if (state == QLatin1String("frame")) {
        m_view->setFocus(Qt::TabFocusReason);
    } else if (state == QLatin1String("month")) {
        openMenu(monthButton());
    } else if (state == QLatin1String("year")) {
        m_view->findChild<QToolButton*>(QStringLiteral("qt_calendar_yearbutton"))->click();
    }
}

QWidget* CalendarPage::opener(const QString& state) const
{
    return state == QLatin1String("month") ? monthButton() : nullptr;
}

QToolButton* CalendarPage::monthButton() const
{
    return m_view->findChild<QToolButton*>(QStringLiteral("qt_calendar_monthbutton"));
}

} // namespace

Page* createCalendarPage(QWidget* parent)
{
    return new CalendarPage(parent);
}

} // namespace gallery
