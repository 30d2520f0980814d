// A tool for people who write themes: it checks one, makes a new one in other colours, and shows one while it
// is being written.

#include "new-theme.h"
#include "pictures.h"
#include "preview-window.h"
#include "theme-files/theme-check.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>

namespace {

enum ExitCode { Fine = 0, Found = 1, Unusable = 2 };

const QString usage = QStringLiteral(
    R"(Usage: vantkit-theme COMMAND

  check DIR [--json]       tell what is wrong with the theme in the folder, by file and line
  new DIR [--from THEME] [--accent COLOUR | --palette FILE]
                           make a theme: a copy of THEME, the name of one that came with the kit or a folder,
                           by default `default`, in other colours. An accent colour brings its shades along.
                           The file names some or all of the colours of palette.json.
  preview DIR [--lang CODE]
                           show the theme in a window, which follows the changes of its files
  preview DIR --pictures OUT [--lang CODE] [--page NAME]...
                           draw it as PNG files in the folder OUT, all pages or those that are named

The exit code is 0; 1 if something is wrong with the theme; 2 if it, or an argument, could not be used.
)");

int fail(const QString& reason)
{
    QTextStream(stderr) << reason << '\n';
    return Unusable;
}

int exitCodeOf(const Findings& findings)
{
    const bool unreadable = std::any_of(findings.begin(), findings.end(),
        [](const Finding& finding) { return finding.weight == Finding::Unreadable; });
    return unreadable ? Unusable : findings.empty() ? Fine : Found;
}

void print(const Findings& findings, const QString& folder)
{
    QTextStream output(stdout);
    output.setCodec("UTF-8");
    for (const Finding& finding : findings) {
        output << describe(finding, folder) << '\n';
    }
}

void printJson(const Findings& findings, const QString& folder)
{
    QJsonArray array;
    for (const Finding& finding : findings) {
        array.append(QJsonObject { { QStringLiteral("file"), QDir(folder).filePath(finding.place.file) },
            { QStringLiteral("line"), finding.place.line }, { QStringLiteral("text"), finding.text } });
    }
    QTextStream output(stdout);
    output.setCodec("UTF-8");
    output << QString::fromUtf8(QJsonDocument(array).toJson());
}

int check(const QString& folder, bool asJson)
{
    const Findings findings = checkTheme(folder);
    asJson ? printJson(findings, folder) : print(findings, folder);
    return exitCodeOf(findings);
}

/** The colours that the options ask for; false if one of them is none. */
bool readColours(const QCommandLineParser& options, Colours& colours)
{
    const QString accent = options.value(QStringLiteral("accent"));
    const QString path = options.value(QStringLiteral("palette"));
    QFile file(path);
    QJsonObject wishes;
    if (!accent.isEmpty()) {
        wishes.insert(QStringLiteral("accent"), accent);
    } else if (!path.isEmpty()) {
        const QJsonDocument document =
            file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()) : QJsonDocument();
        if (!document.isObject()) {
            fail(QStringLiteral("%1 is no palette").arg(path));
            return false;
        }
        wishes = document.object();
    }
    for (auto wish = wishes.begin(); wish != wishes.end(); ++wish) {
        const QString colour = wish.value().toString();
        if (!QColor::isValidColor(colour) || QColor(colour).alpha() != 255) {
            fail(QStringLiteral("\"%1\" is no colour").arg(colour));
            return false;
        }
        colours.insert(wish.key(), QColor(colour));
    }
    return true;
}

int makeNew(const QString& folder, const QCommandLineParser& options)
{
    if (options.isSet(QStringLiteral("accent")) && options.isSet(QStringLiteral("palette"))) {
        return fail(QStringLiteral("Either an accent colour or a palette can be given"));
    }
    Colours colours;
    if (!readColours(options, colours)) {
        return Unusable;
    }
    const QString from = options.value(QStringLiteral("from"));
    const QString source = VantTheme::installed().contains(from) ? VantTheme::of(from).folder() : from;
    const QString reason = makeTheme(source, folder, colours);
    return reason.isEmpty() ? check(folder, false) : fail(reason);
}

