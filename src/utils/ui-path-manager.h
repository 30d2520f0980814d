#pragma once

#include "vantkit-export.h"

#include <QString>

#include <map>

/**
 * The registry of the application's folders.
 *
 * The kit reads two keys: "resource_path", the folder with `images.json` and `images`, which is only read,
 * and "user_data_path", the folder in which the kit creates and writes `tmp_images`. Set both before
 * ImageManager::initialize. An application may keep further keys of its own here.
 *
 * Paths are kept as they are given. Style-sheet templates name both folders, and "//" opens a comment there:
 * with such a path, images of style sheets are not shown. QDir::cleanPath takes care of it.
 *
 * Keys are case-sensitive. Use it on the GUI thread only.
 */
class VANTKIT_EXPORT UIPathManager
{
public:
    /** The one instance, created on the first call. */
    static UIPathManager& getInstance();

    UIPathManager(const UIPathManager&) = delete;
    UIPathManager& operator=(const UIPathManager&) = delete;

    /**
     * Stores @p path under @p key. Replacing a path that is set already writes a warning; the last call wins.
     */
    void setPath(const QString& key, const QString& path);

    /** The path stored under @p key; with a warning, an empty string if there is none. */
    QString getPath(const QString& key);

private:
    UIPathManager() = default;

    std::map<QString, QString> m_paths;
};
