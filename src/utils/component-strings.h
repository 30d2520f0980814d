#pragma once

#include "vantkit-export.h"

#include <QMap>
#include <QString>

/**
 * The registry of the words that the kit's widgets show.
 *
 * The kit ships no text of its own: an application installs a map that holds every key that a widget asks
 * for, in the language of its user, before it creates the first widget. Keys are case-sensitive. Use it on
 * the GUI thread only.
 */
class VANTKIT_EXPORT ComponentStrings
{
public:
    /** The one instance, created on the first call. */
    static ComponentStrings& getInstance();

    ComponentStrings(const ComponentStrings&) = delete;
    ComponentStrings& operator=(const ComponentStrings&) = delete;

    /** Replaces the whole map by @p strings; keys of an earlier call that @p strings lacks are gone. */
    void installStrings(const QMap<QString, QString>& strings);

    /** The text of @p key; with a warning, @p key itself if there is none. */
    QString getString(const QString& key);

private:
    ComponentStrings() = default;

    QMap<QString, QString> m_strings;
};
