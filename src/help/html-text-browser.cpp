#include "help/html-text-browser.h"

#include "help/image-downloader.h"

#include <QDir>
#include <QFile>
#include <QPixmap>
#include <QPointer>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>

#include <optional>
#include <utility>

namespace {

const QLatin1String imageFolderName("corvanta_help/image");
const QLatin1String imageTag("<img");
const QLatin1String parentForm("../image/"); // how a page names an image, besides its bare name
const int longestBase = 2048; // no server takes more, and the page would have it repeated for each image

QString imageFolder()
{
    return QDir::tempPath() + QLatin1Char('/') + imageFolderName;
}

struct Span
{
    int begin;
    int end; ///< the closing quote
};

/** The value of the first attribute in @p text from @p position that opens with @p opening and its quote. */
std::optional<Span> findValue(const QString& text, QLatin1String opening, int position)
{
    const int found = text.indexOf(opening, position);
    if (found == -1) {
        return {};
    }
    const int begin = found + opening.size();
    const int end = text.indexOf(QLatin1Char('"'), begin);
    if (end == -1) {
        return {};
    }
    return Span { begin, end };
}

QString textIn(const QString& text, Span span)
{
    return text.mid(span.begin, span.end - span.begin);
}

QString fileNameOf(const QString& source)
{
    return source.mid(source.lastIndexOf(QLatin1Char('/')) + 1);
}

// Windows has folders and drives in more than the slash, and its devices lie in every folder. The rule holds
// on all systems.
bool leadsElsewhere(const QString& fileName)
{
    static const QRegularExpression elsewhere(
        QStringLiteral(
            R"([\\:\x00-\x1f]|^(con|prn|aux|nul|conin\$|conout\$|(com|lpt)[0-9\xb9\xb2\xb3]) *(\.|$))"),
        QRegularExpression::CaseInsensitiveOption);
    return elsewhere.match(fileName).hasMatch();
}

// The way out of the folder and back is how pages name their images. Without a usable name it leads to the
// folder itself, which cannot be written to.
QString savePathOf(const QString& fileName)
{
    return imageFolder() + QStringLiteral("/../image/") + (leadsElsewhere(fileName) ? QString() : fileName);
}

} // namespace

HtmlTextBrowser::HtmlTextBrowser(QWidget* parent)
    : QTextBrowser(parent)
{ }

HtmlTextBrowser::~HtmlTextBrowser() = default;

void HtmlTextBrowser::setText(const QString& text)
{
    if (Qt::mightBeRichText(text)) {
        const std::optional<Span> base = findValue(text, QLatin1String("<base href=\""), 0);
        if (base && base->end - base->begin <= longestBase) {
            baseUrl = textIn(text, *base);
            QDir(QDir::tempPath()).mkpath(imageFolderName);
            setSearchPaths(QStringList(imageFolder()) + searchPaths());
            startDownloads(text, base->end);
        }
    }
    QTextEdit::setText(text);
}

void HtmlTextBrowser::startDownloads(const QString& text, int position)
{
    QSet<QString> seen;
    for (int image = text.indexOf(imageTag, position); image != -1;
         image = text.indexOf(imageTag, position)) {
        const std::optional<Span> value = findValue(text, QLatin1String("src=\""), image);
        if (!value) {
            return;
        }
        position = value->begin;
        const QString source = textIn(text, *value);
        if (!seen.contains(source)) {
            seen.insert(source);
            startDownload(source);
        }
    }
}

// A downloader goes when it has ended, or else with the browser. One for the same image of an earlier page
// only loses its entry.
void HtmlTextBrowser::startDownload(const QString& source)
{
    const QString url = baseUrl + source;
    const QString fileName = fileNameOf(source);
    auto* downloader = new ImageDownloader(savePathOf(fileName), url);
    connect(
        downloader, SIGNAL(sigDownloadFinish(QString,int)), this, SLOT(slotDownloadFinished(QString,int)));
    connect(downloader, SIGNAL(sigDownloadFinish(QString,int)), downloader, SLOT(deleteLater()));
    connect(this, SIGNAL(destroyed()), downloader, SLOT(deleteLater()));
    downloaders[url] = downloader;
    fileNames[url] = fileName;
    downloader->start();
}

void HtmlTextBrowser::slotDownloadFinished(QString url, int res)
{
    downloaders.remove(url);
    if (res == 0) {
        showSoon(fileNames.value(url));
    }
    reloadWhereItStands();
}

// Reloading goes to the top of the page, and the user may be reading on.
void HtmlTextBrowser::reloadWhereItStands()
{
    const int across = horizontalScrollBar()->value();
    const int down = verticalScrollBar()->value();
    const QPointer<HtmlTextBrowser> self(this);
    reload();
    if (!self) {
        return; // destroyed by someone who listens to the signals of the browser
    }
    horizontalScrollBar()->setValue(across);
    verticalScrollBar()->setValue(down);
}

// Text without a source has nothing to reload, and keeps what it has once seen of a file. Images that arrive
// together are shown together: each time the text is laid out anew.
void HtmlTextBrowser::showSoon(const QString& fileName)
{
    if (arrived.isEmpty()) {
        QMetaObject::invokeMethod(this, "slotShowArrivedImages", Qt::QueuedConnection);
    }
    arrived.insert(fileName);
}

void HtmlTextBrowser::slotShowArrivedImages()
{
    const QSet<QString> files = std::exchange(arrived, {});
    QHash<QString, bool> shown;
    std::optional<Span> changed;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat format = fragment.charFormat();
            const QString image = format.toImageFormat().name();
            if (!format.isImageFormat() || !files.contains(fileNameOf(image))) {
                continue;
            }
            if (!shown.contains(image)) {
                shown[image] = showFromDisk(image);
            }
            if (shown.value(image)) {
                changed = Span { changed ? changed->begin : fragment.position(),
                    fragment.position() + fragment.length() };
            }
        }
    }
    if (changed) {
        document()->markContentsDirty(changed->begin, changed->end - changed->begin);
    }
}

// The document would take the name for a URL, and not find a file with a percent sign or a question mark in
// its name.
bool HtmlTextBrowser::showFromDisk(const QString& image)
{
    const QString fileName = fileNameOf(image);
    QFile file(imageFolder() + QLatin1Char('/') + fileName);
    QPixmap pixmap;
    if ((image != fileName && image != parentForm + fileName) || !file.open(QIODevice::ReadOnly)
        || !pixmap.loadFromData(file.readAll())) {
        return false;
    }
    document()->addResource(QTextDocument::ImageResource, QUrl(image), pixmap);
    return true;
}
