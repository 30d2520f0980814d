#include "child-process.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTextStream>

namespace bench {

namespace {

constexpr int limitMilliseconds = 60000;

void requireSuccess(QProcess& process)
{
    if (!process.waitForFinished(limitMilliseconds) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        throw Failure(QStringLiteral("%1 %2 failed: %3")
                          .arg(process.program(), process.arguments().join(QLatin1Char(' ')),
                              QString::fromUtf8(process.readAllStandardError())));
    }
}

} // namespace

ChildResult runChild(const QString& name, const QString& path)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), { QStringLiteral("--child"), name, path });
    requireSuccess(process);
    const QJsonObject result = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    return { result.value(QLatin1String("nanoseconds")).toDouble(),
        result.value(QLatin1String("check")).toString() };
}

void serveAsChild(const Suite& suite, const QString& name, const QString& path)
{
    const auto child = suite.children.find(name);
    if (child == suite.children.end()) {
        throw Failure(QStringLiteral("no child \"%1\"").arg(name));
    }
    const ChildResult result = child->second(path);
    const QJsonObject json {
        { QStringLiteral("nanoseconds"), result.nanoseconds },
        { QStringLiteral("check"), result.check },
    };
    QTextStream(stdout) << QJsonDocument(json).toJson(QJsonDocument::Compact) << '\n';
}

FirstLine firstLineOf(const QString& program, const QStringList& arguments, const QString& dataFolder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), dataFolder);
    QProcess process;
    process.setProcessEnvironment(environment);

    FirstLine line;
    line.nanoseconds = nanosecondsOf([&] {
        process.start(program, arguments);
        while (!process.canReadLine() && process.waitForReadyRead(limitMilliseconds)) { }
    });
    line.text = process.readLine();
    requireSuccess(process);
    if (line.text.isEmpty()) {
        throw Failure(program + QStringLiteral(" wrote nothing"));
    }
    return line;
}

} // namespace bench
