#include "views.h"

#include "sheet.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QHeaderView>
#include <QHoverEvent>
#include <QLineEdit>
#include <QMovie>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <functional>

namespace {

const QColor ground(0xF5, 0xF8, 0xFA);

int px(int designPixels)
{
    return static_cast<int>(designPixels * DPIinfo::getInstance().getDPI());
}

// A sheet over the mask of a window, as an application shows it. @p make gets the window, which is a little
// larger than the sheet; the sheet is deleted with it.
QPixmap overMask(const std::function<VantSheet*(QWidget*)>& make)
{
    QWidget window;
    QPalette palette = window.palette();
    palette.setColor(QPalette::Window, ground);
    window.setPalette(palette);
    window.resize(px(580), px(580));
    VantSheet* sheet = make(&window);
    VantMask::createMask(sheet, &window);
    window.show();
    QApplication::setActiveWindow(&window);
    sheet->showSheet();
    QCoreApplication::processEvents();
    window.resize(sheet->size() + QSize(px(16), px(16)));
    QCoreApplication::processEvents();
    return window.grab();
}

void addRow(QTableWidget* table, int row, const QStringList& cells)
{
    table->insertRow(row);
    for (int column = 0; column < cells.size(); ++column) {
        table->setItem(row, column, new QTableWidgetItem(cells[column]));
    }
}

void hover(QAbstractItemView* view, const QModelIndex& index)
{
    const QPointF position(view->visualRect(index).center());
    QHoverEvent event(QEvent::HoverMove, position, QPointF());
    QCoreApplication::sendEvent(view->viewport(), &event);
}

} // namespace

QPixmap tableView()
{
    auto* widget = new QWidget;
    widget->setFixedSize(px(460), px(178));
    auto* names = new QTableWidget(0, 4, widget);
    names->hide();
    names->setHorizontalHeaderLabels(
        { QStringLiteral("Name"), QStringLiteral("Size"), QStringLiteral("Changed"), {} });
    auto* header = new QHeaderView(Qt::Horizontal);
    header->setModel(names->model());
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setStyleSheet(getStyleSheet("component.table_header", false));
    header->setFixedSize(20000, px(30));
    auto* area = new QScrollArea;
    area->setFixedHeight(px(30));
    area->setWidget(header);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setStyleSheet(QStringLiteral("QScrollArea { border: none; }"));

    auto* table = new QTableWidget(0, 3);
    const int widths[] = { 220, 90, 138 };
    for (int column = 0; column < 3; ++column) {
        header->resizeSection(column, px(widths[column]));
        table->horizontalHeader()->resizeSection(column, px(widths[column]));
    }
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->verticalHeader()->hide();
    table->horizontalHeader()->hide();
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->verticalHeader()->setDefaultSectionSize(px(28));
    table->setStyleSheet(
        getStyleSheet("component.table", false) + getStyleSheet("component.scrollbar", false));
    table->setShowGrid(false);
    const QStringList files { QStringLiteral("Annual report.docx"), QStringLiteral("Balance 2017.xlsx"),
        QStringLiteral("Cover photo.jpg"), QStringLiteral("Invoices.zip"),
        QStringLiteral("Meeting notes.txt"), QStringLiteral("Presentation.pptx"),
        QStringLiteral("Scanned contract.pdf") };
    for (int row = 0; row < files.size(); ++row) {
        addRow(table, row,
            { files[row], QStringLiteral("%1 KB").arg(48 + 37 * row),
                QStringLiteral("2017-03-0%1").arg(row + 1) });
    }
    auto* layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(area);
    layout->addWidget(table);
    return pictureOf(widget, 12, ground, [table] {
        table->setFocus();
        table->setCurrentCell(1, 0);
        hover(table, table->model()->index(3, 0));
    });
}

QPixmap treeView()
{
    auto* tree = new QTreeWidget;
    tree->setStyleSheet(getStyleSheet("theme.tree", false) + getStyleSheet("component.scrollbar", false));
    tree->setHeaderHidden(true);
    tree->setFixedSize(px(240), px(170));
    auto* home = new QTreeWidgetItem(tree, { QStringLiteral("Home") });
    auto* documents = new QTreeWidgetItem(home, { QStringLiteral("Documents") });
    new QTreeWidgetItem(documents, { QStringLiteral("Invoices") });
    new QTreeWidgetItem(documents, { QStringLiteral("Letters") });
    auto* pictures = new QTreeWidgetItem(home, { QStringLiteral("Pictures") });
    new QTreeWidgetItem(pictures, { QStringLiteral("2017") });
    home->setExpanded(true);
    documents->setExpanded(true);
    return pictureOf(tree, 12, ground);
}

