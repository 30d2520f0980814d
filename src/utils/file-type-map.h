#pragma once

#include "vantkit-export.h"

#include <QString>

#include <map>

/** An order of strings that takes no notice of case. */
struct VANTKIT_EXPORT CaseLessCompare
{
    bool operator()(const QString& a, const QString& b) const;
};

/**
 * Says which icon file goes with the extension of a file.
 *
 * It answers with the name of a file and loads nothing; where the icon files lie is the application's
 * business. There are 21 kinds of files and "xxx" for all others, each in two forms: `pdf.png`, and
 * `pdf_removed.png` for a file that is gone.
 *
 * Looking up is safe from any thread, as long as nobody calls mappingFile().
 */
class VANTKIT_EXPORT FileTypeMap
{
public:
    /** The one instance, created with its whole table on the first call. */
    static FileTypeMap& getInstance();

    FileTypeMap(const FileTypeMap&) = delete;
    FileTypeMap& operator=(const FileTypeMap&) = delete;

    /**
     * The name of the icon file for the extension @p name, in any case: the bare extension, without a dot
     * or the rest of a file's name. An extension that is not in the table gets `xxx.png`.
     *
     * @param removed whether the form for a file that is gone is wanted.
     */
    QString getFiletypeMapping(const QString& name, bool removed = false);

    /**
     * Has each of @p extensions, which single blanks part, be a file of the kind @p type, the stem of its
     * icon file. An extension that is known already changes its kind. Two blanks in a row stand around an
     * empty extension.
     */
    void mappingFile(const QString& type, const QString& extensions);

    /** From an extension to its kind; filled once the instance exists. */
    static std::map<QString, QString, CaseLessCompare> m_file_type_map;

private:
    FileTypeMap();
};
