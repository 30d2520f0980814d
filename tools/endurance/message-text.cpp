#include "message-text.h"

#include <QCryptographicHash>

#include <cmath>
#include <iterator>
#include <random>

namespace {

using Random = std::minstd_rand;

constexpr int longestPhrase = 4096;
constexpr int longestPiece = 4;
constexpr const char* pieces[] = { "a", "Z", "0", " ", "  ", "\t", "\n", "\r\n", "\"", "'", "`", "\\", "%",
    "\x7F", "é", "я", "漢", "\u2028", "😀", "𝄞", "\U0010FFFD" };

int sizeOf(int number, Random& random)
{
    if (number < 2) {
        return number * longestMessage;
    }
    std::uniform_real_distribution<double> exponent(0, std::log(longestMessage));
    return static_cast<int>(std::exp(exponent(random)));
}

QByteArray phraseOf(int size, Random& random)
{
    std::uniform_int_distribution<size_t> any(0, std::size(pieces) - 1);
    QByteArray phrase;
    while (phrase.size() + longestPiece <= qMin(size, longestPhrase)) {
        phrase += pieces[any(random)];
    }
    return phrase;
}

} // namespace

QString messageText(int sender, int number)
{
    Random random(static_cast<Random::result_type>(sender * 1000003 + number + 1));
    const int size = sizeOf(number, random);
    const QByteArray phrase = phraseOf(size, random);
    QByteArray text = phrase.repeated(size / qMax(1, phrase.size()));
    text += QByteArray(size - text.size(), '.');
    return QString::fromUtf8(text);
}

QByteArray fingerprint(const QString& text)
{
    return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex();
}
