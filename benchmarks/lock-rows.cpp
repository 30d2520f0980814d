#include "bench.h"
#include "child-process.h"
#include "families.h"

#include <vantkit-qt/qtsingleapplication/src/qtlockedfile.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <iostream>
#include <memory>
#include <platform/win32.h>
#include <string>

#ifndef Q_OS_WIN
#include <platform/mutex-directory_p.h>
#endif

namespace bench {

namespace {

using QtLP_Private::QtLockedFile;

const QString readersChild = QStringLiteral("lock-readers");
constexpr int maximumReaders = 64;

enum class Place { Disk, Memory };

bool isInMemory(const QStorageInfo& storage)
{
    return storage.fileSystemType() == "tmpfs" || storage.fileSystemType() == "ramfs";
}

QStringList candidates(Place place)
{
    if (place == Place::Disk) {
        return { QDir::tempPath(), QCoreApplication::applicationDirPath(), QDir::homePath() };
    }
    return { QStringLiteral("/dev/shm"), qEnvironmentVariable("XDG_RUNTIME_DIR"), QDir::tempPath() };
}

/** A folder that may be written to; empty if there is none of that kind. */
QString folderOn(Place place)
{
    const QStringList folders = candidates(place);
    const auto found = std::find_if(folders.begin(), folders.end(), [place](const QString& folder) {
        const QStorageInfo storage(folder);
        return storage.isValid() && isInMemory(storage) == (place == Place::Memory)
            && QFileInfo(folder).isWritable();
    });
    return found == folders.end() ? QString() : *found;
}

QString fileSystemOf(const QString& folder)
{
    return QString::fromLatin1(QStorageInfo(folder).fileSystemType());
}

QString fileSystemOf(Place place)
{
    const QString folder = folderOn(place);
    return folder.isEmpty() ? QStringLiteral("a file system that is missing") : fileSystemOf(folder);
}

QString placeOfMutexes()
{
#ifdef Q_OS_WIN
    return QStringLiteral("the mutexes being the system's");
#else
    QFileInfo folder(QString::fromStdString(vantkit::internal::MutexDirectory::ofUser().path()));
    // It is made with the first mutex.
    return QStringLiteral("the mutexes' files on ")
        + fileSystemOf(folder.exists() ? folder.filePath() : folder.path());
#endif
}

QTemporaryDir makeFolder(Place place)
{
    const QString folder = folderOn(place);
    if (folder.isEmpty()) {
        throw Failure(
            QStringLiteral("a folder to write to that is %1 is needed; none of these is one: %2")
                .arg(place == Place::Disk ? QStringLiteral("on a disk") : QStringLiteral("on tmpfs"),
                    candidates(place).join(QStringLiteral(", "))));
    }
    return QTemporaryDir(folder + QStringLiteral("/vantkit-bench-XXXXXX"));
}

// Has all reader mutexes of the file at the path open, as processes have that once read. It owns the last one
// until it hears a line, so that it can be seen whether they are the ones that a writer has to have.
ChildResult holdReaderMutexes(const QString& path)
{
    const QString name = QStringLiteral("QtLockedFile mutex ") + path.toLower();
    std::vector<HANDLE> mutexes;
    for (int idx = 0; idx < maximumReaders; ++idx) {
        const QString reader = name + QString::number(idx);
        mutexes.push_back(CreateMutexW(nullptr, FALSE, reinterpret_cast<LPCWSTR>(reader.utf16())));
    }
    std::string line;
    if (WaitForSingleObject(mutexes.back(), 0) != WAIT_OBJECT_0) {
        throw Failure(QStringLiteral("the mutex of a new file is not free"));
    }
    std::cout << "owned" << std::endl;
    std::getline(std::cin, line);
    ReleaseMutex(mutexes.back());
    std::cout << "free" << std::endl;
    std::getline(std::cin, line);
    std::for_each(mutexes.begin(), mutexes.end(), CloseHandle);
    return {};
}

/** One file for the kit and one for QLockFile, in a folder that goes with them. */
class Files
{
public:
    Files(Place place, QtLockedFile::LockMode mode)
        : m_folder(makeFolder(place))
        , m_mode(mode)
    {
        m_kit.open(QIODevice::ReadWrite);
        requireSameWork(isExclusive());
    }

