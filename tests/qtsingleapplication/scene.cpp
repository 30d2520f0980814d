#include "qtsingleapplication/scene.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QRegularExpression>

namespace {

constexpr int patience = 30000; // milliseconds
const char* const folderVariable = "TMPDIR";
const QString yes = QStringLiteral("true");

} // namespace

Scene::Scene()
    : formerFolder(qgetenv(folderVariable))
{
    qputenv(folderVariable, QFile::encodeName(folder.path()));
}

Scene::~Scene()
{
    while (!processes.empty()) {
        const QString ended = end(processes.begin()->first);
        if (ended != yes) {
            qWarning("%s", qUtf8Printable(ended));
        }
    }
    formerFolder.isNull() ? qunsetenv(folderVariable) : qputenv(folderVariable, formerFolder);
}

QString Scene::play(const QString& steps)
{
    static const QRegularExpression expression("^(\\w) ?(.*?)(?:(: | becomes )(.*))?$");
    for (const QString& step : steps.split("; ")) {
        const QStringList parts = expression.match(step).capturedTexts();
        const QString expected = parts.value(4, yes);
        const QDeadlineTimer deadline(parts.value(3) == " becomes " ? patience : 0);
        QString answered;
        do {
            answered = perform(parts[1], parts[2]);
        } while (answered != expected && !deadline.hasExpired());
        if (answered != expected) {
            return QStringLiteral("\"%1\" gave \"%2\"").arg(step, answered);
        }
    }
    return QString();
}

QString Scene::perform(const QString& name, const QString& command)
{
    if (command == "kill") {
        process(name).kill();
        process(name).waitForFinished(patience);
        processes.erase(name);
        return yes;
    }
    if (command == "waits") {
        return process(name).canReadLine() || process(name).waitForReadyRead(0) ? "false" : yes;
    }
    if (command == "end") {
        return end(name);
    }
    if (command != "answers") {
        tell(name, command);
    }
    return answer(name);
}

QProcess& Scene::process(const QString& name)
{
    const bool isNew = processes.count(name) == 0;
    QProcess& process = processes[name];
    if (isNew) {
        process.setWorkingDirectory(folder.path());
        process.start(QStringLiteral(PARTICIPANT), QStringList());
        process.waitForStarted(patience);
    }
    return process;
}

void Scene::tell(const QString& name, const QString& command)
{
    process(name).write(command.toUtf8() + '\n');
    process(name).waitForBytesWritten(patience);
}

QString Scene::answer(const QString& name)
{
    QProcess& asked = process(name);
    while (!asked.canReadLine()) {
        if (!asked.waitForReadyRead(patience)) {
            return "no answer " + asked.readAllStandardError();
        }
    }
    return QString::fromUtf8(asked.readLine()).trimmed();
}

/** What is wrong with it, unless it ends in order and with an empty log. */
QString Scene::end(const QString& name)
{
    QProcess& ended = process(name);
    ended.closeWriteChannel();
    const bool inOrder = ended.waitForFinished(patience) && ended.exitStatus() == QProcess::NormalExit;
    const QByteArray log = ended.readAllStandardOutput() + ended.readAllStandardError();
    const bool isFine = inOrder && ended.exitCode() == 0 && log.isEmpty();
    processes.erase(name);
    return isFine ? yes : name + " ended: " + log;
}

QString Scene::socketPath() const
{
    const QStringList lockFiles = QDir(folder.path()).entryList({ "*-lockfile" });
    return folder.filePath(lockFiles.value(0).section("-lockfile", 0, 0));
}
