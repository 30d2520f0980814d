#include "command-line.h"
#include "gallery-window.h"
#include "screenshots.h"
#include "startup-times.h"
#include "texts.h"
#include "theme.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <optional>

using namespace gallery;

int main(int argc, char** argv)
{
    StartupTimes times;
    const CommandLine commandLine = readCommandLine(argc, argv);
    if (commandLine.exitCode) {
        return *commandLine.exitCode;
    }
    const Options& options = commandLine.options;
    if (options.takesScreenshots()) {
        prepareScreenshots();
    }

    // The application object comes first: pixmaps need it, and the display's scale is read from it.
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    useLightGround();
    times.endPhase("application");

    // Where the theme is, and where the kit may write; pictures leave nothing behind.
    std::optional<QTemporaryDir> passingFolder;
    if (options.takesScreenshots()) {
        passingFolder.emplace();
    }
    UIPathManager::getInstance().setPath(QStringLiteral("resource_path"), options.themeFolder);
    UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"),
        passingFolder ? passingFolder->path()
                      : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));

    // The words of the kit, and those of the gallery itself.
    ComponentStrings::getInstance().installStrings(componentStrings(options.themeFolder, options.language));
    installTexts(options.language);
    times.endPhase("strings");

    // The images before the templates, which name the folders of the images.
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    times.endPhase("images");
    StyleManager::getInstance().initialize(templateFiles(options.themeFolder));
    times.endPhase("templates");

    if (options.takesScreenshots()) {
        return takeScreenshots(options);
    }

    GalleryWindow window(options.page, options.language);
    window.resize(window.size().boundedTo(window.screen()->availableGeometry().size()));
    if (options.startupTimes) {
        times.reportFirstPaintOf(&window);
    }
    window.show();
    times.endPhase("widgets");
    return QApplication::exec();
}
