#pragma once

#include "theme/default-theme.h"

#include <vantkit-qt/vantkit.h>

#include <QCalendarWidget>
#include <QMenu>
#include <QSpinBox>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

/** Names of months and weekdays that no locale of Qt has all of, and a theme to show them in. */
namespace calendarparts {

inline const QStringList months { "Januar", "Februar", "März", "April", "Ma", "Juni", "Juli", "August",
    "September", "Oktober", "November", "Dezember" };
inline const QDate ninthOfMarch(2017, 3, 9);

inline QMap<QString, QString> strings()
{
    const QStringList monthKeys { "jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov",
        "dec" };
    QMap<QString, QString> map { { "today", "Heute" }, { "accessible_calendar", "Kalender" },
        { "accessible_calendar_prev_month", "Zurück" }, { "accessible_calendar_next_month", "Vor" },
        { "sunday", "1So" }, { "monday", "2Mo" }, { "tuesday", "3Di" }, { "wednesday", "4Mi" },
        { "thursday", "5Do" }, { "friday", "6Fr" }, { "saturday", "7Sa" } };
    for (int month = 0; month < months.size(); ++month) {
        map.insert("month_" + monthKeys.at(month), months.at(month));
    }
    return map;
}

inline void load(const QString& userFolder)
{
    defaulttheme::load(userFolder);
    ComponentStrings::getInstance().installStrings(strings());
}

/** The parts of a calendar view, by the names that they are published under. */
struct Parts
{
    explicit Parts(QWidget* view)
        : calendar(view->findChild<QCalendarWidget*>())
        , previous(view->findChild<QToolButton*>("qt_calendar_prevmonth"))
        , next(view->findChild<QToolButton*>("qt_calendar_nextmonth"))
        , month(view->findChild<QToolButton*>("qt_calendar_monthbutton"))
        , year(view->findChild<QToolButton*>("qt_calendar_yearbutton"))
        , yearEditor(view->findChild<QSpinBox*>("qt_calendar_yearedit"))
        , grid(view->findChild<QTableView*>("qt_calendar_calendarview"))
        , weekdays(view->findChild<QTableWidget*>("qt_calendar_weekdayview"))
        , today(view->findChild<VantButton*>("qt_calendar_today_button"))
    { }

    QPoint centerOf(const QDate& date) const
    {
        const QDate first(calendar->yearShown(), calendar->monthShown(), 1);
        // Qt leaves a row of the month before above a month that begins on a Sunday.
        const int cell = first.dayOfWeek() + static_cast<int>(first.daysTo(date));
        return grid->visualRect(grid->model()->index(cell / 7, cell % 7)).center();
    }

    void click(const QDate& date) const
    {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, centerOf(date));
    }

    QAction* menuEntry(int number) const { return month->menu()->actions().at(number - 1); }

    void editYear(const QByteArray& digits) const
    {
        QTest::mouseClick(year, Qt::LeftButton);
        for (const char digit : digits) {
            QTest::keyClick(yearEditor, digit);
        }
        QTest::keyClick(yearEditor, Qt::Key_Return);
    }

    QCalendarWidget* calendar;
    QToolButton* previous;
    QToolButton* next;
    QToolButton* month;
    QToolButton* year;
    QSpinBox* yearEditor;
    QTableView* grid;
    QTableWidget* weekdays;
    VantButton* today;
};

} // namespace calendarparts
