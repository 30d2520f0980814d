#include "views/calendar-parts.h"

#include <functional>
#include <memory>

using namespace calendarparts;

namespace {

const QString noDate = "any day";

/** A window with a selector that has the focus. */
struct Window : QWidget
{
    Window()
    {
        QApplication::setDoubleClickInterval(0); // so long a new popup does not close on a release anyway
        resize(700, 400);
        selector->setGeometry(20, 40, 600, 0);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
        selector->setFocus();
    }

    void openAtNinthOfMarch() const
    {
        selector->dateSelect(ninthOfMarch);
        selector->showPopup();
        QVERIFY(isOpen());
    }

    bool isOpen() const { return view->isVisible() && QApplication::activePopupWidget() == view->window(); }

    QDate date() const { return selector->itemData(0).toDate(); }

    VantDateSelector* selector = new VantDateSelector(noDate, this);
    VantCalanderView* view = selector->getCalendarView();
    Parts parts { view };
};

} // namespace

class DateSelectorTest : public ViewTest
{
    Q_OBJECT

private Q_SLOTS:

    void holdsOneItem()
    {
        Window window;
        VantDateSelector* selector = window.selector;
        const auto shows = [&](const QDate& date, const QString& text) {
            return selector->count() == 1 && selector->currentIndex() == 0 && selector->currentText() == text
                && selector->itemData(0) == QVariant(date);
        };
        QVERIFY(shows({}, noDate));
        window.view->setMaximumDate({ 2018, 1, 1 });
        selector->dateSelect({ 12017, 5, 6 });
        QVERIFY(shows({ 12017, 5, 6 }, "12017-05-06"));
        QCOMPARE(window.parts.calendar->yearShown(), 12017);
        selector->dateSelect(ninthOfMarch);
        QVERIFY(shows(ninthOfMarch, "2017-03-09"));
        selector->dateSelect({});
        QVERIFY(shows({}, noDate));
        QCOMPARE(window.parts.calendar->yearShown(), 2017);
        selector->clearDate();
        QVERIFY(shows({}, noDate));
        QCOMPARE(window.parts.calendar->yearShown(), QDate::currentDate().year());
        QCOMPARE(window.parts.calendar->monthShown(), QDate::currentDate().month());

        const VantDateSelector empty((QString()));
        const int spare =
            empty.minimumSizeHint().width() - empty.fontMetrics().horizontalAdvance("2000-00-00");
        QVERIFY(spare > px(40)); // arrow, padding and border
    }

    void opens()
    {
        Window window;
        const QPoint left = window.selector->mapToGlobal({ 0, 0 });
        for (const char* way : { "click", "Space", "Alt+Down" }) {
            if (QString(way) == "click") {
                click(window.selector, window.selector->rect().center());
            } else {
                QTest::keySequence(window.selector, QKeySequence(way));
            }
            QVERIFY(window.isOpen());
            QVERIFY(window.parts.grid->hasFocus());
            QCOMPARE(window.view->window()->x(), left.x());
            window.parts.act("Esc");
            QVERIFY(!window.isOpen() && window.selector->hasFocus());
            QCOMPARE(window.date(), QDate());
        }
        QCOMPARE(window.view->size(), QSize(px(280), px(260)));
        QVERIFY(window.view->window()->width() < window.view->width() + 5);
        window.setLayoutDirection(Qt::RightToLeft);
        window.selector->showPopup();
        QCOMPARE(window.view->window()->geometry().right(), left.x() + window.selector->width() - 1);
    }

    // What closes the popup, and the date then; if it is the highlighted one when opened again.
    void choice()
    {
        const QDate today = QDate::currentDate();
        const std::pair<QString, QDate> rows[] { { "2017-04-02", { 2017, 4, 2 } }, { "today_button", today },
            { "Tab Return", today }, { "Left Enter", { 2017, 3, 8 } }, { "PgDown Esc", ninthOfMarch } };
        for (const auto& [steps, date] : rows) {
            const Window window;
            window.openAtNinthOfMarch();
            window.parts.act(steps);
            QVERIFY(!window.isOpen());
            QCOMPARE(window.date(), date);
            QCOMPARE(window.selector->currentText(), date.toString("yyyy-MM-dd"));
            window.selector->showPopup();
            QCOMPARE(window.parts.calendar->monthShown(), date.month());
            window.parts.act("Return");
            QCOMPARE(window.date(), date);
        }
    }

    void staysOpen()
    {
        Window window;
        const Parts& parts = window.parts;
        window.openAtNinthOfMarch();
        window.view->setMinimumDate({ 2017, 3, 1 });
        window.view->setMaximumDate({ 2017, 3, 20 });
        const std::pair<QWidget*, QPoint> places[] { { parts.grid->viewport(),
                                                         parts.centerOf({ 2017, 3, 21 }) },
            { parts.previous, { 5, 5 } }, { parts.weekdays->viewport(), { 20, 5 } },
            { parts.previous->parentWidget(), { parts.previous->geometry().right() + 3, 4 } },
            { window.view, { 0, 100 } }, { window.view->viewport(), { 20, parts.today->y() + 5 } } };
        for (const auto& [widget, place] : places) {
            click(widget, place);
            QVERIFY2(window.isOpen(), widget->metaObject()->className());
        }
        parts.calendar->setDateRange({ 2000, 1, 1 }, { 2030, 1, 1 });

        // In the event loop that the menu keeps while it is open.
        QMenu* menu = parts.month->menu();
        const auto choose = [menu] {
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        };
        connect(menu, &QMenu::aboutToShow, menu, choose, Qt::QueuedConnection);
        // The year editor is left by Return, by the mouse, and by Escape, which undoes.
        parts.month->setFocus();
        const std::tuple<QString, int, int> rows[] { { "Space", 2017, 1 }, { "prevmonth Return", 2016, 12 },
            { "yearbutton Down Return", 2015, 12 }, { "yearbutton Down Esc", 2015, 12 },
            { "wheel", 2016, 1 } };
        for (const auto& [steps, year, month] : rows) {
            parts.act(steps);
            QVERIFY(window.isOpen());
            QCOMPARE(
                QDate(parts.calendar->yearShown(), parts.calendar->monthShown(), 1), QDate(year, month, 1));
        }
        QCOMPARE(window.date(), ninthOfMarch);
        window.selector->dateSelect({});
        QVERIFY(window.isOpen());
    }

    void goesWithItsPopupOpen()
    {
        auto window = std::make_unique<Window>();
        const QPointer<VantCalanderView> view = window->view;
        window->openAtNinthOfMarch();
        window->parts.act("yearbutton");
        window.reset();
        QVERIFY(!view);
    }
};

QTEST_MAIN(DateSelectorTest)

#include "date-selector-test.moc"
