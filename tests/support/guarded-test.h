#pragma once

#include "support/log-guard.h"

#include <QObject>

/** The base of the test classes: every test function runs under a log guard. */
class GuardedTest : public QObject
{
    Q_OBJECT

protected:
    LogGuard log;

protected Q_SLOTS:

    void init() { log.start(); }

    void cleanup() { log.finish(); }
};
