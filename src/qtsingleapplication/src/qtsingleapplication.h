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

    /**
     * Whether another process is the one that runs. If there is none, this one is from now on.
     *
     * It is true in every process if the lock file in the temporary folder cannot be opened. Nobody takes a
     * message then: see QtLocalPeer::isClient for what to do.
     */
    bool isRunning();
    /** The @p appId of the constructor, or the path of the program in lower case. */
    QString id() const;

    /**
     * From now on a new process counts as the one that runs, although this one goes on and keeps listening.
     * False if that failed.
     *
     * It helps a program that takes long to end, and that the user shall be able to start again meanwhile. It
     * does not help one that starts itself anew: while this one listens the new one cannot, and never gets a
     * message. Start the new one when this object is gone, as the last act of `main`, and leave the lock
     * alone. See QtLocalPeer::unlock.
     */
    bool unlock();

    /**
     * Makes @p widget the window that activateWindow() acts on; null for none. It stays its owner's, and when
     * it goes there is none. With @p activateOnMessage each message activates it, after the slots of
     * messageReceived() have run: ask for that once, since asking again activates it twice. Without, messages
     * no longer activate it.
     */
    void setActivationWindow(QWidget* widget, bool activateOnMessage = true);
    /** The window that activateWindow() acts on; null if there is none, or none any more. */
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
