#include "views/vant-table-widget.h"

#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"
#include "utils/dpi-info.h"
#include "views/table-row-delegate_p.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <QResizeEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

using vantkit::internal::cutToInt;
using vantkit::internal::designPixels;

namespace {

bool takesShare(const VantTableColumnsInfo::ColumnInfo& column)
{
    return column.resizable && column.ratio != 0;
}

} // namespace

ResizeSignalTableWidget::ResizeSignalTableWidget(int rows, int columns)
    : QTableWidget(rows, columns)
{ }

void ResizeSignalTableWidget::resizeEvent(QResizeEvent* event)
{
    Q_EMIT sigResized(event->size());
    QTableWidget::resizeEvent(event);
}

VantTableWidget::VantTableWidget(const VantTableColumnsInfo& columnsInfo, QWidget* parent)
    : QWidget(parent)
    , columns(columnsInfo)
{
    initailze();
}

VantTableWidget::~VantTableWidget()
{
    delete headerTable;
}

void VantTableWidget::initailze()
{
    if (mainLayout != nullptr) {
        return;
    }
    makeHeader();
    table = new ResizeSignalTableWidget(
        0, static_cast<int>(columns.columns.size())); // layOut() gives it a parent
    allowNarrowSections();
    makeColumns();
    makeFillerSection();
    dressTable();
    layOut();
    connectParts();
}

ResizeSignalTableWidget* VantTableWidget::getTable()
{
    return table;
}

QHeaderView* VantTableWidget::getHeader()
{
    return header;
}

void VantTableWidget::makeHeader()
{
    QStringList titles;
    for (const VantTableColumnsInfo::ColumnInfo& column : columns.columns) {
        titles.append(column.title);
    }
    titles.append(QString());

    headerTable = new QTableWidget(0, titles.size()); // the destructor deletes it
    header = new QHeaderView(Qt::Horizontal); // layOut() gives it a parent
    header->setModel(headerTable->model());
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    header->setTextElideMode(Qt::ElideRight); // as the body does with what a narrow column cannot hold
    header->setStyleSheet(getStyleSheet("component.table_header", false));
    header->setFixedSize(designPixels(20000), designPixels(30));
    headerTable->setHorizontalHeaderLabels(titles);
}

// Qt bounds each section by a least size that depends on the font, and the fonts of header and body differ.
// The user gets the filler's width as the bound, unless a column is declared narrower; the body takes all
// that the header has.
void VantTableWidget::allowNarrowSections()
{
    int least = designPixels(12);
    for (const VantTableColumnsInfo::ColumnInfo& column : columns.columns) {
        least = std::min(least, designPixels(column.width));
    }
    header->setMinimumSectionSize(std::max(least, 1));
    headerTable->horizontalHeader()->setMinimumSectionSize(1);
    table->horizontalHeader()->setMinimumSectionSize(1);
}

void VantTableWidget::makeColumns()
{
    int index = 0;
    for (const VantTableColumnsInfo::ColumnInfo& column : columns.columns) {
        for (QHeaderView* view : { header, headerTable->horizontalHeader(), table->horizontalHeader() }) {
            view->resizeSection(index, designPixels(column.width));
        }
        const QHeaderView::ResizeMode mode = column.resizable ? QHeaderView::Interactive : QHeaderView::Fixed;
        header->setSectionResizeMode(index, mode);
        table->horizontalHeader()->setSectionResizeMode(index, mode);
        // Never seen: a screen reader tells the columns of the body by it.
        table->setHorizontalHeaderItem(index, new QTableWidgetItem(column.title));
        ++index;
    }
}

void VantTableWidget::makeFillerSection()
{
    const int filler = table->columnCount();
    header->resizeSection(filler, designPixels(12));
    headerTable->horizontalHeader()->resizeSection(filler, designPixels(12));
    header->setSectionResizeMode(filler, QHeaderView::Fixed);
}

