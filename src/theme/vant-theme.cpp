#include "theme/vant-theme.h"

#include "image-manager/image-manager.h"
#include "platform/library-folder_p.h"
#include "style-manager/style-manager.h"
#include "utils/component-strings.h"
#include "utils/debug-message.h"
#include "utils/dpi-info.h"
#include "utils/file-type-map.h"
#include "utils/ui-path-manager.h"

#include <QApplication>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStyle>
#include <QStyleFactory>

#include <memory>

namespace {

const QString fusion = QStringLiteral("Fusion");
const QString english = QStringLiteral("enu");
const QString listOfImages = QStringLiteral("images.json");

/** What a colour of `palette.json` is in Qt's palette. */
struct Role
{
    const char* name;
    QPalette::ColorRole role;
};

const Role roles[] = {
    { "ground", QPalette::Window },
    { "ink", QPalette::WindowText },
    { "panel", QPalette::Base },
    { "ground", QPalette::AlternateBase },
    { "ink", QPalette::Text },
    { "ground", QPalette::Button },
    { "ink", QPalette::ButtonText },
    { "accent", QPalette::Highlight },
    { "on-accent", QPalette::HighlightedText },
    { "accent", QPalette::Link },
    { "ink-faint", QPalette::PlaceholderText },
    { "panel", QPalette::ToolTipBase },
    { "ink", QPalette::ToolTipText },
};

constexpr QPalette::ColorRole rolesOfText[] = { QPalette::WindowText, QPalette::Text, QPalette::ButtonText };

// Objects of texts, as all the theme's files but the list of images are.
QMap<QString, QString> readTexts(const QString& path)
{
    QFile file(path);
    const QJsonObject object =
        file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    QMap<QString, QString> texts;
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (entry.value().isString()) {
            texts.insert(entry.key(), entry.value().toString());
        }
    }
    return texts;
}

QStringList filesIn(const QString& folder, const QString& pattern)
{
    return QDir(folder).entryList({ pattern }, QDir::Files, QDir::Name);
}

/** The folder of the themes that came with the kit; empty if there is none. */
QString folderOfThemes()
{
    QDir folder(vantkit::internal::libraryFolder());
    // The library lies in `lib`, in `lib/<architecture>`, or in `bin`.
    for (int level = 0; level < 3 && folder.cdUp(); ++level) {
        QString themes = folder.filePath(QStringLiteral("share/vantkit-qt/themes"));
        if (QFileInfo(themes).isDir()) {
            return themes;
        }
    }
    return {};
}

} // namespace

VantTheme::VantTheme(const QString& folder)
    : m_folder(QDir::cleanPath(folder))
{ }

QStringList VantTheme::installed()
{
    const QDir themes(folderOfThemes());
    QStringList names;
    const QStringList folders = themes.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : folders) {
        if (themes.exists(name + QLatin1Char('/') + listOfImages)) {
            names << name;
        }
    }
    return names;
}

VantTheme VantTheme::of(const QString& name)
{
    return VantTheme(folderOfThemes() + QLatin1Char('/') + name);
}

QString VantTheme::folder() const
{
    return m_folder;
}

QStringList VantTheme::languages() const
{
    QStringList codes = filesIn(path(QStringLiteral("strings")), QStringLiteral("*.json"));
    codes.replaceInStrings(QStringLiteral(".json"), QString());
    return codes;
}

QMap<QString, QString> VantTheme::strings(const QString& code) const
{
    const QString file = path(QStringLiteral("strings/%1.json"));
    QMap<QString, QString> words = readTexts(file.arg(english));
    const QMap<QString, QString> own = readTexts(file.arg(code));
    for (auto word = own.begin(); word != own.end(); ++word) {
        words.insert(word.key(), word.value());
    }
    return words;
}

std::vector<QString> VantTheme::templates() const
{
    const QString folder = path(QStringLiteral("templates"));
    std::vector<QString> paths;
    const QStringList names = filesIn(folder, QStringLiteral("*.style"));
    for (const QString& name : names) {
        paths.push_back(folder + QLatin1Char('/') + name);
    }
    return paths;
}

QPalette VantTheme::palette() const
{
    const QMap<QString, QString> colours = readTexts(path(QStringLiteral("palette.json")));
    QPalette palette = std::unique_ptr<QStyle>(QStyleFactory::create(fusion))->standardPalette();
    for (const Role& role : roles) {
        const QColor colour(colours.value(QLatin1String(role.name)));
        if (colour.isValid()) {
            palette.setColor(role.role, colour);
        }
    }
    const QColor off(colours.value(QStringLiteral("ink-off")));
    for (const QPalette::ColorRole role : rolesOfText) {
        if (off.isValid()) {
            palette.setColor(QPalette::Disabled, role, off);
        }
    }
    return palette;
}

QPixmap VantTheme::fileTypeIcon(const QString& extension, bool removed) const
{
    const QString name = FileTypeMap::getInstance().getFiletypeMapping(extension, removed);
    const QPixmap file(path(QStringLiteral("filetypes/")) + name);
    if (file.isNull()) {
        return {};
    }
    // Drawn at four times its size, as images are.
    const double ratio = DPIinfo::getInstance().getDPR();
    const int width = qRound(file.width() / 4.0 * DPIinfo::getInstance().getDPI() * ratio);
    QPixmap icon = file.scaledToWidth(width, Qt::SmoothTransformation);
    icon.setDevicePixelRatio(ratio);
    return icon;
}

QString VantTheme::movie() const
{
    return path(QStringLiteral("images/processing.gif"));
}

bool VantTheme::start(const QString& userFolder, const QString& code) const
{
    if (!isComplete(code)) {
        return false;
    }
    // A path with "//" in it would open a comment in the templates.
    UIPathManager::getInstance().setPath(QStringLiteral("resource_path"), m_folder);
    UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"), QDir::cleanPath(userFolder));
    read(code);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setStyle(QStyleFactory::create(fusion));
    QApplication::setPalette(palette());
    return true;
}

bool VantTheme::load(const QString& code) const
{
    if (!isComplete(code)) {
        return false;
    }
    read(code);
    return true;
}

QString VantTheme::path(const QString& name) const
{
    return m_folder + QLatin1Char('/') + name;
}

bool VantTheme::isComplete(const QString& code) const
{
    QStringList missing;
    if (!QFileInfo(path(listOfImages)).isFile()) {
        missing << listOfImages;
    }
    if (templates().empty()) {
        missing << QStringLiteral("templates/*.style");
    }
    if (strings(code).isEmpty()) {
        missing << QStringLiteral("strings/%1.json").arg(code);
    }
    if (!missing.isEmpty()) {
        qCWarning(debug_message) << "Theme" << m_folder << "lacks" << missing.join(QStringLiteral(", "));
    }
    return missing.isEmpty();
}

// The images before the templates, which name their folders.
void VantTheme::read(const QString& code) const
{
    ComponentStrings::getInstance().installStrings(strings(code));
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    StyleManager::getInstance().initialize(templates());
}
