#include "controls.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QActionGroup>
#include <QDate>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace gallery {

namespace {

const int barWidth = 280;
const int listHeight = 30 + 9 * 28;
const int typesInRow = 6;

struct SampleFile
{
    const char* name;
    int kilobytes;
    int day; // of March 2017
    bool removed;
};

const SampleFile files[] = {
    { "Annual report 2015.pdf", 1254, 1, true },
    { "Annual report 2016.docx", 412, 8, false },
    { "Annual report 2016.pdf", 1280, 8, false },
    { "Budget 2017.xlsx", 96, 7, false },
    { "Company film.mp4", 184320, 2, false },
    { "Contacts.accdb", 2304, 6, false },
    { "Cover.psd", 18432, 3, false },
    { "Drivers.iso", 327680, 1, false },
    { "Floor plan.png", 864, 5, false },
    { "Holiday photos.zip", 73728, 4, false },
    { "Holiday photos (old).zip", 71680, 1, true },
    { "IMG_2041.jpg", 3172, 4, false },
    { "IMG_2042.jpg", 2988, 4, false },
    { "Index.html", 14, 6, false },
    { "Interview.mp3", 10240, 2, false },
    { "Letter to the bank.docx", 38, 7, false },
    { "Logo.ai", 742, 3, false },
    { "main.cpp", 21, 9, false },
    { "Minutes of the meeting.txt", 6, 9, false },
    { "Minutes of the meeting (draft).txt", 5, 8, true },
    { "Presentation.pptx", 5632, 7, false },
    { "Price list.pdf", 268, 5, false },
    { "Setup.exe", 40960, 2, false },
    { "Table of hours.xls", 58, 6, false },
};

// What the menu has to choose from: the kinds of files under one word.
const struct
{
    const char* name;
    const char* types;
} kinds[] = {
    { "filter.kind.documents", "doc pdf ppt txt xls" },
    { "filter.kind.pictures", "ai image psd" },
    { "filter.kind.media", "audio swf video" },
    { "filter.kind.archives", "iso zip" },
    { "filter.kind.other", "" },
};

const int otherKind = 4;
const int anyKind = -1;
const int sizeColumn = 2;

// One extension of each kind of file that has an icon; the last one stands for all that have none.
const char* const extensions[] = { "acc", "ai", "mp3", "bkpi", "doc", "exe", "fla", "htm", "idn", "jpg",
    "iso", "cpp", "pdf", "ppt", "psd", "swf", "ttf", "txt", "avi", "xls", "zip", "?" };

class FilterPage : public Page
{
public:
    explicit FilterPage(QWidget* parent);

    void enterState(const QString& state) override;
    QWidget* opener(const QString& state) const override;

private:
    void addList();
    QLayout* filter();
    QWidget* list();
    void makeMenu();
    QAction* addKind(QActionGroup* group, const char* name, int kind);
    void addTypes();
    void addBars();
    void apply(const QString& keyword);
    void fill();
    bool isWanted(const SampleFile& file) const;
    void addRow(const SampleFile& file);

