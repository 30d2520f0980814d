#include "controls.h"
#include "file-list.h"
#include "file-tree.h"
#include "folder-reader.h"
#include "page.h"
#include "places.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QActionGroup>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QResizeEvent>
#include <QShortcut>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace gallery {

namespace {

const int rowsOfAPage = 50;
const int treeWidth = 208;
const int viewHeight = 420;
const int roomForBoth = 640; // the tree and the table; and for all filters, and for a footer in the bar

const Kind allKinds[] = { Kind::Folder, Kind::Document, Kind::Picture, Kind::Music, Kind::Video,
    Kind::Archive, Kind::Other };

enum Column { NameColumn, KindColumn, SizeColumn, ChangedColumn };

QString nameOf(Kind kind)
{
    static const char* const names[] = { "files.kind.folder", "files.kind.document", "files.kind.picture",
        "files.kind.music", "files.kind.video", "files.kind.archive", "files.kind.other" };
    return text(names[static_cast<int>(kind)]);
}

QStringList namesOfKinds()
{
    QStringList names;
    for (const Kind kind : allKinds) {
        names << nameOf(kind);
    }
    return names;
}

/** The folder itself, or the innermost one around it that there is. */
QString nearestFolder(QString folder)
{
    while (!QFileInfo(folder).isDir() && !QDir(folder).isRoot()) {
        folder = QFileInfo(folder).path();
    }
    return folder;
}

// A name may have line ends, and a row has one line.
QString inOneLine(QString name)
{
    return name.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
}

QTableWidgetItem* cell(const QString& text, Qt::Alignment alignment = Qt::AlignLeft)
{
    auto* item = new QTableWidgetItem(text); // the table takes it over
    item->setTextAlignment(alignment | Qt::AlignVCenter);
    return item;
}

/** An application in small: a folder in all the views of the kit. */
class FilesPage : public Page
{
public:
    explicit FilesPage(QWidget* parent);

    void fitTo(int width) override;
    void enterState(const QString& state) override;
    void settle() override;
    QWidget* opener(const QString& state) const override;

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QLayout* createFilters();
    QMenu* createKinds();
    QLayout* createViews();
    QWidget* createTable();
    void leadUpFrom(QWidget* view);
    void openFolder(const QString& folder);
    void openParent();
    void readAgain();
    void take(const ListingPtr& listing);
    void leaveFolder();
    void filter(const FileFilter& filter);
    void setKind(std::optional<Kind> kind);
    void setDay(const QDate& day);
    void showPath();
    void showList(int page);
    void showRows();
    void showEntry(const QString& name);
    void showRow(int row, const FileEntry& entry);
    void showSums();
    void showFooter(const QStringList& words);
    void reportSelection();
    void openRow(int row);
    void showHint();
    void warn(const QString& words);
    const FileEntry* entryOfRow(int row) const;
    QString shortened(const QString& name) const;

