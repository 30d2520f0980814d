#include "folder-reader.h"

#include "texts.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

namespace gallery {

FolderReader::~FolderReader()
{
    cancel();
}

void FolderReader::read(const QString& folder)
{
    cancel();
    m_isCancelled = std::make_shared<std::atomic_bool>(false);
    // The thread knows the reader by name only: whether it is still there is asked in its own thread.
    QThreadPool::globalInstance()->start(
        [folder, language = locale(), isCancelled = m_isCancelled, reader = QPointer(this)] {
            const ListingPtr listing = readFolder(folder, language, *isCancelled);
            if (*isCancelled) {
                return;
            }
            const auto tell = [listing, isCancelled, reader] {
                if (!*isCancelled && reader) {
                    reader->m_isCancelled.reset();
                    Q_EMIT reader->done(listing);
                }
            };
            QMetaObject::invokeMethod(QCoreApplication::instance(), tell, Qt::QueuedConnection);
        });
}

void FolderReader::cancel()
{
    if (m_isCancelled) {
        *m_isCancelled = true;
        m_isCancelled.reset();
    }
}

} // namespace gallery
