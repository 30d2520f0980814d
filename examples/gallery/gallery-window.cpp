#include "gallery-window.h"

#include "controls.h"
#include "help.h"
#include "languages.h"
#include "page.h"
#include "texts.h"
#include "theme.h"

#include <vantkit-qt/vantkit.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QStyle>
#include <QThread>
#include <QVBoxLayout>

#include <utility>

namespace gallery {

namespace {

const int windowWidth = 1100;
const int windowHeight = 720;
const int sidebarWidth = 216;
const int widestPage = 960;

// Menus and lists hold the keyboard and the pointer, and would lie under a window that is raised.
void closePopups()
{
    while (QWidget* popup = QApplication::activePopupWidget()) {
        if (!popup->close()) {
            return;
        }
    }
}

/** One line of text, cut short with an ellipsis where it does not fit. */
class ShortenedLabel : public QLabel
{
public:
    ShortenedLabel()
    {
        setTextFormat(Qt::PlainText);
        setMinimumWidth(1);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
        QPainter painter(this);
        style()->drawItemText(&painter, rect(), alignment(), palette(), isEnabled(), shown, foregroundRole());
    }
};

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

GalleryWindow::GalleryWindow(const QString& page, const QString& language)
    : m_index(qMax(0, pageNames().indexOf(page)))
    , m_language(language)
{
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
        &GalleryWindow::openWantedPage);
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

    auto* rows = new QVBoxLayout;
    rows->setSpacing(0);
    rows->addWidget(header());
    rows->addWidget(pageArea(), 1);
    rows->addWidget(footbar());
    columns->addLayout(rows, 1);

    openPage();
}

QWidget* GalleryWindow::sidebar()
{
    QFrame* sidebar = styledFrame("sidebar", "gallery.sidebar");
    sidebar->setFixedWidth(px(sidebarWidth));
    auto* layout = new QVBoxLayout(sidebar);
    layout->setContentsMargins(px(12), px(20), px(12), px(16));
    layout->setSpacing(0);

    auto* brand = new QVBoxLayout;
    brand->setContentsMargins(px(12), 0, px(12), px(20));
    brand->setSpacing(0);
    brand->addWidget(styledLabel(QStringLiteral("vantkit-qt"), "gallery.brand"));
    brand->addWidget(styledLabel(text("window.subtitle"), "gallery.caption"));
    layout->addLayout(brand);

    layout->addWidget(navigation(), 1);
    layout->addWidget(languageSwitch());
    return sidebar;
}

QListWidget* GalleryWindow::navigation()
{
    m_navigation = new QListWidget;
    m_navigation->setAccessibleName(text("window.pages"));
    m_navigation->setStyleSheet(getStyleSheet("gallery.navigation") + getStyleSheet("component.scrollbar"));
    m_navigation->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_navigation->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (const PageInfo& page : pages()) {
        m_navigation->addItem(text(page.name + QStringLiteral(".title")));
    }
    m_navigation->setCurrentRow(m_index);
    connect(m_navigation, &QListWidget::currentRowChanged, this, &GalleryWindow::showPage);
    return m_navigation;
}

QWidget* GalleryWindow::languageSwitch()
{
    auto* area = new QWidget;
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(px(12), px(12), px(12), 0);
    layout->setSpacing(px(4));

    m_languages = new VantComboBox;
    m_languages->setAccessibleName(text("window.language"));
    for (const Language& language : languages()) {
        m_languages->addItem(language.name, language.code);
    }
    m_languages->setCurrentIndex(m_languages->findData(m_language));
    connect(m_languages, QOverload<int>::of(&QComboBox::activated), this,
        [this](int index) { setLanguage(m_languages->itemData(index).toString()); });

    QLabel* label = styledLabel(text("window.language"), "gallery.caption");
    label->setBuddy(m_languages);
    layout->addWidget(label);
    layout->addWidget(m_languages);
    return area;
}

QWidget* GalleryWindow::header()
{
    QFrame* header = styledFrame("header", "gallery.header");
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(px(32), px(20), px(32), px(20));
    layout->setSpacing(px(24));

    m_title = styledLabel({}, "gallery.page_title");
    m_caption = wrappedLabel({}, "gallery.page_caption");
    auto* words = new QVBoxLayout;
    words->setSpacing(px(4));
    words->addWidget(m_title);
    words->addWidget(m_caption);
    layout->addLayout(words, 1);

    m_enabled = new VantCheckBox(text("window.enabled"));
    m_enabled->setChecked(true);
    layout->addWidget(m_enabled);
    return header;
}

QWidget* GalleryWindow::pageArea()
{
    m_scrollArea = new QScrollArea;
    m_scrollArea->setFrameShape(QFrame::NoFrame);
    m_scrollArea->setWidgetResizable(true);
    m_scrollArea->setFocusPolicy(Qt::NoFocus);
    m_scrollArea->setStyleSheet(getStyleSheet("component.scrollbar") + getStyleSheet("gallery.page_area"));
    m_scrollArea->verticalScrollBar()->setSingleStep(px(20));
    m_scrollArea->horizontalScrollBar()->setSingleStep(px(20));
    return m_scrollArea;
}

QWidget* GalleryWindow::footbar()
{
    m_report = new ShortenedLabel;
    m_report->setStyleSheet(getStyleSheet("gallery.caption"));
    m_helpButton = button(text("window.help"), 1);
    m_helpButton->setToolTip(QKeySequence(QKeySequence::HelpContents).toString(QKeySequence::NativeText));
    connect(m_helpButton, &QPushButton::clicked, this, &GalleryWindow::openHelp);
    m_startAgain = button(text("window.start_again"), 1);
    connect(m_startAgain, &QPushButton::clicked, this, &GalleryWindow::openPage);
    m_close = button(text("window.close"), 0);
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);

    auto* bar = new VantFootbar;
    bar->pushLeftWidget(m_report);
    bar->pushRightWidget(m_helpButton);
    bar->pushRightWidget(m_startAgain);
    bar->pushRightWidget(m_close);
    bar->init();
    bar->setMargins(32, 12, 32, 12);
    bar->setSpacing(8);

    QFrame* foot = styledFrame("foot", "gallery.foot");
    auto* layout = new QVBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar);
    return foot;
}

void GalleryWindow::setLanguage(const QString& code)
{
    m_language = code;
    const QString theme = UIPathManager::getInstance().getPath(QStringLiteral("resource_path"));
    ComponentStrings::getInstance().installStrings(componentStrings(theme, code));
    installTexts(code);
    build();
    m_languages->setFocus();
}

void GalleryWindow::showPage(int index)
{
    m_index = index;
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

    m_page = info.create();
    m_page->setMaximumWidth(px(widestPage));
    m_page->setLiveEnabled(m_enabled->isChecked());
    connect(m_enabled, &QCheckBox::toggled, m_page, &Page::setLiveEnabled);
    connect(m_page, &Page::happened, m_report, &QLabel::setText);
    m_scrollArea->setWidget(m_page); // deletes the page before it

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
        m_help = new Help(pages().at(m_index).name, m_language, this); // goes when it is closed
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
        openWantedPage();
    }
}

// A page that has opened a question goes on when it is answered, and has to be there then.
void GalleryWindow::openWantedPage()
{
    if (!m_wanted || !isInMainLoop()) {
        return;
    }
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
