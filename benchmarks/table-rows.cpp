#include "bench.h"
#include "child-process.h"
#include "default-theme.h"
#include "families.h"

#include <vantkit-qt/style-manager/style-manager.h>
#include <vantkit-qt/views/vant-table-widget.h>

#include <QCoreApplication>
#include <QHeaderView>

#include <cstdlib>
#include <memory>

namespace bench {

namespace {

const QString resizeSampler = QStringLiteral("table-resize");
const QString fillSampler = QStringLiteral("table-fill");

constexpr int resizesPerSample = 20;
constexpr int shareColumns = 20;
constexpr int filledRows = 10000;
constexpr int filledColumns = 10;

/** A table in a window of its own. */
struct Shown
{
    std::unique_ptr<QWidget> window;
    QTableWidget* table = nullptr;
    QHeaderView* header = nullptr; // the one that is seen
};

void show(QWidget* window)
{
    window->resize(1000, 600);
    window->show();
    QCoreApplication::processEvents();
}

QString title(int column)
{
    return QStringLiteral("Column %1").arg(column);
}

Shown kitTable(int columns)
{
    VantTableColumnsInfo info;
    for (int column = 0; column < columns; ++column) {
        info.addColumn(title(column), 10, true, 1.0 / columns);
    }
    auto widget = std::make_unique<VantTableWidget>(info);
    QTableWidget* const table = widget->getTable();
    QHeaderView* const header = widget->getHeader();
    show(widget.get());
    return { std::move(widget), table, header };
}

// The same table with the header that Qt gives it, which shares out the width by itself.
Shown plainTable(int columns)
{
    auto table = std::make_unique<QTableWidget>(0, columns);
    QStringList titles;
    for (int column = 0; column < columns; ++column) {
        titles << title(column);
    }
    table->setHorizontalHeaderLabels(titles);
    QHeaderView* const header = table->horizontalHeader();
    header->setStyleSheet(getStyleSheet("component.table_header", false));
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setMinimumSectionSize(10);
    header->setHighlightSections(false);
    header->setFixedHeight(30);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(28);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setShowGrid(false);
    table->setStyleSheet(
        getStyleSheet("component.table", false) + getStyleSheet("component.scrollbar", false));
    show(table.get());
    QTableWidget* const body = table.get();
    return { std::move(table), body, header };
}

void fill(QTableWidget* table, int rows)
{
    table->setRowCount(rows);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            table->setItem(row, column, new QTableWidgetItem(QStringLiteral("%1").arg(row * column)));
        }
    }
    QCoreApplication::processEvents();
}

/** Counts how often a widget is painted. */
class Paints : public QObject
{
public:
    explicit Paints(QWidget* widget) { widget->installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

void resizeAndPaint(const Shown& shown, int width)
{
    shown.window->resize(width, 600);
    QCoreApplication::processEvents();
}

bool areAlike(const Shown& kit, const Shown& plain)
{
    for (int column = 0; column < shareColumns; ++column) {
        const int difference = kit.table->columnWidth(column) - plain.table->columnWidth(column);
        if (std::abs(difference) > 1 || kit.header->sectionSize(column) != kit.table->columnWidth(column)) {
            return false;
        }
    }
    return kit.table->viewport()->size() == plain.table->viewport()->size();
}

// Each resize has the body and the header that are seen painted, on both sides.
bool resizesAlike(const Shown& kit, const Shown& plain)
{
    const Paints paints[] { Paints(kit.table->viewport()), Paints(kit.header->viewport()),
        Paints(plain.table->viewport()), Paints(plain.header->viewport()) };
    int resizes = 0;
    for (const int width : { 900, 1100, 1000 }) {
        resizeAndPaint(kit, width);
        resizeAndPaint(plain, width);
        ++resizes;
        for (const Paints& painted : paints) {
            if (painted.count < resizes || !areAlike(kit, plain)) {
                return false;
            }
        }
    }
    return true;
}

double nanosecondsPerResize(const Shown& shown)
{
    return nanosecondsOf([&shown] {
        for (int count = 1; count <= resizesPerSample; ++count) {
            resizeAndPaint(shown, 900 + count * 10);
        }
    }) / resizesPerSample;
}

Sampler resizeBoth()
{
    useDefaultTheme();
    const auto kit = std::make_shared<Shown>(kitTable(shareColumns));
    const auto plain = std::make_shared<Shown>(plainTable(shareColumns));
    fill(kit->table, 100);
    fill(plain->table, 100);
    requireSameWork(resizesAlike(*kit, *plain));
    return interleaved(
        [kit] { return nanosecondsPerResize(*kit); }, [plain] { return nanosecondsPerResize(*plain); });
}

double nanosecondsToFill(Shown (*make)(int columns))
{
    const Shown shown = make(filledColumns);
    return nanosecondsOf([&shown] { fill(shown.table, filledRows); });
}

Sampler fillBoth()
{
    useDefaultTheme();
    return interleaved(
        [] { return nanosecondsToFill(kitTable); }, [] { return nanosecondsToFill(plainTable); });
}

} // namespace

void addTableRows(Suite& suite)
{
    suite.samplers[resizeSampler] = resizeBoth;
    suite.samplers[fillSampler] = fillBoth;
    suite.rows.push_back(
        { QStringLiteral("table.resize"), QStringLiteral("one of 1,000 resizes with 20 columns, painted"),
            QStringLiteral("VantTableWidget with 20 share columns"),
            QStringLiteral("QTableWidget with the same sheets and a header that stretches 20 sections"), 0.9,
            5, [] { return samplerInChild(resizeSampler, offscreen()); } });
    suite.rows.push_back({ QStringLiteral("table.fill"), QStringLiteral("10,000 rows by 10"),
        QStringLiteral("filling the body of a shown VantTableWidget"),
        QStringLiteral("filling a shown QTableWidget with the same sheets"), 1.05, 21,
        [] { return samplerInChild(fillSampler, offscreen()); } });
}

} // namespace bench