    QString m_folder;
    QString m_cameFrom; ///< the folder in it to be selected, once it is read
    QTimer m_pathTimer;
    FolderReader* m_reader = new FolderReader(this);
    FileList m_list;
    QString m_complaint; ///< why there is nothing to list
    QStringList m_words; ///< in the footer
    bool m_isNarrow = false; ///< too narrow for all side by side
    VantPagingModel* m_paging = new VantPagingModel(rowsOfAPage, this);
    VantButtonPath* m_path = nullptr;
    VantFilterBar* m_filterBar = nullptr;
    VantButton* m_kindSign = nullptr;
    VantDateSelector* m_day = nullptr;
    VantButton* m_anyDay = nullptr;
    QBoxLayout* m_filters = nullptr;
    QMenu* m_kindMenu = nullptr;
    QList<QAction*> m_kinds;
    FileTree* m_tree = nullptr;
    QFrame* m_treeFrame = nullptr;
    VantTableWidget* m_table = nullptr;
    QLabel* m_hint = nullptr;
    VantPagingBar* m_bar = nullptr;
    QLabel* m_footer = nullptr; ///< in place of the bar's, where that has no room for it
};

FilesPage::FilesPage(QWidget* parent)
    : Page(parent)
{
    QVBoxLayout* section = addSection("files.browser", "VantTreeWidget, VantTableWidget");
    m_path = live(new VantButtonPath);
    m_path->setAccessibleName(text("files.path"));
    connect(m_path, &VantButtonPath::sigUpdatePath, this,
        [this](const QString& path) { openFolder(folderOf(path)); });
    section->addWidget(m_path);
    section->addLayout(createFilters());
    section->addLayout(createViews());

    m_pathTimer.setSingleShot(true);
    connect(&m_pathTimer, &QTimer::timeout, this, &FilesPage::showPath);
    connect(m_reader, &FolderReader::done, this, &FilesPage::take);
    openFolder(startFolder());
}

QLayout* FilesPage::createFilters()
{
    m_filterBar = live(new VantFilterBar);
    m_filterBar->setPlaceholderText(text("files.filter"));
    m_filterBar->setAccessibleName(text("files.filter"));
    m_filterBar->setClearButtonEnabled(true);
    m_kindMenu = createKinds();
    m_filterBar->setMenu(m_kindMenu);
    connect(m_filterBar, &VantFilterBar::sigKeywordChanged, this, [this](const QString& keyword) {
        FileFilter wanted = m_list.filter();
        wanted.keyword = keyword;
        filter(wanted);
    });
    connect(m_filterBar, &QLineEdit::textChanged, this, [this](const QString& keyword) {
        if (keyword.isEmpty() && !m_list.filter().keyword.isEmpty()) {
            Q_EMIT m_filterBar->sigKeywordChanged(keyword);
        }
    });

    m_kindSign = live(filterSign(text("files.kind.all")));
    connect(m_kindSign, &QPushButton::clicked, this, [this] {
        m_filterBar->setFocus(Qt::OtherFocusReason);
        m_kinds.constFirst()->trigger();
    });

    m_day = live(new VantDateSelector(text("files.day")));
    m_day->setAccessibleName(text("files.day"));
    m_day->setMinimumWidth(px(144));
    connect(m_day->getCalendarView(), &VantCalanderView::sigDateSelect, this, &FilesPage::setDay);
    m_anyDay = button(text("files.any_day"), 1);
    connect(m_anyDay, &QPushButton::clicked, this, [this] {
        m_day->clearDate();
        setDay({});
    });
    m_anyDay->setEnabled(false);

    auto* kinds = new QHBoxLayout;
    kinds->setSpacing(px(8));
    kinds->addWidget(m_filterBar, 1);
    kinds->addWidget(m_kindSign);
    auto* days = new QHBoxLayout;
    days->setSpacing(px(8));
    days->addWidget(m_day, 1);
    days->addWidget(m_anyDay);
    m_filters = new QBoxLayout(QBoxLayout::LeftToRight);
    m_filters->setSpacing(px(8));
    m_filters->addLayout(kinds, 1);
    m_filters->addLayout(days);
    return m_filters;
}

QMenu* FilesPage::createKinds()
{
    auto* menu = new VantMenu(this);
    auto* group = new QActionGroup(menu);
    const auto add = [&](const QString& name, std::optional<Kind> kind) {
        QAction* action = menu->addAction(name);
        action->setCheckable(true);
        action->setChecked(!kind);
        group->addAction(action);
        m_kinds << action;
        connect(action, &QAction::triggered, this, [this, kind] { setKind(kind); });
    };
    add(text("files.kind.all"), std::nullopt);
    for (const Kind kind : allKinds) {
        add(nameOf(kind), kind);
    }
    return menu;
}

QLayout* FilesPage::createViews()
{
    m_tree = live(new FileTree);
    m_tree->setFixedWidth(px(treeWidth));
    connect(m_tree, &FileTree::folderChosen, this, &FilesPage::openFolder);
    connect(m_tree, &FileTree::currentFolderGone, this, &FilesPage::readAgain);
    leadUpFrom(m_tree);
    connect(m_tree, &FileTree::ticked, this,
        [this] { Q_EMIT happened(text("files.ticked").arg(m_tree->tickedItems())); });
    m_treeFrame = styledFrame("frame", "gallery.frame");
    auto* treeLayout = new QVBoxLayout(m_treeFrame);
    treeLayout->setContentsMargins(px(1), px(1), px(1), px(1));
    treeLayout->addWidget(m_tree);

    m_bar = live(new VantPagingBar(m_paging));
    connect(m_bar, &VantPagingBar::sigPageChanged, this, &FilesPage::showRows);
    connect(m_bar, &VantPagingBar::sigRefresh, this, &FilesPage::readAgain);

    auto* views = new QHBoxLayout;
    views->setSpacing(px(12));
    views->addWidget(m_treeFrame);
    views->addWidget(createTable(), 1);

    m_footer = live(shortenedLabel({}, "gallery.caption"));

    auto* column = new QVBoxLayout;
    column->setSpacing(px(8));
    column->addLayout(views, 1);
    column->addWidget(m_bar);
    column->addWidget(m_footer);
    return column;
}

QWidget* FilesPage::createTable()
{
    VantTableColumnsInfo columns;
    const QString kind = text("files.column.kind");
    const QString size = text("files.column.size");
    const QString changed = text("files.column.changed");
    columns.addColumn(text("files.column.name"), 144, true, 1.0);
    columns.addColumn(kind, columnWidth(kind, namesOfKinds()), true, 0.0);
    columns.addColumn(size, sizeColumnWidth(size), true, 0.0);
    columns.addColumn(changed, timeColumnWidth(changed), true, 0.0);
    m_table = live(new VantTableWidget(columns));
    m_table->getTable()->setAccessibleName(text("files.files"));
    m_table->getTable()->setIconSize({ px(20), px(20) });
    m_table->getTable()->setSelectionMode(QAbstractItemView::ExtendedSelection);
    alignRight(m_table, SizeColumn);
    m_table->getTable()->setWordWrap(false); // a long name is cut at its end
    m_table->getTable()->setTabKeyNavigation(false);
    m_hint = addHint(m_table->getTable());
    connect(m_table->getTable(), &QTableWidget::cellActivated, this, &FilesPage::openRow);
    connect(m_table->getTable(), &QTableWidget::itemSelectionChanged, this, &FilesPage::reportSelection);
    leadUpFrom(m_table->getTable());

    QFrame* frame = styledFrame("frame", "gallery.frame");
    frame->setMinimumHeight(px(viewHeight));
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(px(1), px(1), px(1), px(1));
    layout->addWidget(m_table);
    return frame;
}

void FilesPage::openFolder(const QString& folder)
{
    if (folder.isEmpty() || folder == m_folder) {
        return;
    }
    m_folder = folder;
    m_cameFrom.clear();
    m_complaint.clear();
    m_list.setListing(nullptr);
    m_tree->setCurrentFolder(folder);
    m_day->getCalendarView()->setMaximumDate(QDate::currentDate());
    showPath();
    showList(1);
    readAgain();
}

void FilesPage::leadUpFrom(QWidget* view)
{
    auto* shortcut = new QShortcut(Qt::Key_Backspace, view); // a child of the view
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, &FilesPage::openParent);
}

