#pragma once

#include "views/view-test.h"

/** What the tests of the calendar and of the selector share. */
namespace calendarparts {

inline const QStringList months = QString("Januar Februar März April Ma Juni Juli August September Oktober "
                                          "November Dezember")
                                      .split(' ');
inline const QDate ninthOfMarch(2017, 3, 9);

/** As the user does, so that Qt itself finds the widget and the popup. */
inline void click(QWidget* widget, const QPoint& place)
{
    QWindow* window = widget->window()->windowHandle();
    QTest::mouseMove(window, widget->mapTo(widget->window(), place));
    QTest::mouseClick(window, Qt::LeftButton, {}, widget->mapTo(widget->window(), place));
}

/** The parts of a calendar view, by the names that they are published under. */
struct Parts
{
    QPoint centerOf(const QDate& date) const
    {
        const QDate first(calendar->yearShown(), calendar->monthShown(), 1);
        // Qt leaves a row of the month before above a month that begins on a Sunday.
        const int cell = first.dayOfWeek() + static_cast<int>(first.daysTo(date));
        return grid->visualRect(grid->model()->index(cell / 7, cell % 7)).center();
    }

    /**
     * Does one step after the other: a day or the name of a part is clicked, "wheel" turns the page, a year
     * and an entry of the menu are chosen, and any other word is a key.
     */
    void act(const QString& steps) const
    {
        for (const QString& step : steps.split(' ', Qt::SkipEmptyParts)) {
            if (auto* button = view->findChild<QAbstractButton*>("qt_calendar_" + step)) {
                click(button, button->rect().center());
            } else if (const QDate day = QDate::fromString(step, Qt::ISODate); day.isValid()) {
                click(grid->viewport(), centerOf(day));
            } else if (step == "wheel") {
                QWheelEvent turn({ 5, 5 }, {}, {}, { 0, -120 }, {}, {}, Qt::NoScrollPhase, false);
                QCoreApplication::sendEvent(grid->viewport(), &turn);
            } else if (step.startsWith("year=")) {
                act("yearbutton");
                QTest::keyClicks(yearEditor, step.mid(5));
                QTest::keyClick(yearEditor, Qt::Key_Return);
            } else if (step.startsWith("menu=")) {
                month->menu()->actions().at(step.mid(5).toInt() - 1)->trigger();
            } else {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key(QKeySequence(step)[0]));
            }
        }
    }

    VantCalanderView* view;
    QCalendarWidget* calendar = view->findChild<QCalendarWidget*>();
    QToolButton* previous = view->findChild<QToolButton*>("qt_calendar_prevmonth");
    QToolButton* next = view->findChild<QToolButton*>("qt_calendar_nextmonth");
    QToolButton* month = view->findChild<QToolButton*>("qt_calendar_monthbutton");
    QToolButton* year = view->findChild<QToolButton*>("qt_calendar_yearbutton");
    QSpinBox* yearEditor = view->findChild<QSpinBox*>("qt_calendar_yearedit");
    QTableView* grid = view->findChild<QTableView*>("qt_calendar_calendarview");
    QTableWidget* weekdays = view->findChild<QTableWidget*>("qt_calendar_weekdayview");
    QWidget* today = view->findChild<QWidget*>("qt_calendar_today_button");
};

} // namespace calendarparts
