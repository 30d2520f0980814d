#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "views/calendar-parts.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QStyleFactory>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include <functional>
#include <memory>

using namespace calendarparts;

namespace {

/** A calendar in a window of its own, on March 2017 with the ninth selected. */
struct Window : QWidget
{
    Window()
        : view(new VantCalanderView(this))
        , parts(view)
    {
        setStyleSheet(getStyleSheet("component.date_selector") + getStyleSheet("component.menu"));
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view);
        setFixedSize(displayscale::dpi() * 280 / 96, displayscale::dpi() * 260 / 96);
        parts.calendar->setSelectedDate(ninthOfMarch);
        show();
        if (!QTest::qWaitForWindowActive(this)) {
            qFatal("The window does not become active");
        }
    }

    VantCalanderView* view;
    Parts parts;
};

using Act = std::function<void(Window&)>;

} // namespace

Q_DECLARE_METATYPE(Act)

class CalendarTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void keepsItsNames_data();
    void keepsItsNames();
    void choices_data();
    void choices();
    void monthsThatAreNone();
    void tabRing();
    void tabLeavesACalendarAmongOthers();
    void tabIntoGridKeepsTheDay();
    void weekdaysStandAboveTheirDays();
    void weekendIsBlackUnlessDisabled();
    void showsWhereTheFocusIs();
    void showsWhatCannotBeChosen();

private:
    QTemporaryDir userFolder;
};

void CalendarTest::initTestCase()
{
    load(userFolder.path());
}

void CalendarTest::keepsItsNames_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<QDate>("page");

    const auto row = [](const char* name, const QDate& page, const Act& act) {
        QTest::newRow(name) << act << page;
    };
    const QDate today = QDate::currentDate();
    row("over the end of the year", { 2016, 12, 1 }, [](Window& w) {
        for (int count = 0; count < 3; ++count) {
            QTest::mouseClick(w.parts.previous, Qt::LeftButton);
        }
    });
    row("wheel", { 2017, 2, 1 }, [](Window& w) {
        QWheelEvent event(
            w.parts.grid->viewport()->rect().center(), {}, {}, { 0, 120 }, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(w.parts.grid->viewport(), &event);
    });
    row("year editor at a limit", { 2018, 2, 1 }, [](Window& w) {
        w.view->setMaximumDate({ 2018, 2, 3 });
        w.parts.editYear("2018");
    });
    row("month menu, same month", { 2017, 3, 1 }, [](Window& w) { w.parts.menuEntry(3)->trigger(); });
    row("day of another month", { 2017, 4, 1 }, [](Window& w) { w.parts.click({ 2017, 4, 1 }); });
    row("both limits", { 2016, 1, 1 }, [](Window& w) {
        w.parts.calendar->setDateRange({ 2015, 1, 5 }, { 2016, 1, 5 });
    });
    row("limits, other page", { 2010, 1, 1 }, [](Window& w) {
        w.view->setCurrentPage(2010, 1);
        w.view->setMinimumDate({ 2017, 1, 5 });
    });
    row("today", { today.year(), today.month(), 1 },
        [](Window& w) { QTest::mouseClick(w.parts.today, Qt::LeftButton); });
    row("locale of the calendar", { 2017, 3, 1 },
        [](Window& w) { w.parts.calendar->setLocale(QLocale(QLocale::French, QLocale::France)); });
    row("locale of the window", { 2017, 3, 1 },
        [](Window& w) { w.setLocale(QLocale(QLocale::French, QLocale::France)); });
    row("style sheet", { 2017, 3, 1 }, [](Window& w) { w.setStyleSheet("QToolButton { color: red }"); });
    row("style", { 2017, 3, 1 }, [](Window&) { QApplication::setStyle(QStyleFactory::create("Windows")); });
    row("direction", { 2017, 3, 1 }, [](Window& w) { w.setLayoutDirection(Qt::RightToLeft); });
}

