#include "qtsingleapplication/scene.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QRegularExpression>

namespace {

constexpr int patience = 30000; // milliseconds

const char* const folderVariable = "TMPDIR";

QString textOf(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes).trimmed();
}

} // namespace

Scene::Scene()
    : formerFolder(qgetenv(folderVariable))
{
    qputenv(folderVariable, QFile::encodeName(folder.path()));
}

Scene::~Scene()
{
    while (!processes.empty()) {
        kill(processes.begin()->first);
    }
    if (formerFolder.isNull()) {
        qunsetenv(folderVariable);
    } else {
        qputenv(folderVariable, formerFolder);
    }
}

QString Scene::play(const QString& steps)
{
    static const QRegularExpression expression(
        QStringLiteral("^(?<name>\\w)(?<command>.*?)(?<is>: | becomes |$)(?<answer>.*)$"));
    for (const QString& step : steps.split(QStringLiteral("; "))) {
        const QRegularExpressionMatch match = expression.match(step);
        const QString is = match.captured(QStringLiteral("is"));
        const QString expected =
            is.isEmpty() ? QStringLiteral("true") : match.captured(QStringLiteral("answer"));
        const QDeadlineTimer deadline(is == QLatin1String(" becomes ") ? patience : 0);
        QString answered;
        do {
            answered = perform(
                match.captured(QStringLiteral("name")), match.captured(QStringLiteral("command")).trimmed());
        } while (answered != expected && !deadline.hasExpired());
        if (answered != expected) {
            return QStringLiteral("\"%1\" gave \"%2\"").arg(step, answered);
        }
    }
    return QString();
}

QString Scene::perform(const QString& name, const QString& command)
{
    const auto truth = [](bool holds) { return holds ? QStringLiteral("true") : QStringLiteral("false"); };
    if (command == QLatin1String("kill")) {
        kill(name);
        return truth(true);
    }
    if (command == QLatin1String("end")) {
        const QString complaint = end(name);
        return complaint.isEmpty() ? truth(true) : complaint;
    }
    if (command == QLatin1String("waits")) {
        return truth(!hasAnswered(name));
    }
    return command == QLatin1String("answers") ? answer(name) : ask(name, command);
}

QProcess& Scene::process(const QString& name)
{
    const auto found = processes.find(name);
    if (found != processes.end()) {
        return found->second;
    }
    QProcess& started = processes[name];
    started.setWorkingDirectory(folder.path());
    started.start(QStringLiteral(PARTICIPANT), QStringList());
    return started;
}

QString Scene::ask(const QString& name, const QString& command)
{
    tell(name, command);
    return answer(name);
}

void Scene::tell(const QString& name, const QString& command)
{
    QProcess& told = process(name);
    told.waitForStarted(patience);
    told.write(command.toUtf8() + '\n');
    told.waitForBytesWritten(patience);
}

QString Scene::answer(const QString& name)
{
    QProcess& asked = process(name);
    while (!asked.canReadLine()) {
        if (!asked.waitForReadyRead(patience)) {
            return QStringLiteral("no answer ") + textOf(asked.readAllStandardError());
        }
    }
    return textOf(asked.readLine());
}

bool Scene::hasAnswered(const QString& name)
{
    QProcess& asked = process(name);
    return asked.canReadLine() || asked.waitForReadyRead(0);
}

void Scene::kill(const QString& name)
{
    QProcess& killed = process(name);
    killed.kill();
    killed.waitForFinished(patience);
    processes.erase(name);
}

/** Its log, which has to be empty then, or how else it ended. */
QString Scene::end(const QString& name)
{
    QProcess& ended = process(name);
    ended.closeWriteChannel();
    QString complaint;
    if (!ended.waitForFinished(patience)) {
        complaint = QStringLiteral("does not end");
    } else if (ended.exitStatus() != QProcess::NormalExit || ended.exitCode() != 0) {
        complaint = QStringLiteral("ended with %1 ").arg(ended.exitCode());
    }
    complaint += textOf(ended.readAllStandardOutput() + ended.readAllStandardError());
    kill(name);
    return complaint;
}

QString Scene::finish()
{
    QString complaints;
    while (!processes.empty()) {
        complaints += end(processes.begin()->first);
    }
    return complaints;
}

qint64 Scene::processId(const QString& name)
{
    return process(name).processId();
}

QString Scene::socketPath() const
{
    const QStringList lockFiles = QDir(folder.path()).entryList({ QStringLiteral("*-lockfile") });
    return path(lockFiles.value(0).chopped(static_cast<int>(qstrlen("-lockfile"))));
}
