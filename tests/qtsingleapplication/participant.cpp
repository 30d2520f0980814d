// Does what its input says, a command on each line, and answers each on a line; the warnings that were logged
// since the last answer stand behind it. Ends with its input.

#include "platform/win32.h"
#include "qtsingleapplication/scene.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>
#include <vantkit-qt/qtsingleapplication/src/qtlockedfile.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <QUrl>

#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/resource.h>

using QtLP_Private::QtLockedFile;

namespace {

QStringList warnings;

void collectWarning(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    warnings += text;
}

void answer(const QString& text)
{
    QString line = text;
    for (const QString& warning : qAsConst(warnings)) {
        line += QStringLiteral(" [%1]").arg(warning);
    }
    warnings.clear();
    std::puts(qUtf8Printable(line));
    std::fflush(stdout);
}

QString truth(bool holds)
{
    return holds ? QStringLiteral("true") : QStringLiteral("false");
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

/** The mutexes of the file "file", as anybody may open them. */
class Mutexes
{
public:
    static HANDLE create(const QString& slot) { return CreateMutexW(nullptr, FALSE, utf16(nameOf(slot))); }

    /** Those that have an owner. */
    static QString owned()
    {
        QStringList found;
        for (int slot = -1; slot < 100; ++slot) {
            const QString number = slot < 0 ? QString() : QString::number(slot);
            HANDLE mutex = OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, utf16(nameOf(number)));
            if (!mutex) {
                continue;
            }
            if (WaitForSingleObject(mutex, 0) == WAIT_TIMEOUT) {
                found += slot < 0 ? QStringLiteral("writer") : number;
            } else {
                ReleaseMutex(mutex);
            }
            CloseHandle(mutex);
        }
        return found.join(QLatin1Char(' '));
    }

private:
    static QString nameOf(const QString& slot)
    {
        return QStringLiteral("QtLockedFile mutex ")
            + QDir::current().filePath(QStringLiteral("file")).toLower() + slot;
    }

    static LPCWSTR utf16(const QString& name) { return reinterpret_cast<LPCWSTR>(name.utf16()); }
};

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
        bool isFile = false;
        const int number = line.section(QLatin1Char(' '), 0, 0).toInt(&isFile);
        const QString command = isFile ? line.section(QLatin1Char(' '), 1) : line;
        const QString verb = command.section(QLatin1Char(' '), 0, 0);
        const QString argument = command.section(QLatin1Char(' '), 1);
        answer(isFile ? handle(files[number], verb, argument) : perform(verb, argument));
    }

    void receive(const QString& text) { messages += text; }

private:
    static QString handle(std::unique_ptr<QtLockedFile>& file, const QString& verb, const QString& argument)
    {
        if (verb == QLatin1String("new") || !file) {
            file = std::make_unique<QtLockedFile>(argument.isEmpty() ? QStringLiteral("file") : argument);
            file->open(QIODevice::ReadWrite);
        }
        const QHash<QString, std::function<bool()>> commands {
            { QStringLiteral("new"), [&] { return file->isOpen(); } },
            { QStringLiteral("read"), [&] { return file->lock(QtLockedFile::ReadLock, false); } },
            { QStringLiteral("write"), [&] { return file->lock(QtLockedFile::WriteLock, false); } },
            { QStringLiteral("none"), [&] { return file->lock(QtLockedFile::NoLock, false); } },
            { QStringLiteral("unlock"), [&] { return file->unlock(); } },
            { QStringLiteral("open"), [&] { return file->open(QIODevice::ReadWrite); } },
            { QStringLiteral("truncate"),
                [&] { return file->open(QIODevice::ReadWrite | QIODevice::Truncate); } },
            { QStringLiteral("close"), [&] { return file->close(), true; } },
            { QStringLiteral("rename"), [&] { return file->setFileName(argument), true; } },
            { QStringLiteral("delete"), [&] { return file.reset(), true; } },
        };
        if (verb == QLatin1String("mode")) {
            return QString::number(file->lockMode());
        }
        if (verb.endsWith(QLatin1Char('!'))) {
            // Waits as long as it takes, and says so before.
            answer(QStringLiteral("begun"));
            return truth(file->lock(
                verb == QLatin1String("read!") ? QtLockedFile::ReadLock : QtLockedFile::WriteLock, true));
        }
        return commands.contains(verb) ? truth(commands[verb]()) : QStringLiteral("no such command");
    }

    QString perform(const QString& verb, const QString& argument)
    {
        const QHash<QString, std::function<QString()>> commands {
            { QStringLiteral("owned"), [] { return Mutexes::owned(); } },
            { QStringLiteral("create"), [&] { return truth(Mutexes::create(argument)); } },
            { QStringLiteral("limit"), [&] { return truth(limitOpenFiles(argument.toInt())); } },
            { QStringLiteral("peer"), [&] { return peer().applicationId(); } },
            { QStringLiteral("isClient"), [&] { return truth(peer().isClient()); } },
            { QStringLiteral("send"), [&] { return truth(send(argument)); } },
            { QStringLiteral("unlock"), [&] { return truth(peer().unlock()); } },
            { QStringLiteral("take"), [&] { return takeMessage(); } },
            { QStringLiteral("left"), [&] { return QString::number(messages.size()); } },
        };
        return commands.contains(verb) ? commands[verb]() : QStringLiteral("no such command");
    }

    QtLocalPeer& peer()
    {
        if (!onlyPeer) {
            onlyPeer = std::make_unique<QtLocalPeer>(nullptr, QLatin1String(sceneIdentity));
            connect(
                onlyPeer.get(), SIGNAL(messageReceived(const QString&)), this, SLOT(receive(const QString&)));
        }
        return *onlyPeer;
    }

    /** A text, percent-encoded, and perhaps the time-out in milliseconds. */
    bool send(const QString& argument)
    {
        const QStringList words = argument.split(QLatin1Char(' '));
        const int timeout = words.size() > 1 ? words[1].toInt() : 20000;
        return peer().sendMessage(QUrl::fromPercentEncoding(words[0].toUtf8()), timeout);
    }

    QString takeMessage()
    {
        if (messages.isEmpty()) {
            QEventLoop loop;
            connect(&peer(), SIGNAL(messageReceived(const QString&)), &loop, SLOT(quit()));
            QTimer::singleShot(20000, &loop, SLOT(quit()));
            loop.exec();
        }
        return messages.isEmpty() ? QStringLiteral("nothing")
                                  : QString::fromLatin1(QUrl::toPercentEncoding(messages.takeFirst()));
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
    int exitCode = 0;
    {
        const Participant participant;
        exitCode = QCoreApplication::exec();
    }
    for (const QString& warning : qAsConst(warnings)) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(warning));
    }
    return exitCode;
}

#include "participant.moc"
