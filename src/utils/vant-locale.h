#pragma once

#include "vantkit-export.h"

#include <QMap>
#include <QString>

/**
 * Gives the products' code of a language, three letters such as "enu", for the name of a locale: "en_us".
 *
 * The name is the one that QLocale::name() gives, in lower case. What stands before its first underscore is
 * looked up in a table of 16 languages. Portuguese and Chinese have two codes each, one of which is chosen by
 * the region. Every other language gets the code of English.
 *
 * Any thread may ask, as long as nobody calls setLanguageMap().
 */
class VANTKIT_EXPORT VantLocale
{
public:
    /** The one instance, created on the first call. */
    static VantLocale& getInstance();

    /** An instance beside the one of getInstance(), with the table as the kit brings it. */
    VantLocale();

    /** The code for the system's locale. */
    QString getDefaultLanguage();

    /**
     * The code for @p locale, such as "de_at" or "de"; "enu" for a language that is not in the table.
     *
     * Names written otherwise are not understood and give "enu": "DE_AT", "de-at".
     */
    QString getLanguageByLocale(const QString& locale);

    /** "cht" (traditional) for "zh_tw", "zh_hk" and "zh_mo"; "chs" (simplified) for any other text. */
    QString getChineseLanguage(const QString& locale);

    /** "ptg" (of Portugal) for "pt" and "pt_pt"; "ptb" (of Brazil) for any other text. */
    QString getPortugueseLanguage(const QString& locale);

    /**
     * Puts a language into the table, or changes its code.
     *
     * @param locale what stands before the underscore in the names of its locales: "fi". For "pt" and "zh"
     * the region decides, whatever the table holds.
     * @param language its code: "fin".
     */
    void setLanguageMap(QString locale, QString language);

private:
    QMap<QString, QString> languageMap;
    QString defaultLanguage;
};
