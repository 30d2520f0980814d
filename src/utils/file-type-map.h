#pragma once

#include "vantkit-export.h"

#include <QString>

#include <map>

/** Orders strings without regard to case. */
struct VANTKIT_EXPORT CaseLessCompare
{
    /** Whether @p a comes before @p b; strings that differ in case alone are equal. */
    bool operator()(const QString& a, const QString& b) const;
};

/**
 * Names the icon file for a file's extension: "docx" gives `doc.png`.
 *
 * A table sorts extensions into 21 kinds of files; all others are of the kind "xxx". Each kind has two icon
 * files, named after it: `doc.png`, and `doc_removed.png` for a file that no longer exists. This class only
 * names them; the application brings them along and loads them.
 *
 * Any thread may ask, as long as nobody calls mappingFile().
 */
class VANTKIT_EXPORT FileTypeMap
{
public:
    /** The one instance, created with its whole table on the first call. */
    static FileTypeMap& getInstance();

    FileTypeMap(const FileTypeMap&) = delete;
    FileTypeMap& operator=(const FileTypeMap&) = delete;

    /**
     * The name of the icon file for an extension; `xxx.png` for one that is not in the table.
     *
     * @param name the extension alone, such as "docx": no dot, no file name. Case does not matter.
     * @param removed true for the icon of a file that no longer exists: `doc_removed.png`.
     */
    QString getFiletypeMapping(const QString& name, bool removed = false);

    /**
     * Adds extensions to the table; those that are in it already change their kind.
     *
     * @param type the kind, such as "doc", after which the icon files are named.
     * @param extensions separated by one blank each, such as "doc docx". Between two blanks in a row there is
     * an extension too, the empty one.
     */
    void mappingFile(const QString& type, const QString& extensions);

    /** The table: the kind of each extension. It is empty before the first getInstance(). */
    static std::map<QString, QString, CaseLessCompare> m_file_type_map;

private:
    FileTypeMap();
};
