#include "image-manager/image-manager.h"

#include "utils/debug-message.h"
#include "utils/dpi-info.h"
#include "utils/text-decoding_p.h"
#include "utils/ui-path-manager.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cstdlib>

namespace {

// By ImageType.
const std::array<QLatin1String, 4> stateSuffixes {
    QLatin1String(""),
    QLatin1String("_hover"),
    QLatin1String("_click"),
    QLatin1String("_disable"),
};

// Source files are drawn at four times their design size. Images round at every step, unlike widget sizes.
QSize displaySize(const QSize& source)
{
    const double dpi = DPIinfo::getInstance().getDPI();
    const auto scaled = [dpi](int pixels) { return qRound(qRound(pixels * 0.25) * dpi); };
    return { scaled(source.width()), scaled(source.height()) };
}

QSize deviceSize(const QSize& source)
{
    const double dpr = DPIinfo::getInstance().getDPR();
    const QSize display = displaySize(source);
    return { qRound(display.width() * dpr), qRound(display.height() * dpr) };
}

QPixmap scaledTo(const QPixmap& pixmap, const QSize& size)
{
    return pixmap.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

const QString& initialized(const QString& folder)
{
    if (folder.isEmpty()) {
        qCWarning(debug_message) << "ImageManager is not initialized";
        std::abort();
    }
    return folder;
}

} // namespace

ImageManager& ImageManager::getInstance()
{
    static ImageManager instance;
    return instance;
}

void ImageManager::initialize(ImageManager::InitializeType type)
{
    m_init_type = type;
    m_image_folder =
        UIPathManager::getInstance().getPath(QStringLiteral("resource_path")) + QStringLiteral("/images");
    m_temp_image_folder = UIPathManager::getInstance().getPath(QStringLiteral("user_data_path"))
        + QStringLiteral("/tmp_images");
    QDir().mkpath(m_temp_image_folder);
    readJson();
    if (m_init_type == EagerLoad) {
        prepareImages();
    }
}

void ImageManager::readJson()
{
    QFile file(UIPathManager::getInstance().getPath(QStringLiteral("resource_path"))
        + QStringLiteral("/images.json"));
    QString text;
    if (file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        text = vantkit::internal::textUpToNul(file.readAll());
    }
    const QJsonObject list = QJsonDocument::fromJson(text.toUtf8()).object();
    const QJsonArray images = list.value(QLatin1String("images")).toArray();
    for (const QJsonValue& name : images) {
        parseJson(name.toString());
    }
    const QJsonArray temporaryImages = list.value(QLatin1String("tmp_images")).toArray();
    for (const QJsonValue& name : temporaryImages) {
        prepareTempImage(name.toString().remove(QLatin1Char(' ')));
    }
}

void ImageManager::parseJson(const QString& name)
{
    ImageFile image;
    for (std::size_t state = 0; state < stateSuffixes.size(); ++state) {
        image.m_file_name[state] = name + stateSuffixes[state];
    }
    m_images[name] = image;
}

void ImageManager::prepareImages()
{
    for (auto& entry : m_images) {
        loadStates(entry.second);
    }
}

void ImageManager::lazyLoad(const QString& name)
{
    loadStates(m_images[name]);
}

void ImageManager::loadStates(ImageFile& image)
{
    for (std::size_t state = 0; state < stateSuffixes.size(); ++state) {
        const QPixmap source(getImageFullPath(image.m_file_name[state]));
        if (source.isNull()) {
            image.m_file_name[state].clear();
            continue;
        }
        QPixmap scaled = scaledTo(source, deviceSize(source.size()));
        scaled.setDevicePixelRatio(DPIinfo::getInstance().getDPR());
        image.m_pixmap[state] = scaled;
        image.m_loaded = true;
    }
}

void ImageManager::prepareTempImage(const QString& name)
{
    // A file without an image in it is what a missing source leaves, so the style sheet that names it shows
    // nothing.
    QFile file(getTempImageFullPath(name));
    const QPixmap source(getImageFullPath(name));
    const QPixmap scaled = source.isNull() ? source : scaledTo(source, displaySize(source.size()));
    // Written over the file of the last start and then cut. Files that are emptied first are sent to the disk
    // one by one by some file systems, and the start of the application waits for that.
    if (!file.open(QIODevice::ReadWrite)) {
        return;
    }
    scaled.save(&file, "PNG");
    file.resize(file.pos());
}

QPixmap ImageManager::getImage(const QString& name, ImageManager::ImageType type)
{
    const auto found = m_images.find(name);
    if (found == m_images.end()) {
        qCWarning(debug_message) << "Cannot load pixmap" << name;
        return {};
    }
    const ImageFile& image = found->second;
    if (m_init_type == LazyLoad && !image.m_loaded) { // a loaded name is not looked up twice
        lazyLoad(name);
    }
    const auto state = static_cast<std::size_t>(type);
    if (state < stateSuffixes.size() && !image.m_file_name[state].isEmpty()) {
        return image.m_pixmap[state];
    }
    qCWarning(debug_message) << "Cannot load pixmap" << name << "with type" << static_cast<int>(type)
                             << "[use default icon]";
    return image.m_pixmap[Normal];
}

const QString& ImageManager::getImageFolder()
{
    return initialized(m_image_folder);
}

const QString& ImageManager::getTempImageFolder()
{
    return initialized(m_temp_image_folder);
}

QString ImageManager::getImageFullPath(const QString& name)
{
    return m_image_folder + QDir::separator() + name + QStringLiteral(".png");
}

QString ImageManager::getTempImageFullPath(const QString& name)
{
    return m_temp_image_folder + QDir::separator() + QStringLiteral("tmp_") + name + QStringLiteral(".png");
}

QPixmap getGlobalImage(const char* name, ImageManager::ImageType type)
{
    return ImageManager::getInstance().getImage(QString::fromUtf8(name), type);
}

QPixmap getGlobalImage(const QString& name, ImageManager::ImageType type)
{
    return ImageManager::getInstance().getImage(name, type);
}
