#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QCoreApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QHoverEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int visibleRows = 8;
const int rowCounts[] = { 6, 1000, 0 };
const int frameWidths[] = { 0, 640, 400 }; // 0 is all there is

const int dotWidth = 26; // with its distance from the text

enum Column { Name, Place, Last, Size, State };

const struct
{
    const char* name;
    QColor color;
} states[] = {
    { "table.complete", QColor(0x0B, 0x6B, 0xCB) },
    { "table.running", QColor(0x4A, 0x5A, 0x6A) },
    { "table.waiting", QColor(0xF2, 0xA3, 0x3A) },
    { "table.failed", QColor(0xC8, 0x37, 0x2D) },
};

const struct
{
    const char* name;
    const char* place;
    const char* last;
    int megabytes;
    int state;
} tasks[] = {
    { "table.photos", "nas.example.org/photos", "2017-03-04 02:00", 188621, 0 },
    { "table.documents", "nas.example.org/documents", "2017-03-04 02:40", 13107, 0 },
    { "table.mail", "mail.example.org", "2017-03-04 03:00", 3482, 1 },
    { "table.accounts", "vault.example.org/accounts", "2017-02-27 23:30", 640, 3 },
    { "table.projects", "nas.example.org/projects", "2017-03-03 22:00", 59494, 2 },
    { "table.music", "nas.example.org/music", "2017-03-01 04:00", 98304, 0 },
};

// The same in a selected row, where Qt would tint it.
QIcon plain(const QPixmap& pixmap)
{
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected);
    return icon;
}

QIcon dot(const QColor& color)
{
    const qreal ratio = DPIinfo::getInstance().getDPR();
    const int side = px(12);
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(side / 6.0, side / 6.0, side / 1.5, side / 1.5));
    painter.end();
    return plain(pixmap);
}

QStringList namesOfStates()
{
    QStringList names;
    for (const auto& state : states) {
        names << text(state.name);
    }
    return names;
}

VantTableColumnsInfo taskColumns()
{
    VantTableColumnsInfo columns;
    columns.addColumn(text("fields.name"), 136, true, 0.45);
    columns.addColumn(text("table.place"), 144, true, 0.55);
    columns.addColumn(text("table.last"), timeColumnWidth(text("table.last")), false, 0.0);
    columns.addColumn(text("table.size"), sizeColumnWidth(text("table.size")), true, 0.0);
    columns.addColumn(
        text("table.state"), dotWidth + columnWidth(text("table.state"), namesOfStates()), true, 0.0);
    return columns;
}

class TablePage : public Page
{
public:
    explicit TablePage(QWidget* parent);

    void enterState(const QString& state) override;

private:
    QLayout* choices();
    QFrame* framedTable();
    void setUpTable();
    void addHint();
    void applyRows();
    void addTask(int row);
    void applyWidth();
    void hoverRow(int row);

    VantComboBox* m_rows = nullptr;
    VantComboBox* m_width = nullptr;
    QFrame* m_frame = nullptr;
    VantTableWidget* m_tasks = nullptr;
    QTableWidget* m_table = nullptr;
    QLabel* m_hint = nullptr;
};

TablePage::TablePage(QWidget* parent)
    : Page(parent)
{
    QVBoxLayout* section = addSection("table.tasks", "VantTableWidget");
    section->addLayout(choices());
    section->addWidget(framedTable());
    setUpTable();
    addHint();
    applyRows();
}

QLayout* TablePage::choices()
{
    m_rows = live(comboBox(text("table.rows"),
        { text("table.rows.few"), text("table.rows.many"), text("table.rows.none") }, 160));
    connect(m_rows, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TablePage::applyRows);

    m_width = live(comboBox(text("labels.width"), { text("table.width.full") }, 160));
    for (int width : { frameWidths[1], frameWidths[2] }) {
        m_width->addItem(text("labels.pixels").arg(width));
    }
    connect(m_width, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TablePage::applyWidth);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(24));
    row->addLayout(labelled(text("table.rows"), m_rows));
    row->addLayout(labelled(text("labels.width"), m_width));
    row->addStretch(1);
    return row;
}