void CalendarTest::keepsItsNames()
{
    QFETCH(Act, act);
    QFETCH(QDate, page);

    Window window;
    const Parts& parts = window.parts;
    act(window);
    QCoreApplication::processEvents();
    QCOMPARE(QDate(parts.calendar->yearShown(), parts.calendar->monthShown(), 1),
        QDate(page.year(), page.month(), 1));
    QCOMPARE(parts.month->text(), months.at(page.month() - 1));
    for (int month = 1; month <= 12; ++month) {
        QCOMPARE(parts.menuEntry(month)->text(), months.at(month - 1).left(3));
    }
    QCOMPARE(parts.calendar->firstDayOfWeek(), Qt::Sunday);
    const QPixmap back = getGlobalImage("bt_pagebar_backend");
    QCOMPARE(parts.previous->icon().pixmap(parts.previous->iconSize()).toImage(),
        QIcon(back).pixmap(parts.previous->iconSize()).toImage());
}

void CalendarTest::choices_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<QList<QDate>>("chosen");

    const auto row = [](const char* name, const QList<QDate>& chosen, const Act& act) {
        QTest::newRow(name) << act << chosen;
    };
    const QDate today = QDate::currentDate();
    row("click", { { 2017, 3, 15 } }, [](Window& w) { w.parts.click({ 2017, 3, 15 }); });
    row("Return", { { 2017, 3, 10 } }, [](Window& w) {
        QTest::keyClick(w.parts.grid, Qt::Key_Right);
        QTest::keyClick(w.parts.grid, Qt::Key_Return);
    });
    row("today twice", { today, today }, [](Window& w) {
        QTest::keyClick(w.parts.today, Qt::Key_Space);
        QTest::keyClick(w.parts.today, Qt::Key_Space);
    });
    row("at the limit and beyond", { { 2017, 3, 14 }, today }, [](Window& w) {
        w.view->setMaximumDate({ 2017, 3, 14 });
        w.parts.click({ 2017, 3, 15 });
        w.parts.click({ 2017, 3, 14 });
        w.view->selectToday();
        QCOMPARE(w.parts.calendar->selectedDate(), QDate(2017, 3, 14));
    });
    row("no limits from invalid dates", { { 2017, 3, 15 } }, [](Window& w) {
        w.view->setMinimumDate({});
        w.view->setMaximumDate({});
        w.parts.click({ 2017, 3, 15 });
    });
    row("pages and weekdays", {}, [](Window& w) {
        QTest::mouseClick(w.parts.next, Qt::LeftButton);
        w.parts.menuEntry(5)->trigger();
        w.parts.editYear("2016");
        w.view->setCurrentPage(2016, 2);
        QTest::mouseClick(w.parts.weekdays->viewport(), Qt::LeftButton);
        QTest::mouseClick(w.parts.calendar->findChild<QWidget*>("qt_calendar_navigationbar"), Qt::LeftButton);
    });
}

void CalendarTest::choices()
{
    QFETCH(Act, act);
    QFETCH(QList<QDate>, chosen);

    Window window;
    QSignalSpy spy(window.view, &VantCalanderView::sigDateSelect);
    act(window);
    QList<QDate> dates;
    for (const QList<QVariant>& arguments : qAsConst(spy)) {
        dates << arguments.first().toDate();
    }
    QCOMPARE(dates, chosen);
}

void CalendarTest::monthsThatAreNone()
{
    Window window;
    for (const int month : { 13, 0, INT_MAX, INT_MIN }) {
        window.view->setCurrentPage(2017, month);
        window.grab();
    }
    window.view->setCurrentPage(2017, 6);
    QCOMPARE(window.parts.month->text(), months.at(5));
}

void CalendarTest::tabRing()
{
    Window window;
    const Parts& parts = window.parts;
    const QList<QWidget*> ring { window.view, parts.previous, parts.next, parts.month, parts.year, parts.grid,
        parts.today };
    window.view->setFocus();
    for (int step = 1; step <= ring.size(); ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), ring.at(step % ring.size()));
    }
    for (int step = ring.size() - 1; step >= 0; --step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), ring.at(step));
    }

    // The year editor stands where its button was, until the focus leaves it.
    parts.year->setFocus();
    QTest::keyClick(parts.year, Qt::Key_Space);
    QCOMPARE(QApplication::focusWidget(), parts.yearEditor);
    QTest::keyClick(parts.yearEditor, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), parts.grid);
    QTest::mouseClick(parts.year, Qt::LeftButton);
    parts.grid->setFocus();
    parts.yearEditor->show();
    QTest::keyClick(parts.grid, Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget(), parts.yearEditor);
}

