#include "bench.h"
#include "child-process.h"
#include "default-theme.h"
#include "families.h"

#include <vantkit-qt/widgets/vant-button-path.h>

#include <QCoreApplication>

#include <memory>

namespace bench {

namespace {

const QString refreshSampler = QStringLiteral("path-refresh");

constexpr int longPath = 100;
constexpr int shortPath = 10;

/** A shown bar that is too narrow for its path. */
class Bar
{
public:
    explicit Bar(int parts)
        : m_path(QStringLiteral("/folder").repeated(parts))
    {
        m_bar->setFixedWidth(300);
        m_bar->show();
        QCoreApplication::processEvents();
        refresh();
    }

    void refresh()
    {
        m_bar->refresh(m_path);
        QCoreApplication::processEvents(); // what Qt put off, and the paint
    }

    int columns() const { return m_bar->columnCount(); }

private:
    QString m_path;
    std::unique_ptr<VantButtonPath> m_bar = std::make_unique<VantButtonPath>();
};

Sampler refreshPaths()
{
    useDefaultTheme();
    const auto deep = std::make_shared<Bar>(longPath);
    const auto flat = std::make_shared<Bar>(shortPath);
    requireSameWork(deep->columns() == 2 * longPath - 1 && flat->columns() == 2 * shortPath - 1);
    return interleaved(repeated([deep] { deep->refresh(); }), repeated([flat] { flat->refresh(); }));
}

} // namespace

void addPathRows(Suite& suite)
{
    suite.samplers[refreshSampler] = refreshPaths;
    suite.rows.push_back({ QStringLiteral("path.refresh"), QStringLiteral("one refresh of a shown bar"),
        QStringLiteral("VantButtonPath::refresh with a path of 100 parts"),
        QStringLiteral("VantButtonPath::refresh with a path of 10 parts"), 12.0, 31,
        [] { return samplerInChild(refreshSampler, offscreen()); } });
}

} // namespace bench