void VantTableWidget::dressTable()
{
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->verticalHeader()->hide();
    table->horizontalHeader()->hide();
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->verticalHeader()->setDefaultSectionSize(designPixels(28));
    table->setStyleSheet(
        getStyleSheet("component.table", false) + getStyleSheet("component.scrollbar", false));
    table->setShowGrid(false);
    table->setItemDelegate(new vantkit::internal::TableRowDelegate(table));
    // The policy keeps the bar's room, so that columns stay where they are when the bar comes and goes.
    table->verticalScrollBar()->hide();
}

void VantTableWidget::layOut()
{
    mainLayout = new QVBoxLayout(this);
    mainLayout->setSpacing(0);
    mainLayout->setContentsMargins(0, 0, 0, 0);

    headerArea = new QScrollArea; // mainLayout gives it a parent
    headerArea->setFixedHeight(designPixels(30));
    headerArea->setFocusPolicy(Qt::NoFocus);
    headerArea->setWidget(header);
    headerArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    headerArea->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    headerArea->setStyleSheet(QStringLiteral("QScrollArea { border: none; }"));

    mainLayout->addWidget(headerArea);
    mainLayout->addWidget(table);
}

void VantTableWidget::connectParts()
{
    connect(header, SIGNAL(sectionResized(int,int,int)), this, SLOT(slotSectionResized(int,int,int)));
    connect(table->verticalScrollBar(),
        SIGNAL(rangeChanged(int,int)), this, SLOT(slotVerticalScrollRangeChanged(int,int)));
    connect(table->horizontalScrollBar(),
        SIGNAL(valueChanged(int)), headerArea->horizontalScrollBar(), SLOT(setValue(int)));
    connect(table, SIGNAL(sigResized(QSize)), this, SLOT(slotTableResized(QSize)));

    // Columns may add up to more than the header is wide. Where the area is at its end, the header scrolls
    // on.
    connect(table->horizontalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(slotScrolledPastHeader()));
    connect(
        headerArea->horizontalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(slotScrolledPastHeader()));
    headerArea->viewport()->installEventFilter(this);
}

void VantTableWidget::slotSectionResized(int index, int old_size, int new_size)
{
    Q_UNUSED(old_size)
    table->horizontalHeader()->resizeSection(index, new_size);
}

void VantTableWidget::slotVerticalScrollRangeChanged(int min, int max)
{
    Q_UNUSED(min)
    table->verticalScrollBar()->setVisible(max != 0);
}

void VantTableWidget::slotTableResized(QSize size)
{
    if (columns.columns.empty()) {
        return;
    }
    const double dpi = DPIinfo::getInstance().getDPI();
    qint64 fixedSum = 0;
    for (const VantTableColumnsInfo::ColumnInfo& column : columns.columns) {
        fixedSum += takesShare(column) ? 0 : column.width;
    }
    // Sums and shares are computed in double and cut once, so that no part of a pixel is lost per column.
    const int free = cutToInt(size.width() - static_cast<double>(fixedSum) * dpi);
    int index = 0;
    for (const VantTableColumnsInfo::ColumnInfo& column : columns.columns) {
        if (takesShare(column)) {
            const int share = cutToInt(free * column.ratio);
            const double minimum = column.width * dpi;
            header->resizeSection(index, minimum > share ? cutToInt(minimum) : share);
        }
        ++index;
    }
}

void VantTableWidget::slotScrolledPastHeader()
{
    const int past = table->horizontalScrollBar()->value() - headerArea->horizontalScrollBar()->value();
    header->setOffset(std::max(past, 0));
}

bool VantTableWidget::eventFilter(QObject* watched, QEvent* event)
{
    // The area would scroll by itself, away from the body. So the body gets the wheel, as that of a table
    // with a header of its own does.
    if (watched == headerArea->viewport() && event->type() == QEvent::Wheel) {
        QCoreApplication::sendEvent(table->viewport(), event);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
