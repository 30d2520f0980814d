#pragma once

#include <QByteArray>
#include <QString>

/** The longest message, in bytes of UTF-8. */
constexpr int longestMessage = 1000000;

/**
 * The text of message @p number of a sender, of blanks, quotes, line ends and letters of many lengths. The
 * first two numbers are the empty message and the longest; most of the others are short.
 */
QString messageText(int sender, int number);

/** By which messages are told apart. */
QByteArray fingerprint(const QString& text);