void FilesPage::openParent()
{
    const QFileInfo info(m_folder);
    if (!QDir(m_folder).isRoot() && !shownPath(info.path()).isEmpty()) {
        openFolder(info.path());
        m_cameFrom = info.fileName();
    }
}

void FilesPage::readAgain()
{
    m_reader->read(m_folder);
    showFooter({ text("files.reading") });
}

void FilesPage::take(const ListingPtr& listing)
{
    if (!listing->isReadable) {
        leaveFolder();
        return;
    }
    m_complaint.clear();
    m_list.setListing(listing);
    m_tree->refresh(m_folder);
    showList(m_paging->nowPage());
    showEntry(std::exchange(m_cameFrom, {}));
}

// It stays what is shown as long as it is there: then what forbids to read it may pass.
void FilesPage::leaveFolder()
{
    m_list.setListing(nullptr);
    const QString nearest = nearestFolder(m_folder);
    if (nearest == m_folder) {
        m_complaint = text("files.problem.denied").arg(inOneLine(shownPath(m_folder)));
        showList(1);
        warn(m_complaint);
        return;
    }
    const QString gone = QFileInfo(m_folder).fileName();
    openFolder(nearest);
    m_tree->refresh(nearest);
    warn(text("files.problem.gone").arg(gone));
}

