#pragma once

#include "folder-listing.h"

#include <QObject>

namespace gallery {

/** Reads one folder after the other in a thread, so that the window answers meanwhile. */
class FolderReader : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~FolderReader() override;

    /** Begins to read @p folder. What was being read is given up, and nothing is told of it. */
    void read(const QString& folder);

    bool isReading() const { return m_isCancelled != nullptr; }

Q_SIGNALS:
    void done(const gallery::ListingPtr& listing);

private:
    void cancel();

    std::shared_ptr<std::atomic_bool> m_isCancelled; ///< of what is being read; null in between
};

} // namespace gallery
