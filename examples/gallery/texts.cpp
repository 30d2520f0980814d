#include "texts.h"

#include "languages.h"
#include "theme.h"

#include <QDebug>

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
    return readTexts(QStringLiteral(":/gallery/texts/%1.json").arg(language));
}

} // namespace

void installTexts(const QString& language)
{
    table() = textsOf(QStringLiteral("enu"));
    const QMap<QString, QString> translated = textsOf(language);
    for (auto entry = translated.begin(); entry != translated.end(); ++entry) {
        table().insert(entry.key(), entry.value());
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

QLocale locale()
{
    return tableLocale();
}

} // namespace gallery
