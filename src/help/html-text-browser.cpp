#include "help/html-text-browser.h"

#include "help/image-downloader.h"
#include "help/page-files_p.h"
#include "help/page-images_p.h"

#include <QDesktopServices>
#include <QDir>
#include <QPointer>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>

#include <optional>
#include <utility>

using namespace vantkit::internal;

namespace {

const QLatin1String imageTag("<img");
const int longestBase = 2048; // no server takes more, and the page would have it repeated for each image

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

bool leavesProgram(const QUrl& address)
{
    static const QStringList schemes = { QStringLiteral("http"), QStringLiteral("https"),
        QStringLiteral("mailto") };
    return schemes.contains(address.scheme());
}

} // namespace

HtmlTextBrowser::HtmlTextBrowser(QWidget* parent)
    : QTextBrowser(parent)
    , pageImages(new PageImages(this))
{ }

HtmlTextBrowser::~HtmlTextBrowser() = default;

void HtmlTextBrowser::setText(const QString& text)
{
    pageBase.clear();
    fileNames.clear();
    std::optional<Span> base;
    if (Qt::mightBeRichText(text)) {
        base = findValue(text, QLatin1String("<base href=\""), 0);
    }
    if (base && base->end - base->begin <= longestBase) {
        baseUrl = textIn(text, *base);
        pageBase = baseUrl;
        QDir().mkpath(imageFolder());
        setSearchPaths(QStringList(imageFolder()) + searchPaths());
        pageImages->startPage(PageOrigin::TextWithBase);
        startDownloads(text, base->end);
    } else {
        pageImages->startPage(PageOrigin::Text);
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
    auto* downloader = new ImageDownloader(savePathOf(source), url);
    connect(
        downloader, SIGNAL(sigDownloadFinish(QString,int)), this, SLOT(slotDownloadFinished(QString,int)));
    connect(downloader, SIGNAL(sigDownloadFinish(QString,int)), downloader, SLOT(deleteLater()));
    connect(this, SIGNAL(destroyed()), downloader, SLOT(deleteLater()));
    downloaders[url] = downloader;
    fileNames[url] = fileNameOf(source);
    downloader->start();
}

// It may be told by an earlier downloader of the same URL, whose entry is that of the later one, or by hand.
// sender() is asked last, as it looks for the one that ended among all that are there.
void HtmlTextBrowser::slotDownloadFinished(QString url, int res)
{
    ImageDownloader* latest = downloaders.value(url);
    if (latest && (latest->isFinished() || !qobject_cast<ImageDownloader*>(sender()))) {
        downloaders.remove(url);
        latest->deleteLater();
    }
    if (res == 0 && fileNames.contains(url)) {
        showSoon(fileNames.value(url));
    }
    if (source().isEmpty()) { // or else it would not be the page of setText() that is loaded again
        reloadWhereItStands();
    }
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

// Images that arrive together are shown together: each time the text is laid out anew.
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
    std::optional<Span> changed;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextImageFormat format = fragment.charFormat().toImageFormat();
            if (format.isValid() && files.contains(fileNameOf(format.name()))) {
                pageImages->forget(format.name());
                changed = Span { changed ? changed->begin : fragment.position(),
                    fragment.position() + fragment.length() };
            }
        }
    }
    if (changed) {
        document()->markContentsDirty(changed->begin, changed->end - changed->begin);
    }
}

QVariant HtmlTextBrowser::loadResource(int type, const QUrl& name)
{
    if (type == QTextDocument::HtmlResource || type == QTextDocument::MarkdownResource) {
        pageImages->startPage(PageOrigin::Source);
    }
    const bool isOfText = pageImages->origin() != PageOrigin::Source && name.scheme() != QLatin1String("qrc");
    return isOfText ? pageImages->resource(type, name) : QTextBrowser::loadResource(type, name);
}

void HtmlTextBrowser::followLink(const QUrl& link)
{
    const QString part = link.fragment(QUrl::FullyDecoded);
    if (link.adjusted(QUrl::RemoveFragment).isEmpty()) {
        scrollToPart(part);
        return;
    }
    const QString file = pageFileIn(searchPaths(), link);
    const std::optional<QString> page = file.isEmpty() ? std::nullopt : readPage(file);
    const QUrl address = QUrl(pageBase).resolved(link);
    if (page) {
        setText(*page);
        scrollToPart(part);
    } else if (leavesProgram(address)) {
        QDesktopServices::openUrl(address);
    }
}

void HtmlTextBrowser::scrollToPart(const QString& part)
{
    if (part.isEmpty()) {
        verticalScrollBar()->setValue(0);
    } else {
        scrollToAnchor(part);
    }
}
