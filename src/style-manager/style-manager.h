#pragma once

#include "vantkit-export.h"

#include <QString>

#include <map>
#include <vector>

/** @file
 * The style sheets, and what widgets call to have one.
 */

/**
 * The style sheets of the kit, by key.
 *
 * Template files hold the text, in UTF-8. A line that starts and ends with "==" opens the section of the key
 * written between them; the lines below it are Qt style-sheet text. "IMG_LOC" and "TMPIMG_LOC" stand for the
 * image folder and the temporary image folder of ImageManager. Block comments and line comments are removed,
 * a line comment together with its line end. Pixel values are design pixels: they are scaled when a section
 * is asked for. Quote a file that is named in url(): Qt takes some letters of its folder in quotes only.
 *
 * Everything happens on the GUI thread.
 */
class VANTKIT_EXPORT StyleManager
{
public:
    /** The one instance, created on the first call. */
    static StyleManager& getInstance();

    StyleManager(const StyleManager&) = delete;
    StyleManager& operator=(const StyleManager&) = delete;

    /**
     * Reads the template files in the order of @p files. A key that occurs twice keeps its last
     * text, and a second call adds and replaces but removes nothing. A file that does not exist
     * is skipped with a warning.
     *
     * ImageManager::initialize has to come first: the process ends if it was not called.
     */
    void initialize(const std::vector<QString>& files);

    /**
     * The section of @p key, with its pixel values scaled for the display unless @p raw is true; with a
     * warning, an empty string for an unknown key.
     */
    QString getStyleSheet(const QString& key, bool raw = false);

private:
    StyleManager() = default;

    std::map<QString, QString> m_style_sheets;
};

/** The style sheet of @p key (UTF-8): what widgets call. See StyleManager::getStyleSheet. */
VANTKIT_EXPORT QString getStyleSheet(const char* key, bool raw = false);

/** @overload */
VANTKIT_EXPORT QString getStyleSheet(const QString& key, bool raw = false);
