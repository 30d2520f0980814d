#include "child.h"

#include "failure.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace {

constexpr int patience = 60000; // milliseconds

/** Meanwhile the event loop takes what all participants say, so that none of them is held up. */
template <typename Condition>
void waitFor(const Condition& condition)
{
    const QDeadlineTimer deadline(patience);
    QTimer wakeUp;
    wakeUp.start(1000);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

Child::Child(const QString& identity)
{
    m_process.start(QCoreApplication::applicationFilePath(), { QStringLiteral("participant"), identity });
}

Child::~Child()
{
    m_process.kill();
    m_process.waitForFinished();
}

void Child::tell(const QString& command)
{
    m_process.write(command.toUtf8() + '\n');
    m_process.waitForBytesWritten(patience);
}

QByteArray Child::line()
{
    waitFor([this] { return m_process.canReadLine() || !isRunning(); });
    demandSilence();
    demand(m_process.canReadLine(), QStringLiteral("a participant has ended, or says nothing"));
    return m_process.readLine().trimmed();
}

void Child::expect(const QByteArray& expected)
{
    const QByteArray said = line();
    demand(said == expected,
        QStringLiteral("a participant said \"%1\" instead of \"%2\"")
            .arg(QString::fromUtf8(said), QString::fromUtf8(expected)));
}

void Child::kill()
{
    m_process.kill();
    m_process.waitForFinished(patience);
    demandSilence();
}

QList<QByteArray> Child::rest()
{
    waitFor([this] { return !isRunning(); });
    demandSilence();
    demand(!isRunning(), QStringLiteral("a participant does not end"));
    demand(m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0,
        QStringLiteral("a participant ended with %1").arg(m_process.exitCode()));
    QList<QByteArray> lines;
    while (m_process.canReadLine()) {
        lines += m_process.readLine().trimmed();
    }
    return lines;
}

bool Child::isRunning() const
{
    return m_process.state() != QProcess::NotRunning;
}

void Child::demandSilence()
{
    const QByteArray warnings = m_process.readAllStandardError().trimmed();
    demand(warnings.isEmpty(), QString::fromUtf8(warnings));
}
