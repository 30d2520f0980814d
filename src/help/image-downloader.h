#pragma once

#include "vantkit-export.h"

#include <QObject>
#include <QString>

class QNetworkAccessManager;
class QNetworkReply;

/**
 * Fetches one image from the web into one file. HtmlTextBrowser makes one for each image of a page.
 *
 * There is no time limit. Deleting it ends a download that still runs, without a signal.
 */
class VANTKIT_EXPORT ImageDownloader : public QObject
{
    Q_OBJECT

public:
    /**
     * Will fetch @p address into the file @p path, whose folder has to exist. What is there then, a link or
     * a pipe too, makes way for a new file. Starts nothing yet.
     */
    ImageDownloader(const QString& path, const QString& address, QObject* parent = nullptr);
    ~ImageDownloader() override;

    /**
     * Starts the download, once and for all. A URL that leads nowhere ends as a failed download, and so does
     * a file on another machine.
     */
    void start();

    /** Whether the answer has come and has been dealt with, well or not. */
    bool isFinished();

Q_SIGNALS:
    /**
     * The download has ended. @p url is the URL as it was given; @p res is 0 if the network did its part,
     * also if the file could not be written, and -1 if it did not.
     */
    void sigDownloadFinish(QString url, int res);

private Q_SLOTS:
    void slotFinishDownload(QNetworkReply* reply);

private:
    QString savePath;
    QString url;
    QNetworkAccessManager* networkManager = nullptr;
    bool finished = false;
};
