#pragma once

#include <QElapsedTimer>
#include <QJsonObject>
#include <QObject>

class QWidget;

namespace gallery {

/** Takes the time from the start of the program to the first paint of its window, phase by phase. */
class StartupTimes : public QObject
{
    Q_OBJECT

public:
    StartupTimes();

    /** Ends the phase that began when the one before it ended, and begins the next. */
    void endPhase(const char* name);

    /** Writes the phases to standard output as JSON once @p window is painted, and quits the application. */
    void reportFirstPaintOf(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void report();

    QElapsedTimer m_clock;
    qint64 m_phaseBegin = 0;
    QJsonObject m_phases;
};

} // namespace gallery
