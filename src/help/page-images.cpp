#include "help/page-files_p.h"
#include "help/page-images_p.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>

namespace vantkit::internal {

namespace {

/** What is in a URL of the form "data:[TYPE][;base64],CONTENT". */
QByteArray contentIn(const QUrl& dataUrl)
{
    const QByteArray text = dataUrl.toEncoded();
    const int comma = text.indexOf(',');
    const QByteArray content = QByteArray::fromPercentEncoding(text.mid(comma + 1));
    return text.left(comma).endsWith(";base64") ? QByteArray::fromBase64(content) : content;
}

QPixmap signOfMissing()
{
    return QPixmap(QStringLiteral(":/qt-project.org/styles/commonstyle/images/file-16.png"));
}

/** The size that the page gives to a picture of the size @p own. */
QSizeF sizeOnPage(const QTextImageFormat& format, const QSizeF& own)
{
    const bool hasWidth = format.hasProperty(QTextFormat::ImageWidth);
    const bool hasHeight = format.hasProperty(QTextFormat::ImageHeight);
    if (hasWidth && hasHeight) {
        return { format.width(), format.height() };
    }
    if (hasWidth) {
        return own * (format.width() / own.width());
    }
    return hasHeight ? own * (format.height() / own.height()) : own;
}

// As text has its size from what it is drawn on, which may be a printer.
QSizeF scaledTo(const QTextDocument* document, const QSizeF& size)
{
    const QPaintDevice* device = document->documentLayout()->paintDevice();
    const double scale = (device ? device->logicalDpiY() : 96) / 96.0;
    const auto pixels = [scale](qreal n) { return qRound(qBound(0.0, n * scale, qreal(QWIDGETSIZE_MAX))); };
    return { qreal(pixels(size.width())), qreal(pixels(size.height())) };
}

QSizeF ownSize(const QPixmap& picture)
{
    return QSizeF(picture.size()) / picture.devicePixelRatioF();
}

} // namespace

PageImages::PageImages(QTextBrowser* browser)
    : QObject(browser)
    , m_browser(browser)
{ }

// An application may have replaced the document, and with it the layout.
void PageImages::startPage(PageOrigin origin)
{
    m_origin = origin;
    const QTextDocument* document = m_browser->document();
    connect(document, SIGNAL(contentsChange(int,int,int)), this, SLOT(forgetAll()), Qt::UniqueConnection);
    QAbstractTextDocumentLayout* layout = document->documentLayout();
    if (layout->handlerForObject(QTextFormat::ImageObject) != this) {
        layout->registerHandler(QTextFormat::ImageObject, this);
    }
}

void PageImages::forgetAll()
{
    m_pictures.clear();
}

void PageImages::forget(const QString& image)
{
    m_pictures.remove(image);
}

QString PageImages::fileOf(const QString& image) const
{
    return m_origin == PageOrigin::Source
        ? QString()
        : imageFileIn(m_browser->searchPaths(), image, m_origin == PageOrigin::TextWithBase);
}

// What is refused is empty, and not null, or else the document would look for a file of that name by itself.
QVariant PageImages::resource(int type, const QUrl& name) const
{
    QByteArray content("");
    QFile file(fileOf(name.toString()));
    if (name.scheme() == QLatin1String("data")) {
        content += contentIn(name);
    } else if (!file.fileName().isEmpty() && file.open(QIODevice::ReadOnly)) {
        content += file.readAll();
    }
    if (type != QTextDocument::ImageResource) {
        return content;
    }
    QBuffer buffer(&content);
    const QPixmap image = readImage(&buffer);
    return image.isNull() ? QVariant(QByteArray("")) : QVariant(image);
}

// What the page has no file for may be the application's own: a resource of the program or of the document.
QPixmap PageImages::read(const QString& image, QTextDocument* document) const
{
    QFile file(fileOf(image));
    if (!file.fileName().isEmpty()) {
        return readImage(&file);
    }
    const QUrl url(image.startsWith(QLatin1String(":/")) ? QStringLiteral("qrc") + image : image);
    return document->resource(QTextDocument::ImageResource, url).value<QPixmap>();
}

QPixmap PageImages::picture(const QString& image, QTextDocument* document)
{
    if (!m_pictures.contains(image)) {
        m_pictures.insert(image, read(image, document));
    }
    return m_pictures.value(image);
}

QSizeF PageImages::intrinsicSize(QTextDocument* document, int /*position*/, const QTextFormat& format)
{
    const QTextImageFormat image = format.toImageFormat();
    const QPixmap shown = picture(image.name(), document);
    return scaledTo(document, sizeOnPage(image, ownSize(shown.isNull() ? signOfMissing() : shown)));
}

void PageImages::drawObject(QPainter* painter, const QRectF& place, QTextDocument* document, int /*position*/,
    const QTextFormat& format)
{
    const QPixmap shown = picture(format.toImageFormat().name(), document);
    const QPixmap sign = signOfMissing();
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    if (shown.isNull()) {
        painter->drawPixmap(QRectF(place.topLeft(), scaledTo(document, ownSize(sign))), sign, sign.rect());
    } else {
        painter->drawPixmap(place, shown, shown.rect());
    }
    painter->restore();
}

} // namespace vantkit::internal
