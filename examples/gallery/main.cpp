#include "command-line.h"
#include "gallery-window.h"
#include "kit.h"
#include "network.h"
#include "places.h"
#include "screenshots.h"
#include "startup-times.h"

#include <vantkit-qt/vantkit.h>

#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <memory>
#include <optional>
#include <theme-files/theme-watch.h>

using namespace gallery;

namespace {

const int noAnswer = 1;

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

int incomplete(const Options& options)
{
    return failure(QStringLiteral("The theme in '%1' is not complete.").arg(options.themes.constLast()));
}

int showUntilClosed(GalleryWindow& window, StartupTimes& times)
{
    window.resize(window.size().boundedTo(window.screen()->availableGeometry().size()));
    window.show();
    times.endPhase("widgets");
    return QApplication::exec();
}

int takePictures(int argc, char** argv, const Options& options)
{
    prepareScreenshots();
    const QApplication application(argc, argv);
    const QTemporaryDir passingFolder; // pictures leave nothing behind
    if (!startKit(VantTheme(options.themes.constLast()), passingFolder.path(), options.language)) {
        return incomplete(options);
    }
    useMadeUpPlaces(passingFolder.filePath(QStringLiteral("places")));
    return takeScreenshots(options);
}

int measureStart(int argc, char** argv, const Options& options, StartupTimes& times)
{
    const QApplication application(argc, argv);
    startKitStepByStep(VantTheme(options.themes.constLast()), dataFolder(), options.language, times);
    GalleryWindow window(options);
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

/** A gallery to be started when this one has ended, so that it is the one that runs. */
struct NextStart
{
    QStringList arguments;
    int fontDpi = 0; ///< of the scale that was chosen, 0 for the one that it has
};

int run(int argc, char** argv, const Options& options, StartupTimes& times, std::optional<NextStart>& next)
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
    if (!startKit(VantTheme(options.themes.constLast()), dataFolder(), options.language)) {
        return incomplete(options);
    }
    GalleryWindow window(options);
    QObject::connect(
        &application, &QtSingleApplication::messageReceived, &window, &GalleryWindow::takeUpSecondStart);
    QObject::connect(&window, &GalleryWindow::startAnew, [&next](const Options& wanted, int fontDpi) {
        next = NextStart { QStringList(QCoreApplication::applicationFilePath()) + argumentsFor(wanted),
            fontDpi };
        QCoreApplication::quit();
    });
    std::unique_ptr<ThemeWatch> watch;
    if (options.watchesTheme) {
        watch = std::make_unique<ThemeWatch>(options.themes.constLast());
        QObject::connect(watch.get(), &ThemeWatch::changed, &window, &GalleryWindow::takeUpTheme);
        QObject::connect(watch.get(), &ThemeWatch::broken, &window, &GalleryWindow::tellBrokenTheme);
    }
    application.setActivationWindow(&window);
    return showUntilClosed(window, times);
}

int start(NextStart next)
{
    if (next.fontDpi > 0) {
        qputenv("QT_FONT_DPI", QByteArray::number(next.fontDpi));
    }
    const QString program = next.arguments.takeFirst();
    return QProcess::startDetached(program, next.arguments)
        ? 0
        : failure(QStringLiteral("Cannot start '%1'.").arg(program), noAnswer);
}

} // namespace

int main(int argc, char** argv)
{
    StartupTimes times;
    const CommandLine commandLine = readCommandLine(argc, argv);
    if (commandLine.exitCode) {
        return *commandLine.exitCode;
    }

    const Options& options = commandLine.options;
    if (options.takesScreenshots()) {
        return takePictures(argc, argv, options);
    }
    if (options.startupTimes) {
        return measureStart(argc, argv, options, times);
    }
    std::optional<NextStart> next;
    const int exitCode = run(argc, argv, options, times, next);
    return next ? start(*next) : exitCode;
}
