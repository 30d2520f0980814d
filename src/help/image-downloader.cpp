#include "help/image-downloader.h"

#include "help/receive-replies_p.h"

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

namespace {

// Always a new file: what stands there may be another user's link to elsewhere, or a pipe that nobody reads.
void writeFile(const QString& path, const QByteArray& content)
{
    QFile::remove(path);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        file.write(content);
    }
}

// Windows would tell that machine who the user is.
bool isOnAnotherMachine(const QUrl& address)
{
    return address.toLocalFile().startsWith(QLatin1String("//"));
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
    const QUrl address(url, QUrl::TolerantMode);
    networkManager->get(QNetworkRequest(isOnAnotherMachine(address) ? QUrl() : address));
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
