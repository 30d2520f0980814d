#include "tally.h"

#include "failure.h"

#include <numeric>

namespace {

int sum(const QMap<QByteArray, int>& counts)
{
    return std::accumulate(counts.begin(), counts.end(), 0);
}

} // namespace

void Tally::take(const QByteArray& line)
{
    const QByteArray what = line.left(line.indexOf(' '));
    const QByteArray message = line.mid(what.size() + 1);
    if (what == "acknowledged") {
        ++m_acknowledged[message];
    } else if (what == "refused") {
        ++m_refused[message];
    } else if (what == "received") {
        ++m_received[message];
    } else {
        throw Failure(QStringLiteral("a participant said \"%1\"").arg(QString::fromUtf8(line)));
    }
}

void Tally::check() const
{
    int lost = 0;
    for (auto sent = m_acknowledged.begin(); sent != m_acknowledged.end(); ++sent) {
        lost += qMax(0, sent.value() - m_received.value(sent.key()));
    }
    int tooMany = 0;
    for (auto came = m_received.begin(); came != m_received.end(); ++came) {
        tooMany += qMax(0, came.value() - m_acknowledged.value(came.key()) - m_refused.value(came.key()));
    }
    demand(lost == 0 && tooMany == 0,
        QStringLiteral("%1 messages were lost, and %2 came twice or were not sent").arg(lost).arg(tooMany));
}

int Tally::acknowledged() const
{
    return sum(m_acknowledged);
}

int Tally::refused() const
{
    return sum(m_refused);
}
