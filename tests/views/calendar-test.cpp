#include "support/display-scale.h"
#include "support/themed-test.h"

#include <functional>
#include <memory>

using displayscale::px;

namespace {

const QDate ninthOfMarch(2017, 3, 9);

QString monthName(int month)
{
    return QLocale::c().monthName(month, QLocale::ShortFormat).toLower() + " month";
}

/** As the user does, so that Qt itself finds the widget and the popup. */
void click(QWidget* widget, const QPoint& place)
{
    QWindow* window = widget->window()->windowHandle();
    QTest::mouseMove(window, widget->mapTo(widget->window(), place));
    QTest::mouseClick(window, Qt::LeftButton, {}, widget->mapTo(widget->window(), place));
}

/** A calendar view and its parts, by the names that they are published under. */
struct Parts
{
    QPoint centerOf(const QDate& date) const
    {
        const QDate first(calendar->yearShown(), calendar->monthShown(), 1);
        // Qt leaves a row of the month before above a month that begins on a Sunday.
        const int cell = first.dayOfWeek() + static_cast<int>(first.daysTo(date));
        return grid->visualRect(grid->model()->index(cell / 7, cell % 7)).center();
    }

    /** Step by step: clicks a day or a part of that name, turns the wheel over the days, or presses a key. */
    void act(const QString& steps) const
    {
        for (const QString& step : steps.split(' ', Qt::SkipEmptyParts)) {
            if (auto* button = pane->findChild<QAbstractButton*>("qt_calendar_" + step)) {
                click(button, button->rect().center());
            } else if (const QDate day = QDate::fromString(step, Qt::ISODate); day.isValid()) {
                click(grid->viewport(), centerOf(day));
            } else if (step == "wheel") {
                QWheelEvent turn({ 5, 5 }, {}, {}, { 0, -120 }, {}, {}, Qt::NoScrollPhase, false);
                QCoreApplication::sendEvent(grid->viewport(), &turn);
            } else {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key(QKeySequence(step)[0]));
            }
        }
    }

    QDate page() const { return { calendar->yearShown(), calendar->monthShown(), 1 }; }

    VantCalanderView* pane;
    QCalendarWidget* calendar = pane->findChild<QCalendarWidget*>();
    QToolButton* previous = pane->findChild<QToolButton*>("qt_calendar_prevmonth");
    QToolButton* next = pane->findChild<QToolButton*>("qt_calendar_nextmonth");
    QToolButton* month = pane->findChild<QToolButton*>("qt_calendar_monthbutton");
    QToolButton* year = pane->findChild<QToolButton*>("qt_calendar_yearbutton");
    QSpinBox* yearEditor = pane->findChild<QSpinBox*>("qt_calendar_yearedit");
    QTableView* grid = pane->findChild<QTableView*>("qt_calendar_calendarview");
    QTableWidget* weekdays = pane->findChild<QTableWidget*>("qt_calendar_weekdayview");
    QWidget* today = pane->findChild<QWidget*>("qt_calendar_today_button");
};

/** A calendar on March 2017 with the ninth selected, in a window that counts the keys let through. */
struct CalendarWindow : QWidget, Parts
{
    CalendarWindow()
        : Parts { new VantCalanderView(this) }
    {
        setStyleSheet(getStyleSheet("component.date_selector") + getStyleSheet("component.menu"));
        pane->resize(px(280), px(260));
        calendar->setSelectedDate(ninthOfMarch);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }

    void keyPressEvent(QKeyEvent* /*event*/) override { ++keysSeen; }

    int keysSeen = 0;
};

/** A selector with the focus. */
struct Selector : VantDateSelector, Parts
{
    Selector()
        : VantDateSelector("any day")
        , Parts { getCalendarView() }
    {
        QApplication::setDoubleClickInterval(0); // so long a new popup does not close on a release anyway
        setFixedWidth(600);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
        setFocus();
    }

    bool isOpen() const { return pane->isVisible() && QApplication::activePopupWidget() == pane->window(); }

    bool shows(const QDate& date, const QString& text) const
    {
        return count() == 1 && currentIndex() == 0 && currentText() == text && itemData(0) == QVariant(date);
    }
};

} // namespace

