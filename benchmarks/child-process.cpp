#include "child-process.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <iostream>
#include <memory>
#include <string>

namespace bench {

namespace {

constexpr int limitMilliseconds = 60000;

[[noreturn]] void fail(QProcess& process)
{
    throw Failure(QStringLiteral("%1 %2 failed: %3")
                      .arg(process.program(), process.arguments().join(QLatin1Char(' ')),
                          QString::fromUtf8(process.readAllStandardError())));
}

void requireSuccess(QProcess& process)
{
    if (!process.waitForFinished(limitMilliseconds) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        fail(process);
    }
}

void startChild(QProcess& process, const QStringList& arguments, const QProcessEnvironment& environment)
{
    process.setProcessEnvironment(environment);
    process.start(
        QCoreApplication::applicationFilePath(), QStringList { QStringLiteral("--child") } + arguments);
}

QByteArray nextLine(QProcess& process)
{
    while (!process.canReadLine() && process.waitForReadyRead(limitMilliseconds)) { }
    return process.readLine();
}

void serveSamples(const Sampler& sample)
{
    for (std::string line; std::getline(std::cin, line);) {
        const Amounts amounts = sample();
        std::cout << std::fixed << amounts.kit << ' ' << amounts.alternative << std::endl;
    }
}

} // namespace

ChildResult runChild(const QString& name, const QString& path, const QProcessEnvironment& environment)
{
    QProcess process;
    startChild(process, { name, path }, environment);
    requireSuccess(process);
    const QJsonObject result = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    return { result.value(QLatin1String("amount")).toDouble(),
        result.value(QLatin1String("check")).toString() };
}

TalkingChild::TalkingChild(const QString& name, const QString& path, const QProcessEnvironment& environment)
{
    startChild(m_process, { name, path }, environment);
}

TalkingChild::~TalkingChild()
{
    m_process.closeWriteChannel();
    m_process.waitForFinished(limitMilliseconds);
}

void TalkingChild::say(const QByteArray& line)
{
    m_process.write(line + '\n');
    m_process.waitForBytesWritten(limitMilliseconds);
}

QByteArray TalkingChild::hear()
{
    const QByteArray line = nextLine(m_process);
    if (!line.endsWith('\n')) {
        fail(m_process);
    }
    return line.chopped(line.endsWith("\r\n") ? 2 : 1);
}

Sampler samplerInChild(const QString& name, const QProcessEnvironment& environment)
{
    const auto child = std::make_shared<TalkingChild>(name, QString(), environment);
    return [child] {
        child->say({});
        const QByteArray line = child->hear();
        const QList<QByteArray> amounts = line.split(' ');
        if (amounts.size() != 2) {
            throw Failure(QStringLiteral("not a sample: ") + QString::fromUtf8(line));
        }
        return Amounts { amounts[0].toDouble(), amounts[1].toDouble() };
    };
}

QProcessEnvironment offscreen()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return environment;
}

void serveAsChild(const Suite& suite, const QString& name, const QString& path)
{
    const auto sampler = suite.samplers.find(name);
    if (sampler != suite.samplers.end()) {
        serveSamples(sampler->second());
        return;
    }
    const auto child = suite.children.find(name);
    if (child == suite.children.end()) {
        throw Failure(QStringLiteral("no child \"%1\"").arg(name));
    }
    const ChildResult result = child->second(path);
    const QJsonObject json {
        { QStringLiteral("amount"), result.amount },
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
        line.text = nextLine(process);
    });
    requireSuccess(process);
    if (line.text.isEmpty()) {
        throw Failure(program + QStringLiteral(" wrote nothing"));
    }
    return line;
}

} // namespace bench
