#pragma once

class QString;

/**
 * One of the processes that contend: says "ready", reads one command from its input, and carries it out.
 *
 *     contend TEXT                becomes the primary process, or hands TEXT to the one that is
 *     succeed                     tries until it is the primary process
 *     send SENDER FIRST COUNT     sends messages of that sender
 *
 * Whoever has become the primary process says "primary", and "received" and the fingerprint of each message;
 * the message "end" ends it. Whoever sends says "acknowledged" or "refused".
 */
int participate(const QString& identity);
