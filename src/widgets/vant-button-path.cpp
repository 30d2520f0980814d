#include "widgets/vant-button-path.h"

#include "image-manager/image-manager.h"
#include "style-manager/style-manager.h"
#include "utils/design-pixels_p.h"

#include <QAction>
#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalMapper>
#include <QToolButton>

#include <algorithm>

using vantkit::internal::designPixels;

namespace {

bool isFolder(int column)
{
    return column % 2 == 0;
}

QString withDoubledAmpersands(QString name)
{
    return name.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString withoutDoubledAmpersands(QString text)
{
    return text.replace(QLatin1String("&&"), QLatin1String("&"));
}

} // namespace

/**
 * A click that is being told. What it passes through has to live until it has returned, whatever the slots
 * do: rebuild the row, run an event loop, delete the bar. A deleteLater() in such a loop would come too
 * early.
 */
class VantButtonPath::Click
{
public:
    Click(VantButtonPath* bar, QObject* clicked)
        : m_bar(bar)
        , m_clicked(clicked)
    {
        m_bar->m_clicks.push_back(this);
    }

    ~Click()
    {
        if (m_bar) {
            m_bar->m_clicks.pop_back();
        }
        for (const QPointer<QObject>& object : m_kept) {
            if (object) {
                object->deleteLater();
            }
        }
    }

    Click(const Click&) = delete;
    Click& operator=(const Click&) = delete;

    QObject* clicked() const { return m_clicked; }

    /** Takes @p object over until the click has returned. */
    void keep(QObject* object) { m_kept.emplace_back(object); }

    void forgetBar() { m_bar = nullptr; }

private:
    VantButtonPath* m_bar;
    QPointer<QObject> m_clicked;
    std::vector<QPointer<QObject>> m_kept;
};

VantButtonPath::VantButtonPath(QWidget* parent)
    : QTableWidget(parent)
    , changeFolderBtn(new QToolButton) // becomes a child of the bar when it is dressed
    , pathMapper(new QSignalMapper(this))
    , menuMapper(new QSignalMapper(this))
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
    // The table would keep the Tab key for moving among its cells, and never let go of it.
    setTabKeyNavigation(false);
    setFixedHeight(designPixels(28));

    dressFolderButton();

    connect(menuMapper, SIGNAL(mapped(int)), this, SLOT(slotPathBarClicked(int)));
    connect(pathMapper, SIGNAL(mapped(int)), this, SLOT(slotPathBarClicked(int)));
    setStyleSheet(getStyleSheet("component.button_path", false));
}

VantButtonPath::~VantButtonPath()
{
    QMenu* menu = changeFolderBtn->menu();
    if (m_clicks.empty()) {
        delete menu;
        return;
    }
    Click* outermost = m_clicks.front();
    for (Click* click : m_clicks) {
        click->forgetBar();
        if (auto* button = qobject_cast<QPushButton*>(click->clicked())) {
            button->hide();
            button->setParent(nullptr);
            outermost->keep(button);
        }
    }
    for (QSignalMapper* mapper : { pathMapper, menuMapper }) {
        mapper->setParent(nullptr);
        outermost->keep(mapper);
    }
    outermost->keep(menu);
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

void VantButtonPath::refresh(QString path)
{
    const int focused = focusedColumn();
    viewWidth = horizontalScrollBar()->pageStep();
    if (focused >= 0) {
        setFocus(Qt::OtherFocusReason); // else it visits another widget on its way
    }
    m_isRebuilding = true;
    changeFolderBtn->hide();
    clearMenu();
    removeButtons();
    clear();
    setColumnCount(0);

    const QStringList names = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (int i = 0; i < names.size(); ++i) {
        if (i > 0) {
            appendColumn(createArrow());
        }
        QPushButton* button = createNameButton(names.at(i), 2 * i);
        appendColumn(button);
        // Qt takes no wider one, and would leave the column as it is.
        setColumnWidth(columnCount() - 1, qMin(button->width(), horizontalHeader()->maximumSectionSize()));
    }
    m_isRebuilding = false;
    updateColumnSize();
    focusColumn(focused);
}

// The table would lay out the whole row with each column that comes; updateColumnSize() has it do so once.
void VantButtonPath::updateGeometries()
{
    if (!m_isRebuilding) {
        QTableWidget::updateGeometries();
    }
}

void VantButtonPath::clearMenu()
{
    QMenu* menu = changeFolderBtn->menu();
    menu->hide();
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        if (keepForItsClick(action)) {
            menu->removeAction(action);
        }
    }
    menu->clear();
}

