#pragma once

#include "vantkit-export.h"

#include <QApplication>
#include <QPointer>

class QtLocalPeer;

/**
 * The application object of a program of which one instance is to run for each application and login session.
 *
 * A process that finds isRunning() true hands its request to the one that runs by sendMessage(), and ends.
 * The one that runs gets it as messageReceived(), and can have a window brought to the front then. Nothing is
 * decided, and nobody is kept from running, before isRunning() or sendMessage() is called. How it works is
 * told in QtLocalPeer.
 */
class VANTKIT_EXPORT QtSingleApplication : public QApplication
{
    Q_OBJECT

public:
    /** An application that is known by the path of its program. The arguments are those of QApplication. */
    explicit QtSingleApplication(int& argc, char** argv, bool guiEnabled = true);
    /** An application that is known by @p appId, wherever its program lies. */
    QtSingleApplication(const QString& appId, int& argc, char** argv);
    ~QtSingleApplication() override;

    /** Called by the constructors. */
    void sysInit(const QString& appId);

    /** Whether another process is the one that runs. If there is none, this one is from now on. */
    bool isRunning();
    /** The @p appId of the constructor, or the path of the program in lower case. */
    QString id() const;

    /**
     * From now on a new process counts as the one that runs; for a program that is about to end, or to start
     * itself anew. It goes on taking messages as long as nobody else does. False if that failed.
     */
    bool unlock();

    /**
     * Makes @p widget the window that activateWindow() acts on; null for none. It stays its owner's, and when
     * it goes there is none. With @p activateOnMessage each message activates it, after the slots of
     * messageReceived() have run: ask for that once, since asking again activates it twice. Without, messages
     * no longer activate it.
     */
    void setActivationWindow(QWidget* widget, bool activateOnMessage = true);
    QWidget* activationWindow() const;

public Q_SLOTS:
    /**
     * Hands @p message to the process that runs, and waits until it was taken: true. False if this is that
     * process, and on any failure. See QtLocalPeer::sendMessage for @p timeout, in milliseconds.
     */
    bool sendMessage(const QString& message, int timeout = 5000);
    /** Brings the activation window to the front, out of its icon if need be. */
    void activateWindow();

Q_SIGNALS:
    /** Another process has sent @p message. */
    void messageReceived(const QString& message);

private:
    QtLocalPeer* peer = nullptr; ///< a child
    QPointer<QWidget> activationWidget;
};
