#pragma once

#include <QMutex>
#include <QStringList>

/**
 * Watches what is logged between start() and finish(), and fails the current test on every warning or worse
 * of Qt or the kit that the test did not expect, and on every expected line that did not come.
 *
 * What the offscreen platform says about itself, and everything below a warning that is not the kit's own,
 * goes on to the handler that was there before.
 */
class LogGuard
{
public:
    void start();
    void finish();

    /** Expects @p count warnings of the kit with exactly this text. */
    void expect(const QString& text, int count = 1);

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QMutex mutex;
    QStringList expected;
    QStringList unexpected;
    QtMessageHandler previous = nullptr;
};
