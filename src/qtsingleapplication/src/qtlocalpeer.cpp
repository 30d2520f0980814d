#include "qtsingleapplication/src/qtlocalpeer.h"

#include "platform/local-socket-name_p.h"
#include "platform/session-id_p.h"
#include "platform/win32.h"
#include "qtsingleapplication/src/local-peer-names_p.h"

#include <QDataStream>
#include <QLocalServer>
#include <QLocalSocket>
#include <QtDebug>

#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <optional>

namespace {

constexpr int lengthBytes = 4;
// What a QByteArray can hold, its own header and a NUL aside.
constexpr int longestText = std::numeric_limits<int>::max() - 64;

std::optional<quint32> ownSession()
{
    static vantkit::internal::ProcessIdToSessionIdFunction processIdToSessionId = nullptr;
    if (!processIdToSessionId) {
        processIdToSessionId = vantkit::internal::resolveProcessIdToSessionId();
    }
    if (!processIdToSessionId) {
        return std::nullopt;
    }
    DWORD session = 0;
    processIdToSessionId(GetCurrentProcessId(), &session);
    return session;
}

/** Null if nobody takes the connection in time. */
std::unique_ptr<QLocalSocket> connectionTo(const QString& name, int timeout)
{
    auto socket = std::make_unique<QLocalSocket>();
    socket->connectToServer(name, QIODevice::ReadWrite);
    return socket->waitForConnected(timeout) ? std::move(socket) : nullptr;
}

bool isConnected(const QLocalSocket& socket)
{
    return socket.state() == QLocalSocket::ConnectedState;
}

/** Waits as long as the client stays. */
bool waitForLength(QLocalSocket& socket)
{
    while (socket.bytesAvailable() < lengthBytes) {
        if (!isConnected(socket)) {
            return false;
        }
        socket.waitForReadyRead(30000);
    }
    return true;
}

/**
 * What came of the text until it was complete, or nothing more came; nothing if it could not be read. Room is
 * made for what has come and not for what is announced, which anybody may do.
 */
std::optional<QByteArray> readText(QLocalSocket& socket, QDataStream& stream, int length)
{
    QByteArray text;
    while (true) {
        const int begin = text.size();
        const qint64 available = qMax<qint64>(1, socket.bytesAvailable());
        const int wanted = static_cast<int>(qMin<qint64>(available, length - begin));
        text.resize(begin + wanted);
        const int got = stream.readRawData(std::next(text.data(), begin), wanted);
        if (got < 0) {
            qWarning("QtLocalPeer: Message reception failed %s", socket.errorString().toLatin1().constData());
            return std::nullopt;
        }
        text.resize(begin + got);
        if (text.size() == length || !socket.waitForReadyRead(2000)) {
            return text;
        }
    }
}

/** The message of a client that has connected; nothing if there was none to be had. */
std::optional<QString> readMessage(QLocalSocket& socket)
{
    if (!waitForLength(socket)) {
        return std::nullopt;
    }
    QDataStream stream(&socket);
    int length = 0;
    stream >> length;
    if (length < 0 || length > longestText) {
        return std::nullopt;
    }
    try {
        const std::optional<QByteArray> text = readText(socket, stream, length);
        return text ? std::make_optional(QString::fromUtf8(*text)) : std::nullopt;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

/** Waits a moment for the client to take the answer and to go. */
void acknowledge(QLocalSocket& socket)
{
    if (isConnected(socket)) {
        socket.write(QtLocalPeer::ack, qstrlen(QtLocalPeer::ack));
        socket.waitForBytesWritten(1000);
    }
    if (isConnected(socket)) {
        socket.waitForDisconnected(1000);
    }
}

} // namespace

const char* QtLocalPeer::ack = "ack";

QtLocalPeer::QtLocalPeer(QObject* parent, const QString& appId)
    : QObject(parent)
    , localServer(new QLocalServer(this))
{
    const auto names = vantkit::internal::LocalPeerNames::of(appId, ownSession());
    id = names.id;
    socketName = names.socketName;
    lockFile.setFileName(names.lockFile);
    lockFile.open(QIODevice::ReadWrite);
}

QtLocalPeer::~QtLocalPeer()
{
    // Who gets the lock, which goes next, listens at once: the name has to be free by then.
    localServer->close();
}

bool QtLocalPeer::isClient()
{
    if (lockFile.isLocked()) {
        return false;
    }
    if (!lockFile.lock(QtLP_Private::QtLockedFile::WriteLock, false)) {
        return true;
    }
    // On Windows the server tells of the first clients while it begins to listen, and needs to live on after
    // it has told of one.
    connect(localServer, SIGNAL(newConnection()), this, SLOT(receiveConnection()), Qt::QueuedConnection);
    if (!vantkit::internal::listenForUser(*localServer, socketName)) {
        qWarning("QtSingleCoreApplication: listen on local socket failed, %s",
            localServer->errorString().toLocal8Bit().constData());
    }
    return false;
}

bool QtLocalPeer::sendMessage(const QString& message, int timeout)
{
    if (!isClient()) {
        return false;
    }
    std::unique_ptr<QLocalSocket> socket = connectionTo(socketName, timeout / 2);
    if (!socket) {
        // A process that has just become the primary one may not be listening yet.
        Sleep(250);
        socket = connectionTo(socketName, timeout / 2);
    }
    if (!socket) {
        return false;
    }

    // All at once: on Windows this process would have to run again before the text could follow its length.
    const QByteArray text = message.toUtf8();
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly).writeBytes(text.constData(), static_cast<uint>(text.size()));
    socket->write(bytes);
    if (!socket->waitForBytesWritten(timeout) || !socket->waitForReadyRead(timeout)) {
        return false;
    }
    return qstrcmp(socket->read(qstrlen(ack)), ack) == 0;
}

bool QtLocalPeer::unlock()
{
    return lockFile.unlock();
}

QString QtLocalPeer::applicationId() const
{
    return id;
}

void QtLocalPeer::receiveConnection()
{
    std::unique_ptr<QLocalSocket> socket(localServer->nextPendingConnection());
    if (!socket) {
        return;
    }
    const std::optional<QString> message = readMessage(*socket);
    if (!message) {
        return;
    }
    acknowledge(*socket);
    // The client is let go before anybody is told, which may take long.
    socket.reset();
    Q_EMIT messageReceived(*message);
}