/** The calendar, by itself and in the selector. */
class CalendarTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    // With its locale, style and direction Qt's calendar writes names and icons of its own.
    void keepsItsNames()
    {
        CalendarWindow window;
        VantCalanderView* view = window.pane;
        const auto again = [&] {
            const int count = view->findChildren<QObject*>().size();
            view->handleNavigationBar();
            view->handleMonthMenu();
            view->handleWeekdayHeader();
            view->handleTabOrder();
            QCOMPARE(view->findChildren<QObject*>().size(), count);
        };
        const std::pair<QDate, std::function<void()>> steps[] {
            { { 2017, 3, 1 }, again },
            { { 2017, 3, 1 }, [&] { window.setLocale(QLocale(QLocale::German)); } },
            { { 2017, 3, 1 }, [&] { window.setStyleSheet("QToolButton { color: red }"); } },
            { { 2017, 3, 1 }, [&] { window.setLayoutDirection(Qt::RightToLeft); } },
            { { 2017, 2, 1 }, [&] { window.act("prevmonth"); } },
            { { 2017, 2, 1 }, [&] { window.month->menu()->actions().at(1)->trigger(); } },
            { { 2018, 2, 1 }, [&] { window.act("yearbutton 2 0 1 8 Return"); } },
        };
        const auto imageOf = [&](const QIcon& icon) {
            return icon.pixmap(window.next->iconSize()).toImage();
        };
        for (const auto& [page, step] : steps) {
            step();
            QCoreApplication::processEvents();
            QCOMPARE(window.page(), page);
            QCOMPARE(window.month->text(), monthName(page.month()));
            for (int month = 1; month <= 12; ++month) {
                QCOMPARE(window.month->menu()->actions().at(month - 1)->text(), monthName(month).left(3));
            }
            QCOMPARE(window.calendar->firstDayOfWeek(), Qt::Sunday);
            for (auto* arrow : { window.previous, window.next }) {
                const QPixmap image =
                    getGlobalImage(arrow == window.next ? "bt_pagebar_nextend" : "bt_pagebar_backend");
                QCOMPARE(imageOf(arrow->icon()), imageOf(image));
                QCOMPARE(arrow->iconSize(), image.size() / displayscale::ratio());
            }
        }
        view->setCurrentPage(2018, 13);
        view->setCurrentPage(2018, 0);
    }

    void choices()
    {
        CalendarWindow window;
        window.setLocale(QLocale::c()); // typed digits are read in the order of its dates
        QSignalSpy spy(window.pane, &VantCalanderView::sigDateSelect);
        const QDate today = QDate::currentDate();
        window.calendar->setDateRange({ 2017, 3, 28 }, { 2017, 12, 31 });
        const std::pair<QString, QDate> rows[] { { "nextmonth Tab Tab Tab 1 4", {} },
            { "Return", { 2017, 4, 14 } }, { "2017-03-27 Return", { 2017, 4, 14 } },
            { "2017-03-28", { 2017, 3, 28 } }, { "Tab Space", today }, { "today_button", today },
            { "yearbutton 2 0 1 6 Return", {} } };
        for (const auto& [steps, date] : rows) {
            window.act(steps);
            QCOMPARE(spy, date.isValid() ? QList<QVariantList> { { date } } : QList<QVariantList>());
            spy.clear();
        }
        QCOMPARE(window.keysSeen, 0);
        for (QWidget* part : QWidgetList { window.grid, window.today }) { // not theirs to keep
            QKeyEvent escape(QEvent::ShortcutOverride, Qt::Key_Escape, {});
            escape.ignore();
            QCoreApplication::sendEvent(part, &escape);
            QVERIFY(!escape.isAccepted());
        }
    }

    // Qt keeps a selected day, another where the arrows start, and a third that typed digits go on from.
    void returnChoosesWhatIsHighlighted()
    {
        const QDate end(2017, 1, 29); // there is none in February
        const QString tab = "Tab Tab Tab ";
        // The selected day, a page outside the limits, steps after a turn of the page, and the choice.
        const std::tuple<QDate, int, QString, QDate> rows[] { { ninthOfMarch, 0, tab, { 2017, 4, 9 } },
            { ninthOfMarch, 0, tab + "wheel", { 2017, 5, 9 } },
            { ninthOfMarch, 0, "yearbutton 2 0 1 6 Return", { 2016, 4, 9 } },
            { end, 0, "prevmonth", { 2017, 1, 28 } }, { end, 0, "prevmonth Tab " + tab + "Right", end },
            { ninthOfMarch, 5, tab, {} }, { ninthOfMarch, 1, tab, {} },
            { ninthOfMarch, 1, tab + "Down", { 2017, 3, 6 } } };
        for (const auto& [start, limited, steps, expected] : rows) {
            CalendarWindow window;
            QSignalSpy spy(window.pane, &VantCalanderView::sigDateSelect);
            window.calendar->setSelectedDate(start);
            window.act("nextmonth");
            window.setLocale(QLocale(QLocale::German));
            if (limited != 0) {
                window.calendar->setDateRange({ 2017, 3, 6 }, { 2017, 3, 24 });
                window.pane->setCurrentPage(2017, limited);
            }
            window.act(steps);
            window.grid->setFocus();
            const QModelIndex cell = window.grid->selectionModel()->selectedIndexes().value(0);
            const QPoint highlighted = window.grid->visualRect(cell).center();
            window.act("Return");
            QCOMPARE(spy.value(0).value(0).toDate(), expected);
            QVERIFY(expected.isValid() ? window.centerOf(expected) == highlighted : !cell.isValid());
        }
    }

    void tabRing()
    {
        QWidget page;
        auto* before = new QLineEdit(&page);
        const Parts window { new VantCalanderView(&page) };
        QCOMPARE(window.month->text(), monthName(QDate::currentDate().month()));
        QVERIFY(!window.yearEditor->testAttribute(Qt::WA_MacShowFocusRect));
        auto* after = new QLineEdit(&page);
        page.setStyleSheet(getStyleSheet("component.date_selector"));
        page.show();
        QVERIFY(QTest::qWaitForWindowActive(&page));
        before->setFocus();
        for (QWidget* stop : QWidgetList { window.previous, window.next, window.month, window.year,
                 window.grid, window.today, window.pane, after, before }) {
            const QImage unfocused = stop->grab().toImage();
            window.act("Tab");
            QCOMPARE(QApplication::focusWidget(), stop);
            QVERIFY2(stop->grab().toImage() != unfocused, qPrintable(stop->objectName()));
        }
        // The grid shows its day only once it is set anew. The year editor stands where its button was, until
        // the focus leaves it.
        window.year->setFocus();
        const QModelIndex current = window.grid->currentIndex();
        QSignalSpy spy(window.grid->selectionModel(), &QItemSelectionModel::currentChanged);
        window.act("Space");
        QCOMPARE(QApplication::focusWidget(), window.yearEditor);
        window.act("Tab");
        QCOMPARE(QApplication::focusWidget(), window.grid);
        QCOMPARE(window.grid->currentIndex(), current);
        window.yearEditor->show();
        window.act("Backtab");
        QCOMPARE(QApplication::focusWidget(), window.yearEditor);
        QCOMPARE(spy.size(), 2);
    }

    void screenReadersFindWhatIsInside()
    {
        CalendarWindow window;
        QCOMPARE(window.grid->accessibleName(), monthName(3) + " 2017");
        const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(window.pane);
        QCOMPARE(told->childCount(), 2);
        for (int index : { 0, 1 }) {
            QCOMPARE(told->child(index)->object(), QObjectList({ window.calendar, window.today }).at(index));
            QCOMPARE(told->indexOfChild(told->child(index)), index);
        }
    }

    void weekdaysStandAboveTheirDays()
    {
        CalendarWindow window;
        for (int column = 0; column < 7; ++column) {
            const QTableWidgetItem* item = window.weekdays->item(0, column);
            QCOMPARE(item->text(), QString("smtwtfs").mid(column, 1));
            QCOMPARE(item->textAlignment(), int(Qt::AlignCenter));
            const QRect day = window.grid->visualRect(window.grid->model()->index(0, column));
            const QRect name = window.weekdays->visualItemRect(item);
            QCOMPARE(QPoint(name.left(), name.right()), QPoint(day.left(), day.right()));
        }
        QCOMPARE(window.weekdays->x(), window.grid->x());
    }

    void showsWhatCannotBeChosen()
    {
        CalendarWindow window;
        const auto picture = [&](int day) {
            const QPoint center = window.centerOf({ 2017, 3, day });
            return window.grid->viewport()->grab({ center - QPoint(10, 6), QSize(20, 12) }).toImage();
        };
        const QImage before[] { picture(5), picture(6), picture(18), picture(19) };
        window.pane->setMinimumDate({ 2017, 3, 6 });
        window.pane->setMaximumDate({ 2017, 3, 18 });
        QVERIFY(picture(6) == before[1] && picture(18) == before[2]);
        QVERIFY(picture(5) != before[0] && picture(19) != before[3]);
        for (const bool enabled : { false, true }) { // the days of the weekend are black only then
            window.pane->setEnabled(enabled);
            for (const Qt::DayOfWeek day : { Qt::Saturday, Qt::Sunday }) {
                const QTextCharFormat format = window.calendar->weekdayTextFormat(day);
                QCOMPARE(format.foreground(), enabled ? QBrush(Qt::black) : QBrush());
            }
        }
    }

    void selectorHoldsOneItem()
    {
        const QDate date(12017, 5, 6);
        const QDate today = QDate::currentDate();
        Selector selector;
        QVERIFY(selector.shows({}, "any day"));
        QCOMPARE(selector.month->text(), monthName(today.month()));
        QCOMPARE(selector.grid->accessibleName(), monthName(today.month()) + today.toString(" yyyy"));
        selector.pane->setMaximumDate({ 2018, 1, 1 });
        selector.dateSelect(date);
        QVERIFY(selector.shows(date, "12017-05-06") && selector.page().year() == 12017);
        selector.dateSelect({});
        QVERIFY(selector.shows({}, "any day") && selector.page().month() == 5);
        selector.clearDate();
        QVERIFY(selector.shows({}, "any day"));
        QCOMPARE(selector.page().daysTo(today) + 1, today.day());

        const VantDateSelector empty((QString()));
        const int text = empty.fontMetrics().horizontalAdvance("2000-00-00");
        QVERIFY(empty.minimumSizeHint().width() > text + px(40)); // arrow, padding and border
    }

    void selectorOpens()
    {
        Selector selector;
        const int left = selector.mapToGlobal({ 0, 0 }).x();
        for (const char* key : { "", "Space", "Alt+Down" }) {
            *key == '\0' ? click(&selector, { 9, 9 }) : QTest::keySequence(&selector, QKeySequence(key));
            QVERIFY(selector.isOpen() && selector.grid->hasFocus());
            QCOMPARE(selector.pane->window()->x(), left);
            selector.act("Esc");
            QVERIFY(!selector.isOpen() && selector.hasFocus() && selector.shows({}, "any day"));
        }
        QVERIFY(selector.pane->window()->width() < px(280) + 5);
        selector.setLayoutDirection(Qt::RightToLeft);
        selector.showPopup();
        QCOMPARE(selector.pane->window()->geometry().right(), left + 600 - 1);
    }

    // What closes the popup, and the date then; if it is the highlighted one when opened again.
    void selectorTakesAChoice()
    {
        const QDate today = QDate::currentDate();
        const std::pair<QString, QDate> rows[] { { "2017-04-02", { 2017, 4, 2 } }, { "today_button", today },
            { "Tab Return", today }, { "Left Enter", { 2017, 3, 8 } }, { "PgDown Esc", ninthOfMarch } };
        for (const auto& [steps, date] : rows) {
            Selector selector;
            selector.dateSelect(ninthOfMarch);
            selector.showPopup();
            selector.act(steps);
            QVERIFY(!selector.isOpen() && selector.shows(date, date.toString("yyyy-MM-dd")));
            selector.showPopup();
            QCOMPARE(selector.page().month(), date.month());
            selector.act("Return");
            QVERIFY(selector.shows(date, date.toString("yyyy-MM-dd")));
        }
    }

    void selectorStaysOpen()
    {
        auto selector = std::make_unique<Selector>();
        const Parts& parts = *selector;
        selector->dateSelect(ninthOfMarch);
        selector->showPopup();
        parts.calendar->setDateRange({ 2000, 3, 1 }, { 2017, 3, 20 });
        const std::pair<QWidget*, QPoint> places[] { { parts.grid->viewport(),
                                                         parts.centerOf({ 2017, 3, 21 }) },
            { parts.previous, { 5, 5 } }, { parts.weekdays->viewport(), { 20, 5 } },
            { parts.previous->parentWidget(), { parts.previous->geometry().right() + 3, 4 } },
            { parts.pane, { 0, 100 } }, { parts.pane->viewport(), { 20, parts.today->y() + 5 } } };
        for (const auto& [widget, place] : places) {
            click(widget, place);
            QVERIFY2(selector->isOpen(), widget->metaObject()->className());
        }
        // In the event loop that the menu keeps while it is open.
        QMenu* menu = parts.month->menu();
        const auto choose = [menu] { QTest::keySequence(menu, QKeySequence("Down, Return")); };
        connect(menu, &QMenu::aboutToShow, menu, choose, Qt::QueuedConnection);
        // The year editor is left by Return, and by Escape, which undoes.
        const std::pair<QString, QDate> rows[] { { "monthbutton", { 2017, 1, 1 } },
            { "prevmonth Return", { 2016, 12, 1 } }, { "yearbutton Down Return", { 2015, 12, 1 } },
            { "yearbutton Down Esc", { 2015, 12, 1 } }, { "wheel", { 2016, 1, 1 } } };
        for (const auto& [steps, page] : rows) {
            parts.act(steps);
            QVERIFY(selector->isOpen());
            QCOMPARE(parts.page(), page);
        }
        QVERIFY(selector->shows(ninthOfMarch, "2017-03-09"));
        selector->dateSelect({});
        QVERIFY(selector->isOpen());
        parts.act("yearbutton");
        const QPointer<QWidget> view = parts.pane;
        selector.reset();
        QVERIFY(!view);
    }
};

QTEST_MAIN(CalendarTest)

#include "calendar-test.moc"
