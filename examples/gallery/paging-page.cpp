#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int counts[] = { 1284, 128, 7, 0, 2000000000 };
const int limits[] = { 10, 25, 50 };
const int textCounts[] = { 3, 1, 0 };
const int longestShortPage = 999999; // beyond it, the numbers of pages take the room of the texts
const int listHeight = 30 + 10 * 28;

const struct
{
    const char* name;
    int items;
    int page;
} moments[] = {
    { "paging.moment.first", 1284, 1 },
    { "paging.moment.middle", 1284, 64 },
    { "paging.moment.last", 1284, 129 },
    { "paging.moment.one", 7, 1 },
    { "paging.moment.none", 0, 1 },
};

class PagingPage : public Page
{
public:
    explicit PagingPage(QWidget* parent);

    void enterState(const QString& state) override;

private:
    void addList();
    QLayout* measures();
    VantComboBox* measure(const char* key, const QStringList& entries, QHBoxLayout* row);
    QWidget* list();
    void addMoments();
    void applyCount();
    void applyLimit();
    void applyFooter();
    void fill();
    void fillRow(int row, int entry);
    void showFooter();
    void tellPage();

    VantPagingModel m_model { limits[0] };
    VantPagingBar* m_bar = nullptr;
    VantTableWidget* m_list = nullptr;
    QLabel* m_hint = nullptr;
    VantComboBox* m_count = nullptr;
    VantComboBox* m_limit = nullptr;
    VantComboBox* m_texts = nullptr;
    VantCheckBox* m_refresh = nullptr;
    int m_refreshed = 0;
};

QString number(int value)
{
    return locale().toString(value);
}

template <std::size_t count>
QStringList numbers(const int (&values)[count])
{
    QStringList list;
    for (const int value : values) {
        list << number(value);
    }
    return list;
}

// An entry of the log, the newest being number 0, is made up when it is asked for: that takes no room,
// however many there are.
QString fileOf(int entry)
{
    const char* const names[] = { "IMG_%1.jpg", "Invoice %1.pdf", "IMG_%1.jpg", "Letter %1.docx",
        "Track %1.mp3", "Sheet %1.xlsx", "IMG_%1.jpg" };
    return QString::fromLatin1(names[entry % 7]).arg(1000 + entry % 8999);
}

QString timeOf(int entry)
{
    const QDateTime newest(QDate(2017, 3, 9), QTime(2, 14, 7));
    return newest.addSecs(-qint64(entry)).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QString resultOf(int entry)
{
    switch (entry % 11) {
    case 4:
    case 7:
        return text("paging.list.unchanged");
    case 9:
        return text("paging.list.skipped");
    default:
        return text("paging.list.copied");
    }
}

PagingPage::PagingPage(QWidget* parent)
    : Page(parent)
{
    addList();
    addMoments();
}

void PagingPage::addList()
{
    QVBoxLayout* section = addSection("paging.list", "VantPagingBar");
    section->addLayout(measures());
    section->addWidget(list());
    applyFooter();
    applyCount();
}

QLayout* PagingPage::measures()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(px(24));
    m_count = measure("paging.list.count", numbers(counts), row);
    m_limit = measure("paging.list.limit", numbers(limits), row);
    m_texts = measure("paging.list.texts", numbers(textCounts), row);
    m_refresh = live(new VantCheckBox(text("paging.list.refresh")));
    m_refresh->setChecked(true);
    row->addWidget(m_refresh);
    row->addStretch(1);

    const auto activated = QOverload<int>::of(&QComboBox::activated);
    connect(m_count, activated, this, &PagingPage::applyCount);
    connect(m_limit, activated, this, &PagingPage::applyLimit);
    connect(m_texts, activated, this, &PagingPage::applyFooter);
    connect(m_refresh, &QCheckBox::toggled, this, &PagingPage::applyFooter);
    return row;
}

VantComboBox* PagingPage::measure(const char* key, const QStringList& entries, QHBoxLayout* row)
{
    VantComboBox* box = live(comboBox(text(key), entries, entries.constFirst().size() > 2 ? 136 : 64));
    row->addLayout(labelled(text(key), box));
    return box;
}

