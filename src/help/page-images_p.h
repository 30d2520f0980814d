#pragma once

#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <QTextObjectInterface>
#include <QVariant>

class QTextBrowser;

namespace vantkit::internal {

/** Where the page that a browser shows comes from, and with it what it may read. */
enum class PageOrigin {
    Source, ///< QTextBrowser::setSource(), and what that allows
    Text, ///< HtmlTextBrowser::setText()
    TextWithBase, ///< the same, with images from the web
};

/**
 * The images of the page that a browser shows, and of no other page. Their sizes are design pixels, be they
 * the images' own or told by the page.
 */
class PageImages : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    explicit PageImages(QTextBrowser* browser);

    /** Another page comes. */
    void startPage(PageOrigin origin);

    PageOrigin origin() const { return m_origin; }

    /** What is known of @p image holds no longer; it is looked for anew. */
    void forget(const QString& image);

    /** What the page gets when it asks for @p name, an image or a style sheet. */
    QVariant resource(int type, const QUrl& name) const;

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& place, QTextDocument* document, int position,
        const QTextFormat& format) override;

private Q_SLOTS:
    void forgetAll();

private:
    QString fileOf(const QString& image) const;
    QPixmap read(const QString& image, QTextDocument* document) const;
    QPixmap picture(const QString& image, QTextDocument* document);

    QTextBrowser* m_browser;
    QHash<QString, QPixmap> m_pictures; ///< null for those that are missing
    PageOrigin m_origin = PageOrigin::Source;
};

} // namespace vantkit::internal
