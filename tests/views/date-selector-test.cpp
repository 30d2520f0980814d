#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "views/calendar-parts.h"

#include <QLineEdit>
#include <QPointer>

#include <functional>
#include <memory>

using namespace calendarparts;

namespace {

const QString noDate = QStringLiteral("any day");

/** A window with a selector, and beside it a field for the focus. */
struct Window : QWidget
{
    Window()
        : field(new QLineEdit(this))
        , selector(new VantDateSelector(noDate, this))
        , view(selector->getCalendarView())
        , parts(view)
    {
        resize(500, 400);
        selector->setGeometry(20, 40, 200, 0);
        show();
        if (!QTest::qWaitForWindowActive(this)) {
            qFatal("The window does not become active");
        }
        selector->setFocus();
    }

    void open() const
    {
        selector->showPopup();
        QVERIFY(isOpen());
    }

    bool isOpen() const { return view->isVisible() && QApplication::activePopupWidget() == view->window(); }

    QLineEdit* field;
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

void press(int key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
}

using Act = std::function<void(Window&)>;

} // namespace

Q_DECLARE_METATYPE(Act)

class DateSelectorTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void holdsOneItem();
    void opens_data();
    void opens();
    void closedStaysAsItIs();
    void popup_data();
    void popup();
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
    const auto page = [&] {
        return QDate(window.parts.calendar->yearShown(), window.parts.calendar->monthShown(), 1);
    };
    const QDate today = QDate::currentDate();

    QVERIFY(shows({}, noDate));
    selector->dateSelect(ninthOfMarch);
    QVERIFY(shows(ninthOfMarch, "2017-03-09"));
    QCOMPARE(page(), QDate(2017, 3, 1));
    selector->dateSelect({});
    QVERIFY(shows({}, noDate));
    QCOMPARE(page(), QDate(2017, 3, 1));
    selector->clearDate();
    QVERIFY(shows({}, noDate));
    QCOMPARE(page(), QDate(today.year(), today.month(), 1));

    window.view->setMaximumDate({ 2018, 1, 1 });
    for (const QDate& date : { QDate(2030, 5, 6), QDate(12017, 5, 6) }) {
        selector->dateSelect(date);
        QVERIFY(shows(date, date.toString("yyyy-MM-dd")));
    }
    selector->clearDate();
    QVERIFY(shows({}, noDate));

    const VantDateSelector empty((QString()));
    QCOMPARE(empty.count(), 1);
}

void DateSelectorTest::opens_data()
{
    QTest::addColumn<Act>("act");

    const auto row = [](const char* name, const Act& act) { QTest::newRow(name) << act; };
    row("mouse", [](Window& w) { click(w.selector); });
    row("Space", [](Window&) { press(Qt::Key_Space); });
    row("Alt+Down", [](Window&) { press(Qt::Key_Down, Qt::AltModifier); });
}

void DateSelectorTest::opens()
{
    QFETCH(Act, act);

    Window window;
    for (int time = 0; time < 2; ++time) {
        act(window);
        QVERIFY(window.isOpen());
        QVERIFY(window.view->hasFocus());
        QCOMPARE(window.view->size(), QSize(280, 260) * displayscale::dpi() / 96);
        press(Qt::Key_Escape);
        QVERIFY(!window.isOpen());
        QVERIFY(window.selector->hasFocus());
        QCOMPARE(window.selector->itemData(0).toDate(), QDate());
    }
}

void DateSelectorTest::closedStaysAsItIs()
{
    Window window;
    window.selector->dateSelect(ninthOfMarch);
    QSignalSpy changes(window.selector, QOverload<int>::of(&QComboBox::currentIndexChanged));
    QSignalSpy choices(window.selector, QOverload<int>::of(&QComboBox::activated));
    for (const int key : { Qt::Key_Up, Qt::Key_Down, Qt::Key_End, Qt::Key_2 }) {
        press(key);
    }
    for (const int delta : { 120, -120 }) {
        QWheelEvent event({ 5, 5 }, {}, {}, { 0, delta }, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window.selector, &event);
    }
    QVERIFY(!window.isOpen());
    QCOMPARE(window.selector->height(), 32 * displayscale::dpi() / 96);
    QCOMPARE(window.selector->currentText(), QString("2017-03-09"));
    QCOMPARE(changes.size(), 0);
    QCOMPARE(choices.size(), 0);
}

