#include "views/calendar-parts.h"

#include <QAccessible>

#include <functional>

using namespace calendarparts;

namespace {

/** A calendar on March 2017 with the ninth selected, in a window that counts the keys let through. */
struct Window : QWidget
{
    Window()
    {
        setStyleSheet(getStyleSheet("component.date_selector") + getStyleSheet("component.menu"));
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view);
        setFixedSize(px(280), px(260));
        calendar->setSelectedDate(ninthOfMarch);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }

    void keyPressEvent(QKeyEvent* /*event*/) override { ++keysSeen; }

    int keysSeen = 0;
    VantCalanderView* view = new VantCalanderView(this);
    Parts parts { view };
    QCalendarWidget* calendar = parts.calendar;
};

} // namespace

class CalendarTest : public ViewTest
{
    Q_OBJECT

private Q_SLOTS:

    // With its locale, style and direction Qt's calendar writes names and icons of its own.
    void keepsItsNames()
    {
        Window window;
        VantCalanderView* view = window.view;
        const Parts& parts = window.parts;
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
            { { 2017, 2, 1 }, [&] { parts.act("prevmonth"); } },
            { { 2017, 2, 1 }, [&] { parts.act("menu=2"); } },
            { { 2018, 2, 1 }, [&] { parts.act("year=2018"); } },
        };
        for (const auto& [page, step] : steps) {
            step();
            QCoreApplication::processEvents();
            QCOMPARE(parts.month->text(), months.at(page.month() - 1));
            for (int entry = 0; entry < 12; ++entry) {
                QCOMPARE(parts.month->menu()->actions().at(entry)->text(), months.at(entry).left(3));
            }
            QCOMPARE(QDate(parts.calendar->yearShown(), parts.calendar->monthShown(), 1), page);
            QCOMPARE(parts.calendar->firstDayOfWeek(), Qt::Sunday);
            const auto imageOf = [&](const QIcon& icon) {
                return icon.pixmap(parts.next->iconSize()).toImage();
            };
            for (QToolButton* arrow : { parts.previous, parts.next }) {
                const QPixmap image =
                    getGlobalImage(arrow == parts.next ? "bt_pagebar_nextend" : "bt_pagebar_backend");
                QCOMPARE(imageOf(arrow->icon()), imageOf(image));
                QCOMPARE(arrow->iconSize(), image.size() / displayscale::ratio());
            }
        }
        for (const int month : { 13, 0 }) {
            view->setCurrentPage(2018, month);
            window.grab();
        }
    }

    void choices()
    {
        Window window;
        QSignalSpy spy(window.view, &VantCalanderView::sigDateSelect);
        const QDate today = QDate::currentDate();
        window.calendar->setDateRange({ 2017, 3, 28 }, { 2017, 12, 31 });
        const std::pair<QString, QDate> rows[] { { "nextmonth Tab Tab Tab 1 4", {} },
            { "Return", { 2017, 4, 14 } }, { "2017-03-27 Return", { 2017, 4, 14 } },
            { "2017-03-28", { 2017, 3, 28 } }, { "Tab Space", today }, { "today_button", today },
            { "menu=3", {} }, { "year=2016", {} } };
        for (const auto& [steps, date] : rows) {
            window.parts.act(steps);
            QCOMPARE(spy, date.isValid() ? QList<QVariantList> { { date } } : QList<QVariantList>());
            spy.clear();
        }
        QCOMPARE(window.keysSeen, 0);
    }

    // Qt keeps a selected day, another where the arrows start, and a third that typed digits go on from.
    void returnChoosesWhatIsHighlighted()
    {
        const QDate end(2017, 1, 29); // there is none in February
        const QString tab = "Tab Tab Tab ";
        // The selected day, a page outside the limits, steps after a turn of the page, and the choice.
        const std::tuple<QDate, int, QString, QDate> rows[] { { ninthOfMarch, 0, tab, { 2017, 4, 9 } },
            { ninthOfMarch, 0, tab + "wheel", { 2017, 5, 9 } },
            { ninthOfMarch, 0, "year=2016", { 2016, 4, 9 } }, { end, 0, "prevmonth", { 2017, 1, 28 } },
            { end, 0, "prevmonth Tab " + tab + "Right", end }, { ninthOfMarch, 5, tab, {} },
            { ninthOfMarch, 1, tab, {} }, { ninthOfMarch, 1, tab + "Down", { 2017, 3, 6 } } };
        for (const auto& [start, limited, steps, expected] : rows) {
            Window window;
            const Parts& parts = window.parts;
            QSignalSpy spy(window.view, &VantCalanderView::sigDateSelect);
            window.calendar->setSelectedDate(start);
            parts.act("nextmonth");
            window.setLocale(QLocale(QLocale::German));
            if (limited != 0) {
                window.calendar->setDateRange({ 2017, 3, 6 }, { 2017, 3, 24 });
                window.view->setCurrentPage(2017, limited);
            }
            parts.act(steps);
            parts.grid->setFocus();
            const QModelIndex cell = parts.grid->selectionModel()->selectedIndexes().value(0);
            const QPoint highlighted = parts.grid->visualRect(cell).center();
            parts.act("Return");
            QCOMPARE(spy.value(0).value(0).toDate(), expected);
            QCOMPARE(cell.isValid(), expected.isValid());
            QVERIFY(!cell.isValid() || parts.centerOf(expected) == highlighted);
        }
    }

    void tabRing()
    {
        QWidget page;
        auto* before = new QLineEdit(&page);
        auto* view = new VantCalanderView(&page);
        auto* after = new QLineEdit(&page);
        const Parts parts { view };
        page.setStyleSheet(getStyleSheet("component.date_selector"));
        page.show();
        QVERIFY(QTest::qWaitForWindowActive(&page));
        const QWidgetList stops { before, parts.previous, parts.next, parts.month, parts.year, parts.grid,
            parts.today, view, after, before };
        before->setFocus();
        for (QWidget* stop : stops.mid(1)) {
            const QImage unfocused = stop->grab().toImage();
            parts.act("Tab");
            QCOMPARE(QApplication::focusWidget(), stop);
            QVERIFY2(stop->grab().toImage() != unfocused, qPrintable(stop->objectName()));
        }
        // The grid shows its day only once it is set anew. The year editor stands where its button was, until
        // the focus leaves it.
        parts.year->setFocus();
        const QModelIndex current = parts.grid->currentIndex();
        QSignalSpy spy(parts.grid->selectionModel(), &QItemSelectionModel::currentChanged);
        parts.act("Space");
        QCOMPARE(QApplication::focusWidget(), parts.yearEditor);
        parts.act("Tab");
        QCOMPARE(QApplication::focusWidget(), parts.grid);
        QCOMPARE(parts.grid->currentIndex(), current);
        parts.yearEditor->show();
        parts.act("Backtab");
        QCOMPARE(QApplication::focusWidget(), parts.yearEditor);
        QCOMPARE(spy.size(), 2);
    }

    void screenReadersFindWhatIsInside()
    {
        Window window;
        QStringList found;
        const std::function<void(QAccessibleInterface*)> collect = [&](QAccessibleInterface* node) {
            for (int index = 0; index < node->childCount(); ++index) {
                QCOMPARE(node->indexOfChild(node->child(index)), index);
                found += node->child(index)->text(QAccessible::Name);
                collect(node->child(index));
            }
        };
        collect(QAccessible::queryAccessibleInterface(window.view));
        for (const char* name : { "Zurück", "Vor", "März", "März 2017", "9", "Heute" }) {
            QVERIFY2(found.contains(name), name);
        }
        const VantCalanderView fresh;
        const QString month = months.at(QDate::currentDate().month() - 1);
        QVERIFY(Parts { const_cast<VantCalanderView*>(&fresh) }.grid->accessibleName().startsWith(month));
    }

    void weekdaysStandAboveTheirDays()
    {
        Window window;
        const Parts& parts = window.parts;
        for (int column = 0; column < 7; ++column) {
            const QTableWidgetItem* item = parts.weekdays->item(0, column);
            QCOMPARE(item->text(), QString::number(column + 1));
            QCOMPARE(item->textAlignment(), int(Qt::AlignCenter));
            const QRect day = parts.grid->visualRect(parts.grid->model()->index(0, column));
            const QRect name = parts.weekdays->visualItemRect(item);
            QCOMPARE(parts.weekdays->viewport()->mapTo(window.view, name.topLeft()).x(),
                parts.grid->viewport()->mapTo(window.view, day.topLeft()).x());
            QCOMPARE(name.width(), day.width());
        }
    }

    void showsWhatCannotBeChosen()
    {
        Window window;
        const auto picture = [&](const QDate& day) {
            const QRect middle(window.parts.centerOf(day) - QPoint(10, 6), QSize(20, 12));
            return window.parts.grid->viewport()->grab(middle).toImage();
        };
        const QDate days[] { { 2017, 3, 5 }, { 2017, 3, 6 }, { 2017, 3, 18 }, { 2017, 3, 19 } };
        const QImage before[] { picture(days[0]), picture(days[1]), picture(days[2]), picture(days[3]) };
        window.view->setMinimumDate(days[1]);
        window.view->setMaximumDate(days[2]);
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(picture(days[i]) == before[i], i == 1 || i == 2);
        }
        for (const bool enabled : { false, true }) { // the days of the weekend are black only then
            window.view->setEnabled(enabled);
            for (const Qt::DayOfWeek day : { Qt::Saturday, Qt::Sunday }) {
                const QTextCharFormat format = window.calendar->weekdayTextFormat(day);
                QCOMPARE(format.foreground(), enabled ? QBrush(Qt::black) : QBrush());
            }
        }
    }
};

QTEST_MAIN(CalendarTest)

#include "calendar-test.moc"
