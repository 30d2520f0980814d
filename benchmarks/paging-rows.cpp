#include "bench.h"
#include "child-process.h"
#include "default-theme.h"
#include "families.h"

#include <vantkit-qt/views/vant-paging-bar.h>
#include <vantkit-qt/views/vant-paging-model.h>
#include <vantkit-qt/widgets/vant-button.h>

#include <QCoreApplication>

#include <memory>

namespace bench {

namespace {

const QString setPageSampler = QStringLiteral("paging-set-page");

/** A shown bar under a list with one item on a page. */
class Strip
{
public:
    explicit Strip(int items)
        : m_bar(std::make_unique<VantPagingBar>(&m_model))
    {
        m_bar->setItemCount(items);
        m_bar->resize(800, m_bar->sizeHint().height());
        m_bar->show();
        QCoreApplication::processEvents();
    }

    QStringList numbersAt(int page)
    {
        m_bar->setPage(page);
        QStringList numbers;
        for (const VantButton* button : m_bar->findChildren<VantButton*>()) {
            numbers << button->text();
        }
        return numbers;
    }

    void turn(int page)
    {
        m_bar->setPage(page);
        m_bar->setPage(page + 1);
    }

private:
    VantPagingModel m_model { 1 };
    std::unique_ptr<VantPagingBar> m_bar;
};

QStringList numbersAround(int page)
{
    QStringList numbers;
    for (int number = page - 2; number <= page + 2; ++number) {
        numbers << QString::number(number);
    }
    return numbers;
}

// Far from both ends, where each page changes all five numbers and nothing else.
Sampler setPages()
{
    useDefaultTheme();
    const int far = 1000000000;
    const int near = 5;
    const auto huge = std::make_shared<Strip>(2 * far);
    const auto small = std::make_shared<Strip>(2 * near);
    requireSameWork(
        huge->numbersAt(far) == numbersAround(far) && small->numbersAt(near) == numbersAround(near));
    return interleaved(repeated([huge] { huge->turn(far); }, 2), repeated([small] { small->turn(near); }, 2));
}

} // namespace

void addPagingRows(Suite& suite)
{
    suite.samplers[setPageSampler] = setPages;
    suite.rows.push_back({ QStringLiteral("paging.set-page"), QStringLiteral("one page of a shown bar"),
        QStringLiteral("VantPagingBar::setPage at 2,000,000,000 items"),
        QStringLiteral("VantPagingBar::setPage at 10 items"), 1.15, 101,
        [] { return samplerInChild(setPageSampler, offscreen()); } });
}

} // namespace bench
