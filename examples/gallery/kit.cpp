#include "kit.h"

#include "controls.h"
#include "startup-times.h"
#include "texts.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QDir>
#include <QPixmapCache>
#include <QStyleFactory>

namespace gallery {

namespace {

const QString ownStyle = QStringLiteral(":/gallery/gallery.style");

void useFont()
{
    QFont font = QApplication::font();
    font.setPixelSize(px(13));
    QApplication::setFont(font);
}

} // namespace

bool startKit(const VantTheme& theme, const QString& userFolder, const QString& language)
{
    if (!theme.start(userFolder, language)) {
        return false;
    }
    useFont();
    installTexts(language);
    StyleManager::getInstance().initialize({ ownStyle }); // beside those of the theme
    return true;
}

void startKitStepByStep(
    const VantTheme& theme, const QString& userFolder, const QString& language, StartupTimes& times)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(theme.palette());
    useFont();
    times.endPhase("application");

    UIPathManager::getInstance().setPath(QStringLiteral("resource_path"), theme.folder());
    UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"), QDir::cleanPath(userFolder));
    ComponentStrings::getInstance().installStrings(theme.strings(language));
    installTexts(language);
    times.endPhase("strings");

    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    times.endPhase("images");

    std::vector<QString> templates = theme.templates();
    templates.push_back(ownStyle);
    StyleManager::getInstance().initialize(templates);
    times.endPhase("templates");
}

bool readThemeAgain(const QString& language)
{
    const VantTheme theme = currentTheme();
    if (!theme.load(language)) {
        return false;
    }
    QPixmapCache::clear(); // it tells files apart by the second
    QApplication::setPalette(theme.palette());
    StyleManager::getInstance().initialize({ ownStyle });
    return true;
}

} // namespace gallery
