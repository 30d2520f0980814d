#include "languages.h"

#include <QLocale>

namespace gallery {

namespace {

Language language(const char* code, const char* name, const char* locales)
{
    return { QLatin1String(code), QString::fromUtf8(name),
        QString::fromLatin1(locales).split(QLatin1Char(' ')) };
}

} // namespace

const QList<Language>& languages()
{
    static const QList<Language> table = {
        language("enu", "English", "en"),
        language("jpn", "日本語", "ja"),
        language("deu", "Deutsch", "de"),
        language("krn", "한국어", "ko"),
        language("fra", "Français", "fr"),
        language("ita", "Italiano", "it"),
        language("esn", "Español", "es"),
        language("rus", "Русский", "ru"),
        language("dan", "Dansk", "da"),
        language("nor", "Norsk", "no nb nn"),
        language("sve", "Svenska", "sv"),
        language("nld", "Nederlands", "nl"),
        language("plk", "Polski", "pl"),
        language("hun", "Magyar", "hu"),
        language("trk", "Türkçe", "tr"),
        language("csy", "Čeština", "cs"),
        language("ptg", "Português (Portugal)", "pt_PT"),
        language("ptb", "Português (Brasil)", "pt"),
        language("cht", "繁體中文", "zh_TW zh_HK zh_MO"),
        language("chs", "简体中文", "zh"),
    };
    return table;
}

QStringList languageCodes()
{
    QStringList codes;
    for (const Language& language : languages()) {
        codes << language.code;
    }
    return codes;
}

QString systemLanguage()
{
    const QString locale = QLocale::system().name();
    for (const QString& name : { locale, locale.section(QLatin1Char('_'), 0, 0) }) {
        for (const Language& language : languages()) {
            if (language.locales.contains(name)) {
                return language.code;
            }
        }
    }
    return QStringLiteral("enu");
}

} // namespace gallery
