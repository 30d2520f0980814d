#include "views/vant-calander-view.h"

#include "image-manager/image-manager.h"
#include "style-manager/style-manager.h"
#include "utils/component-strings.h"
#include "utils/design-pixels_p.h"
#include "utils/dpi-info.h"
#include "widgets/mouse-filters.h"
#include "widgets/vant-button.h"

#include <QAction>
#include <QCalendarWidget>
#include <QDate>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QSpinBox>
#include <QTableView>
#include <QTableWidget>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>

using vantkit::internal::designPixels;

namespace {

const int dayWidth = 30; // unscaled; the sections stretch

// The names that Qt gives to the widgets inside its calendar, and two more of the same kind.
const QLatin1String navigationBarName("qt_calendar_navigationbar");
const QLatin1String previousMonthName("qt_calendar_prevmonth");
const QLatin1String nextMonthName("qt_calendar_nextmonth");
const QLatin1String monthButtonName("qt_calendar_monthbutton");
const QLatin1String yearButtonName("qt_calendar_yearbutton");
const QLatin1String yearEditorName("qt_calendar_yearedit");
const QLatin1String dayGridName("qt_calendar_calendarview");
const QLatin1String weekdayRowName("qt_calendar_weekdayview");
const QLatin1String todayButtonName("qt_calendar_today_button");

QString componentString(const char* key)
{
    return ComponentStrings::getInstance().getString(QLatin1String(key));
}

void showIcon(QToolButton* button, const QPixmap& pixmap)
{
    const double dpr = DPIinfo::getInstance().getDPR();
    button->setIcon(pixmap);
    button->setIconSize(QSize(qRound(pixmap.width() / dpr), qRound(pixmap.height() / dpr)));
}

// What has been changed in Qt's calendar from outside is lost in some of its own events: with its locale it
// writes the month names and the first day of the week, with its style and direction the icons of the arrows.
class Calendar : public QCalendarWidget
{
public:
    using QCalendarWidget::QCalendarWidget;

    std::function<void()> restore;

protected:
    bool event(QEvent* event) override
    {
        const bool handled = QCalendarWidget::event(event);
        const QEvent::Type type = event->type();
        if (restore
            && (type == QEvent::LocaleChange || type == QEvent::StyleChange
                || type == QEvent::LayoutDirectionChange)) {
            restore();
        }
        return handled;
    }

    // The year editor and the buttons let Return through when they are done with it. It ends here: further up
    // it would close the popup of a combo box, or press the default button of a dialog.
    void keyPressEvent(QKeyEvent* event) override
    {
        QCalendarWidget::keyPressEvent(event);
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            event->accept();
        }
    }
};

void showWeekendInBlack(QCalendarWidget* calendar)
{
    QTextCharFormat format = calendar->weekdayTextFormat(Qt::Saturday);
    format.setForeground(QBrush(Qt::black, Qt::SolidPattern));
    calendar->setWeekdayTextFormat(Qt::Saturday, format);
    calendar->setWeekdayTextFormat(Qt::Sunday, format);
}

void fillWithWeekdays(QTableWidget* row)
{
    const QStringList names { componentString("sunday"), componentString("monday"),
        componentString("tuesday"), componentString("wednesday"), componentString("thursday"),
        componentString("friday"), componentString("saturday") };
    row->insertRow(0);
    for (int column = 0; column < names.size(); ++column) {
        auto* item = new QTableWidgetItem; // the table takes it over
        item->setData(Qt::DisplayRole, names.at(column).mid(0, 1));
        item->setTextAlignment(Qt::AlignCenter);
        row->setItem(0, column, item);
    }
}

} // namespace

