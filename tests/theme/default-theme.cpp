#include "theme/default-theme.h"

#include <vantkit-qt/vantkit.h>

namespace defaulttheme {

QDir folder()
{
    return QDir(DEFAULT_THEME);
}

QStringList templates()
{
    const QDir templateFolder(folder().filePath("templates"));
    QStringList paths;
    for (const QString& name : templateFolder.entryList({ "*.style" }, QDir::Files, QDir::Name)) {
        paths += templateFolder.filePath(name);
    }
    return paths;
}

void load(const QString& userFolder)
{
    UIPathManager::getInstance().setPath("resource_path", QDir::toNativeSeparators(folder().path()));
    UIPathManager::getInstance().setPath("user_data_path", QDir::toNativeSeparators(userFolder));
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    const QStringList files = templates();
    StyleManager::getInstance().initialize({ files.begin(), files.end() });
}

} // namespace defaulttheme
