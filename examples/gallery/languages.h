#pragma once

#include <QStringList>

namespace gallery {

/** A language that the theme has texts for, by its code and the name that its readers call it by. */
struct Language
{
    QString code;
    QString name;
    QStringList locales; ///< names of Qt's locales, or their language parts
};

const QList<Language>& languages();
QStringList languageCodes();

/** The code of the system's language, English if the theme does not have it. */
QString systemLanguage();

} // namespace gallery
