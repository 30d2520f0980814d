#pragma once

#include "qtsingleapplication/src/qtlockedfile.h"
#include "vantkit-export.h"

#include <QObject>

class QLocalServer;

/**
 * Lets the processes of one application find out which of them is the primary one, and
 * the others hand it a text.
 *
 * The primary process is the one that has the lock on a file in the temporary folder, of which there is one
 * for each application and login session; the file stays there. It listens on a local socket. Everything
 * happens on the calling thread, which has to be that of the application object; use QtSingleApplication for
 * an application with windows.
 */
class VANTKIT_EXPORT QtLocalPeer : public QObject
{
    Q_OBJECT

public:
    /**
     * Decides nothing yet. @p appId says which application it is; by default it is the path of the program in
     * lower case. The application object has to exist.
     */
    explicit QtLocalPeer(QObject* parent = nullptr, const QString& appId = QString());
    /** If this process was the primary one, the next that asks becomes it. */
    ~QtLocalPeer() override;

    /**
     * Whether another process is the primary one. If there is none, this one becomes it and listens from now
     * on. If it cannot listen, it is the primary one all the same and nobody can reach it, which is a warning
     * in Qt's default category.
     *
     * If the lock file cannot be opened, as in a temporary folder that may not be written to, every process
     * takes another one for the primary one, with a warning in Qt's default category. There is none then, and
     * sendMessage() fails. So if isClient() is true, sendMessage() false, and isClient() true again, do not
     * end without a word: tell the user, or go on as if no other process were there.
     */
    bool isClient();

    /**
     * Hands @p message to the primary process. Only if that has taken it the result is true; it ends at a NUL
     * character for the receiver.
     *
     * False if this process is the primary one, or becomes it since there is none. Each of the steps, which
     * are to connect, to send and to be answered, may take @p timeout milliseconds; to connect is tried
     * twice, for half of that each, with 250 ms in between. So it returns after no more than three times
     * @p timeout and 250 ms. A primary process that is busy for longer may still take the message afterwards.
     */
    bool sendMessage(const QString& message, int timeout = 5000);

    /**
     * Gives the lock up, and nothing else: from now on another process may become the primary one. This one
     * goes on listening as long as it lives, and competes again at its next isClient(). False if that failed.
     *
     * A process that becomes the primary one while this one lives cannot listen, except on Windows, where
     * the system hands each message to one of the two. It stays deaf, with the warning of isClient(), even
     * when this one has ended; messages come here until then, and afterwards nowhere. So this is for a
     * successor that has to begin at once and can do without messages. One that has to get them begins when
     * this peer is gone, which gives the lock up by itself.
     */
    bool unlock();

    /** Which application it is: the constructor's id, or the path of the program in lower case. */
    QString applicationId() const;

    /** What the primary process answers: "ack". */
    static const char* ack;

Q_SIGNALS:
    /** Another process has sent @p message, and knows that it was taken. A slot may take its time. */
    void messageReceived(const QString& message);

protected Q_SLOTS:
    /** Takes the message of one client that waits. */
    void receiveConnection();

private:
    QString id;
    QString socketName;
    QLocalServer* localServer; ///< a child
    QtLP_Private::QtLockedFile lockFile;
};
