#include "texts.h"

#include "languages.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

#include <cmath>

namespace gallery {

namespace {

QMap<QString, QString>& table()
{
    static QMap<QString, QString> texts;
    return texts;
}

QLocale& tableLocale()
{
    static QLocale locale;
    return locale;
}

QLocale localeOf(const QString& code)
{
    for (const Language& language : languages()) {
        if (language.code == code) {
            return language.locale;
        }
    }
    return QLocale(QLocale::English);
}

QMap<QString, QString> textsOf(const QString& language)
{
    QFile file(QStringLiteral(":/gallery/texts/%1.json").arg(language));
    const QJsonObject object =
        file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    QMap<QString, QString> texts;
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        texts.insert(entry.key(), entry.value().toString());
    }
    return texts;
}

} // namespace

void installTexts(const QString& language)
{
    const QString english = QStringLiteral("enu");
    table() = textsOf(english);
    if (language != english) {
        const QMap<QString, QString> translated = textsOf(language);
        for (auto entry = translated.begin(); entry != translated.end(); ++entry) {
            table().insert(entry.key(), entry.value());
        }
    }
    tableLocale() = localeOf(language);
}

QString text(const char* key)
{
    return text(QString::fromUtf8(key));
}

QString text(const QString& key)
{
    const auto found = table().constFind(key);
    if (found == table().constEnd()) {
        qWarning() << "No text for" << key;
        return key;
    }
    return *found;
}

QString asRichText(const QString& text)
{
    return text.toHtmlEscaped()
        .replace(QLatin1String("px"), QLatin1String("p&#120;"))
        .replace(QLatin1Char('\n'), QLatin1String("<br>"));
}

// Bytes alone would be told in English, and what is not empty does not look so.
QString sizeText(qint64 bytes)
{
    const qint64 kilo = 1024;
    QString words = locale().formattedDataSize(qMax(bytes, kilo), 1, QLocale::DataSizeTraditionalFormat);
    if (bytes >= kilo) {
        return words;
    }
    const double tenths = std::ceil(10.0 * static_cast<double>(bytes) / kilo);
    return words.replace(locale().toString(1.0, 'f', 1), locale().toString(tenths / 10, 'f', 1));
}

QLocale locale()
{
    return tableLocale();
}

} // namespace gallery
