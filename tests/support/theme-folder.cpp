#include "support/theme-folder.h"

#include "support/files.h"

#include <vantkit-qt/utils/debug-message.h>
#include <vantkit-qt/utils/ui-path-manager.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

ThemeFolder::ThemeFolder()
{
    QDir(folder.path()).mkpath("resources/images");
}

QString ThemeFolder::path(const QString& name) const
{
    return folder.filePath("resources/" + name);
}

QString ThemeFolder::userFolder() const
{
    return folder.filePath("user/data");
}

QImage ThemeFolder::temporaryImage(const QString& name) const
{
    return QImage(userFolder() + "/tmp_images/tmp_" + name + ".png");
}

QString ThemeFolder::write(const QString& name, const QByteArray& bytes) const
{
    files::write(path(name), bytes);
    return path(name);
}

void ThemeFolder::writeImage(const QString& name, const QSize& size, const QColor& color) const
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    if (!image.save(path("images/" + name + ".png"))) {
        qFatal("Cannot write the image %s", qUtf8Printable(name));
    }
}

void ThemeFolder::writeList(const QStringList& images, const QStringList& temporaryImages) const
{
    const QJsonObject list { { "images", QJsonArray::fromStringList(images) },
        { "tmp_images", QJsonArray::fromStringList(temporaryImages) } };
    write("images.json", QJsonDocument(list).toJson());
}

void ThemeFolder::initializeImages(ImageManager::InitializeType type) const
{
    setPaths(QDir::toNativeSeparators(folder.filePath("resources")), QDir::toNativeSeparators(userFolder()));
    ImageManager::getInstance().initialize(type);
}

void ThemeFolder::setPaths(const QString& resources, const QString& user)
{
    debug_message.setEnabled(QtWarningMsg, false);
    UIPathManager::getInstance().setPath("resource_path", resources);
    UIPathManager::getInstance().setPath("user_data_path", user);
    debug_message.setEnabled(QtWarningMsg, true);
}
