// A participant with the kit's locked file, of which each thread has one, and its peer.

#include "processes/participant.h"
#include "processes/scene-identity.h"
#include "processes/system.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>
#include <vantkit-qt/qtsingleapplication/src/qtlockedfile.h>

#include <QCoreApplication>
#include <QUrl>

#include <memory>
#include <random>
#include <thread>

using QtLP_Private::QtLockedFile;

namespace {

std::string warnings;

void collectWarning(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    if (!text.startsWith("QWindowsPipeWriter: ")) { // Qt, of a client that went without its answer
        warnings += " [" + text.toStdString() + "]";
    }
}

/** Has all done by the main thread, whose event loop runs meanwhile, or directly, and tells the warnings. */
Verbs performed(Verbs verbs, Qt::ConnectionType how)
{
    for (auto& [name, verb] : verbs) {
        verb = [how, perform = verb](const Words& words) {
            std::string answer;
            QMetaObject::invokeMethod(
                qApp, [&] { answer = perform(words); }, how);
            return answer + std::exchange(warnings, {});
        };
    }
    return verbs;
}

/** The file "file", or that of another name. A lock that may be waited for has a word more. */
Verbs fileVerbs()
{
    const auto file = std::make_shared<std::unique_ptr<QtLockedFile>>();
    const auto open = [=](QIODevice::OpenMode more = {}) {
        return (*file)->open(QIODevice::ReadWrite | more);
    };
    const auto renew = [=](const std::string& name) {
        *file = std::make_unique<QtLockedFile>(QString::fromStdString(name));
        return open();
    };
    renew("file");
    const auto lock = [=](QtLockedFile::LockMode mode) {
        return [=](const Words& words) { return yesOrNo((*file)->lock(mode, !words.empty())); };
    };
    Verbs verbs {
        { "new", [=](const Words& words) { return yesOrNo(renew(words.at(0))); } },
        { "shut", [=](const Words&) { return (*file)->close(), "true"; } },
        { "reopen", [=](const Words&) { return yesOrNo(open()); } },
        { "truncate", [=](const Words&) { return yesOrNo(open(QIODevice::Truncate)); } },
        { "read", lock(QtLockedFile::ReadLock) },
        { "write", lock(QtLockedFile::WriteLock) },
        { "none", lock(QtLockedFile::NoLock) },
        { "unlock", [=](const Words&) { return yesOrNo((*file)->unlock()); } },
        { "mode", [=](const Words&) { return std::to_string((*file)->lockMode()); } },
    };
    verbs.merge(mutexVerbs());
    return performed(verbs, Qt::DirectConnection);
}

/** So many texts from a number on. Each has its own, of up to a million bytes, with all that is special. */
QStringList texts(const Words& words)
{
    static const QString letters = QStringLiteral("\uFFFD\u2028😀𝄞漢яéZ0 \t\n\r\n\"'`\\%\x7F");
    QStringList texts;
    for (int number = std::stoi(words.at(0)); texts.size() < std::stoi(words.at(1)); ++number) {
        std::minstd_rand random(static_cast<unsigned>(number) + 1);
        const QString phrase = QString::number(number) + letters.right(static_cast<int>(random() % 16));
        texts += phrase.repeated(1 << random() % 15);
    }
    texts.sort();
    return texts;
}

/** Of the one identity that all participants of a scene have. */
class Peer : public QObject
{
    Q_OBJECT

public:
    QStringList received;

    QtLocalPeer* operator->()
    {
        if (!m_peer) {
            m_peer = std::make_unique<QtLocalPeer>(nullptr, sceneIdentity());
            connect(m_peer.get(), SIGNAL(messageReceived(QString)), this, SLOT(receive(QString)));
        }
        return m_peer.get();
    }

    bool send(const QStringList& texts, int timeout = 20000)
    {
        return std::all_of(texts.begin(), texts.end(),
            [=](const QString& text) { return (*this)->sendMessage(text, timeout); });
    }

    std::string next()
    {
        while (received.isEmpty()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return QUrl::toPercentEncoding(received.takeFirst()).toStdString();
    }

private Q_SLOTS:

    void receive(const QString& text) { received += text; }

private:
    std::unique_ptr<QtLocalPeer> m_peer;
};

Verbs peerVerbs(Peer& peer)
{
    Verbs verbs {
        { "identity", [&](const Words&) { return peer->applicationId().toStdString(); } },
        { "isClient", [&](const Words&) { return yesOrNo(peer->isClient()); } },
        { "succeed",
            [&](const Words&) {
                while (peer->isClient()) { }
                return "true";
            } },
        { "unlock", [&](const Words&) { return yesOrNo(peer->unlock()); } },
        { "send",
            [&](const Words& words) {
                const QByteArray text = QByteArray::fromStdString(words.empty() ? "" : words[0]);
                const int timeout = words.size() < 2 ? 20000 : std::stoi(words[1]);
                return yesOrNo(peer.send({ QUrl::fromPercentEncoding(text) }, timeout));
            } },
        { "send-texts", [&](const Words& words) { return yesOrNo(peer.send(texts(words))); } },
        { "take-texts",
            [&](const Words& words) {
                peer.received.sort();
                return yesOrNo(std::exchange(peer.received, {}) == texts(words));
            } },
        { "next", [&](const Words&) { return peer.next(); } },
        { "left", [&](const Words&) { return std::to_string(peer.received.size()); } },
    };
    verbs.merge(mutexVerbs());
    verbs.merge(systemVerbs());
    return performed(verbs, Qt::BlockingQueuedConnection);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(collectWarning);
    {
        Peer peer;
        std::thread input([&] {
            serve(peerVerbs(peer), fileVerbs);
            QMetaObject::invokeMethod(&application, "quit", Qt::QueuedConnection);
        });
        QCoreApplication::exec();
        input.join();
    }
    std::fputs(warnings.c_str(), stderr);
}

#include "kit-participant.moc"
