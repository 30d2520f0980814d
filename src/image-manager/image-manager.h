#pragma once

#include "vantkit-export.h"

#include <QPixmap>
#include <QString>

#include <map>

/**
 * The image catalogue: turns a name such as "icon_warning" into a pixmap of the right size for the display.
 *
 * `images.json` in the folder "resource_path" of UIPathManager lists the names: an object with the keys
 * "images", an array of names that enter the catalogue, and "tmp_images", an array of names of which a scaled
 * copy `tmp_<name>.png` is written to `tmp_images` in "user_data_path" at every start, for style sheets to
 * show. The files are PNGs in the folder `images` beside it, drawn at four times their design size:
 * `<name>.png`, and beside it
 * `<name>_hover.png`, `<name>_click.png` and `<name>_disable.png` for the other states.
 *
 * A pixmap measures a quarter of its file, times the display's scale, rounded at each step. Pixmaps live as
 * long as the process. Everything happens on the GUI thread.
 */
class VANTKIT_EXPORT ImageManager
{
public:
    /** The state of a widget that an image is drawn for. */
    enum ImageType { Normal = 0, Hover = 1, Click = 2, Disable = 3 };

    /** When files are loaded. */
    enum InitializeType {
        EagerLoad = 0, ///< all of them in initialize()
        LazyLoad = 1 ///< the four states of a name at the first getImage() of that name
    };

    /** One entry of the catalogue; all arrays are indexed by ImageType. */
    struct ImageFile
    {
        QString m_file_name[4]; ///< without folder and extension; empty if the state has no image
        QPixmap m_pixmap[4];
        bool m_loaded = false; ///< whether at least one state was loaded
    };

    /** The one instance, created on the first call. */
    static ImageManager& getInstance();

    ImageManager(const ImageManager&) = delete;
    ImageManager& operator=(const ImageManager&) = delete;

    /**
     * Reads `images.json` and writes the temporary images. Needs both folders in UIPathManager.
     *
     * A list that is missing or is no JSON gives an empty catalogue without a word. A second call resets and
     * loads what is listed; names that are no longer listed keep their entries.
     */
    void initialize(ImageManager::InitializeType type = EagerLoad);

    /**
     * The image of @p name in the state @p type.
     *
     * With a warning: a null pixmap for a name that is not listed, and the normal image for a state without a
     * file.
     */
    QPixmap getImage(const QString& name, ImageManager::ImageType type = Normal);

    /** The folder of the source images. Ends the process if initialize() was not called. */
    const QString& getImageFolder();

    /** The folder of the images for style sheets. Ends the process if initialize() was not called. */
    const QString& getTempImageFolder();

    /** The path of the source file @p name, a name with its state suffix. Not tested for existence. */
    QString getImageFullPath(const QString& name);

    /** The path of the temporary file of @p name, a name with its state suffix. Not tested for existence. */
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
