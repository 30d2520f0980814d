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
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <functional>

namespace {

QColor ground()
{
    return themeColour(QStringLiteral("ground"));
}

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
    palette.setColor(QPalette::Window, ground());
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
    const QPointF position(view->viewport()->mapToParent(view->visualRect(index).center()));
    QHoverEvent event(QEvent::HoverMove, position, QPointF());
    QCoreApplication::sendEvent(view, &event);
}

} // namespace

QPixmap tableView()
{
    VantTableColumnsInfo columns;
    columns.addColumn(QStringLiteral("Name"), 160, true, 1.0);
    columns.addColumn(QStringLiteral("Size"), 90, true, 0.0);
    columns.addColumn(QStringLiteral("Changed"), 138, false, 0.0);
    auto* widget = new VantTableWidget(columns);
    widget->setFixedSize(px(460), px(178));
    QTableWidget* table = widget->getTable();
    const QStringList files { QStringLiteral("Annual report.docx"), QStringLiteral("Balance 2017.xlsx"),
        QStringLiteral("Cover photo.jpg"), QStringLiteral("Invoices.zip"),
        QStringLiteral("Meeting notes.txt"), QStringLiteral("Presentation.pptx"),
        QStringLiteral("Scanned contract.pdf") };
    for (int row = 0; row < files.size(); ++row) {
        addRow(table, row,
            { files[row], QStringLiteral("%1 KB").arg(48 + 37 * row),
                QStringLiteral("2017-03-0%1").arg(row + 1) });
    }
    return pictureOf(widget, 12, ground(), [table] {
        table->setFocus();
        table->setCurrentCell(1, 0);
        hover(table, table->model()->index(3, 0));
    });
}

QPixmap treeView()
{
    auto* tree = new VantTreeWidget;
    auto* delegate = new ItemDelegate;
    delegate->setParent(tree);
    tree->setItemDelegate(delegate);
    tree->setBackgroundColor(
        themeColour(QStringLiteral("accent-soft")), themeColour(QStringLiteral("hover")));
    tree->setIndentation(px(20));
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
    tree->setCurrentItem(documents);
    return pictureOf(tree, 12, ground());
}

QPixmap pagingBar()
{
    VantPagingModel model(10);
    auto* bar = new VantPagingBar(&model);
    bar->setFixedWidth(px(560));
    bar->setItemCount(128);
    bar->setPage(6);
    bar->setFooterText(QStringLiteral("128 items"));
    return pictureOf(bar, 12, ground());
}

QPixmap pathBar()
{
    auto* bar = new VantButtonPath;
    bar->setFixedWidth(px(420));
    return pictureOf(bar, 12, ground(), [bar] {
        QCoreApplication::processEvents(); // the bar has to have its width
        bar->refresh(QStringLiteral("Server/Backups of the office/Documents/Letters/R&D/Drafts"));
        putPointerOn(bar->cellWidget(0, bar->columnCount() - 3));
    });
}

QPixmap calendarPopup()
{
    auto* view = new VantCalanderView;
    view->setFixedSize(px(280), px(260));
    view->setStyleSheet(
        getStyleSheet("component.date_selector", false) + getStyleSheet("component.menu", false));
    view->findChild<QCalendarWidget*>()->setSelectedDate(QDate(2017, 3, 9));
    return pictureOf(view, 12, ground());
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
    both.fill(themeColour(QStringLiteral("panel")));
    QPainter painter(&both);
    painter.drawPixmap(0, 0, field);
    painter.drawPixmap(QPointF(0, field.height() / field.devicePixelRatio()), list);
    return both;
}

QPixmap scrollBars()
{
    auto* area = new QScrollArea;
    const QString panel = themeColour(QStringLiteral("panel")).name();
    area->setStyleSheet(QStringLiteral("QScrollArea { border: 1px solid %1; background: %2; }")
                            .arg(themeColour(QStringLiteral("line")).name(), panel)
        + getStyleSheet("component.scrollbar", false));
    auto* page = new QWidget;
    page->setFixedSize(px(400), px(300));
    page->setStyleSheet(QStringLiteral("background: %1;").arg(panel));
    area->setWidget(page);
    area->setFixedSize(px(200), px(120));
    return pictureOf(area, 12, ground());
}
