#include "gallery-window.h"

#include "controls.h"
#include "help.h"
#include "kit.h"
#include "languages.h"
#include "page.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QThread>
#include <QVBoxLayout>

#include <utility>

namespace gallery {

/** The page, which lays itself out for the room that it has. */
class PageArea : public QScrollArea
{
public:
    using QScrollArea::QScrollArea;

    void fit()
    {
        if (auto* page = qobject_cast<Page*>(widget())) {
            page->fitTo(viewport()->width());
        }
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        fit();
        QScrollArea::resizeEvent(event);
    }
};

namespace {

const int windowWidth = 1100;
const int windowHeight = 720;
const int sidebarWidth = 216;
const int scales[] = { 100, 125, 150, 200 }; // per cent

// Menus and lists hold the keyboard and the pointer, and would lie under a window that is raised.
void closePopups()
{
    while (QWidget* popup = QApplication::activePopupWidget()) {
        if (!popup->close()) {
            return;
        }
    }
}

// A new size is told from a widget to the next one around it with each turn of the event loop. This does not
// wait.
void layOut(QWidget* widget)
{
    const QObjectList children = widget->children();
    for (QObject* child : children) {
        if (child->isWidgetType()) {
            layOut(static_cast<QWidget*>(child));
        }
    }
    if (widget->layout()) {
        widget->layout()->activate();
    }
}

// A box that waits for its answer does not come out of its icon along with the window that it blocks.
void showBox()
{
    if (QWidget* box = QApplication::activeModalWidget()) {
        box->setWindowState(box->windowState() & ~Qt::WindowMinimized);
    }
}

// Not in a loop of its own, as a question, a menu and a drag run one until they end.
bool isInMainLoop()
{
    return QThread::currentThread()->loopLevel() <= 1;
}

} // namespace

GalleryWindow::GalleryWindow(const Options& options)
    : m_index(qMax(0, pageNames().indexOf(options.page)))
    , m_options(options)
{
    QApplication::setLayoutDirection(options.rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    setObjectName(QStringLiteral("window"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(getStyleSheet("gallery.window"));
    QApplication::setWindowIcon(getGlobalImage("app_img")); // for messages without a parent, too
    setMinimumSize(px(720), px(400));
    resize(px(windowWidth), px(windowHeight));

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    build();
    m_navigation->setFocus();

    auto* help = new QShortcut(QKeySequence::HelpContents, this); // a child of the window
    connect(help, &QShortcut::activated, this, &GalleryWindow::openHelp);

    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
        &GalleryWindow::takeUpWhatWaits);
}

// Everything is made anew when the language changes: the kit's widgets take their texts when they are made.
void GalleryWindow::build()
{
    if (m_content) {
        m_content->hide();
        m_content->deleteLater(); // one of its widgets may have asked for this
    }
    m_content = new QWidget;
    layout()->addWidget(m_content);

    auto* columns = new QHBoxLayout(m_content);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(0);
    columns->addWidget(sidebar());
    QFrame* line = styledFrame("line", "gallery.line", m_content);
    line->setFixedWidth(qMax(1, px(1)));
    columns->addWidget(line);

    auto* rows = new QVBoxLayout;
    rows->setSpacing(0);
    rows->addWidget(header());
    m_brokenTheme = wrappedLabel({}, "gallery.broken_theme");
    m_brokenTheme->setTextFormat(Qt::PlainText);
    m_brokenTheme->setVisible(false);
    rows->addWidget(m_brokenTheme);
    rows->addWidget(pageArea(), 1);
    rows->addWidget(footbar());
    columns->addLayout(rows, 1);

    openPage();
}

QWidget* GalleryWindow::sidebar()
{
    QFrame* sidebar = styledFrame("sidebar", "gallery.sidebar", m_content);
    sidebar->setFixedWidth(px(sidebarWidth));
    auto* layout = new QVBoxLayout(sidebar);
    layout->setContentsMargins(px(12), px(20), px(12), px(16));
    layout->setSpacing(0);

    auto* brand = new QVBoxLayout;
    brand->setContentsMargins(px(12), 0, px(12), px(20));
    brand->setSpacing(0);
    brand->addWidget(styledLabel(QStringLiteral("vantkit-qt"), "gallery.brand", sidebar));
    brand->addWidget(styledLabel(text("window.subtitle"), "gallery.caption", sidebar));
    layout->addLayout(brand);

    layout->addWidget(navigation(sidebar), 1);
    layout->addWidget(switches(sidebar));
    return sidebar;
}

QListWidget* GalleryWindow::navigation(QWidget* parent)
{
    m_navigation = new QListWidget(parent);
    m_navigation->setAccessibleName(text("window.pages"));
    m_navigation->ensurePolished(); // or its scroll bars would keep the look without this sheet
    m_navigation->setStyleSheet(getStyleSheet("gallery.navigation") + getStyleSheet("component.scrollbar"));
    m_navigation->setUniformItemSizes(true);
    m_navigation->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_navigation->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (const PageInfo& page : pages()) {
        m_navigation->addItem(text(page.name + QStringLiteral(".title")));
    }
    m_navigation->setCurrentRow(m_index);
    connect(m_navigation, &QListWidget::currentRowChanged, this, &GalleryWindow::showPage);
    return m_navigation;
}

QWidget* GalleryWindow::switches(QWidget* parent)
{
    auto* area = new QWidget(parent);
    auto* grid = new QGridLayout(area);
    grid->setContentsMargins(px(12), px(12), 0, 0);
    grid->setHorizontalSpacing(px(8));
    grid->setVerticalSpacing(px(4));
    grid->setColumnStretch(0, 5);
    grid->setColumnStretch(1, 4);
    for (const int gap : { 2, 5 }) {
        grid->setRowMinimumHeight(gap, px(2));
    }
    addLanguageSwitch(grid);
    addThemeSwitch(grid);
    addScaleSwitch(grid);
    addDirectionSwitch(grid);
    return area;
}

VantComboBox* GalleryWindow::addSwitch(QGridLayout* grid, const char* key, const QRect& place)
{
    // Made where it is to lie, as a page is.
    auto* box = new VantComboBox(grid->parentWidget());
    box->setAccessibleName(text(key));
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    QLabel* label = styledLabel(text(key), "gallery.caption", grid->parentWidget());
    label->setBuddy(box);
    grid->addWidget(label, place.y(), place.x(), 1, place.width());
    grid->addWidget(box, place.y() + 1, place.x(), 1, place.width());
    return box;
}

void GalleryWindow::addLanguageSwitch(QGridLayout* grid)
{
    m_languages = addSwitch(grid, "window.language", { 0, 0, 2, 1 });
    for (const Language& language : languages()) {
        m_languages->addItem(language.name, language.code);
    }
    m_languages->setCurrentIndex(m_languages->findData(m_options.language));
    connect(m_languages, QOverload<int>::of(&QComboBox::activated), this,
        [this](int index) { setLanguage(m_languages->itemData(index).toString()); });
}

// The kit reads its paths and the display once, so another theme and another scale take another process.
void GalleryWindow::addThemeSwitch(QGridLayout* grid)
{
    VantComboBox* box = addSwitch(grid, "window.theme", { 0, 3, 1, 1 });
    QStringList folders = m_options.themes;
    for (const QString& name : VantTheme::installed()) {
        folders.prepend(VantTheme::of(name).folder());
    }
    for (const QString& folder : qAsConst(folders)) {
        const QString path = QDir(folder).canonicalPath();
        if (box->findData(path) < 0) {
            box->addItem(QFileInfo(path).fileName(), path);
        }
    }
    const int shown = box->findData(QDir(m_options.themes.constLast()).canonicalPath());
    box->setCurrentIndex(shown);
    connect(box, QOverload<int>::of(&QComboBox::activated), this, [this, box, shown](int index) {
        if (index != shown) {
            Options wanted = m_options;
            const QString folder = box->itemData(index).toString();
            wanted.themes.removeAll(folder);
            wanted.themes << folder;
            Q_EMIT startAnew(wanted, 0);
        }
    });
}

void GalleryWindow::addScaleSwitch(QGridLayout* grid)
{
    VantComboBox* box = addSwitch(grid, "window.scale", { 1, 3, 1, 1 });
    const int shown = qRound(DPIinfo::getInstance().getDPI() * 100);
    for (int scale : scales) {
        box->addItem(QStringLiteral("%1%").arg(scale), scale);
    }
    if (box->findData(shown) < 0) {
        box->insertItem(0, QStringLiteral("%1%").arg(shown), shown);
    }
    box->setCurrentIndex(box->findData(shown));
    connect(box, QOverload<int>::of(&QComboBox::activated), this, [this, box, shown](int index) {
        const int scale = box->itemData(index).toInt();
        if (scale != shown) {
            Q_EMIT startAnew(m_options, scale * 96 / 100);
        }
    });
}

void GalleryWindow::addDirectionSwitch(QGridLayout* grid)
{
    m_direction = new VantCheckBox(text("window.right_to_left"), grid->parentWidget());
    m_direction->setChecked(m_options.rightToLeft);
    connect(m_direction, &QCheckBox::clicked, this, &GalleryWindow::setRightToLeft);
    grid->addWidget(m_direction, 6, 0, 1, 2);
}

QWidget* GalleryWindow::header()
{
    QFrame* header = styledFrame("header", "gallery.header", m_content);
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(px(32), px(20), px(32), px(20));
    layout->setSpacing(px(24));

    m_title = styledLabel({}, "gallery.page_title", header);
    m_caption = wrappedLabel({}, "gallery.page_caption", header);
    auto* words = new QVBoxLayout;
    words->setSpacing(px(4));
    words->addWidget(m_title);
    words->addWidget(m_caption);
    layout->addLayout(words, 1);

    m_enabled = new VantCheckBox(text("window.enabled"), header);
    m_enabled->setChecked(true);
    layout->addWidget(m_enabled);
    return header;
}

QWidget* GalleryWindow::pageArea()
{
    m_scrollArea = new PageArea(m_content);
    m_scrollArea->setFrameShape(QFrame::NoFrame);
    m_scrollArea->setWidgetResizable(true);
    m_scrollArea->setFocusPolicy(Qt::NoFocus);
    m_scrollArea->ensurePolished(); // as for the navigation
    m_scrollArea->setStyleSheet(getStyleSheet("component.scrollbar") + getStyleSheet("gallery.page_area"));
    m_scrollArea->verticalScrollBar()->setSingleStep(px(20));
    m_scrollArea->horizontalScrollBar()->setSingleStep(px(20));
    return m_scrollArea;
}

QWidget* GalleryWindow::footbar()
{
    m_report = shortenedLabel({}, "gallery.caption");
    m_helpButton = button(text("window.help"), 1);
    m_helpButton->setToolTip(QKeySequence(QKeySequence::HelpContents).toString(QKeySequence::NativeText));
    connect(m_helpButton, &QPushButton::clicked, this, &GalleryWindow::openHelp);
    m_startAgain = button(text("window.start_again"), 1);
    connect(m_startAgain, &QPushButton::clicked, this, &GalleryWindow::openPage);
    m_close = button(text("window.close"), 0);
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);

    QFrame* foot = styledFrame("foot", "gallery.foot", m_content);
    auto* layout = new QVBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* bar = new VantFootbar;
    layout->addWidget(bar);
    bar->pushLeftWidget(m_report);
    bar->pushRightWidget(m_helpButton);
    bar->pushRightWidget(m_startAgain);
    bar->pushRightWidget(m_close);
    bar->init();
    bar->setMargins(32, 12, 32, 12);
    bar->setSpacing(8);
    return foot;
}

void GalleryWindow::setLanguage(const QString& code)
{
    m_options.language = code;
    ComponentStrings::getInstance().installStrings(currentTheme().strings(code));
    installTexts(code);
    build();
    m_languages->setFocus();
}

void GalleryWindow::setRightToLeft(bool rightToLeft)
{
    m_options.rightToLeft = rightToLeft;
    QApplication::setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    build();
    m_direction->setFocus();
}

void GalleryWindow::showPage(int index)
{
    m_index = index;
    m_options.page = pages().at(index).name;
    openPage();
}

void GalleryWindow::openPage()
{
    const PageInfo& info = pages().at(m_index);
    const QString title = text(info.name + QStringLiteral(".title"));
    setWindowTitle(QStringLiteral("%1 – %2").arg(title, text("window.title")));
    m_title->setText(title);
    m_caption->setText(text(info.name + QStringLiteral(".caption")));
    m_report->setText(text("window.hint"));

    m_page = info.create(m_scrollArea->viewport());
    m_page->setLiveEnabled(m_enabled->isChecked());
    connect(m_enabled, &QCheckBox::toggled, m_page, &Page::setLiveEnabled);
    connect(m_page, &Page::happened, m_report, &QLabel::setText);
    m_scrollArea->setWidget(m_page); // deletes the page before it
    m_scrollArea->fit();

    // The page came last to the window; the foot comes last to the keyboard.
    QWidget* last = previousInFocusChain();
    while (last->focusPolicy() == Qt::NoFocus) {
        last = last->previousInFocusChain(); // Qt puts nothing behind it
    }
    setTabOrder(last, m_helpButton);
    setTabOrder(m_helpButton, m_startAgain);
    setTabOrder(m_startAgain, m_close);
}

void GalleryWindow::openHelp()
{
    if (!m_help || !m_help->isVisible()) {
        m_help = new Help(pages().at(m_index).name, m_options.language, this); // goes when it is closed
        m_help->show();
    }
}

void GalleryWindow::takeUpSecondStart(const QString& page)
{
    closePopups();
    showBox();
    const int index = pageNames().indexOf(page);
    if (index >= 0) {
        m_wanted = index;
        takeUpWhatWaits();
    }
}

void GalleryWindow::takeUpTheme()
{
    m_themeHasChanged = true;
    takeUpWhatWaits();
}

void GalleryWindow::tellBrokenTheme(const QString& message)
{
    m_brokenTheme->setText(message);
    m_brokenTheme->setVisible(true);
}

// A page that has opened a question goes on when it is answered, and has to be there then.
void GalleryWindow::takeUpWhatWaits()
{
    if (!isInMainLoop()) {
        return;
    }
    if (std::exchange(m_themeHasChanged, false) && readThemeAgain(m_options.language)) {
        rebuild();
    }
    if (m_wanted) {
        openWantedPage();
    }
}

void GalleryWindow::rebuild()
{
    const int place = m_scrollArea->verticalScrollBar()->value();
    delete std::exchange(m_content, nullptr); // or it would have the new look, widget by widget, and then go
    setStyleSheet(getStyleSheet("gallery.window"));
    build();
    layOut(this); // down to the height of the page
    layOut(this);
    m_scrollArea->verticalScrollBar()->setValue(place);
    m_navigation->setFocus();
}

void GalleryWindow::openWantedPage()
{
    const int index = *std::exchange(m_wanted, std::nullopt);
    if (index != m_index) {
        delete m_help; // which is that of another page
        m_navigation->setCurrentRow(index);
        m_navigation->setFocus();
    }
}

void GalleryWindow::growToPage()
{
    layOut(m_page);
    // As narrow as a scroll bar leaves it, for the bar goes only when this height is there.
    const QSize shown = m_scrollArea->viewport()->size();
    const int needed = m_page->heightForWidth(qMin(shown.width(), m_page->maximumWidth()));
    resize(width(), height() + qMax(0, needed - shown.height()));
}

void GalleryWindow::enterState(const QString& state)
{
    if (state == QLatin1String("disabled")) {
        m_enabled->setChecked(false);
    } else if (state == QLatin1String("help")) {
        openHelp();
    }
    m_page->enterState(state);
}

void GalleryWindow::settle()
{
    m_page->settle();
    while (m_help && !m_help->isAnswered()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

QWidget* GalleryWindow::opener(const QString& state) const
{
    return m_page->opener(state);
}

} // namespace gallery
