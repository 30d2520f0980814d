#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/** Counts what became of every message, by its fingerprint. */
class Tally
{
public:
    /**
     * Takes a line in which a participant says so: "acknowledged", "refused" or
     * "received", and the fingerprint.
     */
    void take(const QByteArray& line);

    /**
     * Demands that each message that was acknowledged has been received once, each that was refused at most
     * once, and nothing else.
     */
    void check() const;

    int acknowledged() const;
    int refused() const;

private:
    using Counts = QMap<QByteArray, int>;

    Counts m_acknowledged;
    Counts m_refused;
    Counts m_received;
};
