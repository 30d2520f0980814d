#include "bench.h"
#include "families.h"
#include "processes/scene.h"

#include <vantkit-qt/qtsingleapplication/src/qtlockedfile.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStorageInfo>

#include <algorithm>
#include <memory>

namespace bench {

namespace {

using QtLP_Private::QtLockedFile;

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
    return QStringLiteral("the mutexes' files on ") + fileSystemOf(QStringLiteral("/tmp"));
#endif
}

std::filesystem::path requireFolderOn(Place place)
{
    const QString folder = folderOn(place);
    if (folder.isEmpty()) {
        throw Failure(
            QStringLiteral("a folder to write to that is %1 is needed; none of these is one: %2")
                .arg(place == Place::Disk ? QStringLiteral("on a disk") : QStringLiteral("on tmpfs"),
                    candidates(place).join(QStringLiteral(", "))));
    }
    return folder.toStdString();
}

/** One file for the kit and one for QLockFile, in a folder that goes with them. */
class Files
{
public:
    Files(Place place, QtLockedFile::LockMode mode)
        : m_scene(requireFolderOn(place))
        , m_mode(mode)
    {
        m_kit.open(QIODevice::ReadWrite);
        requireSameWork(isExclusive());
    }

    /**
     * From now on another process has all reader mutexes open. First it owns the last one, so that it can be
     * seen whether they are the ones that a writer has to have.
     */
    void bringReaders()
    {
        std::string names;
        for (int idx = 0; idx < maximumReaders; ++idx) {
            names += " file" + std::to_string(idx);
        }
        requireSameWork(m_scene.play("P create" + names + "; P take file63").empty()
            && !m_kit.lock(QtLockedFile::WriteLock, false));
        requireSameWork(m_scene.play("P release file63").empty() && isExclusive());
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

    QString pathOf(const char* name) const
    {
        return QString::fromStdString((m_scene.folder() / name).string());
    }

    Scene m_scene;
    QtLockedFile::LockMode m_mode;
    QString m_kitPath = pathOf("file");
    QString m_alternativePath = pathOf("by-hand.lock");
    QtLockedFile m_kit { m_kitPath };
    QLockFile m_alternative { m_alternativePath };
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

void addRowsOfMode(Suite& suite, const QString& name, const QString& modeName, QtLockedFile::LockMode mode,
    double ceiling, std::optional<double> ceilingAmongReaders)
{
    const QString kit = QStringLiteral("lock(%1) and unlock of a QtLockedFile").arg(modeName);
    const auto addRow = [&](const char* suffix, const QString& what, Place place,
                            std::optional<double> ceilingOfRow, const std::function<Sampler()>& prepare) {
        suite.rows.push_back({ name + QLatin1String(suffix), QStringLiteral("one lock, taken and given up"),
            kit + what + QStringLiteral(", ") + placeOfMutexes(),
            QStringLiteral("lock and unlock of a QLockFile on ") + fileSystemOf(place), ceilingOfRow, 301,
            prepare });
    };
    addRow("", {}, Place::Disk, ceiling, [mode] { return lockBoth(Place::Disk, mode); });
    addRow("-tmpfs", {}, Place::Memory, std::nullopt, [mode] { return lockBoth(Place::Memory, mode); });
    addRow("-64-readers", QStringLiteral(" with 64 reader mutexes"), Place::Disk, ceilingAmongReaders,
        [mode] { return lockBothAmongReaders(mode); });
}

} // namespace

void addLockRows(Suite& suite)
{
    addRowsOfMode(
        suite, QStringLiteral("lock.write"), QStringLiteral("WriteLock"), QtLockedFile::WriteLock, 0.4, 1.5);
    addRowsOfMode(suite, QStringLiteral("lock.read"), QStringLiteral("ReadLock"), QtLockedFile::ReadLock, 0.2,
        std::nullopt);
}

} // namespace bench