void FilesPage::filter(const FileFilter& filter)
{
    m_list.setFilter(filter);
    showList(1);
}

void FilesPage::setKind(std::optional<Kind> kind)
{
    showSign(m_kindSign, kind ? nameOf(*kind) : QString());
    FileFilter wanted = m_list.filter();
    wanted.kind = kind;
    filter(wanted);
}

void FilesPage::setDay(const QDate& day)
{
    m_anyDay->setEnabled(day.isValid());
    FileFilter wanted = m_list.filter();
    wanted.day = day;
    filter(wanted);
}

void FilesPage::showPath()
{
    m_path->refresh(shownPath(m_folder));
}

void FilesPage::showList(int page)
{
    m_bar->setItemCount(m_list.count());
    m_bar->setPage(qBound(1, page, qMax(1, m_paging->pageCount())));
    showRows();
    showHint();
    showSums();
}

void FilesPage::showHint()
{
    m_hint->setHidden(m_list.count() > 0);
    m_hint->setText(
        m_list.isRead() ? text(m_list.filter().isEmpty() ? "files.empty" : "filter.none") : m_complaint);
}

const FileEntry* FilesPage::entryOfRow(int row) const
{
    const int index = m_paging->startItem() + row;
    return row >= 0 && index < m_list.count() ? &m_list.at(index) : nullptr;
}

void FilesPage::showRows()
{
    QTableWidget* table = m_table->getTable();
    table->clearSelection();
    table->setRowCount(qBound(0, m_list.count() - m_paging->startItem(), rowsOfAPage));
    for (int row = 0; row < table->rowCount(); ++row) {
        showRow(row, *entryOfRow(row));
    }
    table->setCurrentCell(0, NameColumn, QItemSelectionModel::NoUpdate); // where the keyboard begins
    table->scrollToTop();
}

void FilesPage::showEntry(const QString& name)
{
    const int index = m_list.indexOf(name);
    if (index < 0) {
        return;
    }
    showList(index / rowsOfAPage + 1);
    m_table->getTable()->setCurrentCell(index - m_paging->startItem(), NameColumn);
}

void FilesPage::showRow(int row, const FileEntry& entry)
{
    QTableWidget* table = m_table->getTable();
    QTableWidgetItem* name = cell(inOneLine(entry.name));
    name->setIcon(iconOf(entry));
    table->setItem(row, NameColumn, name);
    table->setItem(row, KindColumn, cell(nameOf(entry.kind)));
    table->setItem(row, SizeColumn, cell(entry.size ? sizeText(*entry.size) : QString(), Qt::AlignRight));
    table->setItem(row, ChangedColumn, cell(entry.changed.toString(QStringLiteral("yyyy-MM-dd hh:mm"))));
}

void FilesPage::showSums()
{
    QStringList sums { text("files.count").arg(gallery::locale().toString(m_list.count())) };
    if (const auto size = totalSizeOf(m_list.seen())) {
        sums << sizeText(*size);
    }
    showFooter(sums);
}

