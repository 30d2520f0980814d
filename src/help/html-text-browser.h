#pragma once

#include "vantkit-export.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QTextBrowser>

class ImageDownloader;

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
 * A page can write nothing outside of the folder: an image with a back slash, a colon or a control character
 * in its name, or with the name of a device of Windows, is fetched and not saved. A base of more than 2048
 * characters counts as none.
 */
class VANTKIT_EXPORT HtmlTextBrowser : public QTextBrowser
{
    Q_OBJECT

public:
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
    bool showFromDisk(const QString& image);

    QString baseUrl;
    QMap<QString, ImageDownloader*> downloaders;
    QHash<QString, QString> fileNames; ///< by URL, what images are saved as
    QSet<QString> arrived; ///< names of image files that the page may not show yet
};
