#pragma once

#include "vantkit-export.h"

#include <QMap>
#include <QPalette>
#include <QPixmap>
#include <QString>
#include <QStringList>

#include <vector>

/**
 * A theme: the folder with the images, style templates and words that the kit shows, and one call that starts
 * the kit on it.
 *
 * @code
 * QApplication application(argc, argv);
 * VantTheme::of("default").start(userFolder, VantLocale::getInstance().getDefaultLanguage());
 * @endcode
 *
 * The kit itself does not use this class: an application that keeps its images, templates or words elsewhere
 * calls UIPathManager, ComponentStrings, ImageManager and StyleManager by itself.
 *
 * A theme is a value, and cheap to copy: it holds the folder, and reads each file when it is asked for it.
 * Everything happens on the GUI thread.
 */
class VANTKIT_EXPORT VantTheme
{
public:
    /** The theme in @p folder, whether there is one or not. */
    explicit VantTheme(const QString& folder);

    /**
     * The names of the themes that came with the kit, sorted. They lie in `share/vantkit-qt/themes`, which is
     * looked for from the folder of the library upwards, so that a kit that was moved finds its own.
     */
    static QStringList installed();

    /** The theme @p name of those that came with the kit. Without one, start() and load() will tell. */
    static VantTheme of(const QString& name);

    /** The theme's folder, without a slash at its end and with no two in a row. */
    QString folder() const;

    /** The codes of the languages that the theme has words in, such as "deu", sorted. */
    QStringList languages() const;

    /**
     * The kit's words by key, for ComponentStrings: those of the language @p code, and in English (`enu`)
     * what it lacks. Empty if the theme has neither.
     */
    QMap<QString, QString> strings(const QString& code) const;

    /** The paths of the style templates, in the order of their names, for StyleManager. */
    std::vector<QString> templates() const;

    /**
     * The colours of what no template covers, a window's ground above all, from the theme's `palette.json`. A
     * colour that the file lacks is that of a light desktop.
     */
    QPalette palette() const;

    /**
     * The icon for files with an extension, scaled for the display; 20 design pixels wide in the default
     * theme. Null if the theme has none.
     *
     * @param extension as FileTypeMap::getFiletypeMapping takes it: "docx".
     * @param removed true for the icon of a file that no longer exists.
     */
    QPixmap fileTypeIcon(const QString& extension, bool removed = false) const;

    /** The path of the movie for work in progress, as VantMessageSheet takes it. */
    QString movie() const;

    /**
     * Starts the kit on the theme: registers the folders, then does what load() does, asks Qt for pixmaps as
     * sharp as the display, and gives the application the style Fusion, which draws by the palette alone,
     * with the theme's palette(). Needs the QApplication, and comes before the first widget.
     *
     * @param userFolder a folder of the user's that may be written to, such as
     * QStandardPaths::AppDataLocation, for the images that style sheets show. It is made if it is missing.
     * @param code the language of the kit's words: "enu".
     * @return false if the theme has no `images.json`, no template or no words, neither in the language nor
     * in English. One warning tells what is missing and where, and nothing was started.
     */
    bool start(const QString& userFolder, const QString& code) const;

    /**
     * The part of start() that reads the theme's words, list of images and templates, for a program that
     * reads them again while it runs. Widgets keep what they have, so it has to make them anew. The folders
     * have to be registered. The result, and what is done without one of the three, are those of start().
     */
    bool load(const QString& code) const;

private:
    QString path(const QString& name) const;
    bool isComplete(const QString& code) const;
    void read(const QString& code) const;

    QString m_folder;
};
