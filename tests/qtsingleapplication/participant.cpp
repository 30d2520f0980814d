// Does what its input says, a command on each line, and answers each on a line; the warnings that were logged
// since the last answer stand behind it. Ends with its input.

#include "platform/win32.h"
#include "qtsingleapplication/scene.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>
#include <vantkit-qt/qtsingleapplication/src/qtlockedfile.h>

#include <QCoreApplication>
#include <QDir>
#include <QSocketNotifier>
#include <QUrl>
#include <QVariant>

#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/resource.h>

using QtLP_Private::QtLockedFile;

namespace {

using Commands = std::map<QString, std::function<QVariant()>>;

QString warnings;

void collectWarning(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    warnings += QStringLiteral(" [%1]").arg(text);
}

void answer(const QString& text)
{
    std::puts(qUtf8Printable(text + std::exchange(warnings, QString())));
    std::fflush(stdout);
}

/** Leaves room for so many further open files, for all if it is negative. */
bool limitOpenFiles(int room)
{
    rlimit limit {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    for (int file = 0; room >= 0; ++file) {
        if (fcntl(file, F_GETFD) < 0 && room-- == 0) {
            limit.rlim_cur = static_cast<rlim_t>(file);
        }
    }
    return setrlimit(RLIMIT_NOFILE, &limit) == 0;
}

/** A mutex of the file "file", as anybody may have it: that of a reader, or of the writer. */
HANDLE mutex(const QString& slot, bool create)
{
    const QString name = "QtLockedFile mutex " + QDir::current().filePath("file").toLower() + slot;
    const auto* const utf16 = reinterpret_cast<LPCWSTR>(name.utf16());
    return create ? CreateMutexW(nullptr, FALSE, utf16)
                  : OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, utf16);
}

/** The mutexes that have an owner. */
QString owned()
{
    QStringList found;
    for (int slot = -1; slot < 100; ++slot) {
        const QString number = slot < 0 ? QString() : QString::number(slot);
        HANDLE handle = mutex(number, false);
        if (handle && WaitForSingleObject(handle, 0) == WAIT_TIMEOUT) {
            found += slot < 0 ? "writer" : number;
        } else {
            ReleaseMutex(handle);
        }
        CloseHandle(handle);
    }
    return found.join(' ');
}

class Participant : public QObject
{
    Q_OBJECT

public:
    Participant()
    {
        input.open(0, QIODevice::ReadOnly | QIODevice::Unbuffered);
        auto* notifier = new QSocketNotifier(0, QSocketNotifier::Read, this);
        connect(notifier, SIGNAL(activated(int)), this, SLOT(obey()));
    }

private Q_SLOTS:

    void obey()
    {
        const QString line = QString::fromUtf8(input.readLine()).trimmed();
        if (line.isEmpty()) {
            QCoreApplication::quit();
            return;
        }
        const QStringList words = line.split(' ');
        bool isFile = false;
        const int number = words[0].toInt(&isFile);
        const Commands commands = isFile ? commandsOf(files[number], words.value(2))
                                         : commandsOf(words.value(1), words.value(2, "20000").toInt());
        answer(commands.at(words.value(isFile ? 1 : 0))().toString());
    }

    void receive(const QString& text) { messages += text; }

private:
    static Commands commandsOf(std::unique_ptr<QtLockedFile>& file, const QString& argument)
    {
        const auto open = [&file](QIODevice::OpenMode mode) { return file->open(mode); };
        const auto renew = [&file, argument, open] {
            file = std::make_unique<QtLockedFile>(argument.isEmpty() ? "file" : argument);
            return open(QIODevice::ReadWrite);
        };
        if (!file) {
            renew();
        }
        const auto lock = [&file](QtLockedFile::LockMode mode, bool block) {
            if (block) {
                answer("begun");
            }
            return file->lock(mode, block);
        };
        return {
            { "new", renew },
            { "read", [=] { return lock(QtLockedFile::ReadLock, false); } },
            { "write", [=] { return lock(QtLockedFile::WriteLock, false); } },
            { "none", [=] { return lock(QtLockedFile::NoLock, false); } },
            { "read!", [=] { return lock(QtLockedFile::ReadLock, true); } },
            { "write!", [=] { return lock(QtLockedFile::WriteLock, true); } },
            { "mode", [&file] { return int { file->lockMode() }; } },
            { "unlock", [&file] { return file->unlock(); } },
            { "open", [=] { return open(QIODevice::ReadWrite); } },
            { "truncate", [=] { return open(QIODevice::ReadWrite | QIODevice::Truncate); } },
            { "close", [&file] { return file->close(), true; } },
            { "delete", [&file] { return file.reset(), true; } },
        };
    }

    Commands commandsOf(const QString& argument, int timeout)
    {
        const QString text = QUrl::fromPercentEncoding(argument.toUtf8());
        return {
            { "owned", owned },
            { "create", [=] { return mutex(argument, true) != nullptr; } },
            { "limit", [=] { return limitOpenFiles(argument.toInt()); } },
            { "peer", [this] { return peer().applicationId(); } },
            { "isClient", [this] { return peer().isClient(); } },
            { "send", [=] { return peer().sendMessage(text, timeout); } },
            { "unlock", [this] { return peer().unlock(); } },
            { "take", [this] { return takeMessage(); } },
            { "left", [this] { return messages.size(); } },
        };
    }

    QtLocalPeer& peer()
    {
        if (!onlyPeer) {
            onlyPeer = std::make_unique<QtLocalPeer>(nullptr, sceneIdentity);
            connect(
                onlyPeer.get(), SIGNAL(messageReceived(const QString&)), this, SLOT(receive(const QString&)));
        }
        return *onlyPeer;
    }

    QByteArray takeMessage()
    {
        while (messages.isEmpty()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return QUrl::toPercentEncoding(messages.takeFirst());
    }

    QFile input;
    std::map<int, std::unique_ptr<QtLockedFile>> files;
    std::unique_ptr<QtLocalPeer> onlyPeer;
    QStringList messages;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(collectWarning);
    auto participant = std::make_unique<Participant>();
    const int exitCode = QCoreApplication::exec();
    participant.reset();
    std::fputs(qUtf8Printable(warnings), stderr);
    return exitCode;
}

#include "participant.moc"
