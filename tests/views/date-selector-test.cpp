#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "views/calendar-parts.h"

#include <QPointer>

#include <functional>
#include <memory>

using namespace calendarparts;

namespace {

const QString noDate = QStringLiteral("any day");

/** A window with a selector that has the focus. */
struct Window : QWidget
{
    Window()
        : selector(new VantDateSelector(noDate, this))
        , view(selector->getCalendarView())
        , parts(view)
    {
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

    VantDateSelector* selector;
    VantCalanderView* view;
    Parts parts;
};

void click(QWidget* widget, const QPoint& position)
{
    QWidget* window = widget->window();
    const QPoint inWindow = widget->mapTo(window, position);
    QTest::mouseMove(window->windowHandle(), inWindow);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, inWindow);
}

void click(QWidget* widget)
{
    click(widget, widget->rect().center());
}

void press(std::initializer_list<Qt::Key> keys, Qt::KeyboardModifiers modifiers = {})
{
    for (const Qt::Key key : keys) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
}

} // namespace

class DateSelectorTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void holdsOneItem();
    void opens();
    void choice();
    void staysOpen();
    void goesWithItsPopupOpen();

private:
    QTemporaryDir userFolder;
};

void DateSelectorTest::initTestCase()
{
    load(userFolder.path());
    // For so long after it opens, a popup does not close on a release anyway.
    QApplication::setDoubleClickInterval(0);
}

void DateSelectorTest::holdsOneItem()
{
    Window window;
    VantDateSelector* selector = window.selector;
    const auto shows = [&](const QDate& date, const QString& text) {
        return selector->count() == 1 && selector->currentIndex() == 0 && selector->currentText() == text
            && selector->itemData(0).type() == QVariant::Date && selector->itemData(0).toDate() == date;
    };
    QVERIFY(shows({}, noDate));
    selector->dateSelect(ninthOfMarch);
    QVERIFY(shows(ninthOfMarch, "2017-03-09"));
    selector->dateSelect({});
    QVERIFY(shows({}, noDate));
    QCOMPARE(window.parts.calendar->yearShown(), 2017);
    selector->clearDate();
    QVERIFY(shows({}, noDate));
    QCOMPARE(window.parts.calendar->yearShown(), QDate::currentDate().year());

    window.view->setMaximumDate({ 2018, 1, 1 });
    selector->dateSelect({ 12017, 5, 6 });
    QVERIFY(shows({ 12017, 5, 6 }, "12017-05-06"));
    QCOMPARE(window.parts.calendar->yearShown(), 12017);

    const VantDateSelector empty((QString()));
    const int spare = empty.minimumSizeHint().width() - empty.fontMetrics().horizontalAdvance("2000-00-00");
    QVERIFY(spare > 40 * displayscale::dpi() / 96); // arrow, padding and border of the default theme
}

void DateSelectorTest::opens()
{
    Window window;
    const QList<std::function<void()>> ways { [&] { click(window.selector); },
        [] { press({ Qt::Key_Space }); }, [] { press({ Qt::Key_Down }, Qt::AltModifier); } };
    for (const auto& open : ways) {
        open();
        QVERIFY(window.isOpen());
        QVERIFY(window.parts.grid->hasFocus());
        QCOMPARE(window.view->window()->x(), window.selector->mapToGlobal({ 0, 0 }).x());
        press({ Qt::Key_Escape });
        QVERIFY(!window.isOpen());
        QVERIFY(window.selector->hasFocus());
        QCOMPARE(window.selector->itemData(0).toDate(), QDate());
    }
    QCOMPARE(window.view->size(), QSize(280, 260) * displayscale::dpi() / 96);
    QVERIFY(window.view->window()->width() < window.view->width() + 5);
    window.setLayoutDirection(Qt::RightToLeft);
    window.selector->showPopup();
    const QPoint end = window.selector->mapToGlobal(window.selector->rect().topRight());
    QCOMPARE(window.view->window()->geometry().right(), end.x());
}

