#include "views/vant-calander-view.h"

#include "image-manager/image-manager.h"
#include "style-manager/style-manager.h"
#include "utils/component-strings.h"
#include "utils/design-pixels_p.h"
#include "utils/dpi-info.h"
#include "views/calendar-accessible_p.h"
#include "widgets/mouse-filters.h"
#include "widgets/vant-button.h"

#include <QAction>
#include <QCalendarWidget>
#include <QDate>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QSpinBox>
#include <QStyleOptionToolButton>
#include <QStylePainter>
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

bool isReturn(const QEvent* event)
{
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

// The popup of a combo box closes on Return and Escape as soon as it is asked whether they are shortcuts.
// That question must not come to the view when a widget inside has a use for the key.
bool keepsKey(QEvent* event, bool escapeToo)
{
    if (event->type() != QEvent::ShortcutOverride) {
        return false;
    }
    const bool isEscape = static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    const bool keeps = isReturn(event) || (escapeToo && isEscape);
    if (keeps) {
        event->accept();
    }
    return keeps;
}

// The first of a month lies in the cell of its weekday, 1 to 7: above a month that begins on a Sunday, Qt
// leaves a row of the month before.
QDate dayAt(const QCalendarWidget* calendar, const QModelIndex& cell)
{
    const QDate first(calendar->yearShown(), calendar->monthShown(), 1);
    return cell.isValid() ? first.addDays(cell.row() * 7 + cell.column() - first.dayOfWeek()) : QDate();
}

void makeCurrent(const QCalendarWidget* calendar, const QTableView* grid, const QDate& day,
    QItemSelectionModel::SelectionFlags command)
{
    const QAbstractItemModel* days = grid->model();
    const auto cell = static_cast<int>(dayAt(calendar, days->index(0, 0)).daysTo(day));
    grid->selectionModel()->setCurrentIndex(days->index(cell / 7, cell % 7), command);
}

// What has been changed in Qt's calendar from outside is lost in some of its own events: with its locale it
// writes the month names and the first day of the week, which costs the grid its current day, and with its
// style and direction the icons of the arrows.
class Calendar : public QCalendarWidget
{
public:
    // The calendar is no stop of the Tab key beside its grid. As the grid's proxy it would be one, and would
    // take the focus policy of the grid away while the year is edited.
    explicit Calendar(QWidget* parent)
        : QCalendarWidget(parent)
        , grid(findChild<QTableView*>(dayGridName))
        , yearEditor(findChild<QSpinBox*>(yearEditorName))
    {
        setFocusProxy(nullptr);
        setFocusPolicy(Qt::NoFocus);
    }

    std::function<void()> restore;

    // Black, but for a disabled calendar, in which it has the colour of all days.
    void colorWeekend()
    {
        QTextCharFormat format = weekdayTextFormat(Qt::Saturday);
        format.clearForeground();
        if (isEnabled()) {
            format.setForeground(QBrush(Qt::black, Qt::SolidPattern));
        }
        setWeekdayTextFormat(Qt::Saturday, format);
        setWeekdayTextFormat(Qt::Sunday, format);
    }

protected:
    bool event(QEvent* event) override
    {
        if (keepsKey(event, yearEditor->isVisible())) {
            return true;
        }
        const QEvent::Type type = event->type();
        const bool writes = type == QEvent::LocaleChange || type == QEvent::StyleChange
            || type == QEvent::LayoutDirectionChange;
        if (restore && writes) {
            const QDate day = dayAt(this, grid->currentIndex());
            const bool handled = QCalendarWidget::event(event);
            restore();
            makeCurrent(this, grid, day, QItemSelectionModel::NoUpdate);
            return handled;
        }
        const bool handled = QCalendarWidget::event(event);
        if (type == QEvent::EnabledChange) {
            colorWeekend();
        }
        return handled;
    }

    // A style sheet leaves Qt no colour to tell the days that cannot be chosen from the others.
    void paintCell(QPainter* painter, const QRect& rect, const QDate& date) const override
    {
        const bool choosable = isEnabled() && date >= minimumDate() && date <= maximumDate();
        painter->setOpacity(choosable ? 1.0 : 0.5);
        QCalendarWidget::paintCell(painter, rect, date);
    }

    // Qt gives the calendar the focus where it means the grid.
    void focusInEvent(QFocusEvent* event) override { grid->setFocus(event->reason()); }

    // The year editor and the buttons let Return through when they are done with it. It ends here: further up
    // it would press the default button of a dialog.
    void keyPressEvent(QKeyEvent* event) override
    {
        QCalendarWidget::keyPressEvent(event);
        if (isReturn(event)) {
            event->accept();
        }
    }

    // So does a click on a day outside the limits, which would close a popup.
    void mousePressEvent(QMouseEvent* event) override
    {
        QCalendarWidget::mousePressEvent(event);
        event->accept();
    }

private:
    QTableView* grid;
    QSpinBox* yearEditor;
};

// Qt paints the arrows as if they never had the focus. With it, they can be styled like the other buttons.
class ArrowPainter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint) {
            return false;
        }

        struct Opened : QToolButton
        {
            using QToolButton::initStyleOption;
        };

        auto* button = static_cast<QToolButton*>(watched);
        QStyleOptionToolButton option;
        (button->*&Opened::initStyleOption)(&option);
        QStylePainter(button).drawComplexControl(QStyle::CC_ToolButton, option);
        return true;
    }
};

