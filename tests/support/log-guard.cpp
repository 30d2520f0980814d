#include "support/log-guard.h"

#include <QtTest>

namespace {

LogGuard* watching = nullptr;

const QLatin1String kitCategory("debug.message");
const QLatin1String platformsOwn("This plugin does not support ");
const QLatin1String winesOwn("QPixmap::fromWinHICON(), "); // which lacks icons

bool mustBeExpected(QtMsgType type, const QString& category, const QString& text)
{
    const bool grave = type != QtDebugMsg && type != QtInfoMsg;
    return (grave || category == kitCategory) && !text.startsWith(platformsOwn) && !text.startsWith(winesOwn);
}

} // namespace

void LogGuard::start()
{
    Q_ASSERT(!watching);
    expected.clear();
    unexpected.clear();
    watching = this;
    previous = qInstallMessageHandler(handle);
}

void LogGuard::finish()
{
    qInstallMessageHandler(previous);
    watching = nullptr;
    for (const QString& line : qAsConst(unexpected)) {
        QTest::qFail(qUtf8Printable("Unexpected log line: " + line), __FILE__, __LINE__);
    }
    for (const QString& line : qAsConst(expected)) {
        QTest::qFail(qUtf8Printable("Missing log line: " + line), __FILE__, __LINE__);
    }
}

void LogGuard::expect(const QString& text, int count)
{
    const QMutexLocker locker(&mutex);
    for (int i = 0; i < count; ++i) {
        expected += kitCategory + ": " + text;
    }
}

void LogGuard::handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const QString category = QString::fromUtf8(context.category);
    if (type == QtFatalMsg || !mustBeExpected(type, category, text)) {
        watching->previous(type, context, text);
        return;
    }
    const QMutexLocker locker(&watching->mutex);
    const QString line = category + ": " + text;
    if (type != QtWarningMsg || !watching->expected.removeOne(line)) {
        watching->unexpected += line;
    }
}
