#include "participant.h"

#include "message-text.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

namespace {

void say(const QByteArray& line)
{
    std::puts(line.constData());
    std::fflush(stdout);
}

/** Nobody is left behind by a driver that was stopped, since that closes the input. */
void endWithInput()
{
    std::thread([] {
        QFile input;
        if (input.open(0, QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            input.readAll();
        }
        std::_Exit(EXIT_FAILURE);
    }).detach();
}

class Participant : public QObject
{
    Q_OBJECT

public:
    explicit Participant(const QString& identity)
        : m_peer(nullptr, identity)
    {
        connect(&m_peer, SIGNAL(messageReceived(const QString&)), this, SLOT(receive(const QString&)));
    }

    int contend(const QString& text)
    {
        if (!m_peer.isClient()) {
            return serve();
        }
        send(text);
        return 0;
    }

    int succeed()
    {
        while (m_peer.isClient()) { }
        return serve();
    }

    int sendAll(int sender, int first, int count)
    {
        for (int number = first; number < first + count; ++number) {
            send(messageText(sender, number));
        }
        return 0;
    }

private Q_SLOTS:

    void receive(const QString& text)
    {
        if (text == QLatin1String("end")) {
            QCoreApplication::quit();
        } else {
            say("received " + fingerprint(text));
        }
    }

private:
    int serve()
    {
        say("primary");
        return QCoreApplication::exec();
    }

    void send(const QString& text)
    {
        say((m_peer.sendMessage(text) ? "acknowledged " : "refused ") + fingerprint(text));
    }

    QtLocalPeer m_peer;
};

} // namespace

int participate(const QString& identity)
{
    Participant participant(identity);
    say("ready");
    std::string line;
    std::getline(std::cin, line);
    endWithInput();
    const QString command = QString::fromStdString(line).section(QLatin1Char(' '), 0, 0);
    const QString arguments = QString::fromStdString(line).section(QLatin1Char(' '), 1);
    if (command == QLatin1String("contend")) {
        return participant.contend(arguments);
    }
    if (command == QLatin1String("succeed")) {
        return participant.succeed();
    }
    if (command == QLatin1String("send")) {
        const QStringList numbers = arguments.split(QLatin1Char(' '));
        return participant.sendAll(
            numbers.value(0).toInt(), numbers.value(1).toInt(), numbers.value(2).toInt());
    }
    return 2;
}

#include "participant.moc"
