#pragma once

#include "finding.h"

#include <QDir>
#include <QJsonObject>

/** A file with one JSON object in it, and its text, to find lines in. */
struct JsonFile
{
    QString name;
    QString text;
    QJsonObject object;

    /**
     * Reads @p file of the theme in @p folder, and tells why it cannot be read. How grave it is that there is
     * none is for @p absence to say.
     */
    JsonFile(const QDir& folder, const QString& file, Finding::Weight absence, Findings& findings);

    /** Where @p key stands; the whole file if it does not. */
    Place placeOfKey(const QString& key) const;

    /** Where @p element of @p array stands. */
    Place placeOfElement(const QString& array, const QString& element) const;

    /** The texts in the array of @p key. */
    QStringList array(const QString& key) const;

private:
    Place placeOf(const QString& pattern, int begin) const;
};