VantCalanderView::VantCalanderView(QWidget* parent)
    : QAbstractItemView(parent)
{
    auto* layout = new QVBoxLayout(this);

    auto* todayButton = new VantButton(componentString("today"), 1);
    todayButton->setFixedHeight(designPixels(24));
    todayButton->setObjectName(todayButtonName);

    auto* ownCalendar = new Calendar(this);
    calendar = ownCalendar;
    calendar->setFirstDayOfWeek(Qt::Sunday);

    layout->addWidget(calendar);
    layout->addWidget(todayButton, 0, Qt::AlignHCenter);

    setSelectionMode(NoSelection);
    calendar->setHorizontalHeaderFormat(QCalendarWidget::NoHorizontalHeader);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    showWeekendInBlack(calendar);
    setAccessibleName(componentString("accessible_calendar"));

    handleNavigationBar();
    handleWeekdayHeader();
    handleTabOrder();
    ownCalendar->restore = [this] { restoreAfterCalendar(); };

    findChild<QToolButton*>(yearButtonName)->installEventFilter(this);
    findChild<QSpinBox*>(yearEditorName)->installEventFilter(this);
    findChild<QTableView*>(dayGridName)->installEventFilter(this);
    todayButton->installEventFilter(this);

    connect(calendar, SIGNAL(activated(QDate)), this, SIGNAL(sigDateSelect(QDate)));
    connect(calendar, SIGNAL(clicked(QDate)), this, SIGNAL(sigDateSelect(QDate)));
    connect(todayButton, SIGNAL(clicked()), this, SLOT(selectToday()));
    connect(calendar, SIGNAL(currentPageChanged(int, int)), this, SLOT(pageChanged(int, int)));
}

void VantCalanderView::setCurrentPage(int year, int month)
{
    calendar->setCurrentPage(year, month);
}

void VantCalanderView::setMinimumDate(const QDate& date)
{
    calendar->setMinimumDate(date);
}

void VantCalanderView::setMaximumDate(const QDate& date)
{
    calendar->setMaximumDate(date);
}

void VantCalanderView::selectToday()
{
    calendar->setSelectedDate(QDate::currentDate());
    emit sigDateSelect(QDate::currentDate());
}

void VantCalanderView::handleNavigationBar()
{
    auto* previous = findChild<QToolButton*>(previousMonthName);
    auto* next = findChild<QToolButton*>(nextMonthName);
    auto* monthButton = findChild<QToolButton*>(monthButtonName);
    for (QToolButton* button : { previous, next, monthButton, findChild<QToolButton*>(yearButtonName) }) {
        button->setFocusPolicy(Qt::StrongFocus);
    }
    previous->setAccessibleName(componentString("accessible_calendar_prev_month"));
    next->setAccessibleName(componentString("accessible_calendar_next_month"));
    showMonthIcons();
    findChild<QSpinBox*>(yearEditorName)->setAttribute(Qt::WA_MacShowFocusRect, false);

    auto* bar = findChild<QWidget*>(navigationBarName);
    bar->setAutoFillBackground(false);
    auto* filter = new MouseButtonFilter;
    filter->setParent(bar); // goes with the bar it watches
    bar->installEventFilter(filter);

    handleMonthMenu();
    // Qt shows the entry's short name on the button, even if the page stays. This comes after it.
    connect(monthButton->menu(), SIGNAL(triggered(QAction*)), this, SLOT(showNameOfPage()));
}

void VantCalanderView::handleMonthMenu()
{
    monthNames << componentString("month_jan") << componentString("month_feb") << componentString("month_mar")
               << componentString("month_apr") << componentString("month_may") << componentString("month_jun")
               << componentString("month_jul") << componentString("month_aug") << componentString("month_sep")
               << componentString("month_oct") << componentString("month_nov")
               << componentString("month_dec");
    showShortMonthNames();
    showNameOfMonth(QDate::currentDate().month());
}

