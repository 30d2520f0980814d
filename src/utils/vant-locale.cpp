#include "utils/vant-locale.h"

#include <QLocale>

VantLocale& VantLocale::getInstance()
{
    static VantLocale instance;
    return instance;
}

VantLocale::VantLocale()
    : languageMap {
        { QStringLiteral("en"), QStringLiteral("enu") },
        { QStringLiteral("ja"), QStringLiteral("jpn") },
        { QStringLiteral("de"), QStringLiteral("deu") },
        { QStringLiteral("ko"), QStringLiteral("krn") },
        { QStringLiteral("fr"), QStringLiteral("fra") },
        { QStringLiteral("it"), QStringLiteral("ita") },
        { QStringLiteral("es"), QStringLiteral("esn") },
        { QStringLiteral("ru"), QStringLiteral("rus") },
        { QStringLiteral("da"), QStringLiteral("dan") },
        { QStringLiteral("no"), QStringLiteral("nor") },
        { QStringLiteral("nb"), QStringLiteral("nor") },
        { QStringLiteral("nn"), QStringLiteral("nor") },
        { QStringLiteral("sv"), QStringLiteral("sve") },
        { QStringLiteral("nl"), QStringLiteral("nld") },
        { QStringLiteral("pl"), QStringLiteral("plk") },
        { QStringLiteral("hu"), QStringLiteral("hun") },
        { QStringLiteral("tr"), QStringLiteral("trk") },
        { QStringLiteral("cs"), QStringLiteral("csy") },
    }
    , defaultLanguage(QStringLiteral("enu"))
{ }

QString VantLocale::getDefaultLanguage()
{
    return getLanguageByLocale(QLocale::system().name().toLower());
}

QString VantLocale::getLanguageByLocale(const QString& locale)
{
    const QString language = locale.section(QLatin1Char('_'), 0, 0);
    if (language == QLatin1String("pt")) {
        return getPortugueseLanguage(locale);
    }
    if (language == QLatin1String("zh")) {
        return getChineseLanguage(locale);
    }
    return languageMap.value(language, defaultLanguage);
}

QString VantLocale::getChineseLanguage(const QString& locale)
{
    const bool traditional = locale == QLatin1String("zh_tw") || locale == QLatin1String("zh_hk")
        || locale == QLatin1String("zh_mo");
    return traditional ? QStringLiteral("cht") : QStringLiteral("chs");
}

QString VantLocale::getPortugueseLanguage(const QString& locale)
{
    const bool european = locale == QLatin1String("pt") || locale == QLatin1String("pt_pt");
    return european ? QStringLiteral("ptg") : QStringLiteral("ptb");
}

void VantLocale::setLanguageMap(QString locale, QString language)
{
    languageMap.insert(locale, language);
}
