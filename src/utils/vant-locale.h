#pragma once

#include "vantkit-export.h"

#include <QMap>
#include <QString>

/**
 * Turns the name of a locale, as Qt writes it but in lower case ("en_us"), into the three letters that the
 * products call its language by ("enu").
 *
 * It comes with a table of 16 languages and with rules for Portuguese and Chinese, which depend on the
 * region. What it does not know counts as English. Reads no file, and ties to nothing else in the kit.
 *
 * Asking is safe from any thread, as long as nobody calls setLanguageMap().
 */
class VANTKIT_EXPORT VantLocale
{
public:
    /** The one instance, created on the first call. */
    static VantLocale& getInstance();

    /** A table of its own, with nothing but what the kit comes with. */
    VantLocale();

    /** The code of the system's language, whatever case the system writes its locale in. */
    QString getDefaultLanguage();

    /**
     * The code for @p locale: the rules of Portuguese and Chinese first, then the row of what stands before
     * the first underscore, or else "enu". Case counts, and a hyphen parts nothing: "EN_US"
     * and "en-us" are not known.
     */
    QString getLanguageByLocale(const QString& locale);

    /** "cht" for "zh_tw", "zh_hk" and "zh_mo", "chs" for any other text. */
    QString getChineseLanguage(const QString& locale);

    /** "ptg" for "pt" and "pt_pt", "ptb" for any other text. */
    QString getPortugueseLanguage(const QString& locale);

    /**
     * Has the language part @p locale, such as "fi", stand for the code @p language from now on. Rows for
     * "pt" and "zh" are never asked: the rules come before the table.
     */
    void setLanguageMap(QString locale, QString language);

private:
    QMap<QString, QString> languageMap;
    QString defaultLanguage;
};
