#pragma once

#include <QProcess>
#include <QRegularExpression>

/** What a program has said and how it has ended. */
struct Outcome
{
    int exitCode = -1; ///< of one that was stopped, the signal; of one that does not end, this
    QString output;
    QString errors; ///< without what the offscreen platform says of itself
};

inline Outcome runProgram(const QString& program, const QStringList& arguments,
    const QStringList& variables = {}, const QString& folder = {})
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setEnvironment(QProcess::systemEnvironment() + variables);
    process.start(program, arguments, QIODevice::ReadOnly | QIODevice::Text);
    if (!process.waitForFinished(200000)) {
        return {};
    }
    QString errors = QString::fromUtf8(process.readAllStandardError());
    errors.remove(QRegularExpression("This plugin does not support [^\\n]*\\n"));
    return { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()), errors };
}