void VantButtonPath::removeButtons()
{
    while (!buttons.isEmpty()) {
        QPushButton* button = buttons.takeFirst();
        if (keepForItsClick(button)) {
            // The table deletes the widgets of its cells, so it has to believe that this one is gone.
            editorDestroyed(button);
            button->removeEventFilter(this);
            button->hide();
        } else {
            delete button;
        }
    }
}

/** Whether @p object was clicked and the click has not returned. Then it goes when it has, and tells nothing
 * more. */
bool VantButtonPath::keepForItsClick(QObject* object)
{
    const auto click = std::find_if(m_clicks.begin(), m_clicks.end(),
        [object](const Click* candidate) { return candidate->clicked() == object; });
    if (click == m_clicks.end()) {
        return false;
    }
    object->blockSignals(true);
    (*click)->keep(object);
    return true;
}

/** The caller owns the button. */
QPushButton* VantButtonPath::createNameButton(const QString& name, int column)
{
    auto* button = new QPushButton;
    const int textWidth = QFontMetrics(button->font()).horizontalAdvance(name);
    button->setText(withDoubledAmpersands(name));
    button->setFlat(true);
    button->setAutoDefault(true); // so that Return clicks in windows that are no dialogs
    button->setStyleSheet(getStyleSheet("component.button_path_name_button", false));
    button->setFixedHeight(designPixels(26));
    button->setFixedWidth(designPixels(textWidth + 16));
    connect(button, SIGNAL(clicked(bool)), pathMapper, SLOT(map()));
    pathMapper->setMapping(button, column);
    return button;
}

/** The caller owns the button. */
QPushButton* VantButtonPath::createArrow()
{
    auto* arrow = new QPushButton;
    arrow->setIcon(getGlobalImage("bt_next", ImageManager::Normal));
    arrow->setFlat(true);
    arrow->setFocusPolicy(Qt::NoFocus); // there is nothing to click
    arrow->setStyleSheet(getStyleSheet("component.button_path_arrow", false));
    arrow->setFixedSize(designPixels(6), designPixels(28));
    return arrow;
}

/** Puts @p button, which the table then owns, behind the row, and behind the last one for the Tab key as
 * well. */
void VantButtonPath::appendColumn(QPushButton* button)
{
    const int column = columnCount();
    buttons.append(button);
    insertColumn(column);
    setCellWidget(0, column, button);
    if (isFolder(column)) {
        setTabOrder(column == 0 ? static_cast<QWidget*>(changeFolderBtn) : buttons.at(column - 2), button);
    }
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
            auto* action = new QAction(buttons.at(column)->text(), menu);
            menu->addAction(action);
            connect(action, SIGNAL(triggered(bool)), menuMapper, SLOT(map()));
            menuMapper->setMapping(action, column);
            // The menu leads there, so that the Tab key need not stop where nobody sees it.
            if (end <= coveredWidth) {
                buttons.at(column)->setFocusPolicy(Qt::NoFocus);
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
    QString path;
    for (int column = 0; column <= btn_id; ++column) {
        if (isFolder(column)) {
            path += withoutDoubledAmpersands(buttons.at(column)->text());
        } else {
            path += QLatin1Char('/');
        }
    }
    return path;
}

void VantButtonPath::slotUpdatePath(QString path)
{
    refresh(path);
}

void VantButtonPath::slotPathBarClicked(int btn_id)
{
    const Click click(this, clickedObject(btn_id));
    Q_EMIT sigUpdatePath(getPath(btn_id));
}

/** The button or the menu action that column @p btn_id was clicked by; null if the slot was called directly.
 */
QObject* VantButtonPath::clickedObject(int btn_id)
{
    if (sender() == pathMapper) {
        return buttons.value(btn_id);
    }
    if (sender() == menuMapper) {
        return changeFolderBtn->menu()->actions().value(btn_id / 2);
    }
    return nullptr;
}

/** The column of the name that has the focus, the end of the row for the rest of the bar, and -1 for none of
 * it. */
int VantButtonPath::focusedColumn() const
{
    QWidget* focused = window()->focusWidget();
    if (focused == this || focused == changeFolderBtn) {
        return columnCount();
    }
    return buttons.indexOf(qobject_cast<QPushButton*>(focused));
}

/** Gives the focus to the name in @p column or the last one before it, or to the menu that it is in. */
void VantButtonPath::focusColumn(int column)
{
    if (column < 0 || buttons.isEmpty()) {
        return;
    }
    QWidget* target = buttons.at(qMin(column, buttons.size() - 1));
    if (target->focusPolicy() == Qt::NoFocus) {
        target = changeFolderBtn;
    }
    target->setFocus(Qt::OtherFocusReason);
}
