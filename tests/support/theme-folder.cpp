#include "support/theme-folder.h"

#include <vantkit-qt/utils/debug-message.h>
#include <vantkit-qt/utils/ui-path-manager.h>

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

ThemeFolder::ThemeFolder()
{
    if (!QDir(folder.path()).mkpath(QStringLiteral("resources/images"))) {
        qFatal("No folder for a theme: %s", qUtf8Printable(folder.errorString()));
    }
}

QString ThemeFolder::resourceFolder() const
{
    return folder.filePath(QStringLiteral("resources"));
}

QString ThemeFolder::path(const QString& name) const
{
    return resourceFolder() + QLatin1Char('/') + name;
}

QString ThemeFolder::userFolder() const
{
    return folder.filePath(QStringLiteral("user/data"));
}

QSize ThemeFolder::temporaryImageSize(const QString& name) const
{
    return QImage(userFolder() + QStringLiteral("/tmp_images/tmp_%1.png").arg(name)).size();
}

QString ThemeFolder::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("Cannot write %s", qUtf8Printable(file.fileName()));
    }
    return file.fileName();
}

void ThemeFolder::writeImage(const QString& name, const QSize& size, const QColor& color) const
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    if (!image.save(path(QStringLiteral("images/%1.png").arg(name)))) {
        qFatal("Cannot write the image %s", qUtf8Printable(name));
    }
}

void ThemeFolder::writeList(const QStringList& images, const QStringList& temporaryImages) const
{
    const QJsonObject list {
        { QStringLiteral("images"), QJsonArray::fromStringList(images) },
        { QStringLiteral("tmp_images"), QJsonArray::fromStringList(temporaryImages) },
    };
    write(QStringLiteral("images.json"), QJsonDocument(list).toJson());
}

void ThemeFolder::initializeImages(ImageManager::InitializeType type) const
{
    setPaths(resourceFolder(), userFolder());
    ImageManager::getInstance().initialize(type);
}

void ThemeFolder::setPaths(const QString& resources, const QString& user)
{
    debug_message.setEnabled(QtWarningMsg, false);
    UIPathManager::getInstance().setPath(QStringLiteral("resource_path"), resources);
    UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"), user);
    debug_message.setEnabled(QtWarningMsg, true);
}
