#include "command-line.h"
#include "gallery-window.h"
#include "network.h"
#include "places.h"
#include "screenshots.h"
#include "startup-times.h"
#include "texts.h"
#include "theme.h"

#include <vantkit-qt/vantkit.h>

#include <QDir>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <optional>

using namespace gallery;

namespace {

const int noAnswer = 1;

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

/** Starts the kit, and after it the gallery's own texts. The application object is there already. */
void startKit(const Options& options, const QString& userFolder, StartupTimes& times)
{
    useLightGround();
    times.endPhase("application");

    // Where the theme is, and where the kit may write. A path with "//" in it would open a comment in a
    // template.
    UIPathManager& paths = UIPathManager::getInstance();
    paths.setPath(QStringLiteral("resource_path"), QDir::cleanPath(options.themeFolder));
    paths.setPath(QStringLiteral("user_data_path"), QDir::cleanPath(userFolder));

    // The words of the kit, and those of the gallery itself.
    ComponentStrings::getInstance().installStrings(componentStrings(options.themeFolder, options.language));
    installTexts(options.language);
    times.endPhase("strings");

    // The images before the templates, which name the folders of the images.
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    times.endPhase("images");
    StyleManager::getInstance().initialize(templateFiles(options.themeFolder));
    times.endPhase("templates");
}

int showUntilClosed(GalleryWindow& window, StartupTimes& times)
{
    window.resize(window.size().boundedTo(window.screen()->availableGeometry().size()));
    window.show();
    times.endPhase("widgets");
    return QApplication::exec();
}

int takePictures(int argc, char** argv, const Options& options, StartupTimes& times)
{
    prepareScreenshots();
    const QApplication application(argc, argv);
    const QTemporaryDir passingFolder; // pictures leave nothing behind
    startKit(options, passingFolder.path(), times);
    useMadeUpPlaces(passingFolder.filePath(QStringLiteral("places")));
    return takeScreenshots(options);
}

int measureStart(int argc, char** argv, const Options& options, StartupTimes& times)
{
    const QApplication application(argc, argv);
    startKit(options, dataFolder(), times);
    GalleryWindow window(options.page, options.language);
    times.reportFirstPaintOf(&window);
    return showUntilClosed(window, times);
}

/** Leaves @p page to the gallery that runs already, if one does. Returns the exit code then. */
std::optional<int> handOver(QtSingleApplication& application, const QString& page)
{
    if (!application.isRunning()) {
        return {};
    }
    if (application.sendMessage(page)) {
        return 0;
    }
    // It may have ended meanwhile, and this is the gallery that runs now.
    if (!application.isRunning()) {
        return {};
    }
    return failure(QStringLiteral("A gallery runs already, and it does not answer."), noAnswer);
}

int run(int argc, char** argv, const Options& options, StartupTimes& times)
{
    // Who runs is decided before anything is made that only one needs.
    QtSingleApplication application(argc, argv);
    if (const std::optional<int> exitCode = handOver(application, options.page)) {
        return *exitCode;
    }
    useSystemProxies();
    if (!options.trustedFile.isEmpty()) {
        trustAsWell(options.trustedFile);
    }
    startKit(options, dataFolder(), times);
    GalleryWindow window(options.page, options.language);
    QObject::connect(
        &application, &QtSingleApplication::messageReceived, &window, &GalleryWindow::takeUpSecondStart);
    application.setActivationWindow(&window);
    return showUntilClosed(window, times);
}

} // namespace

int main(int argc, char** argv)
{
    StartupTimes times;
    const CommandLine commandLine = readCommandLine(argc, argv);
    if (commandLine.exitCode) {
        return *commandLine.exitCode;
    }

    // The application object comes first: pixmaps need it, and the display's scale is read from it.
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const Options& options = commandLine.options;
    if (options.takesScreenshots()) {
        return takePictures(argc, argv, options, times);
    }
    if (options.startupTimes) {
        return measureStart(argc, argv, options, times);
    }
    return run(argc, argv, options, times);
}
