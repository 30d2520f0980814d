#include "startup-times.h"

#include <QCoreApplication>
#include <QEvent>
#include <QJsonDocument>
#include <QTextStream>
#include <QTimer>
#include <QWidget>

namespace gallery {

namespace {

double milliseconds(qint64 nanoseconds)
{
    return static_cast<double>(nanoseconds / 1000) / 1000.0;
}

} // namespace

StartupTimes::StartupTimes()
{
    m_clock.start();
}

void StartupTimes::endPhase(const char* name)
{
    const qint64 now = m_clock.nsecsElapsed();
    m_phases.insert(QLatin1String(name), milliseconds(now - m_phaseBegin));
    m_phaseBegin = now;
}

void StartupTimes::reportFirstPaintOf(QWidget* window)
{
    window->installEventFilter(this);
}

bool StartupTimes::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // The window's children are painted, and all of it is put on the screen, before the next event.
        QTimer::singleShot(0, this, &StartupTimes::report);
    }
    return QObject::eventFilter(watched, event);
}

void StartupTimes::report()
{
    endPhase("first_paint");
    m_phases.insert(QStringLiteral("total"), milliseconds(m_phaseBegin));
    QTextStream(stdout) << QJsonDocument(m_phases).toJson(QJsonDocument::Compact) << '\n';
    QCoreApplication::quit();
}

} // namespace gallery
