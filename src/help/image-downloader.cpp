#include "help/image-downloader.h"

#include "help/receive-replies_p.h"

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

namespace {

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(content);
        file.close();
    }
}

} // namespace

ImageDownloader::ImageDownloader(const QString& path, const QString& address, QObject* parent)
    : QObject(parent)
    , savePath(path)
    , url(address)
{ }

ImageDownloader::~ImageDownloader()
{
    if (networkManager) {
        networkManager->deleteLater();
        networkManager = nullptr;
    }
}

void ImageDownloader::start()
{
    if (networkManager) {
        return;
    }
    networkManager = new QNetworkAccessManager; // goes in the destructor
    vantkit::internal::receiveReplies(networkManager, this, SLOT(slotFinishDownload(QNetworkReply*)));
    networkManager->get(QNetworkRequest(QUrl(url, QUrl::TolerantMode)));
}

bool ImageDownloader::isFinished()
{
    return finished;
}

void ImageDownloader::slotFinishDownload(QNetworkReply* reply)
{
    reply->deleteLater();
    const bool succeeded = reply->error() == QNetworkReply::NoError;
    if (succeeded) {
        writeFile(savePath, reply->readAll());
    }
    finished = true;
    Q_EMIT sigDownloadFinish(url, succeeded ? 0 : -1);
}