QPixmap pagingBar()
{
    auto* border = new QWidget;
    border->setObjectName(QStringLiteral("PAGINGBARBORDER"));
    border->setStyleSheet(getStyleSheet("component.paging_bar_border", false));
    border->setFixedSize(px(560), px(29));
    auto* row = new QHBoxLayout(border);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addSpacing(px(50));
    row->addWidget(new VantIconButton(QStringLiteral("bt_pagebar_backend")));
    row->addWidget(new VantIconButton(QStringLiteral("bt_pagebar_back")));
    row->addStretch(0);
    for (int i = 0; i < 5; ++i) {
        if (i > 0) {
            row->addSpacing(px(4));
        }
        auto* page = new VantButton(QString::number(i + 4), i == 2 ? 2 : 3);
        page->setFixedHeight(px(27));
        page->setMinimumWidth(px(28));
        row->addWidget(page);
    }
    row->addStretch(0);
    row->addWidget(new VantIconButton(QStringLiteral("bt_pagebar_next")));
    row->addWidget(new VantIconButton(QStringLiteral("bt_pagebar_nextend")));
    row->addSpacing(px(50));
    auto* footer = new QLabel(QStringLiteral("128 items"));
    footer->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    footer->setFixedHeight(px(19));
    footer->setStyleSheet(getStyleSheet("component.paging_bar_label", false));
    row->addWidget(footer);
    auto* refresh = new VantIconButton(QStringLiteral("bt_pagebar_refresh"));
    refresh->setFixedSize(px(24), px(24));
    row->addWidget(refresh);
    return pictureOf(border, 12, ground);
}

QPixmap pathBar()
{
    auto* bar = new QTableWidget(1, 0);
    bar->horizontalHeader()->hide();
    bar->verticalHeader()->hide();
    bar->setShowGrid(false);
    bar->setSelectionMode(QAbstractItemView::NoSelection);
    bar->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    bar->setFocusPolicy(Qt::NoFocus);
    bar->setFixedSize(px(420), px(28));
    bar->setStyleSheet(getStyleSheet("component.button_path", false));
    const auto add = [bar](QPushButton* button) {
        button->setFlat(true);
        const int column = bar->columnCount();
        bar->insertColumn(column);
        bar->setCellWidget(0, column, button);
        bar->setColumnWidth(column, button->width());
    };
    QPushButton* hovered = nullptr;
    const QStringList names { QString(), QStringLiteral("Documents"), QStringLiteral("Letters"),
        QStringLiteral("R&&D"), QStringLiteral("Drafts") };
    for (const QString& name : names) {
        auto* button = new QPushButton(name);
        button->setStyleSheet(getStyleSheet("component.button_path_name_button", false));
        const int textWidth = button->fontMetrics().horizontalAdvance(name);
        button->setFixedSize(name.isEmpty() ? px(26) : px(textWidth + 16), px(26));
        add(button);
        if (name != names.last()) {
            auto* arrow = new QPushButton;
            arrow->setIcon(getGlobalImage("bt_next", ImageManager::Normal));
            arrow->setStyleSheet(getStyleSheet("component.button_path_arrow", false));
            arrow->setFixedSize(px(6), px(28));
            add(arrow);
            hovered = button;
        }
    }
    auto* folder = new QToolButton(bar);
    folder->setIcon(getGlobalImage("folder", ImageManager::Normal));
    folder->setIconSize({ 20, 20 });
    folder->setStyleSheet(getStyleSheet("component.button_path_change_folder_btn", false));
    folder->setFixedSize(px(26), px(26));
    folder->move(px(1), px(1));
    return pictureOf(bar, 12, ground, [bar, hovered] {
        for (int column = 1; column < bar->columnCount(); column += 2) {
            bar->setColumnWidth(column, px(6));
        }
        putPointerOn(hovered);
    });
}

