#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "views/calendar-parts.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QStyleFactory>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include <functional>

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
        QVERIFY(QTest::qWaitForWindowActive(this));
    }

    VantCalanderView* view;
    Parts parts;
};

} // namespace

class CalendarTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void keepsItsNames();
    void choices();
    void returnChoosesWhatIsHighlighted();
    void tabRing();
    void screenReadersFindWhatIsInside();
    void weekdaysStandAboveTheirDays();
    void showsWhatCannotBeChosen();

private:
    QTemporaryDir userFolder;
};

void CalendarTest::initTestCase()
{
    load(userFolder.path());
}

// With its locale, style and direction Qt's calendar writes names and icons of its own.
void CalendarTest::keepsItsNames()
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
    const QList<QPair<QDate, std::function<void()>>> steps {
        { { 2017, 3, 1 }, again },
        { { 2017, 3, 1 }, [&] { parts.calendar->setLocale(QLocale(QLocale::French)); } },
        { { 2017, 3, 1 }, [&] { window.setLocale(QLocale(QLocale::German)); } },
        { { 2017, 3, 1 }, [&] { window.setStyleSheet("QToolButton { color: red }"); } },
        { { 2017, 3, 1 }, [&] { window.setLayoutDirection(Qt::RightToLeft); } },
        { { 2017, 3, 1 }, [&] { QApplication::setStyle(QStyleFactory::create("Windows")); } },
        { { 2017, 2, 1 }, [&] { parts.previous->click(); } },
        { { 2016, 12, 1 }, [&] { view->setCurrentPage(2016, 12); } },
        { { 2017, 1, 1 }, [&] { parts.next->click(); } },
        { { 2017, 11, 1 }, [&] { parts.menuEntry(11)->trigger(); } },
        { { 2017, 12, 1 },
            [&] {
                parts.click({ 2017, 12, 1 });
            } },
        { QDate::currentDate(), [&] { parts.today->click(); } },
        { { 2018, 2, 1 },
            [&] {
                view->setMaximumDate({ 2018, 2, 3 });
            } },
        { { 2017, 5, 1 }, [&] { view->setCurrentPage(2017, 5); } },
        { { 2018, 2, 1 }, [&] { parts.editYear("2018"); } },
    };
    for (const auto& [page, step] : steps) {
        step();
        QCoreApplication::processEvents();
        QStringList texts { parts.month->text() };
        QStringList expected { months.at(page.month() - 1) };
        for (int entry = 1; entry <= 12; ++entry) {
            texts << parts.menuEntry(entry)->text();
            expected << months.at(entry - 1).left(3);
        }
        QCOMPARE(texts, expected);
        QCOMPARE(QDate(parts.calendar->yearShown(), parts.calendar->monthShown(), page.day()), page);
        QCOMPARE(parts.calendar->firstDayOfWeek(), Qt::Sunday);
        const auto image = [&](const QIcon& icon) {
            return icon.pixmap(parts.previous->iconSize()).toImage();
        };
        QCOMPARE(image(parts.previous->icon()), image(QIcon(getGlobalImage("bt_pagebar_backend"))));
    }
    for (const int month : { 13, 0, INT_MAX, INT_MIN }) {
        view->setCurrentPage(2018, month);
        window.grab();
    }
}

void CalendarTest::choices()
{
    Window window;
    VantCalanderView* view = window.view;
    const Parts& parts = window.parts;
    QSignalSpy spy(view, &VantCalanderView::sigDateSelect);
    const QDate today = QDate::currentDate();
    parts.next->click();
    QTest::keyClick(parts.grid, '1');
    QTest::keyClick(parts.grid, '4');
    QCOMPARE(spy.size(), 0);
    QTest::keyClick(parts.grid, Qt::Key_Return);
    QCOMPARE(spy.takeFirst(), QVariantList { QDate(2017, 4, 14) });
    view->setMaximumDate({ 2017, 3, 14 });
    parts.click({ 2017, 3, 15 });
    QCOMPARE(spy.size(), 0);
    parts.click({ 2017, 3, 14 });
    QCOMPARE(spy.takeFirst(), QVariantList { QDate(2017, 3, 14) });
    for (int time = 0; time < 2; ++time) {
        QTest::keyClick(parts.today, Qt::Key_Space);
        QCOMPARE(spy.takeFirst(), QVariantList { today });
    }
    QCOMPARE(parts.calendar->selectedDate(), QDate(2017, 3, 14));
    parts.menuEntry(5)->trigger();
    parts.editYear("2016");
    QCOMPARE(spy.size(), 0);
}

