#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QDate>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHash>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int labelWidth = 96;
const int selectorWidth = 200;
const QDate shownDay(2017, 3, 9);
const QDate firstDay(2017, 3, 6);
const QDate lastDay(2017, 3, 24);

class DatesPage : public Page
{
public:
    explicit DatesPage(QWidget* parent);

    void enterState(const QString& state) override;
    QWidget* opener(const QString& state) const override;

private:
    void addSelectors();
    void addSpan();
    VantDateSelector* selector(const QString& name);
    void take(VantDateSelector* selector, const QDate& date);

    template <class Part>
    Part* part(const char* name) const
    {
        return m_chosen->getCalendarView()->findChild<Part*>(QLatin1String(name));
    }

    VantDateSelector* m_chosen = nullptr;
    QHash<const VantDateSelector*, QDate> m_taken; ///< the last date that each of them took
};

QDate dateIn(const VantDateSelector* selector)
{
    return selector->itemData(0).toDate();
}

QGridLayout* addGrid(QVBoxLayout* section)
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(16));
    grid->setVerticalSpacing(px(12));
    grid->setColumnMinimumWidth(0, px(labelWidth));
    grid->setColumnStretch(2, 1);
    section->addLayout(grid);
    return grid;
}

void addRow(QGridLayout* grid, VantDateSelector* selector, QWidget* beside = nullptr)
{
    QLabel* label = styledLabel(selector->accessibleName(), "gallery.text");
    label->setBuddy(selector);
    const int row = grid->rowCount();
    grid->addWidget(label, row, 0, Qt::AlignVCenter);
    grid->addWidget(selector, row, 1);
    if (beside) {
        grid->addWidget(beside, row, 2, Qt::AlignLeft | Qt::AlignVCenter);
    }
}

DatesPage::DatesPage(QWidget* parent)
    : Page(parent)
{
    addSelectors();
    addSpan();
}

void DatesPage::addSelectors()
{
    QGridLayout* grid = addGrid(addSection("dates.selector", "VantDateSelector"));
    addRow(grid, live(selector(text("dates.empty"))));

    m_chosen = live(selector(text("dates.chosen")));
    m_chosen->dateSelect(shownDay);
    VantButton* clear = live(button(text("dates.clear"), 1));
    connect(clear, &QPushButton::clicked, m_chosen, [this] { m_chosen->clearDate(); });
    addRow(grid, m_chosen, clear);

    VantDateSelector* limited = live(selector(text("dates.limited")));
    limited->getCalendarView()->setMinimumDate(firstDay);
    limited->getCalendarView()->setMaximumDate(lastDay);
    addRow(grid, limited,
        styledLabel(
            text("calendar.limits.text").arg(firstDay.toString(Qt::ISODate), lastDay.toString(Qt::ISODate)),
            "gallery.caption"));

    VantDateSelector* disabled = selector(text("state.disabled"));
    disabled->dateSelect(shownDay);
    disabled->setEnabled(false);
    addRow(grid, disabled);
}

// Two selectors that keep each other in order by their limits.
void DatesPage::addSpan()
{
    VantDateSelector* from = live(selector(text("dates.from")));
    VantDateSelector* to = live(selector(text("dates.to")));
    connect(from->getCalendarView(), &VantCalanderView::sigDateSelect, to,
        [from, to] { to->getCalendarView()->setMinimumDate(dateIn(from)); });
    connect(to->getCalendarView(), &VantCalanderView::sigDateSelect, from,
        [from, to] { from->getCalendarView()->setMaximumDate(dateIn(to)); });

    QGridLayout* grid = addGrid(addSection("dates.span", "VantDateSelector"));
    addRow(grid, from);
    addRow(grid, to);
}

VantDateSelector* DatesPage::selector(const QString& name)
{
    auto* made = new VantDateSelector(text("dates.none"));
    made->setAccessibleName(name);
    made->setFixedWidth(px(selectorWidth));
    connect(made->getCalendarView(), &VantCalanderView::sigDateSelect, this,
        [this, made](const QDate& date) { take(made, date); });
    return made;
}

// The selector shows the date already. One outside its limits does not stay: the button for today gave it.
void DatesPage::take(VantDateSelector* selector, const QDate& date)
{
    const bool isAllowed = isWithinLimits(selector->getCalendarView(), date);
    if (isAllowed) {
        m_taken.insert(selector, date);
    } else {
        selector->dateSelect(m_taken.value(selector));
    }
    Q_EMIT happened(text(isAllowed ? "event.chosen" : "dates.outside").arg(date.toString(Qt::ISODate)));
}

void DatesPage::enterState(const QString& state)
{
    if (state == QLatin1String("focus")) {
        m_chosen->setFocus(Qt::TabFocusReason);
    }
    if (!opener(state)) {
        return;
    }
    m_chosen->setFocus(Qt::MouseFocusReason);
    m_chosen->showPopup();
    if (state == QLatin1String("month")) {
        openMenu(part<QToolButton>("qt_calendar_monthbutton"));
    } else if (state == QLatin1String("year")) {
        part<QToolButton>("qt_calendar_yearbutton")->click();
    }
}

QWidget* DatesPage::opener(const QString& state) const
{
    const QStringList openStates { QStringLiteral("popup"), QStringLiteral("month"), QStringLiteral("year") };
    return openStates.contains(state) ? m_chosen : nullptr;
}

} // namespace

Page* createDatesPage(QWidget* parent)
{
    return new DatesPage(parent);
}

} // namespace gallery