    VantFilterBar* m_bar = nullptr;
    VantMenu* m_menu = nullptr;
    QAction* m_removed = nullptr;
    int m_kind = anyKind;
    QString m_keyword;
    VantButton* m_kindSign = nullptr;
    QLabel* m_found = nullptr;
    VantTableWidget* m_list = nullptr;
    QLabel* m_hint = nullptr;
};

QString extensionOf(const SampleFile& file)
{
    return QFileInfo(QString::fromLatin1(file.name)).suffix();
}

QString typeOf(const QString& extension)
{
    return FileTypeMap::getInstance().getFiletypeMapping(extension, false).section(QLatin1Char('.'), 0, 0);
}

// The last of the kinds is what is left.
int kindOf(const SampleFile& file)
{
    const QString type = typeOf(extensionOf(file));
    int kind = 0;
    while (
        kind < otherKind && !QString::fromLatin1(kinds[kind].types).split(QLatin1Char(' ')).contains(type)) {
        ++kind;
    }
    return kind;
}

QStringList namesOfKinds()
{
    QStringList names;
    for (const auto& kind : kinds) {
        names << text(kind.name);
    }
    return names;
}

// The files that are gone come with a longer one.
QString dayOf(const SampleFile& file)
{
    const QString day = QDate(2017, 3, file.day).toString(Qt::ISODate);
    return file.removed ? text("filter.list.removed_on").arg(day) : day;
}

QLabel* iconLabel(const QString& extension, bool removed)
{
    auto* label = new QLabel;
    label->setPixmap(currentTheme().fileTypeIcon(extension, removed));
    label->setToolTip(FileTypeMap::getInstance().getFiletypeMapping(extension, removed));
    return label;
}

VantFilterBar* filterBar(const QString& keyword)
{
    auto* bar = new VantFilterBar;
    bar->setAccessibleName(text("filter.part"));
    bar->setText(keyword);
    bar->setFixedWidth(px(barWidth));
    return bar;
}

FilterPage::FilterPage(QWidget* parent)
    : Page(parent)
{
    addList();
    addBars();
    addTypes();
}

void FilterPage::addList()
{
    QVBoxLayout* section = addSection("filter.list", "VantFilterBar");
    section->addLayout(filter());
    section->addWidget(list());
    fill();
}

QLayout* FilterPage::filter()
{
    makeMenu();
    m_bar = live(filterBar({}));
    m_bar->setMenu(m_menu);
    connect(m_bar, &VantFilterBar::sigKeywordChanged, this, &FilterPage::apply);
    m_kindSign = live(filterSign(text("filter.kind.all")));
    connect(m_kindSign, &QPushButton::clicked, this, [this] {
        m_bar->setFocus(Qt::OtherFocusReason);
        m_menu->actions().constFirst()->trigger();
    });
    m_found = styledLabel({}, "gallery.caption");

    auto* row = new QHBoxLayout;
    row->setSpacing(px(16));
    row->addLayout(labelled(text("filter.part"), m_bar));
    row->addWidget(m_kindSign);
    row->addWidget(m_found);
    row->addStretch(1);
    return row;
}

void FilterPage::makeMenu()
{
    m_menu = new VantMenu(this);
    m_menu->setStyleSheet(getStyleSheet("component.menu"));
    auto* group = new QActionGroup(m_menu);
    addKind(group, "filter.kind.all", anyKind)->setChecked(true);
    for (int kind = 0; kind <= otherKind; ++kind) {
        addKind(group, kinds[kind].name, kind);
    }
    m_menu->addSeparator();
    m_removed = m_menu->addAction(text("filter.removed"));
    m_removed->setCheckable(true);
    m_removed->setChecked(true);

    connect(m_menu, &QMenu::triggered, this, [this, group](QAction* action) {
        m_kind = group->checkedAction()->data().toInt();
        showSign(m_kindSign, m_kind == anyKind ? QString() : group->checkedAction()->text());
        fill();
        Q_EMIT happened(text("event.chosen").arg(action->text()));
    });
}

QAction* FilterPage::addKind(QActionGroup* group, const char* name, int kind)
{
    QAction* action = group->addAction(text(name));
    action->setData(kind);
    action->setCheckable(true);
    m_menu->addAction(action);
    return action;
}

QWidget* FilterPage::list()
{
    VantTableColumnsInfo columns;
    const QString kind = text("filter.list.kind");
    const QString size = text("filter.list.size");
    const QString day = text("filter.list.day");
    columns.addColumn(text("filter.list.name"), 200, true, 1.0);
    columns.addColumn(kind, columnWidth(kind, namesOfKinds()), true, 0);
    columns.addColumn(size, sizeColumnWidth(size), true, 0);
    columns.addColumn(day, columnWidth(day, { dayOf(files[0]) }), true, 0);
    m_list = live(new VantTableWidget(columns));
    m_list->setFixedHeight(px(listHeight));
    QTableWidget* table = m_list->getTable();
    table->setAccessibleName(text("filter.list.title"));
    table->setTabKeyNavigation(false);
    table->setIconSize(QSize(px(20), px(20)));
    alignRight(m_list, sizeColumn);
    m_hint = addHint(table);
    m_hint->setText(text("filter.none"));

    QFrame* well = styledFrame("well", "gallery.well");
    auto* layout = new QVBoxLayout(well);
    layout->setContentsMargins(px(1), px(1), px(1), px(1));
    layout->addWidget(m_list);
    return well;
}

void FilterPage::addBars()
{
    QGridLayout* grid = addLiveAndDisabled(addSection("filter.bars", "VantFilterBar"));
    for (const QString& keyword : { QString(), QStringLiteral("report 2016") }) {
        VantFilterBar* bar = live(filterBar(keyword));
        connect(bar, &VantFilterBar::sigKeywordChanged, this,
            [this](const QString& word) { Q_EMIT happened(text("filter.keyword").arg(word)); });
        addPair(grid, bar, filterBar(keyword));
    }
}

void FilterPage::addTypes()
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(16));
    grid->setVerticalSpacing(px(12));
    addSection("filter.types", "VantTheme")->addLayout(grid);
    int count = 0;
    for (const char* name : extensions) {
        const QString extension = QString::fromLatin1(name);
        auto* cell = new QHBoxLayout;
        cell->setSpacing(px(4));
        cell->addWidget(iconLabel(extension, false));
        cell->addWidget(iconLabel(extension, true));
        cell->addWidget(styledLabel(typeOf(extension), "gallery.caption"));
        cell->addStretch(1);
        grid->addLayout(cell, count / typesInRow, count % typesInRow);
        grid->setColumnStretch(count % typesInRow, 1);
        ++count;
    }
}

