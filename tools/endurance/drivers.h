#pragma once

#include <QString>

// Each driver has real processes do what it is called after, throws a Failure as soon as the library breaks a
// promise, and gives its figures.

/**
 * @p processes contend at once, in every round: one becomes the primary process, and gets
 * the messages of the others.
 */
QString manyStart(int processes, int rounds);

/**
 * The primary process is killed in every round. The next one, which tries all the time or comes later,
 * becomes it, listens and takes a message.
 */
QString primaryIsKilled(int rounds);

/** The same with one that ends in order. */
QString primaryEnds(int rounds);

/** So many messages of @p clients that send at the same time all arrive, once and unchanged. */
QString manyMessages(int clients, int messages);
