#include "languages.h"

namespace gallery {

namespace {

Language language(const char* code, const char* name, const char* locale)
{
    return { QLatin1String(code), QString::fromUtf8(name), QLocale(QLatin1String(locale)) };
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
        language("nor", "Norsk", "nb"),
        language("sve", "Svenska", "sv"),
        language("nld", "Nederlands", "nl"),
        language("plk", "Polski", "pl"),
        language("hun", "Magyar", "hu"),
        language("trk", "Türkçe", "tr"),
        language("csy", "Čeština", "cs"),
        language("ptg", "Português (Portugal)", "pt_PT"),
        language("ptb", "Português (Brasil)", "pt"),
        language("cht", "繁體中文", "zh_TW"),
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

} // namespace gallery