void VantCalanderView::handleWeekdayHeader()
{
    auto* grid = findChild<QTableView*>(dayGridName);
    auto* layout = qobject_cast<QVBoxLayout*>(calendar->layout());

    weekdayView = new QTableWidget(0, 7); // the layout gives it its parent
    weekdayView->setFocusPolicy(Qt::NoFocus);
    weekdayView->setObjectName(weekdayRowName);
    weekdayView->horizontalHeader()->setStyleSheet(getStyleSheet("component.table_header", false));
    weekdayView->setStyleSheet(getStyleSheet("component.table", false));
    weekdayView->setFixedHeight(designPixels(30));
    weekdayView->horizontalHeader()->hide();
    weekdayView->verticalHeader()->hide();
    fillWithWeekdays(weekdayView);
    weekdayView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    weekdayView->setSizeAdjustPolicy(AdjustToContents);
    weekdayView->setEditTriggers(NoEditTriggers);
    weekdayView->setSelectionMode(NoSelection);
    weekdayView->setFrameStyle(0);
    weekdayView->setShowGrid(false);

    grid->horizontalHeader()->setDefaultSectionSize(dayWidth);
    weekdayView->horizontalHeader()->setDefaultSectionSize(dayWidth);
    weekdayView->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    layout->insertWidget(1, weekdayView, 0);
}

void VantCalanderView::handleTabOrder()
{
    const QList<QWidget*> ring { this, findChild<QWidget*>(previousMonthName),
        findChild<QWidget*>(nextMonthName), findChild<QWidget*>(monthButtonName),
        findChild<QWidget*>(yearButtonName), findChild<QWidget*>(yearEditorName),
        findChild<QWidget*>(dayGridName), findChild<QWidget*>(todayButtonName), this };
    for (int i = 1; i < ring.size(); ++i) {
        QWidget::setTabOrder(ring.at(i - 1), ring.at(i));
    }
}

bool VantCalanderView::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Tab && key != Qt::Key_Backtab) {
        return false;
    }
    focusNextPrevChild(key == Qt::Key_Tab);

    // Coming from elsewhere, the grid shows its current day only once it is set anew.
    auto* grid = findChild<QTableView*>(dayGridName);
    const QModelIndex current = grid->currentIndex();
    if (grid->hasFocus() && current.isValid()) {
        grid->setCurrentIndex(QModelIndex());
        grid->setCurrentIndex(current);
    }
    return true;
}

void VantCalanderView::pageChanged(int, int month)
{
    showNameOfMonth(month);
}

void VantCalanderView::slotMonthTriggered(QAction* action)
{
    showNameOfMonth(action->data().toInt());
}

void VantCalanderView::showNameOfPage()
{
    showNameOfMonth(calendar->monthShown());
}

void VantCalanderView::showMonthIcons()
{
    showIcon(findChild<QToolButton*>(previousMonthName),
        getGlobalImage("bt_pagebar_backend", ImageManager::Normal));
    showIcon(
        findChild<QToolButton*>(nextMonthName), getGlobalImage("bt_pagebar_nextend", ImageManager::Normal));
}

void VantCalanderView::showShortMonthNames()
{
    const QList<QAction*> months = findChild<QToolButton*>(monthButtonName)->menu()->actions();
    for (QAction* action : months) {
        action->setText(monthNames.value(action->data().toInt() - 1).left(3));
    }
}

// Qt's calendar takes any number for a month, and tells of it: one that has no name shows none.
void VantCalanderView::showNameOfMonth(int month)
{
    findChild<QToolButton*>(monthButtonName)->setText(monthNames.value(month - 1));
}

void VantCalanderView::restoreAfterCalendar()
{
    calendar->setFirstDayOfWeek(Qt::Sunday);
    showMonthIcons();
    showShortMonthNames();
    showNameOfPage();
}

QRect VantCalanderView::visualRect(const QModelIndex&) const
{
    return {};
}

void VantCalanderView::scrollTo(const QModelIndex&, ScrollHint) { }

QModelIndex VantCalanderView::indexAt(const QPoint&) const
{
    return {};
}

QModelIndex VantCalanderView::moveCursor(CursorAction, Qt::KeyboardModifiers)
{
    return {};
}

int VantCalanderView::horizontalOffset() const
{
    return 0;
}

int VantCalanderView::verticalOffset() const
{
    return 0;
}

bool VantCalanderView::isIndexHidden(const QModelIndex&) const
{
    return true;
}

void VantCalanderView::setSelection(const QRect&, QItemSelectionModel::SelectionFlags) { }

QRegion VantCalanderView::visualRegionForSelection(const QItemSelection&) const
{
    return {};
}