void DateSelectorTest::choice()
{
    // The date that is there when the popup has closed, if it is the highlighted one when opened again.
    const auto dateAfter = [](const std::function<void(Window&)>& act) {
        Window window;
        window.openAtNinthOfMarch();
        act(window);
        const bool closed = !window.isOpen();
        const QDate date = window.selector->itemData(0).toDate();
        window.selector->showPopup();
        const bool isShown = window.parts.calendar->yearShown() == date.year()
            && window.parts.calendar->monthShown() == date.month()
            && window.selector->currentText() == date.toString("yyyy-MM-dd");
        press({ Qt::Key_Return });
        return closed && isShown && window.selector->itemData(0).toDate() == date ? date : QDate();
    };
    const QDate today = QDate::currentDate();
    QCOMPARE(dateAfter([](Window& w) {
        click(w.parts.grid->viewport(), w.parts.centerOf({ 2017, 4, 2 }));
    }),
        QDate(2017, 4, 2));
    QCOMPARE(dateAfter([](Window& w) { click(w.parts.today); }), today);
    QCOMPARE(dateAfter([](Window&) { press({ Qt::Key_Tab, Qt::Key_Return }); }), today);
    QCOMPARE(dateAfter([](Window&) { press({ Qt::Key_Left, Qt::Key_Enter }); }), QDate(2017, 3, 8));
    QCOMPARE(dateAfter([](Window&) { press({ Qt::Key_PageDown, Qt::Key_Escape }); }), ninthOfMarch);
    QCOMPARE(dateAfter([](Window& w) {
        w.selector->dateSelect({ 2017, 1, 31 });
        w.selector->showPopup();
        w.parts.next->click();
        w.parts.previous->click();
        w.selector->hidePopup();
    }),
        QDate(2017, 1, 31));
    QCOMPARE(dateAfter([](Window& w) {
        QTest::mouseClick(w.view->window()->windowHandle(), Qt::LeftButton, {},
            w.view->window()->mapFromGlobal(w.mapToGlobal({ 300, 5 })));
    }),
        ninthOfMarch);
}

void DateSelectorTest::staysOpen()
{
    Window window;
    const Parts& parts = window.parts;
    window.openAtNinthOfMarch();
    window.view->setMinimumDate({ 2017, 3, 1 });
    window.view->setMaximumDate({ 2017, 3, 20 });
    const QList<QPair<QWidget*, QPoint>> places { { parts.grid->viewport(), parts.centerOf({ 2017, 3, 21 }) },
        { parts.previous, parts.previous->rect().center() }, { parts.weekdays->viewport(), { 20, 5 } },
        { parts.previous->parentWidget(), { parts.previous->geometry().right() + 3, 4 } },
        { window.view, { 0, 100 } }, { window.view->viewport(), { 20, parts.today->y() + 5 } } };
    for (const auto& place : places) {
        click(place.first, place.second);
        QVERIFY2(window.isOpen(), place.first->metaObject()->className());
    }
    parts.calendar->setDateRange({ 2000, 1, 1 }, { 2030, 1, 1 });
    parts.previous->setFocus();
    press({ Qt::Key_Return });
    QVERIFY(window.isOpen());
    QWheelEvent event({ 5, 5 }, {}, {}, { 0, -120 }, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(parts.grid->viewport(), &event);
    QCOMPARE(parts.month->text(), months.at(3));

    // The year editor is left by Return, by the mouse, and by Escape, which undoes.
    for (const auto& [key, year] : QVector<QPair<Qt::Key, int>> {
             { Qt::Key_Return, 2016 }, { Qt::Key_0, 2015 }, { Qt::Key_Escape, 2015 } }) {
        click(parts.year);
        press({ Qt::Key_Down });
        key == Qt::Key_0 ? click(parts.weekdays->viewport()) : press({ key });
        QVERIFY(window.isOpen() && !parts.yearEditor->isVisible());
        QCOMPARE(parts.calendar->yearShown(), year);
    }

    // In the event loop that the menu keeps while it is open.
    QMenu* menu = parts.month->menu();
    const auto choose = [menu] {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    };
    connect(menu, &QMenu::aboutToShow, menu, choose, Qt::QueuedConnection);
    parts.month->setFocus();
    press({ Qt::Key_Space });
    QCOMPARE(parts.month->text(), months.at(0));
    QVERIFY(window.isOpen());
    QCOMPARE(window.selector->itemData(0).toDate(), ninthOfMarch);
    window.selector->dateSelect({});
    QVERIFY(window.isOpen());
}

void DateSelectorTest::goesWithItsPopupOpen()
{
    auto window = std::make_unique<Window>();
    const QPointer<VantCalanderView> view = window->view;
    window->openAtNinthOfMarch();
    click(window->parts.year);
    window.reset();
    QVERIFY(!view);
}

QTEST_MAIN(DateSelectorTest)

#include "date-selector-test.moc"