QWidget* PagingPage::list()
{
    VantTableColumnsInfo columns;
    const QString entry = text("paging.list.number");
    const QString time = text("paging.list.time");
    columns.addColumn(entry, columnWidth(entry, numbers(counts)), false, 0);
    columns.addColumn(time, columnWidth(time, { timeOf(0) }), false, 0);
    columns.addColumn(text("paging.list.file"), 160, true, 0.55);
    columns.addColumn(text("paging.list.result"), 112, true, 0.42);
    m_list = live(new VantTableWidget(columns));
    m_list->getTable()->setAccessibleName(text("paging.list.title"));
    m_list->getTable()->setTabKeyNavigation(false);
    m_hint = addHint(m_list->getTable());
    m_hint->setText(text("paging.moment.none"));
    m_list->setFixedHeight(px(listHeight));

    m_bar = live(new VantPagingBar(&m_model));
    connect(m_bar, &VantPagingBar::sigPageChanged, this, [this] {
        fill();
        tellPage();
    });
    connect(m_bar, &VantPagingBar::sigRefresh, this, [this] {
        ++m_refreshed;
        fill();
        Q_EMIT happened(text("paging.list.refreshed").arg(number(m_refreshed)));
    });

    QFrame* well = styledFrame("well", "gallery.well");
    auto* frame = new QVBoxLayout(well);
    frame->setContentsMargins(px(1), px(1), px(1), px(1));
    frame->addWidget(m_list);
    auto* area = new QWidget;
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(px(4));
    layout->addWidget(well);
    layout->addWidget(m_bar);
    return area;
}

void PagingPage::addMoments()
{
    QVBoxLayout* section = addSection("paging.moment", "VantPagingBar");
    for (const auto& moment : moments) {
        auto* model = new VantPagingModel(limits[0], this);
        auto* bar = live(new VantPagingBar(model));
        bar->setFooterInfo({ text("paging.list.items").arg(number(moment.items)), 136 });
        bar->setItemCount(moment.items);
        bar->setPage(moment.page);
        auto* rows = new QVBoxLayout;
        rows->setSpacing(px(4));
        rows->addWidget(styledLabel(text(moment.name), "gallery.caption"));
        rows->addWidget(bar);
        section->addLayout(rows);
    }
}

void PagingPage::applyCount()
{
    m_model.setItemCount(counts[m_count->currentIndex()]);
    m_bar->reset();
}

// The first row that was seen stays in sight.
void PagingPage::applyLimit()
{
    const int first = m_model.startItem();
    m_model.setRowLimit(limits[m_limit->currentIndex()]);
    m_bar->setPage(first / m_model.rowLimit() + 1);
    fill();
    tellPage();
}

// The look of the rightmost text is chosen when it is made, so all are made anew.
void PagingPage::applyFooter()
{
    m_bar->setFooterInfos({});
    m_bar->setRefreshButtonHidden(!m_refresh->isChecked());
    showFooter();
}

void PagingPage::fill()
{
    QTableWidget* table = m_list->getTable();
    const int first = m_model.startItem();
    const int rows = qMin(m_model.rowLimit(), m_model.itemCount() - first);
    table->setRowCount(0); // what was selected is not on this page
    table->setRowCount(rows);
    m_hint->setHidden(rows > 0);
    for (int row = 0; row < rows; ++row) {
        fillRow(row, first + row);
    }
    table->scrollToTop();
    showFooter();
}

void PagingPage::fillRow(int row, int entry)
{
    const QString cells[] = { number(m_model.itemCount() - entry), timeOf(entry), fileOf(entry),
        resultOf(entry) };
    int column = 0;
    for (const QString& cell : cells) {
        m_list->getTable()->setItem(row, column++, new QTableWidgetItem(cell)); // the table owns it
    }
}

void PagingPage::showFooter()
{
    const int first = m_model.startItem();
    const int last = qMin(first + m_model.rowLimit(), m_model.itemCount());
    const QString items = number(m_model.itemCount());
    std::vector<PagingFooterInfo> infos {
        { text("paging.list.items").arg(items), 0 },
        { text("paging.list.rows").arg(number(first + 1), number(last)), 0 },
        { text("paging.list.page").arg(number(m_model.nowPage()), number(m_model.pageCount())), 0 },
    };
    if (m_model.pageCount() > longestShortPage) {
        infos = { { items, 0 } };
    } else if (m_model.itemCount() == 0) {
        infos.resize(1);
    }
    infos.resize(qMin(infos.size(), std::size_t(textCounts[m_texts->currentIndex()])));
    m_bar->setFooterInfos(infos);
}

void PagingPage::tellPage()
{
    Q_EMIT happened(text("paging.list.page").arg(number(m_model.nowPage()), number(m_model.pageCount())));
}

void PagingPage::enterState(const QString& state)
{
    if (state == QLatin1String("focus")) {
        m_bar->findChildren<VantButton*>().at(3)->setFocus(Qt::TabFocusReason);
    } else if (state == QLatin1String("last")) {
        m_bar->setPage(m_model.pageCount());
        fill();
    } else if (state == QLatin1String("huge")) {
        m_count->setCurrentIndex(4);
        applyCount();
        m_bar->setPage(m_model.pageCount() / 2);
        fill();
    } else if (state == QLatin1String("plain")) {
        m_limit->setCurrentIndex(1);
        applyLimit();
        m_refresh->setChecked(false);
    }
}

} // namespace

Page* createPagingPage(QWidget* parent)
{
    return new PagingPage(parent);
}

} // namespace gallery
