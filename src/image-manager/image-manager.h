#pragma once

#include "vantkit-export.h"

#include <QPixmap>
#include <QString>

#include <map>

/** @file
 * The image catalogue, and what widgets call to have an image of it.
 */

/**
 * The image catalogue: gives the pixmap of a name such as "icon_warning", in the right size for the display.
 *
 * It reads the folder "resource_path" of UIPathManager, which holds
 *
 * - `images`, a folder of PNG files, each drawn at four times its design size: `<name>.png` for the normal
 *   state, `<name>_hover.png`, `<name>_click.png` and `<name>_disable.png` for the others that an image has;
 * - `images.json`, an object with two arrays: "images" lists the names in the catalogue, "tmp_images" the
 *   files, without `.png`, that style sheets show.
 *
 * Style sheets can only show files. At every start, therefore, each of "tmp_images" is scaled for the display
 * and written to the folder "user_data_path", as `tmp_images/tmp_<name>.png`.
 *
 * A pixmap measures a quarter of its file, times the display's scale, rounded at each step. Pixmaps live as
 * long as the process. Everything happens on the GUI thread.
 */
class VANTKIT_EXPORT ImageManager
{
public:
    /** The state of a widget that an image is drawn for. */
    enum ImageType {
        Normal = 0, ///< at rest
        Hover = 1, ///< under the pointer
        Click = 2, ///< pressed
        Disable = 3 ///< disabled
    };

    /** When files are loaded. */
    enum InitializeType {
        EagerLoad = 0, ///< all files in initialize()
        LazyLoad = 1 ///< those of a name, in all its states, at the first getImage() of that name
    };

    /** One entry of the catalogue; all arrays are indexed by ImageType. */
    struct ImageFile
    {
        QString m_file_name[4]; ///< without folder and extension; empty if the state has no image
        QPixmap m_pixmap[4]; ///< scaled for the display; null if it was not loaded
        bool m_loaded = false; ///< whether at least one state was loaded
    };

    /** The one instance, created on the first call. */
    static ImageManager& getInstance();

    ImageManager(const ImageManager&) = delete;
    ImageManager& operator=(const ImageManager&) = delete;

    /**
     * Reads `images.json` and writes the temporary images. Needs both folders in UIPathManager.
     *
     * If the list is missing, or is no JSON, the catalogue is empty, and there is no warning. A second call
     * reads the list and its files again; names that it no longer lists stay in the catalogue as they were.
     */
    void initialize(ImageManager::InitializeType type = EagerLoad);

    /**
     * The image of @p name in the state @p type. For a state without a file it is the normal image, and for a
     * name that is not listed a null pixmap, both with a warning.
     */
    QPixmap getImage(const QString& name, ImageManager::ImageType type = Normal);

    /** The folder of the source images. Ends the process if initialize() was not called. */
    const QString& getImageFolder();

    /** The folder of the images for style sheets. Ends the process if initialize() was not called. */
    const QString& getTempImageFolder();

    /** Where the file of @p name, such as "icon_hover", lies or would lie in the image folder. */
    QString getImageFullPath(const QString& name);

    /** Where the scaled copy of @p name, such as "icon_hover", lies or would lie. */
    QString getTempImageFullPath(const QString& name);

private:
    ImageManager() = default;

    void readJson();
    void parseJson(const QString& name);
    void prepareImages();
    void lazyLoad(const QString& name);
    void prepareTempImage(const QString& name);
    void loadStates(ImageFile& image);

    InitializeType m_init_type = EagerLoad;
    QString m_image_folder;
    QString m_temp_image_folder;
    std::map<QString, ImageFile> m_images;
};

/** The image of @p name (UTF-8) from the catalogue: what widgets call. See ImageManager::getImage. */
VANTKIT_EXPORT QPixmap getGlobalImage(const char* name, ImageManager::ImageType type = ImageManager::Normal);

/** @overload */
VANTKIT_EXPORT QPixmap getGlobalImage(
    const QString& name, ImageManager::ImageType type = ImageManager::Normal);
