#include "file-icons.h"

#include <vantkit-qt/utils/dpi-info.h>
#include <vantkit-qt/utils/file-type-map.h>
#include <vantkit-qt/utils/ui-path-manager.h>

#include <QMap>

namespace gallery {

namespace {

// The files are drawn at four times the size.
QPixmap loadIcon(const QString& name)
{
    const double ratio = DPIinfo::getInstance().getDPR();
    const QString folder = UIPathManager::getInstance().getPath(QStringLiteral("resource_path"));
    const QPixmap file(QStringLiteral("%1/filetypes/%2").arg(folder, name));
    if (file.isNull()) {
        return file;
    }
    const int width = qRound(file.width() / 4.0 * DPIinfo::getInstance().getDPI() * ratio);
    QPixmap icon = file.scaledToWidth(width, Qt::SmoothTransformation);
    icon.setDevicePixelRatio(ratio);
    return icon;
}

} // namespace

QPixmap fileIcon(const QString& extension, bool removed)
{
    static QMap<QString, QPixmap> icons;
    const QString name = FileTypeMap::getInstance().getFiletypeMapping(extension, removed);
    auto icon = icons.find(name);
    if (icon == icons.end()) {
        icon = icons.insert(name, loadIcon(name));
    }
    return *icon;
}

} // namespace gallery
