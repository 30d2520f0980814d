#include "widgets/vant-button-path.h"

#include "image-manager/image-manager.h"
#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"

#include <QAction>
#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalMapper>
#include <QToolButton>

#include <limits>

using vantkit::internal::designPixels;

namespace {

// Of whatever row comes next.
constexpr int endOfRow = std::numeric_limits<int>::max();

bool isFolder(int column)
{
    return column % 2 == 0;
}

QString withDoubledAmpersands(QString name)
{
    return name.replace(QLatin1Char('&'), QLatin1String("&&"));
}

void deleteAllLater(QObjectList* objects)
{
    for (QObject* object : qAsConst(*objects)) {
        object->deleteLater();
    }
    delete objects;
}

} // namespace

VantButtonPath::VantButtonPath(QWidget* parent)
    : QTableWidget(parent)
    , changeFolderBtn(new QToolButton) // becomes a child of the bar when it is dressed
    , pathMapper(new QSignalMapper(this))
    , menuMapper(new QSignalMapper(this))
    , m_leftToClicks(new QObjectList, deleteAllLater)
{
    insertRow(0);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    // A hidden header still decides how narrow a column may be.
    horizontalHeader()->setMinimumSectionSize(1);
    setShowGrid(false);
    setSelectionMode(QAbstractItemView::NoSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setFocusPolicy(Qt::NoFocus);
    // It would also scroll to the cell of the button that gets the focus.
    setAutoScroll(false);
    setFixedHeight(designPixels(28));

    dressFolderButton();

    connect(menuMapper, SIGNAL(mapped(int)), this, SLOT(slotPathBarClicked(int)));
    connect(pathMapper, SIGNAL(mapped(int)), this, SLOT(slotPathBarClicked(int)));
    setStyleSheet(getStyleSheet("component.button_path", false));
}

VantButtonPath::~VantButtonPath()
{
    disconnectNames();
    clearMenu();
    const QObjectList relays { pathMapper, menuMapper, changeFolderBtn->menu() };
    if (m_leftToClicks.use_count() == 1) {
        qDeleteAll(relays);
        return;
    }
    pathMapper->setParent(nullptr);
    menuMapper->setParent(nullptr);
    *m_leftToClicks = relays;
}

void VantButtonPath::dressFolderButton()
{
    auto* menu = new QMenu; // the destructor deletes it
    menu->setStyleSheet(getStyleSheet("component.menu", false));
    changeFolderBtn->setMenu(menu);
    changeFolderBtn->setIcon(getGlobalImage("folder", ImageManager::Normal));
    changeFolderBtn->setIconSize(QSize(20, 20)); // published as unscaled
    changeFolderBtn->setPopupMode(QToolButton::InstantPopup);
    changeFolderBtn->hide();
    changeFolderBtn->setParent(this);
    changeFolderBtn->setStyleSheet(getStyleSheet("component.button_path_change_folder_btn", false));
    changeFolderBtn->setFixedSize(designPixels(26), designPixels(26));
    changeFolderBtn->move(designPixels(1), designPixels(1));
}

// The focus moves before the row is touched and after the new one stands, as a slot of the move may come back
// here. Even the move of the focus to a name may lead here, so the name that has it is spared until the move
// is over.
void VantButtonPath::refresh(QString path)
{
    QWidget* focused = window()->focusWidget();
    const int place = columnOf(focused);
    if (place >= 0) {
        setFocus(Qt::OtherFocusReason); // else it visits another widget on its way
    }
    viewWidth = horizontalScrollBar()->pageStep();
    // Else Qt looks through the row for what is below the pointer, with each button that shows or hides.
    viewport()->setAttribute(Qt::WA_TransparentForMouseEvents, true);
    removeRow(focused);
    m_names = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    buildRow();
    viewport()->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    updateColumnSize();
    focusColumn(place);
}

void VantButtonPath::removeRow(const QWidget* spared)
{
    changeFolderBtn->hide();
    changeFolderBtn->menu()->hide();
    clearMenu();
    disconnectNames();
    for (int column = 0; column < columnCount(); ++column) {
        QWidget* button = cellWidget(0, column);
        if (button != spared) {
            delete button;
        }
    }
    clear(); // which hides what is left, and deletes it later
}

// A mapper that learns that an object goes looks through all that it knows, and drops a mapping that the
// click being told still reads. So none learns of it; an object that comes to the same address is mapped
// anew.
void VantButtonPath::disconnectNames()
{
    for (int column = 0; column < columnCount(); ++column) {
        if (QWidget* button = cellWidget(0, column)) {
            button->disconnect(pathMapper);
        }
    }
}

void VantButtonPath::clearMenu()
{
    QMenu* menu = changeFolderBtn->menu();
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        action->disconnect(menuMapper);
    }
    menu->clear();
}

