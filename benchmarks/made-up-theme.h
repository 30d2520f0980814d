#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace bench {

/** A theme of the size of a large application's, in a temporary folder; the same at every run. */
class MadeUpTheme
{
public:
    MadeUpTheme();

    QString path() const { return m_folder.path(); }

    /** The 200 names of the list, in no particular order. */
    static QStringList imageNames();

    /** The source file of every state of every name. */
    static QStringList imageFiles(const QString& folder);

    /** Writes a template file of @p sections sections with comments and folder tokens in them. */
    static QString writeTemplates(const QString& folder, int sections);

    /** Writes a template file of one section, and gives its path. */
    static QString writeSection(const QString& folder, const QString& key, const QString& text);

    /** Style-sheet text of a themed control, a little over @p length characters long. */
    static QString styleSheet(int length);

    /** Makes @p folder the theme of this process. Once per process. */
    static void makeCurrent(const QString& folder);

    /** A theme of this process's own, made and made current at the first call. */
    static const MadeUpTheme& current();

private:
    QTemporaryDir m_folder;
};

} // namespace bench
