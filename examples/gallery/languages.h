#pragma once

#include <QLocale>
#include <QStringList>

namespace gallery {

/** A language that the theme has texts for, by its code and the name that its readers call it by. */
struct Language
{
    QString code;
    QString name;
    QLocale locale; ///< how its readers write dates and numbers
};

const QList<Language>& languages();
QStringList languageCodes();

} // namespace gallery
