#include "drivers.h"

#include "child.h"
#include "failure.h"
#include "message-text.h"
#include "tally.h"

#include <vantkit-qt/qtsingleapplication/src/qtlocalpeer.h>

#include <QCoreApplication>

#include <memory>
#include <vector>

namespace {

using Children = std::vector<std::unique_ptr<Child>>;

/** Of this run alone, and of its own for each driver. */
QString identityOf(const char* driver)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(driver)).arg(QCoreApplication::applicationPid());
}

Children start(int count, const QString& identity)
{
    Children children;
    for (int i = 0; i < count; ++i) {
        children.push_back(std::make_unique<Child>(identity));
    }
    for (const auto& child : children) {
        child->expect("ready");
    }
    return children;
}

std::unique_ptr<Child> startOne(const QString& identity)
{
    return std::move(start(1, identity).front());
}

void send(const QString& identity, const QString& text)
{
    demand(
        QtLocalPeer(nullptr, identity).sendMessage(text), QStringLiteral("\"%1\" was not taken").arg(text));
}

/** The message that ends the primary process stands behind all others, so that it takes those first. */
void end(Child& primary, const QString& identity, Tally& tally)
{
    send(identity, QStringLiteral("end"));
    const QList<QByteArray> lines = primary.rest();
    for (const QByteArray& line : lines) {
        tally.take(line);
    }
}

void contend(const Children& children, const QString& identity, Tally& tally)
{
    for (size_t i = 0; i < children.size(); ++i) {
        children[i]->tell(QStringLiteral("contend message %1").arg(i));
    }
    Child* primary = nullptr;
    for (const auto& child : children) {
        const QByteArray line = child->line();
        if (line != "primary") {
            tally.take(line);
            continue;
        }
        demand(!primary, QStringLiteral("two processes are the primary one"));
        primary = child.get();
    }
    demand(primary, QStringLiteral("no process is the primary one"));
    end(*primary, identity, tally);
}

/** @p end ends the child that it is given. */
template <typename End>
void succeedEachOther(int rounds, const QString& identity, const End& end)
{
    std::unique_ptr<Child> primary;
    for (int round = 0; round <= rounds; ++round) {
        std::unique_ptr<Child> next = startOne(identity);
        const bool contends = round % 2 == 0;
        if (contends) {
            next->tell(QStringLiteral("succeed"));
        }
        if (primary) {
            end(*primary);
        }
        if (!contends) {
            next->tell(QStringLiteral("succeed"));
        }
        next->expect("primary");
        const QString text = QStringLiteral("message %1").arg(round);
        send(identity, text);
        next->expect("received " + fingerprint(text));
        primary = std::move(next);
    }
}

} // namespace

QString manyStart(int processes, int rounds)
{
    const QString identity = identityOf("starts");
    int acknowledged = 0;
    int refused = 0;
    for (int round = 0; round < rounds; ++round) {
        Tally tally;
        contend(start(processes, identity), identity, tally);
        tally.check();
        acknowledged += tally.acknowledged();
        refused += tally.refused();
    }
    return QStringLiteral(
        "%1 rounds of %2 processes: one primary each, %3 messages delivered once, %4 refused")
        .arg(rounds)
        .arg(processes)
        .arg(acknowledged)
        .arg(refused);
}

QString primaryIsKilled(int rounds)
{
    succeedEachOther(rounds, identityOf("kills"), [](Child& primary) { primary.kill(); });
    return QStringLiteral("%1 primaries killed and succeeded").arg(rounds);
}

QString primaryEnds(int rounds)
{
    const QString identity = identityOf("ends");
    succeedEachOther(rounds, identity, [&identity](Child& primary) {
        send(identity, QStringLiteral("end"));
        primary.rest();
    });
    return QStringLiteral("%1 primaries ended and succeeded").arg(rounds);
}

QString manyMessages(int clients, int messages)
{
    const QString identity = identityOf("messages");
    const std::unique_ptr<Child> primary = startOne(identity);
    primary->tell(QStringLiteral("succeed"));
    primary->expect("primary");

    const int each = messages / clients;
    const Children children = start(clients, identity);
    for (int i = 0; i < clients; ++i) {
        children[static_cast<size_t>(i)]->tell(QStringLiteral("send %1 0 %2").arg(i).arg(each));
    }
    Tally tally;
    for (const auto& child : children) {
        const QList<QByteArray> lines = child->rest();
        for (const QByteArray& line : lines) {
            tally.take(line);
        }
    }
    end(*primary, identity, tally);
    tally.check();
    demand(tally.refused() == 0, QStringLiteral("%1 messages were refused").arg(tally.refused()));
    return QStringLiteral("%1 messages of %2 clients delivered once").arg(tally.acknowledged()).arg(clients);
}