QFrame* TablePage::framedTable()
{
    m_frame = styledFrame("well", "gallery.well");
    m_tasks = live(new VantTableWidget(taskColumns()));
    m_table = m_tasks->getTable();
    m_frame->setMinimumHeight(px(1 + 30 + visibleRows * 28 + 12 + 1)); // the header, rows and a scroll bar
    auto* layout = new QVBoxLayout(m_frame);
    layout->setContentsMargins(px(1), px(1), px(1), px(1));
    layout->addWidget(m_tasks);
    return m_frame;
}

void TablePage::setUpTable()
{
    alignRight(m_tasks, Size);
    m_table->setAccessibleName(text("table.tasks.title"));
    m_table->setIconSize(QSize(px(20), px(20)));
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setTabKeyNavigation(false); // the arrow keys go through the cells, and Tab goes on
    connect(m_table, &QTableWidget::itemActivated, this, [this](const QTableWidgetItem* item) {
        Q_EMIT happened(text("event.chosen").arg(m_table->item(item->row(), Name)->text()));
    });
}

void TablePage::addHint()
{
    m_hint = gallery::addHint(m_table);
    m_hint->setText(text("table.empty"));
}

void TablePage::applyRows()
{
    const int rows = rowCounts[m_rows->currentIndex()];
    m_table->setRowCount(0);
    m_table->setRowCount(rows);
    for (int row = 0; row < rows; ++row) {
        addTask(row);
    }
    m_hint->setVisible(rows == 0);
}

void TablePage::addTask(int row)
{
    const int kinds = static_cast<int>(sizeof(tasks) / sizeof(*tasks));
    const auto& task = tasks[row % kinds];
    const auto& state = states[task.state];
    const QString number = row < kinds ? QString() : QStringLiteral(" %1").arg(row / kinds + 1);
    auto* name = new QTableWidgetItem(plain(getGlobalImage("folder")), text(task.name) + number);
    auto* size = new QTableWidgetItem(sizeText(qint64(task.megabytes) << 20));
    size->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_table->setItem(row, Name, name);
    m_table->setItem(row, Place, new QTableWidgetItem(QLatin1String(task.place)));
    m_table->setItem(row, Last, new QTableWidgetItem(QLatin1String(task.last)));
    m_table->setItem(row, Size, size);
    m_table->setItem(row, State, new QTableWidgetItem(dot(state.color), text(state.name)));
}

void TablePage::applyWidth()
{
    const int width = frameWidths[m_width->currentIndex()];
    m_frame->setMinimumWidth(px(width));
    m_frame->setMaximumWidth(width == 0 ? QWIDGETSIZE_MAX : px(width));
}

void TablePage::hoverRow(int row)
{
    const QRect cell = m_table->visualRect(m_table->model()->index(row, Place));
    QHoverEvent event(QEvent::HoverMove, m_table->viewport()->mapToParent(cell.center()), QPointF());
    QCoreApplication::sendEvent(m_table, &event);
}

void TablePage::enterState(const QString& state)
{
    if (state == QLatin1String("selected")) {
        m_table->setFocus(Qt::TabFocusReason);
        m_table->setCurrentCell(1, Name);
        hoverRow(3);
    } else if (state == QLatin1String("many")) {
        m_rows->setCurrentIndex(1);
        m_table->setCurrentCell(501, Name);
        m_table->scrollToItem(m_table->item(501, Name), QAbstractItemView::PositionAtCenter);
    } else if (state == QLatin1String("narrow")) {
        m_rows->setCurrentIndex(1);
        m_width->setCurrentIndex(2);
        QCoreApplication::processEvents();
        m_table->horizontalScrollBar()->setValue(px(120));
    } else if (state == QLatin1String("empty")) {
        m_rows->setCurrentIndex(2);
    }
}

} // namespace

Page* createTablePage(QWidget* parent)
{
    return new TablePage(parent);
}

} // namespace gallery