void VantButtonPath::buildRow()
{
    setColumnCount(qMax(0, 2 * m_names.size() - 1));
    for (int column = 0; column < columnCount(); ++column) {
        setCellWidget(0, column, isFolder(column) ? createNameButton(column) : createArrow());
    }
    // From the end: a button put at the end of a long row has Qt search the whole chain.
    for (int column = columnCount() - 1; column >= 0; column -= 2) {
        QWidget* button = cellWidget(0, column);
        setColumnWidth(column, button->width());
        setTabOrder(changeFolderBtn, button);
    }
}

// Its width is that of a text in the application's font, so it is measured before the button is the
// bar's.
QPushButton* VantButtonPath::createNameButton(int column)
{
    const QString& name = m_names.at(column / 2);
    auto* button = new QPushButton;
    const int textWidth = QFontMetrics(button->font()).horizontalAdvance(name);
    button->setText(withDoubledAmpersands(name));
    button->setFlat(true);
    button->setAutoDefault(true); // so that Return clicks in windows that are no dialogs
    button->setParent(viewport()); // with a sheet already set, Qt would read that once more
    button->setStyleSheet(getStyleSheet("component.button_path_name_button", false));
    button->setFixedHeight(designPixels(26));
    button->setFixedWidth(designPixels(textWidth + 16));
    connect(button, SIGNAL(clicked(bool)), pathMapper, SLOT(map()));
    pathMapper->setMapping(button, column);
    return button;
}

QPushButton* VantButtonPath::createArrow()
{
    auto* arrow = new QPushButton(viewport());
    arrow->setIcon(getGlobalImage("bt_next", ImageManager::Normal));
    arrow->setFlat(true);
    arrow->setFocusPolicy(Qt::NoFocus); // there is nothing to click
    arrow->setStyleSheet(getStyleSheet("component.button_path_arrow", false));
    arrow->setFixedSize(designPixels(6), designPixels(28));
    return arrow;
}

void VantButtonPath::updateColumnSize()
{
    int totalWidth = 0;
    for (int column = 0; column < columnCount(); ++column) {
        if (!isFolder(column)) {
            setColumnWidth(column, designPixels(6));
        }
        totalWidth += columnWidth(column);
    }
    updateGeometries(); // else the scroll bar learns of the widths only later
    if (viewWidth < totalWidth) {
        setChangeFolderBtn(totalWidth);
    }
}

void VantButtonPath::setChangeFolderBtn(int totalWidth)
{
    changeFolderBtn->show();
    clearMenu();
    QMenu* menu = changeFolderBtn->menu();
    const int hiddenWidth = totalWidth - viewWidth;
    const int coveredWidth = hiddenWidth + changeFolderBtn->geometry().right();
    int passed = 0;
    for (int column = 0; column < columnCount(); ++column) {
        const int end = passed + columnWidth(column);
        if (isFolder(column)) {
            auto* action = new QAction(withDoubledAmpersands(m_names.value(column / 2)), menu);
            menu->addAction(action);
            connect(action, SIGNAL(triggered(bool)), menuMapper, SLOT(map()));
            menuMapper->setMapping(action, column);
            QWidget* button = cellWidget(0, column);
            if (button && end <= coveredWidth) {
                // The menu leads there, so that the Tab key need not stop where nobody sees it.
                button->setFocusPolicy(Qt::NoFocus);
            }
            if (end > hiddenWidth) {
                break;
            }
        }
        passed = end;
    }
    horizontalScrollBar()->setValue(horizontalScrollBar()->maximum());
}

QString VantButtonPath::getPath(int btn_id)
{
    if (btn_id < 0) {
        return {};
    }
    const QString path = QStringList(m_names.mid(0, btn_id / 2 + 1)).join(QLatin1Char('/'));
    return isFolder(btn_id) ? path : path + QLatin1Char('/');
}

void VantButtonPath::slotUpdatePath(QString path)
{
    refresh(path);
}

void VantButtonPath::slotPathBarClicked(int btn_id)
{
    const auto leftToThisClick = m_leftToClicks; // a slot may delete the bar
    Q_EMIT sigUpdatePath(getPath(btn_id));
}

// The table takes a button that the pointer is over for the editor of its cell, and would give it the focus.
bool VantButtonPath::edit(const QModelIndex& /*index*/, EditTrigger /*trigger*/, QEvent* /*event*/)
{
    return false;
}

// What the buttons leave would move among the cells.
void VantButtonPath::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
}

/** The column of @p widget, the end of the row for the rest of the bar, and -1 for what is outside. */
int VantButtonPath::columnOf(const QWidget* widget) const
{
    if (!isAncestorOf(widget)) {
        return -1;
    }
    for (int column = 0; column < columnCount(); ++column) {
        if (cellWidget(0, column) == widget) {
            return column;
        }
    }
    return endOfRow;
}

/** Gives the focus to the name in @p column or the last one before it, or to the menu that it is in. */
void VantButtonPath::focusColumn(int column)
{
    QWidget* target = cellWidget(0, qMin(column, columnCount() - 1));
    if (!target) {
        return;
    }
    if (target->focusPolicy() == Qt::NoFocus) {
        target = changeFolderBtn;
    }
    target->setFocus(Qt::OtherFocusReason);
}
