#include "virtual-display.h"

#include "bench.h"

#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/prctl.h>
#endif

namespace bench {

namespace {

constexpr int limitMilliseconds = 20000;

// Starts the program, which writes a line when it is ready, and gives that line.
QString startAndHear(QProcess& process, const QString& program, const QStringList& arguments)
{
    process.start(program, arguments, QIODevice::ReadOnly);
    while (!process.canReadLine() && process.waitForReadyRead(limitMilliseconds)) { }
    const QString line = QString::fromLatin1(process.readLine()).trimmed();
    if (line.isEmpty()) {
        throw Failure(
            QStringLiteral("%1 does not start: %2 %3")
                .arg(program, process.errorString(), QString::fromLocal8Bit(process.readAllStandardError())));
    }
    return line;
}

} // namespace

BoundProcess::~BoundProcess()
{
    terminate();
    if (!waitForFinished(limitMilliseconds)) {
        kill();
        waitForFinished(limitMilliseconds);
    }
}

void BoundProcess::setupChildProcess()
{
#ifdef Q_OS_LINUX
    prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
}

VirtualDisplay::VirtualDisplay()
{
    startServer();
    startWindowManager();
}

QProcessEnvironment VirtualDisplay::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("DISPLAY"), m_name);
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    return environment;
}

// The server chooses a number that is free, and tells it when it takes clients.
void VirtualDisplay::startServer()
{
    m_name = QLatin1Char(':')
        + startAndHear(m_server, QStringLiteral("Xvfb"),
            { QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                QStringLiteral("0"), QStringLiteral("1280x1024x24"), QStringLiteral("-noreset"),
                QStringLiteral("-nolisten"), QStringLiteral("tcp") });
}

// Its settings are those that it comes with, not the user's.
void VirtualDisplay::startWindowManager()
{
    QProcessEnvironment settings = environment();
    settings.insert(QStringLiteral("HOME"), m_home.path());
    settings.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.path());
    m_windowManager.setProcessEnvironment(settings);
    startAndHear(m_windowManager, QStringLiteral("openbox"),
        { QStringLiteral("--sm-disable"), QStringLiteral("--startup"), QStringLiteral("echo ready") });
}

} // namespace bench
