#include "qtsingleapplication/src/qtsingleapplication.h"

#include "qtsingleapplication/src/qtlocalpeer.h"

#include <QWidget>

QtSingleApplication::QtSingleApplication(int& argc, char** argv, bool guiEnabled)
    : QApplication(argc, argv, guiEnabled)
{
    sysInit(QString());
}

QtSingleApplication::QtSingleApplication(const QString& appId, int& argc, char** argv)
    : QApplication(argc, argv)
{
    sysInit(appId);
}

QtSingleApplication::~QtSingleApplication() = default;

void QtSingleApplication::sysInit(const QString& appId)
{
    activationWidget.clear();
    peer = new QtLocalPeer(this, appId);
    connect(peer, SIGNAL(messageReceived(QString)), this, SIGNAL(messageReceived(QString)));
}

bool QtSingleApplication::isRunning()
{
    return peer->isClient();
}

QString QtSingleApplication::id() const
{
    return peer->applicationId();
}

bool QtSingleApplication::unlock()
{
    return peer->unlock();
}

bool QtSingleApplication::sendMessage(const QString& message, int timeout)
{
    return peer->sendMessage(message, timeout);
}

void QtSingleApplication::setActivationWindow(QWidget* widget, bool activateOnMessage)
{
    activationWidget = widget;
    if (activateOnMessage) {
        connect(peer, SIGNAL(messageReceived(QString)), this, SLOT(activateWindow()));
    } else {
        disconnect(peer, SIGNAL(messageReceived(QString)), this, SLOT(activateWindow()));
    }
}

QWidget* QtSingleApplication::activationWindow() const
{
    return activationWidget;
}

void QtSingleApplication::activateWindow()
{
    if (!activationWidget) {
        return;
    }
    activationWidget->setWindowState(activationWidget->windowState() & ~Qt::WindowMinimized);
    activationWidget->raise();
    activationWidget->activateWindow();
}