void FilesPage::showFooter(const QStringList& words)
{
    m_words = words;
    std::vector<PagingFooterInfo> infos;
    for (int i = words.size(); i-- > 0;) { // the bar begins at its end
        infos.push_back({ words.at(i), 0 });
    }
    m_bar->setFooterInfos(m_isNarrow ? std::vector<PagingFooterInfo>() : infos);
    m_footer->setText(words.join(QStringLiteral("  ·  ")));
    m_footer->setVisible(m_isNarrow);
}

void FilesPage::reportSelection()
{
    const QModelIndexList rows = m_table->getTable()->selectionModel()->selectedRows();
    std::vector<const FileEntry*> entries;
    for (const QModelIndex& row : rows) {
        if (const FileEntry* entry = entryOfRow(row.row())) {
            entries.push_back(entry);
        }
    }
    if (entries.empty()) {
        return;
    }
    const QString what =
        entries.size() == 1 ? shortened(entries.front()->name) : gallery::locale().toString(entries.size());
    const auto size = totalSizeOf(entries);
    Q_EMIT happened(
        size ? text("files.selected").arg(what, sizeText(*size)) : text("event.chosen").arg(what));
}

void FilesPage::openRow(int row)
{
    const FileEntry* entry = entryOfRow(row);
    if (!entry) {
        return;
    }
    if (entry->kind == Kind::Folder) {
        openFolder(QDir(m_folder).filePath(entry->name));
    } else {
        Q_EMIT happened(text("event.chosen").arg(shortened(entry->name)));
    }
}

// The line of reports has room for little more.
QString FilesPage::shortened(const QString& name) const
{
    return fontMetrics().elidedText(inOneLine(name), Qt::ElideMiddle, px(200));
}

void FilesPage::warn(const QString& words)
{
    showWarningMsg(text("files.title"), text("files.problem.read"), asRichText(words), window());
}

void FilesPage::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    m_pathTimer.start(0);
}

// The path bar decides what it hides by the width that it has.
void FilesPage::resizeEvent(QResizeEvent* event)
{
    Page::resizeEvent(event);
    m_pathTimer.start(0);
}

// The path bar and the table lead everywhere, too.
void FilesPage::fitTo(int width)
{
    m_isNarrow = width < px(roomForBoth);
    m_treeFrame->setVisible(!m_isNarrow);
    m_filters->setDirection(m_isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    showFooter(m_words);
    Page::fitTo(width);
}

void FilesPage::settle()
{
    while (m_reader->isReading() || m_tree->isReading()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
}

QWidget* FilesPage::opener(const QString& state) const
{
    return state == QLatin1String("kinds") ? m_filterBar : nullptr;
}

void FilesPage::enterState(const QString& state)
{
    if (state == QLatin1String("selected")) {
        m_table->getTable()->setFocus(Qt::TabFocusReason);
        m_table->getTable()->setCurrentCell(3, 0);
    } else if (state == QLatin1String("filtered")) {
        m_kinds[2]->trigger();
        m_day->dateSelect(QDate(2026, 3, 8));
        setDay(QDate(2026, 3, 8));
    } else if (state == QLatin1String("kinds")) {
        m_filterBar->setFocus(Qt::TabFocusReason);
        m_kindMenu->popup(m_filterBar->mapToGlobal({ 0, m_filterBar->height() }));
    } else if (state == QLatin1String("nothing")) {
        m_kinds.constLast()->trigger();
    } else if (state == QLatin1String("failure")) {
        warn(text("files.problem.gone").arg(QStringLiteral("Reports")));
    } else if (state == QLatin1String("deep")) {
        openFolder(m_folder + QStringLiteral("/Invoices/Reminders/First/Second/Last"));
        settle();
    }
}

} // namespace

Page* createFilesPage(QWidget* parent)
{
    return new FilesPage(parent);
}

} // namespace gallery