class TodayButton : public VantButton
{
public:
    TodayButton()
        : VantButton(componentString("today"), 1)
    {
        setAutoDefault(true); // Return chooses today; in a popup it would close it and choose nothing
    }

protected:
    bool event(QEvent* event) override { return keepsKey(event, false) || VantButton::event(event); }
};

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
    vantkit::internal::installCalendarAccessibility();
    auto* layout = new QVBoxLayout(this);

    auto* todayButton = new TodayButton; // the layout gives it its parent
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
    ownCalendar->colorWeekend();
    setAccessibleName(componentString("accessible_calendar"));

    handleNavigationBar();
    handleWeekdayHeader();
    handleTabOrder();
    nameDaysAfterPage();
    ownCalendar->restore = [this] { restoreAfterCalendar(); };

    findChild<QToolButton*>(yearButtonName)->installEventFilter(this);
    findChild<QSpinBox*>(yearEditorName)->installEventFilter(this);
    QTableView* grid = dayGrid();
    grid->installEventFilter(this);
    todayButton->installEventFilter(this);

    connect(calendar, SIGNAL(activated(QDate)), this, SIGNAL(sigDateSelect(QDate)));
    connect(calendar, SIGNAL(clicked(QDate)), this, SIGNAL(sigDateSelect(QDate)));
    connect(todayButton, SIGNAL(clicked()), this, SLOT(selectToday()));
    connect(calendar, SIGNAL(currentPageChanged(int,int)), this, SLOT(pageChanged(int,int)));
    connect(grid->selectionModel(),
        SIGNAL(currentChanged(QModelIndex,QModelIndex)), this, SLOT(highlightCurrentDay()));
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
    select(QDate::currentDate());
    Q_EMIT sigDateSelect(QDate::currentDate());
}

void VantCalanderView::handleNavigationBar()
{
    if (!monthNames.isEmpty()) {
        return;
    }

    auto* previous = findChild<QToolButton*>(previousMonthName);
    auto* next = findChild<QToolButton*>(nextMonthName);
    auto* monthButton = findChild<QToolButton*>(monthButtonName);
    for (QToolButton* button : { previous, next, monthButton, findChild<QToolButton*>(yearButtonName) }) {
        button->setFocusPolicy(Qt::StrongFocus);
    }
    previous->setAccessibleName(componentString("accessible_calendar_prev_month"));
    next->setAccessibleName(componentString("accessible_calendar_next_month"));
    showMonthIcons();
    auto* arrowPainter = new ArrowPainter(previous);
    previous->installEventFilter(arrowPainter);
    next->installEventFilter(arrowPainter);
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
    if (!monthNames.isEmpty()) {
        return;
    }

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
    if (weekdayView) {
        return;
    }

    QTableView* grid = dayGrid();
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

bool VantCalanderView::eventFilter(QObject* watched, QEvent* event)
{
    // The filters of an item view are not for what is inside this one.
    if (event->type() == QEvent::FocusIn) {
        highlightCurrentDay();
    }
    if (event->type() != QEvent::KeyPress) {
        return false; // clazy:exclude=base-class-event
    }
    QTableView* grid = dayGrid();
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Tab && key != Qt::Key_Backtab) {
        return watched == grid && !selectCurrentDay() && isReturn(event); // clazy:exclude=base-class-event
    }
    focusNextPrevChild(key == Qt::Key_Tab);

    // Coming from elsewhere, the grid tells of its current day only once it is set anew. The view would not
    // set a day outside the limits.
    const QModelIndex current = grid->currentIndex();
    if (grid->hasFocus() && current.isValid()) {
        grid->setCurrentIndex(QModelIndex());
        grid->selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect);
    }
    return true;
}

