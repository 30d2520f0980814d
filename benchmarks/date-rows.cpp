#include "bench.h"
#include "child-process.h"
#include "default-theme.h"
#include "families.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/views/vant-calander-view.h>
#include <vantkit-qt/views/vant-date-selector.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QDateEdit>
#include <QMouseEvent>

#include <memory>

namespace bench {

namespace {

const QString openingSampler = QStringLiteral("date-opening");
const QDate shownDay(2017, 3, 9);

/** A window with a field of each kind. */
class Fields : public QWidget
{
public:
    Fields()
        : m_selector(new VantDateSelector(QStringLiteral("Any day"), this))
        , m_edit(new QDateEdit(shownDay, this))
    {
        m_selector->setGeometry(10, 10, 200, 0);
        m_selector->dateSelect(shownDay);
        m_edit->setGeometry(10, 60, 200, 32);
        m_edit->setCalendarPopup(true);
        m_edit->setStyleSheet(m_selector->styleSheet());
        resize(600, 600);
        show();
        QCoreApplication::processEvents();
    }

    double nanosecondsOfSelector()
    {
        return opening([this] { m_selector->showPopup(); });
    }

    double nanosecondsOfEdit()
    {
        return opening([this] {
            const QPointF arrow(m_edit->width() - 8, m_edit->height() / 2.0);
            QMouseEvent press(QEvent::MouseButtonPress, arrow, m_edit->mapToGlobal(arrow.toPoint()),
                Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(m_edit, &press);
        });
    }

private:
    static double opening(const Action& open)
    {
        const double time = nanosecondsOf([&] {
            open();
            QCoreApplication::processEvents();
        });
        QWidget* popup = QApplication::activePopupWidget();
        const auto* calendar = popup ? popup->findChild<QCalendarWidget*>() : nullptr;
        requireSameWork(calendar && calendar->isVisible() && calendar->selectedDate() == shownDay);
        popup->close();
        QCoreApplication::processEvents();
        return time;
    }

    VantDateSelector* m_selector;
    QDateEdit* m_edit;
};

Sampler openBoth()
{
    useDefaultTheme();
    const auto fields = std::make_shared<Fields>();
    fields->nanosecondsOfSelector();
    fields->nanosecondsOfEdit();
    return interleaved([fields] { return fields->nanosecondsOfSelector(); },
        [fields] { return fields->nanosecondsOfEdit(); });
}

} // namespace

void addDateRows(Suite& suite)
{
    suite.samplers[openingSampler] = openBoth;
    suite.rows.push_back({ QStringLiteral("dates.open"), QStringLiteral("opening a popup again"),
        QStringLiteral("VantDateSelector"),
        QStringLiteral("a QDateEdit with calendar popup and the same sheets"), 1.6, 101,
        [] { return samplerInChild(openingSampler, offscreen()); } });
}

} // namespace bench
