#include "theme.h"

#include "controls.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStyle>
#include <QStyleFactory>

namespace gallery {

namespace {

QString stringsFile(const QString& themeFolder, const QString& language)
{
    return QStringLiteral("%1/strings/%2.json").arg(themeFolder, language);
}

} // namespace

QString defaultThemeFolder()
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    const QString installed =
        QDir::cleanPath(programFolder.filePath(QStringLiteral("../share/vantkit-qt/themes/default")));
    return isTheme(installed) ? installed : QStringLiteral(GALLERY_SOURCE_THEME);
}

bool isTheme(const QString& folder)
{
    return QFileInfo(QDir(folder).filePath(QStringLiteral("images.json"))).isFile();
}

std::vector<QString> templateFiles(const QString& themeFolder)
{
    const QDir templates(themeFolder + QStringLiteral("/templates"));
    std::vector<QString> files;
    const QStringList names = templates.entryList({ QStringLiteral("*.style") }, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        files.push_back(templates.filePath(name));
    }
    files.push_back(QStringLiteral(":/gallery/gallery.style"));
    return files;
}

QMap<QString, QString> componentStrings(const QString& themeFolder, const QString& language)
{
    const QString file = stringsFile(themeFolder, language);
    return readTexts(QFile::exists(file) ? file : stringsFile(themeFolder, QStringLiteral("enu")));
}

QMap<QString, QString> readTexts(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    QMap<QString, QString> texts;
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        texts.insert(entry.key(), entry.value().toString());
    }
    return texts;
}

void useLightGround()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    QFont font = QApplication::font();
    font.setPixelSize(px(13));
    QApplication::setFont(font);
}

} // namespace gallery
