// A participant with the kit's locked file, of which each thread has one, and its peer.

#include "processes/participant.h"
#include "processes/system.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>
#include <vantkit-qt/qtsingleapplication/src/qtlockedfile.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QUrl>

#include <random>
#include <thread>

using QtLP_Private::QtLockedFile;

namespace {

std::string warnings;

void collectWarning(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    warnings += " [" + text.toStdString() + "]";
}

/** The file "file", or that of another name. A lock that may be waited for has a word more. */
Verbs fileVerbs()
{
    const auto file = std::make_shared<std::unique_ptr<QtLockedFile>>();
    const auto renew = [=](const QString& name) {
        *file = std::make_unique<QtLockedFile>(name);
        return (*file)->open(QIODevice::ReadWrite);
    };
    renew(QStringLiteral("file"));
    const auto lock = [=](QtLockedFile::LockMode mode) {
        return [=](const Words& words) { return yesOrNo((*file)->lock(mode, !words.empty())); };
    };
    const auto open = [=](QIODevice::OpenMode mode) {
        return [=](const Words&) { return yesOrNo((*file)->open(mode)); };
    };
    Verbs verbs {
        { "new", [=](const Words& words) { return yesOrNo(renew(QString::fromStdString(words.at(0)))); } },
        { "shut", [=](const Words&) { return (*file)->close(), yesOrNo(true); } },
        { "reopen", open(QIODevice::ReadWrite) },
        { "truncate", open(QIODevice::ReadWrite | QIODevice::Truncate) },
        { "read", lock(QtLockedFile::ReadLock) },
        { "write", lock(QtLockedFile::WriteLock) },
        { "none", lock(QtLockedFile::NoLock) },
        { "unlock", [=](const Words&) { return yesOrNo((*file)->unlock()); } },
        { "mode", [=](const Words&) { return std::to_string((*file)->lockMode()); } },
    };
    verbs.merge(mutexVerbs());
    return verbs;
}

/** A text of its own for each number, of up to a million bytes, with all that is special. */
QString textOf(int number)
{
    static const QString letters = QStringLiteral("\uFFFD\u2028😀𝄞漢яéZ0 \t\n\r\n\"'`\\%\x7F");
    std::minstd_rand random(static_cast<unsigned>(number) + 1);
    const QString phrase = QString::number(number) + letters.right(static_cast<int>(random() % 16));
    return phrase.repeated(1 << random() % 15);
}

/** By which a text is told apart, of thousands that are long. */
QString signOf(const QString& text)
{
    return text.size() < 1000 ? text
                              : QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex();
}

/** Of the one identity that all participants have. */
class Peer : public QObject
{
    Q_OBJECT

public:
    QStringList received;

    QtLocalPeer* operator->()
    {
        if (!m_peer) {
            m_peer = std::make_unique<QtLocalPeer>(nullptr, QStringLiteral("scene"));
            connect(m_peer.get(), SIGNAL(messageReceived(QString)), this, SLOT(receive(QString)));
        }
        return m_peer.get();
    }

    std::string next()
    {
        while (received.isEmpty()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return QUrl::toPercentEncoding(received.takeFirst()).toStdString();
    }

    /** Those of the numbers from the first word on, as many as the second says. */
    static QStringList texts(const Words& words)
    {
        QStringList texts;
        for (int number = std::stoi(words.at(0)); texts.size() < std::stoi(words.at(1)); ++number) {
            texts += textOf(number);
        }
        return texts;
    }

private Q_SLOTS:

    void receive(const QString& text) { received += signOf(text); }

private:
    std::unique_ptr<QtLocalPeer> m_peer;
};

bool send(Peer& peer, const Words& words)
{
    const QByteArray text = QByteArray::fromStdString(words.empty() ? "" : words[0]);
    return peer->sendMessage(QUrl::fromPercentEncoding(text), words.size() < 2 ? 20000 : std::stoi(words[1]));
}

bool sendTexts(Peer& peer, const Words& words)
{
    const QStringList texts = Peer::texts(words);
    return std::all_of(
        texts.begin(), texts.end(), [&](const QString& text) { return peer->sendMessage(text, 20000); });
}

/** Whether they came, each once, and nothing else. */
bool takeTexts(Peer& peer, const Words& words)
{
    QStringList expected = Peer::texts(words);
    std::transform(expected.begin(), expected.end(), expected.begin(), signOf);
    expected.sort();
    QStringList received = std::exchange(peer.received, {});
    received.sort();
    return received == expected;
}

/** Tries until it is the primary process. */
bool succeed(Peer& peer)
{
    while (peer->isClient()) { }
    return true;
}

Verbs peerVerbs(Peer& peer)
{
    Verbs verbs {
        { "identity", [&](const Words&) { return peer->applicationId().toStdString(); } },
        { "isClient", [&](const Words&) { return yesOrNo(peer->isClient()); } },
        { "succeed", [&](const Words&) { return yesOrNo(succeed(peer)); } },
        { "unlock", [&](const Words&) { return yesOrNo(peer->unlock()); } },
        { "send", [&](const Words& words) { return yesOrNo(send(peer, words)); } },
        { "send-texts", [&](const Words& words) { return yesOrNo(sendTexts(peer, words)); } },
        { "take-texts", [&](const Words& words) { return yesOrNo(takeTexts(peer, words)); } },
        { "next", [&](const Words&) { return peer.next(); } },
        { "left", [&](const Words&) { return std::to_string(peer.received.size()); } },
    };
    verbs.merge(mutexVerbs());
    verbs.merge(systemVerbs());
    return verbs;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(collectWarning);
    {
        Peer peer;
        Participant participant(peerVerbs(peer), fileVerbs);
        std::thread input([&] {
            // What it is told is done by the main thread, whose event loop runs meanwhile.
            Participant::serve([&](const std::string& line) {
                std::string answer;
                const auto perform = [&] {
                    answer = participant.perform(line);
                    answer += std::exchange(warnings, {});
                };
                QMetaObject::invokeMethod(&application, perform, Qt::BlockingQueuedConnection);
                return answer;
            });
            QMetaObject::invokeMethod(&application, "quit", Qt::QueuedConnection);
        });
        QCoreApplication::exec();
        input.join();
    }
    std::fputs(warnings.c_str(), stderr);
}

#include "kit-participant.moc"
