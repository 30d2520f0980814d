#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

namespace bench {

/** A process that does not outlive this one, however this one ends. */
class BoundProcess : public QProcess
{
public:
    ~BoundProcess() override;

protected:
    void setupChildProcess() override;
};

/** An X display of its own (Xvfb) with a window manager on it (openbox), for as long as the object lives. */
class VirtualDisplay
{
public:
    VirtualDisplay();

    /** That of programs which show their windows there. */
    QProcessEnvironment environment() const;

private:
    void startServer();
    void startWindowManager();

    QTemporaryDir m_home;
    QString m_name;
    BoundProcess m_server;
    BoundProcess m_windowManager;
};

} // namespace bench