void FilterPage::apply(const QString& keyword)
{
    m_keyword = keyword.trimmed();
    fill();
    Q_EMIT happened(text("filter.keyword").arg(keyword));
}

bool FilterPage::isWanted(const SampleFile& file) const
{
    return (m_kind == anyKind || kindOf(file) == m_kind) && (m_removed->isChecked() || !file.removed)
        && QString::fromLatin1(file.name).contains(m_keyword, Qt::CaseInsensitive);
}

void FilterPage::fill()
{
    m_list->getTable()->setRowCount(0);
    int all = 0;
    for (const SampleFile& file : files) {
        ++all;
        if (isWanted(file)) {
            addRow(file);
        }
    }
    const int found = m_list->getTable()->rowCount();
    m_hint->setVisible(found == 0);
    m_found->setText(text("filter.found").arg(locale().toString(found), locale().toString(all)));
}

void FilterPage::addRow(const SampleFile& file)
{
    QTableWidget* table = m_list->getTable();
    const int row = table->rowCount();
    table->insertRow(row);
    const QString size = sizeText(qint64(file.kilobytes) << 10);
    int column = 0;
    for (const QString& cell :
        { QString::fromLatin1(file.name), text(kinds[kindOf(file)].name), size, dayOf(file) }) {
        table->setItem(row, column++, new QTableWidgetItem(cell)); // the table owns it
    }
    table->item(row, sizeColumn)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    table->item(row, 0)->setIcon(currentTheme().fileTypeIcon(extensionOf(file), file.removed));
}

void FilterPage::enterState(const QString& state)
{
    if (state == QLatin1String("focus")) {
        m_bar->setFocus(Qt::TabFocusReason);
    } else if (state == QLatin1String("keyword")) {
        m_bar->setText(QStringLiteral("report"));
        apply(m_bar->text());
    } else if (state == QLatin1String("kind")) {
        m_menu->actions().at(2)->trigger();
    } else if (state == QLatin1String("nothing")) {
        m_bar->setText(QStringLiteral("minutes"));
        apply(m_bar->text());
        m_menu->actions().at(2)->trigger();
    } else if (state == QLatin1String("menu")) {
        auto* button = m_bar->findChild<QToolButton*>();
        m_bar->setFocus(Qt::MouseFocusReason);
        button->setDown(true);
        m_menu->popup(button->mapToGlobal(QPoint(0, button->height())));
        m_menu->setActiveAction(m_menu->actions().at(1));
    }
}

QWidget* FilterPage::opener(const QString& state) const
{
    return state == QLatin1String("menu") ? m_bar : nullptr;
}

} // namespace

Page* createFilterPage(QWidget* parent)
{
    return new FilterPage(parent);
}

} // namespace gallery