// Qt keeps two days: the selected one, which Return reports, and the grid's current one, which arrows start
// from and which alone goes along with the pages. With the focus on the grid the current one is what is
// highlighted, and a key finds it selected.
void VantCalanderView::highlightCurrentDay()
{
    const QTableView* grid = dayGrid();
    if (grid->hasFocus()) {
        grid->selectionModel()->select(grid->currentIndex(), QItemSelectionModel::ClearAndSelect);
    }
}

// Returns false if there is nothing to select: a day outside the limits is never highlighted.
bool VantCalanderView::selectCurrentDay()
{
    const QDate day = dayAt(calendar, dayGrid()->currentIndex());
    const bool choosable = day >= calendar->minimumDate() && day <= calendar->maximumDate();
    if (choosable) {
        select(day);
    }
    return choosable;
}

// As a key or a click does: after QCalendarWidget::setSelectedDate(), typed digits would go on from another
// day. If the day is selected already, Qt leaves the current one where it is.
void VantCalanderView::select(const QDate& day)
{
    QTableView* grid = dayGrid();
    QMetaObject::invokeMethod(calendar, "_q_slotChangeDate", Q_ARG(QDate, day), Q_ARG(bool, true));
    makeCurrent(calendar, grid, calendar->selectedDate(), QItemSelectionModel::ClearAndSelect);
}

QTableView* VantCalanderView::dayGrid() const
{
    return findChild<QTableView*>(dayGridName);
}

void VantCalanderView::pageChanged(int /*year*/, int month)
{
    showNameOfMonth(month);
    nameDaysAfterPage();
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
        action->setText(nameOfMonth(action->data().toInt()).left(3));
    }
}

void VantCalanderView::showNameOfMonth(int month)
{
    findChild<QToolButton*>(monthButtonName)->setText(nameOfMonth(month));
}

// Of its days a screen reader tells the numbers alone.
void VantCalanderView::nameDaysAfterPage()
{
    const QString month = nameOfMonth(calendar->monthShown());
    dayGrid()->setAccessibleName(month + QLatin1Char(' ') + QString::number(calendar->yearShown()));
}

// Qt's calendar takes any number for a month, and tells of it.
QString VantCalanderView::nameOfMonth(int month) const
{
    return month >= 1 && month <= monthNames.size() ? monthNames.at(month - 1) : QString();
}

void VantCalanderView::restoreAfterCalendar()
{
    calendar->setFirstDayOfWeek(Qt::Sunday);
    showMonthIcons();
    showShortMonthNames();
    showNameOfPage();
}

// A press on the frame would go on to a popup, and close it.
bool VantCalanderView::event(QEvent* event)
{
    const bool handled = QAbstractItemView::event(event);
    return handled || event->type() == QEvent::MouseButtonPress
        || event->type() == QEvent::MouseButtonDblClick;
}

QRect VantCalanderView::visualRect(const QModelIndex& /*index*/) const
{
    return {};
}

void VantCalanderView::scrollTo(const QModelIndex& /*index*/, ScrollHint /*hint*/) { }

QModelIndex VantCalanderView::indexAt(const QPoint& /*point*/) const
{
    return {};
}

QModelIndex VantCalanderView::moveCursor(CursorAction /*action*/, Qt::KeyboardModifiers /*modifiers*/)
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

bool VantCalanderView::isIndexHidden(const QModelIndex& /*index*/) const
{
    return true;
}

void VantCalanderView::setSelection(const QRect& /*rect*/, QItemSelectionModel::SelectionFlags /*flags*/) { }

QRegion VantCalanderView::visualRegionForSelection(const QItemSelection& /*selection*/) const
{
    return {};
}