// Qt keeps a selected day, another where the arrows start, and a third that typed digits go on from.
void CalendarTest::returnChoosesWhatIsHighlighted()
{
    using Step = std::function<void(Window&)>;

    // After a turn of the page: what Return chooses, if that was highlighted.
    const auto chosen = [](const QDate& start, const QList<Step>& steps) {
        Window window;
        const Parts& parts = window.parts;
        QSignalSpy spy(window.view, &VantCalanderView::sigDateSelect);
        parts.calendar->setSelectedDate(start);
        parts.next->click();
        parts.year->setFocus();
        for (const Step& step : steps) {
            step(window);
        }
        const QModelIndex cell = parts.grid->selectionModel()->selectedIndexes().value(0);
        const QPoint highlighted = parts.grid->visualRect(cell).center();
        QTest::keyClick(parts.grid, Qt::Key_Return);
        const QDate date = spy.value(0).value(0).toDate();
        return spy.isEmpty() != cell.isValid() && (spy.isEmpty() || parts.centerOf(date) == highlighted)
            ? date
            : QDate(1, 1, 1);
    };
    const auto press = [](Qt::Key key) -> Step {
        return [key](Window&) { QTest::keyClick(QApplication::focusWidget(), key); };
    };
    const Step tab = press(Qt::Key_Tab);
    const Step back = [](Window& w) { w.parts.previous->click(); };
    const Step wheel = [](Window& w) {
        QWheelEvent turn({ 5, 5 }, {}, {}, { 0, -120 }, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(w.parts.grid->viewport(), &turn);
    };
    const Step locale = [](Window& w) { w.setLocale(QLocale(QLocale::German)); };
    const Step year = [](Window& w) { w.parts.editYear("2016"); };
    const Step drag = [](Window& w) {
        QTest::mousePress(w.parts.grid->viewport(), Qt::LeftButton, {}, w.parts.centerOf({ 2017, 4, 12 }));
        QTest::mouseRelease(w.parts.grid->viewport(), Qt::LeftButton, {}, { -50, -50 });
    };
    const auto limit = [](int month) -> Step {
        return [month](Window& w) {
            w.parts.calendar->setDateRange({ 2017, 3, 6 }, { 2017, 3, 24 });
            w.view->setCurrentPage(2017, month);
        };
    };
    const Step focus = [](Window& w) { w.parts.grid->setFocus(); };
    const QDate end(2017, 1, 29); // there is none in February
    QCOMPARE(chosen(ninthOfMarch, { tab }), QDate(2017, 4, 9));
    QCOMPARE(chosen(ninthOfMarch, { tab, wheel }), QDate(2017, 5, 9));
    QCOMPARE(chosen(ninthOfMarch, { tab, drag }), QDate(2017, 4, 12));
    QCOMPARE(chosen(ninthOfMarch, { locale, year, tab }), QDate(2016, 4, 9));
    QCOMPARE(chosen(end, { back, focus }), QDate(2017, 1, 28));
    QCOMPARE(chosen(end, { back, tab, press(Qt::Key_Right) }), end);
    QCOMPARE(chosen(ninthOfMarch, { limit(5), tab }), QDate());
    QCOMPARE(chosen(ninthOfMarch, { limit(1), tab }), QDate());
    QCOMPARE(chosen(ninthOfMarch, { limit(1), tab, press(Qt::Key_Down) }), QDate(2017, 3, 6));
}

void CalendarTest::tabRing()
{
    QWidget page;
    auto* before = new QLineEdit(&page);
    auto* view = new VantCalanderView(&page);
    auto* after = new QLineEdit(&page);
    const Parts parts(view);
    page.setStyleSheet(getStyleSheet("component.date_selector"));
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    const QWidgetList stops { before, parts.previous, parts.next, parts.month, parts.year, parts.grid,
        parts.today, view, after, before };
    before->setFocus();
    for (int step = 1; step < stops.size(); ++step) {
        const QImage unfocused = stops.at(step)->grab().toImage();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), stops.at(step));
        QVERIFY2(stops.at(step)->grab().toImage() != unfocused, qPrintable(stops.at(step)->objectName()));
    }
    for (int step = stops.size() - 2; step >= 0; --step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), stops.at(step));
    }

    // The grid shows its day only once it is set anew.
    parts.year->setFocus();
    const QModelIndex current = parts.grid->currentIndex();
    QSignalSpy spy(parts.grid->selectionModel(), &QItemSelectionModel::currentChanged);
    QTest::keyClick(parts.year, Qt::Key_Tab);
    QCOMPARE(spy.size(), 2);
    QCOMPARE(parts.grid->currentIndex(), current);

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

void CalendarTest::screenReadersFindWhatIsInside()
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
    QAccessibleInterface* view = QAccessible::queryAccessibleInterface(window.view);
    collect(view);
    for (const char* name : { "Zurück", "Vor", "März", "März 2017", "9", "Heute" }) {
        QVERIFY2(found.contains(name), name);
    }
    const VantCalanderView fresh;
    QVERIFY(fresh.findChild<QTableView*>("qt_calendar_calendarview")
                ->accessibleName()
                .startsWith(months.at(QDate::currentDate().month() - 1)));
    const QPoint today = window.parts.today->mapToGlobal({ 5, 5 });
    QCOMPARE(view->childAt(today.x(), today.y())->object(), window.parts.today);
}

void CalendarTest::weekdaysStandAboveTheirDays()
{
    Window window;
    const Parts& parts = window.parts;
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

void CalendarTest::showsWhatCannotBeChosen()
{
    Window window;
    const auto darkest = [&](const QDate& day) {
        const QImage picture = window.parts.grid->viewport()->grab().toImage();
        const int ratio = displayscale::ratio();
        const QRect middle(window.parts.centerOf(day) * ratio - QPoint(10, 6) * ratio, QSize(20, 12) * ratio);
        int lightness = 255;
        for (int i = 0; i < middle.width() * middle.height(); ++i) {
            const QPoint pixel = middle.topLeft() + QPoint(i % middle.width(), i / middle.width());
            lightness = qMin(lightness, picture.pixelColor(pixel).lightness());
        }
        return lightness;
    };
    const QDate inside(2017, 3, 18);
    const QDate outside(2017, 3, 19);
    const int choosable = darkest(outside);
    window.view->setMaximumDate(inside);
    QVERIFY(darkest(outside) > choosable + 80);
    QVERIFY(darkest(inside) < choosable + 20);
    for (const bool enabled : { false, true }) { // the days of the weekend are black only then
        window.view->setEnabled(enabled);
        for (const Qt::DayOfWeek day : { Qt::Saturday, Qt::Sunday }) {
            const QTextCharFormat format = window.parts.calendar->weekdayTextFormat(day);
            QCOMPARE(format.foreground(), enabled ? QBrush(Qt::black) : QBrush());
        }
    }
}

QTEST_MAIN(CalendarTest)

#include "calendar-test.moc"