    /** From now on the reader mutexes exist, held open by a process that waits for nothing. */
    void bringReaders()
    {
        m_readers = std::make_unique<TalkingChild>(readersChild, m_kitPath);
        requireSameWork(m_readers->hear() == "owned" && !m_kit.lock(QtLockedFile::WriteLock, false));
        m_readers->say({});
        requireSameWork(m_readers->hear() == "free" && isExclusive());
    }

    void lockByKit()
    {
        requireSameWork(m_kit.lock(m_mode));
        m_kit.unlock();
    }

    void lockByHand()
    {
        requireSameWork(m_alternative.lock());
        m_alternative.unlock();
    }

private:
    // Both keep a second writer out for as long as they have their lock, and no longer.
    bool isExclusive()
    {
        QtLockedFile kit(m_kitPath);
        kit.open(QIODevice::ReadWrite);
        QLockFile alternative(m_alternativePath);
        const auto writersPass = [&kit, &alternative](bool expected) {
            const bool passes =
                kit.lock(QtLockedFile::WriteLock, false) == expected && alternative.tryLock(0) == expected;
            kit.unlock();
            alternative.unlock();
            return passes;
        };
        const bool keepsOut = m_kit.lock(m_mode) && m_alternative.lock() && writersPass(false);
        m_kit.unlock();
        m_alternative.unlock();
        return keepsOut && writersPass(true);
    }

    QTemporaryDir m_folder;
    QtLockedFile::LockMode m_mode;
    QString m_kitPath = m_folder.filePath(QStringLiteral("kit.lock"));
    QString m_alternativePath = m_folder.filePath(QStringLiteral("by-hand.lock"));
    QtLockedFile m_kit { m_kitPath };
    QLockFile m_alternative { m_alternativePath };
    std::unique_ptr<TalkingChild> m_readers;
};

Sampler lockBoth(const std::shared_ptr<Files>& files)
{
    return interleaved(repeated([files] { files->lockByKit(); }), repeated([files] { files->lockByHand(); }));
}

Sampler lockBoth(Place place, QtLockedFile::LockMode mode)
{
    return lockBoth(std::make_shared<Files>(place, mode));
}

Sampler lockBothAmongReaders(QtLockedFile::LockMode mode)
{
    const auto files = std::make_shared<Files>(Place::Disk, mode);
    files->bringReaders();
    return lockBoth(files);
}

void addRowsOfMode(Suite& suite, const QString& name, const QString& modeName, QtLockedFile::LockMode mode)
{
    const QString kit = QStringLiteral("lock(%1) and unlock of a QtLockedFile").arg(modeName);
    const auto addRow = [&](const char* suffix, const QString& what, Place place,
                            std::optional<double> ceiling, const std::function<Sampler()>& prepare) {
        suite.rows.push_back({ name + QLatin1String(suffix), QStringLiteral("one lock, taken and given up"),
            kit + what + QStringLiteral(", ") + placeOfMutexes(),
            QStringLiteral("lock and unlock of a QLockFile on ") + fileSystemOf(place), ceiling, 301,
            prepare });
    };
    addRow("", {}, Place::Disk, 1.0, [mode] { return lockBoth(Place::Disk, mode); });
    addRow("-tmpfs", {}, Place::Memory, std::nullopt, [mode] { return lockBoth(Place::Memory, mode); });
    addRow("-64-readers", QStringLiteral(" with 64 reader mutexes"), Place::Disk, std::nullopt,
        [mode] { return lockBothAmongReaders(mode); });
}

} // namespace

void addLockRows(Suite& suite)
{
    suite.children[readersChild] = holdReaderMutexes;

    addRowsOfMode(suite, QStringLiteral("lock.write"), QStringLiteral("WriteLock"), QtLockedFile::WriteLock);
    addRowsOfMode(suite, QStringLiteral("lock.read"), QStringLiteral("ReadLock"), QtLockedFile::ReadLock);
}

} // namespace bench
