#pragma once

#include "vantkit-export.h"

#include <QFile>
#include <QVector>

namespace QtLP_Private {

/**
 * A file with a read/write lock between processes. All that open the same path through this class contend for
 * one lock: many may have it to read, up to 64, or one to write. Paths that differ only in case share a lock.
 *
 * The lock has nothing to do with the content of the file, which this class neither reads nor writes, nor
 * with locks of the file system. It lasts until it is given up, or its process ends in whatever way; who
 * finds it left behind by a process that died simply has it.
 *
 * Use an object in one thread: the lock belongs to the thread that took it. On Windows another object of that
 * thread gets it as well, in any mode; elsewhere it does not. Failures are warnings in Qt's default category
 * and a false result; a lock that another one has is no failure, and no warning.
 */
class VANTKIT_EXPORT QtLockedFile : public QFile
{
public:
    /** Who else may have the lock meanwhile. */
    enum LockMode {
        NoLock = 0, ///< everybody
        ReadLock = 1, ///< shared
        WriteLock = 2 ///< exclusive
    };

    /** A file that needs a name, by setFileName(). */
    QtLockedFile();
    /**
     * Neither opens the file nor takes a lock. The name has to be there before the first lock(), and to stay.
     */
    explicit QtLockedFile(const QString& name);
    /** Gives the lock up. */
    ~QtLockedFile() override;

    /** As QFile, except that QIODevice::Truncate is refused with a warning. */
    bool open(QIODevice::OpenMode mode) override;

    /**
     * Takes the lock; the file has to be open. Whether this object has it now.
     *
     * With @p block it waits as long as it takes, else not at all. A reader waits for writers only: when 64
     * others have the lock to read, it is refused with a warning. To have the lock already is a success,
     * NoLock is unlock(), and a change between the other two gives up the old lock first: if the new one is
     * not to be had, there is none.
     */
    bool lock(LockMode mode, bool block = true);
    /**
     * Gives the lock up, if there is one. False, with a warning, if the file is not open; a lock then stays.
     */
    bool unlock();

    /** Whether this object has the lock, in either mode. */
    bool isLocked() const;
    /** The lock that this object has. */
    LockMode lockMode() const;

private:
    Qt::HANDLE getMutexHandle(int idx, bool doCreate);
    bool waitMutex(Qt::HANDLE mutex, bool doBlock);
    bool lockToRead();
    bool lockToWrite(bool block);

    Qt::HANDLE writerMutex = nullptr;
    Qt::HANDLE readerMutex = nullptr; ///< of ReadLock
    QVector<Qt::HANDLE> readerMutexes; ///< of WriteLock
    QString mutexName;
    LockMode currentLockMode = NoLock;
};

} // namespace QtLP_Private