void CalendarTest::tabLeavesACalendarAmongOthers()
{
    QWidget page;
    auto* before = new QLineEdit(&page);
    auto* view = new VantCalanderView(&page);
    auto* after = new QLineEdit(&page);
    const Parts parts(view);
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));

    const QWidgetList stops { before, parts.previous, parts.next, parts.month, parts.year, parts.grid,
        parts.today, view, after, before };
    before->setFocus();
    for (int step = 1; step < stops.size(); ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), stops.at(step));
    }
}

void CalendarTest::tabIntoGridKeepsTheDay()
{
    Window window;
    window.parts.year->setFocus();
    const QModelIndex current = window.parts.grid->currentIndex();
    QSignalSpy spy(window.parts.grid->selectionModel(), &QItemSelectionModel::currentChanged);
    QTest::keyClick(window.parts.year, Qt::Key_Tab);
    QCOMPARE(spy.size(), 2);
    QCOMPARE(window.parts.grid->currentIndex(), current);
    QCOMPARE(window.parts.calendar->selectedDate(), ninthOfMarch);
}

void CalendarTest::weekdaysStandAboveTheirDays()
{
    Window window;
    const Parts& parts = window.parts;
    QCOMPARE(parts.weekdays->height(), 30 * displayscale::dpi() / 96);
    QCOMPARE(window.view->accessibleName(), QString("Kalender"));
    for (int column = 0; column < 7; ++column) {
        QCOMPARE(parts.weekdays->item(0, column)->text(), QString::number(column + 1));
        const QRect day = parts.grid->visualRect(parts.grid->model()->index(0, column));
        const QRect name = parts.weekdays->visualItemRect(parts.weekdays->item(0, column));
        const int dayX = parts.grid->viewport()->mapTo(window.view, day.topLeft()).x();
        const int nameX = parts.weekdays->viewport()->mapTo(window.view, name.topLeft()).x();
        QCOMPARE(nameX, dayX);
        QCOMPARE(name.width(), day.width());
    }
}

void CalendarTest::weekendIsBlackUnlessDisabled()
{
    Window window;
    const QCalendarWidget* calendar = window.parts.calendar;
    for (const Qt::DayOfWeek day : { Qt::Saturday, Qt::Sunday }) {
        window.view->setEnabled(false);
        QVERIFY(!calendar->weekdayTextFormat(day).hasProperty(QTextFormat::ForegroundBrush));
        window.view->setEnabled(true);
        QCOMPARE(calendar->weekdayTextFormat(day).foreground(), QBrush(Qt::black));
    }
}

void CalendarTest::showsWhereTheFocusIs()
{
    Window window;
    const Parts& parts = window.parts;
    for (QWidget* stop : QWidgetList {
             window.view, parts.previous, parts.next, parts.month, parts.year, parts.grid, parts.today }) {
        stop->setFocus(Qt::TabFocusReason);
        const QImage focused = stop->grab().toImage();
        stop->clearFocus();
        QVERIFY2(focused != stop->grab().toImage(), qPrintable(stop->objectName()));
    }
}

void CalendarTest::showsWhatCannotBeChosen()
{
    Window window;
    const auto darkest = [&](const QDate& day) {
        const QImage picture = window.parts.grid->viewport()->grab().toImage();
        const int ratio = displayscale::ratio();
        const QRect middle(window.parts.centerOf(day) * ratio - QPoint(10, 6) * ratio, QSize(20, 12) * ratio);
        int lightness = 255;
        for (int x = middle.left(); x <= middle.right(); ++x) {
            for (int y = middle.top(); y <= middle.bottom(); ++y) {
                lightness = qMin(lightness, picture.pixelColor(x, y).lightness());
            }
        }
        return lightness;
    };
    const QDate inside(2017, 3, 18);
    const QDate outside(2017, 3, 19);
    const int choosable = darkest(outside);
    window.view->setMaximumDate(inside);
    QVERIFY(darkest(outside) > choosable + 80);
    QVERIFY(darkest(inside) < choosable + 20);
}

QTEST_MAIN(CalendarTest)

#include "calendar-test.moc"