int drawPictures(const QString& folder, const QCommandLineParser& options)
{
    const QTemporaryDir userFolder;
    if (!VantTheme(folder).start(userFolder.path(), options.value(QStringLiteral("lang")))) {
        return Unusable;
    }
    QFont font = QApplication::font();
    font.setPixelSize(static_cast<int>(13 * DPIinfo::getInstance().getDPI()));
    QApplication::setFont(font);
    const QDir output(options.value(QStringLiteral("pictures")));
    output.mkpath(QStringLiteral("."));
    const QStringList pages = options.values(QStringLiteral("page"));
    for (const QString& page : pages.isEmpty() ? pageNames() : pages) {
        if (!pageNames().contains(page)) {
            return fail(QStringLiteral("There is no page %1; there are %2")
                            .arg(page, pageNames().join(QStringLiteral(", "))));
        }
        const QString file = output.filePath(QStringLiteral("theme-%1.png").arg(page));
        if (!pictureOfPage(page).save(file)) {
            return fail(QStringLiteral("%1 cannot be written").arg(file));
        }
    }
    return Fine;
}

int preview(const QString& folder, const QCommandLineParser& options)
{
    if (options.isSet(QStringLiteral("pictures"))) {
        return drawPictures(folder, options);
    }
    PreviewWindow window(
        folder, options.value(QStringLiteral("lang")), QCoreApplication::applicationFilePath());
    window.show();
    return QApplication::exec();
}

// Of the platform without a display, what it cannot do is of no interest.
void warn(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    if (!text.startsWith(QLatin1String("This plugin does not support"))) {
        QTextStream(stderr) << text << '\n';
    }
}

// What shows no window needs no display.
void doWithoutDisplay(int argc, char* argv[])
{
    const auto isWindowed = [argc, argv] {
        const auto isPictures = [](const char* argument) {
            return QByteArray(argument).startsWith("--pictures");
        };
        return argc > 1 && qstrcmp(argv[1], "preview") == 0 && std::none_of(argv, argv + argc, isPictures);
    };
    if (!isWindowed() && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

int run(const QStringList& arguments)
{
    QCommandLineParser options;
    options.addOptions({
        { { QStringLiteral("h"), QStringLiteral("help") }, QString() },
        { QStringLiteral("json"), QString() },
        { QStringLiteral("from"), QString(), QStringLiteral("theme"), QStringLiteral("default") },
        { QStringLiteral("accent"), QString(), QStringLiteral("colour") },
        { QStringLiteral("palette"), QString(), QStringLiteral("file") },
        { QStringLiteral("pictures"), QString(), QStringLiteral("folder") },
        { QStringLiteral("lang"), QString(), QStringLiteral("code"), QStringLiteral("enu") },
        { QStringLiteral("page"), QString(), QStringLiteral("name") },
    });
    if (!options.parse(arguments)) {
        return fail(options.errorText());
    }
    if (options.isSet(QStringLiteral("help")) || options.positionalArguments().isEmpty()) {
        QTextStream(stdout) << usage;
        return options.isSet(QStringLiteral("help")) ? Fine : Unusable;
    }
    if (options.positionalArguments().size() != 2) {
        return fail(QStringLiteral("One command and one folder are needed; --help tells more"));
    }
    const QString command = options.positionalArguments().first();
    const QString folder = options.positionalArguments().last();
    if (command == QLatin1String("new")) {
        return makeNew(folder, options);
    }
    if (!QFileInfo(folder).isDir()) {
        return fail(QStringLiteral("There is no folder %1").arg(folder));
    }
    return command == QLatin1String("check") ? check(folder, options.isSet(QStringLiteral("json")))
        : command == QLatin1String("preview")
        ? preview(folder, options)
        : fail(QStringLiteral("There is no command \"%1\"; --help tells which there are").arg(command));
}

} // namespace

int main(int argc, char* argv[])
{
    qInstallMessageHandler(warn);
    doWithoutDisplay(argc, argv);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0);
    return run(QCoreApplication::arguments());
}
