#include "help.h"

#include "controls.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QDir>
#include <QLayout>
#include <QScreen>
#include <QSignalBlocker>
#include <QTextDocument>

namespace gallery {

namespace {

const int windowWidth = 800;
const int windowHeight = 680;
const int margin = 28; // of the text
const int patience = 500; // milliseconds

QString helpFolder()
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    const QString installed =
        QDir::cleanPath(programFolder.filePath(QStringLiteral("../share/vantkit-qt/gallery/help")));
    return QFileInfo(installed).isDir() ? installed : QStringLiteral(GALLERY_SOURCE_HELP);
}

// The help window knows by which other names the folders of some of them go.
QString languageOfHelp(const QString& language)
{
    static const QStringList written = { QStringLiteral("enu"), QStringLiteral("jpn"), QStringLiteral("deu"),
        QStringLiteral("fra"), QStringLiteral("esn"), QStringLiteral("chs") };
    return written.contains(language) ? language : QStringLiteral("enu");
}

HelpContext contextOf(const QString& page, const QString& language)
{
    HelpContext context;
    context.lang = languageOfHelp(language);
    context.helpPath = helpFolder();
    context.link = page + QStringLiteral(".html");
    if (!QFile::exists(context.helpPath + QStringLiteral("/enu/") + context.link)) {
        context.link = QStringLiteral("overview.html");
    }
    context.section = page;
    return context;
}

} // namespace

Help::Help(const QString& page, const QString& language, QWidget* parent)
    : HelpWindow(contextOf(page, language), parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    dress();

    // Nothing flashes up for a page that comes at once.
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &Help::askForPatience);
    connect(textBrowser, &QTextBrowser::textChanged, this, &Help::takeAnswer);
    m_patience.start(patience);
}

void Help::dress()
{
    setWindowTitle(text("window.help"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setStyleSheet(getStyleSheet("gallery.help") + getStyleSheet("component.scrollbar"));
    layout()->setContentsMargins(0, 0, 0, 0);
    textBrowser->setAccessibleName(windowTitle());
    textBrowser->document()->setDocumentMargin(px(margin));
    textBrowser->document()->setDefaultStyleSheet(getStyleSheet("gallery.help_page"));
    textBrowser->setFocus();
    const QSize available = parentWidget()->screen()->availableGeometry().size() * 9 / 10;
    resize(QSize(px(windowWidth), px(windowHeight)).boundedTo(available.expandedTo(parentWidget()->size())));
}

void Help::takeAnswer()
{
    m_patience.stop();
    m_isAnswered = true;
}

void Help::askForPatience()
{
    const QSignalBlocker thisIsNoAnswer(textBrowser);
    textBrowser->setText(text("window.help.fetching"));
}

void Help::fallbackOffline()
{
    textBrowser->setText(text("window.help.missing")); // unless a page takes its place
    HelpWindow::fallbackOffline();
}

} // namespace gallery