QPixmap calendarPopup()
{
    auto* view = new VantCalanderView;
    view->setFixedSize(px(280), px(260));
    view->setStyleSheet(
        getStyleSheet("component.date_selector", false) + getStyleSheet("component.menu", false));
    view->findChild<QCalendarWidget*>()->setSelectedDate(QDate(2017, 3, 9));
    return pictureOf(view, 12, ground);
}

QPixmap messageSheet()
{
    return overMask([](QWidget* window) {
        return new VantMessageSheet(VantMessageSheet::Question,
            QStringLiteral("Delete the backup of the ninth of March?"),
            QStringLiteral("Its files cannot be brought back. All other backups stay."), window);
    });
}

QPixmap processingSheet()
{
    return overMask([](QWidget* window) {
        auto* sheet = new VantMessageSheet(QStringLiteral("Copying file 3 of 128"),
            ImageManager::getInstance().getImageFolder() + QStringLiteral("/processing.gif"), window);
        sheet->findChild<QMovie*>()->jumpToFrame(0);
        return sheet;
    });
}

QPixmap inputSheet()
{
    return overMask([](QWidget* window) {
        auto* sheet = new VantInputSheet(QStringLiteral("Name of the folder"), window);
        sheet->getLineEdit()->setText(QStringLiteral("New folder"));
        sheet->getLineEdit()->selectAll();
        return sheet;
    });
}

// The box is there only while the function waits for its answer.
QPixmap messageBox()
{
    QPixmap picture;
    QTimer::singleShot(0, qApp, [&picture] {
        QWidget* box = QApplication::activeModalWidget();
        picture = box->grab();
        box->close();
    });
    showConfirmMsg(QString(), QStringLiteral("Delete the backup of the ninth of March?"));
    return picture;
}

QPixmap menuPopup()
{
    VantMenu menu(nullptr);
    menu.setStyleSheet(getStyleSheet("component.menu", false));
    menu.addAction(QStringLiteral("Open"));
    QAction* rename = menu.addAction(QStringLiteral("Rename"));
    menu.addAction(QStringLiteral("Restore"))->setEnabled(false);
    menu.addSeparator();
    QAction* hidden = menu.addAction(QStringLiteral("Show hidden files"));
    hidden->setCheckable(true);
    hidden->setChecked(true);
    menu.addAction(QStringLiteral("Show sizes"))->setCheckable(true);
    auto* group = new QActionGroup(&menu);
    QAction* names = group->addAction(menu.addAction(QStringLiteral("By name")));
    names->setCheckable(true);
    names->setChecked(true);
    menu.addSeparator();
    QMenu* more = menu.addMenu(QStringLiteral("Send to"));
    more->addAction(QStringLiteral("Archive"));
    menu.addMenu(QStringLiteral("Share"))->setEnabled(false);
    menu.show();
    menu.setActiveAction(rename);
    return menu.grab();
}

QPixmap comboPopup()
{
    VantComboBox combo(nullptr);
    for (const char* item : { "Every hour", "Every day", "Every week", "Every month", "Never" }) {
        combo.addItem(QLatin1String(item));
    }
    combo.setCurrentIndex(1);
    combo.setFixedWidth(px(160));
    combo.setMaxVisibleItems(4);
    combo.show();
    QApplication::setActiveWindow(&combo);
    combo.showPopup();
    QCoreApplication::processEvents();
    const QPixmap field = combo.grab();
    const QPixmap list = combo.view()->window()->grab();
    QPixmap both(QSize(field.width(), field.height() + list.height()));
    both.setDevicePixelRatio(field.devicePixelRatio());
    both.fill(Qt::white);
    QPainter painter(&both);
    painter.drawPixmap(0, 0, field);
    painter.drawPixmap(QPointF(0, field.height() / field.devicePixelRatio()), list);
    return both;
}

QPixmap scrollBars()
{
    auto* area = new QScrollArea;
    area->setStyleSheet(QStringLiteral("QScrollArea { border: 1px solid #C8D2DC; background: #FFFFFF; }")
        + getStyleSheet("component.scrollbar", false));
    auto* page = new QWidget;
    page->setFixedSize(px(400), px(300));
    page->setStyleSheet(QStringLiteral("background: #FFFFFF;"));
    area->setWidget(page);
    area->setFixedSize(px(200), px(120));
    return pictureOf(area, 12, ground);
}
