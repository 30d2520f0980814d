#pragma once

#include "vantkit-export.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QTextBrowser>

class ImageDownloader;

namespace vantkit::internal {
class PageImages;
}

/**
 * A text browser that fetches the images of a page from the web.
 *
 * A page that names its place on the web in a `<base href="...">` has the images behind that tag downloaded
 * to the folder `corvanta_help/image` under QDir::tempPath(), which comes first in searchPaths(). The text
 * shows at once, and each image as soon as it is there. In the page, an image is best called `../image/NAME`
 * or just `NAME`: under another relative name it is fetched, but not found again.
 *
 * The images are looked for by plain search: `<base href="`, `<img` and `src="` are to be written so, in
 * lower case and with double quotes. The address of an image is the base and the source written one after
 * the other, so a base normally ends in a slash.
 *
 * All images of a page are fetched at once, and each that waits takes a thread and two of the process's
 * descriptors. When they run out, Qt ends the process; Linux gives a process 1024 of them, which is not
 * enough for 500 images. Divide such a page, or raise the limit when the program starts (setrlimit).
 *
 * Images belong to the page that is shown, and go with it. They are files in searchPaths(), under a relative
 * name, the fetched ones only for a page with a base; resources of the program and of the document; or
 * `data:` URLs. Their sizes are design pixels, also those told by the page. One of more than 25 million
 * pixels counts as missing, and so does an icon file (.ico), which does not tell its size.
 *
 * A page can write nothing outside of the folder: an image with a back slash, a colon or a control character
 * in its name, or with the name of a device of Windows, is fetched and not saved. A base of more than 2048
 * characters counts as none.
 */
class VANTKIT_EXPORT HtmlTextBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    /** An empty browser, which fetches nothing until setText(). */
    explicit HtmlTextBrowser(QWidget* parent = nullptr);

    /** Downloads that still run end with the browser. */
    ~HtmlTextBrowser() override;

    /**
     * Shows @p text, rich or plain, and starts the downloads of its images. Each image of each page is
     * fetched anew; one that fails stays missing, and nothing is said about it.
     *
     * It stands in front of QTextEdit::setText(), which is not virtual and fetches nothing.
     */
    void setText(const QString& text);

    /** What the page may read, by the rules above; for a page of setSource(), by those of QTextBrowser. */
    QVariant loadResource(int type, const QUrl& name) override;

public Q_SLOTS:
    /**
     * What BrowserWindow does with a click on @p link. A link to a part of the page scrolls there. A page
     * that is found in searchPaths(), and not above them, is shown as with setText(). Any other relative
     * link is taken from the base of the page that is shown. Only http, https and mailto then go to the
     * system; any other link does nothing, and what the browser shows stays.
     *
     * A browser of your own has to be told: after setOpenLinks(false) connect anchorClicked(QUrl) to this.
     */
    void followLink(const QUrl& link);

protected Q_SLOTS:
    /** The download of @p url has ended, well or not. */
    void slotDownloadFinished(QString url, int res);

private Q_SLOTS:
    void slotShowArrivedImages();

private:
    void startDownloads(const QString& text, int position);
    void startDownload(const QString& source);
    void reloadWhereItStands();
    void showSoon(const QString& fileName);
    void scrollToPart(const QString& part);

    QString baseUrl;
    QMap<QString, ImageDownloader*> downloaders;
    vantkit::internal::PageImages* pageImages;

    // Of the page that is shown:
    QString pageBase; ///< empty if it has none
    QHash<QString, QString> fileNames; ///< by URL, what its images are saved as

    QSet<QString> arrived; ///< names of image files that may not show yet
};