void DateSelectorTest::popup_data()
{
    QTest::addColumn<bool>("open");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<Act>("act");

    const auto row = [](const char* name, bool open, const QDate& date, const Act& act) {
        QTest::newRow(name) << open << date << act;
    };
    const auto grid = [](Window& w) { return w.parts.grid->viewport(); };
    row("day by mouse", false, { 2017, 3, 15 }, [grid](Window& w) {
        click(grid(w), w.parts.centerOf({ 2017, 3, 15 }));
    });
    row("day of the next month", false, { 2017, 4, 2 }, [grid](Window& w) {
        click(grid(w), w.parts.centerOf({ 2017, 4, 2 }));
    });
    row("day by Tab and keys", false, { 2017, 3, 8 }, [](Window&) {
        press(Qt::Key_Backtab);
        press(Qt::Key_Backtab);
        press(Qt::Key_Left);
        press(Qt::Key_Enter);
    });
    row("today by mouse", false, QDate::currentDate(), [](Window& w) { click(w.parts.today); });
    row("today by Return", false, QDate::currentDate(), [](Window&) {
        press(Qt::Key_Backtab);
        press(Qt::Key_Return);
    });
    row("Escape on the grid", false, ninthOfMarch, [](Window& w) {
        w.parts.grid->setFocus();
        press(Qt::Key_Escape);
    });
    row("click outside", false, ninthOfMarch, [](Window& w) {
        QTest::mouseClick(w.view->window()->windowHandle(), Qt::LeftButton, {},
            w.view->window()->mapFromGlobal(w.field->mapToGlobal(w.field->rect().center())));
    });
    row("invalid date", true, {}, [](Window& w) { w.selector->dateSelect({}); });
    row("previous by Return", true, ninthOfMarch, [](Window& w) {
        w.parts.previous->setFocus();
        press(Qt::Key_Return);
    });
    row("previous at the limit", true, ninthOfMarch, [](Window& w) {
        w.view->setMinimumDate({ 2017, 3, 1 });
        click(w.parts.previous);
    });
    row("navigation bar", true, ninthOfMarch, [](Window& w) {
        click(w.parts.previous->parentWidget(), QPoint(w.parts.previous->geometry().right() + 3, 4));
    });
    row("weekdays", true, ninthOfMarch, [](Window& w) { click(w.parts.weekdays->viewport()); });
    row("day outside the limits", true, ninthOfMarch, [grid](Window& w) {
        w.view->setMaximumDate({ 2017, 3, 20 });
        click(grid(w), w.parts.centerOf({ 2017, 3, 21 }));
    });
    row("frame", true, ninthOfMarch, [](Window& w) { click(w.view, { 0, 100 }); });
    row("beside the button", true, ninthOfMarch, [](Window& w) {
        click(w.view->viewport(), { 20, w.view->viewport()->height() - 15 });
    });
    row("wheel", true, ninthOfMarch, [](Window& w) {
        QTest::mouseMove(w.parts.grid->viewport());
        QWheelEvent event({ 5, 5 }, {}, {}, { 0, -120 }, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(w.parts.grid->viewport(), &event);
        QCOMPARE(w.parts.month->text(), months.at(3));
    });
    row("year editor", true, ninthOfMarch, [](Window& w) {
        click(w.parts.year);
        for (const int key : { Qt::Key_2, Qt::Key_0, Qt::Key_1, Qt::Key_6, Qt::Key_Return }) {
            press(key);
        }
        QCOMPARE(w.parts.calendar->yearShown(), 2016);
        QCOMPARE(w.parts.month->text(), months.at(2));
        QVERIFY(!w.parts.yearEditor->isVisible());
    });
    row("year editor left by mouse", true, ninthOfMarch, [](Window& w) {
        click(w.parts.year);
        press(Qt::Key_Up);
        click(w.parts.weekdays->viewport());
        QCOMPARE(w.parts.calendar->yearShown(), 2018);
    });
    row("year editor left by Escape", true, ninthOfMarch, [](Window& w) {
        click(w.parts.year);
        press(Qt::Key_Up);
        press(Qt::Key_Escape);
        QVERIFY(!w.parts.yearEditor->isVisible());
        QCOMPARE(w.parts.calendar->yearShown(), 2017);
    });
    row("month menu by keys", true, ninthOfMarch, [](Window& w) {
        QMenu* menu = w.parts.month->menu();
        // In the event loop that the menu keeps while it is open.
        QObject::connect(
            menu, &QMenu::aboutToShow, menu,
            [menu] {
                QTest::keyClick(menu, Qt::Key_Down);
                QTest::keyClick(menu, Qt::Key_Return);
            },
            Qt::QueuedConnection);
        w.parts.month->setFocus();
        press(Qt::Key_Space);
        QCOMPARE(w.parts.month->text(), months.at(0));
    });
}

void DateSelectorTest::popup()
{
    QFETCH(bool, open);
    QFETCH(QDate, date);
    QFETCH(Act, act);

    Window window;
    window.selector->dateSelect(ninthOfMarch);
    window.parts.calendar->setSelectedDate(ninthOfMarch);
    window.open();
    act(window);
    QCOMPARE(window.isOpen(), open);
    QCOMPARE(window.selector->itemData(0).toDate(), date);
    QCOMPARE(window.selector->currentText(), date.isValid() ? date.toString("yyyy-MM-dd") : noDate);
    QCOMPARE(window.selector->count(), 1);
    if (!open && date != ninthOfMarch) {
        window.selector->showPopup();
        QVERIFY(window.isOpen());
        QCOMPARE(window.parts.month->text(), months.at(date.month() - 1));
        QCOMPARE(window.parts.calendar->yearShown(), date.year());
    }
}

void DateSelectorTest::goesWithItsPopupOpen()
{
    auto window = std::make_unique<Window>();
    const QPointer<VantCalanderView> view = window->view;
    window->open();
    click(window->parts.year);
    window.reset();
    QVERIFY(!view);
}

QTEST_MAIN(DateSelectorTest)

#include "date-selector-test.moc"
