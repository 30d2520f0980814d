#include "command-line.h"

#include "languages.h"
#include "network.h"
#include "pages.h"

#include <vantkit-qt/theme/vant-theme.h>
#include <vantkit-qt/utils/vant-locale.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QTemporaryFile>
#include <QTextStream>

namespace gallery {

namespace {

QString oneLine(const QString& text)
{
    return text.simplified();
}

QString quoted(const QString& text)
{
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

bool isWritableFolder(const QString& folder)
{
    return !folder.isEmpty() && QDir().mkpath(folder)
        && QTemporaryFile(QDir(folder).filePath(QStringLiteral("XXXXXX"))).open();
}

class Reader
{
public:
    Reader();

    CommandLine read(const QStringList& arguments);

private:
    Options options() const;
    QString error(const Options& options) const;

    QCommandLineParser m_parser;
    QCommandLineOption m_page;
    QCommandLineOption m_language;
    QCommandLineOption m_theme;
    QCommandLineOption m_rightToLeft;
    QCommandLineOption m_watch;
    QCommandLineOption m_screenshots;
    QCommandLineOption m_startupTimes;
    QCommandLineOption m_trust;
    QCommandLineOption m_help;
    QCommandLineOption m_version;
};

Reader::Reader()
    : m_page(QStringLiteral("page"),
        QStringLiteral("Open the page <name>: %1.").arg(pageNames().join(QStringLiteral(", "))),
        QStringLiteral("name"))
    , m_language(QStringLiteral("lang"),
          QStringLiteral("Show all texts in the language <code>: %1. Without it, the system's language.")
              .arg(languageCodes().join(QStringLiteral(", "))),
          QStringLiteral("code"))
    , m_theme(QStringLiteral("theme"),
          QStringLiteral("Take the look from the theme in the folder <dir>. Given more than once, the last "
                         "one shows, and the others can be chosen."),
          QStringLiteral("dir"))
    , m_rightToLeft(QStringLiteral("right-to-left"), QStringLiteral("Lay everything out from right to left."))
    , m_watch(QStringLiteral("watch"),
          QStringLiteral("For those who write a theme: show a change of its files when they are saved."))
    , m_screenshots(QStringLiteral("screenshots"),
          QStringLiteral(
              "Write one PNG per page and state to the folder <dir> and exit. Needs no display; with "
              "--page, that page alone."),
          QStringLiteral("dir"))
    , m_startupTimes(QStringLiteral("startup-times"),
          QStringLiteral("For developers: write the milliseconds of each phase up to the first paint to "
                         "standard output, as JSON, and exit."))
    , m_trust(QStringLiteral("trust"),
          QStringLiteral("For developers: trust the authority in the PEM file <file> as well."),
          QStringLiteral("file"))
    , m_help({ QStringLiteral("h"), QStringLiteral("help") }, QStringLiteral("Show this help and exit."))
    , m_version(
          { QStringLiteral("v"), QStringLiteral("version") }, QStringLiteral("Show the version and exit."))
{
    m_parser.setApplicationDescription(
        QStringLiteral("Shows every widget of vantkit-qt, live and in all its states.\n\n"
                       "One gallery runs at a time: started again, it brings the window of the first to\n"
                       "the front, on the page that --page names, and exits. The first keeps its language\n"
                       "and its theme."));
    m_parser.addOptions({ m_page, m_language, m_theme, m_rightToLeft, m_watch, m_screenshots, m_startupTimes,
        m_trust, m_help, m_version });
}

CommandLine Reader::read(const QStringList& arguments)
{
    if (!m_parser.parse(arguments)) {
        return { {}, failure(m_parser.errorText()) };
    }
    if (m_parser.isSet(m_help)) {
        QTextStream(stdout) << m_parser.helpText();
        return { {}, 0 };
    }
    if (m_parser.isSet(m_version)) {
        QTextStream(stdout) << QCoreApplication::applicationName() << ' '
                            << QCoreApplication::applicationVersion() << '\n';
        return { {}, 0 };
    }
    const Options read = options();
    const QString problem = error(read);
    if (!problem.isEmpty()) {
        return { {}, failure(problem) };
    }
    return { read, {} };
}

Options Reader::options() const
{
    Options options;
    options.page = m_parser.value(m_page);
    options.language = m_parser.isSet(m_language) ? m_parser.value(m_language)
                                                  : VantLocale::getInstance().getDefaultLanguage();
    options.themes = m_parser.isSet(m_theme) ? m_parser.values(m_theme)
                                             : QStringList(VantTheme::of(QStringLiteral("default")).folder());
    options.rightToLeft = m_parser.isSet(m_rightToLeft);
    options.watchesTheme = m_parser.isSet(m_watch);
    options.screenshotsFolder = m_parser.value(m_screenshots);
    options.startupTimes = m_parser.isSet(m_startupTimes);
    options.trustedFile = m_parser.value(m_trust);
    return options;
}

QString Reader::error(const Options& options) const
{
    if (!m_parser.positionalArguments().isEmpty()) {
        return QStringLiteral("Unexpected argument %1.")
            .arg(quoted(m_parser.positionalArguments().constFirst()));
    }
    if (m_parser.isSet(m_page) && !pageNames().contains(options.page)) {
        return QStringLiteral("Unknown page %1. The pages are %2.")
            .arg(quoted(options.page), pageNames().join(QStringLiteral(", ")));
    }
    if (!languageCodes().contains(options.language)) {
        return QStringLiteral("Unknown language %1. The languages are %2.")
            .arg(quoted(options.language), languageCodes().join(QStringLiteral(", ")));
    }
    for (const QString& folder : options.themes) {
        if (!QFileInfo(QDir(folder).filePath(QStringLiteral("images.json"))).isFile()) {
            return QStringLiteral("No theme in %1: it has no images.json.").arg(quoted(folder));
        }
    }
    if (m_parser.isSet(m_screenshots) && options.startupTimes) {
        return QStringLiteral("--screenshots and --startup-times exclude each other.");
    }
    if (m_parser.isSet(m_screenshots) && !isWritableFolder(options.screenshotsFolder)) {
        return QStringLiteral("Cannot write to the folder %1.").arg(quoted(options.screenshotsFolder));
    }
    if (m_parser.isSet(m_trust) && !hasCertificate(options.trustedFile)) {
        return QStringLiteral("No certificate in %1.").arg(quoted(options.trustedFile));
    }
    return {};
}

} // namespace

QStringList argumentsFor(const Options& options)
{
    QStringList arguments { QStringLiteral("--page"), options.page, QStringLiteral("--lang"),
        options.language };
    for (const QString& folder : options.themes) {
        arguments << QStringLiteral("--theme") << folder;
    }
    if (options.rightToLeft) {
        arguments << QStringLiteral("--right-to-left");
    }
    if (options.watchesTheme) {
        arguments << QStringLiteral("--watch");
    }
    if (!options.trustedFile.isEmpty()) {
        arguments << QStringLiteral("--trust") << options.trustedFile;
    }
    return arguments;
}

CommandLine readCommandLine(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("vantkit-qt"));
    QCoreApplication::setApplicationName(QStringLiteral("gallery"));
    QCoreApplication::setApplicationVersion(QStringLiteral(GALLERY_VERSION));

    // A passing application without a display decodes the arguments and knows where the program is.
    const QCoreApplication application(argc, argv);
    return Reader().read(QCoreApplication::arguments());
}

int failure(const QString& message, int exitCode)
{
    QTextStream(stderr) << "gallery: " << oneLine(message) << '\n';
    return exitCode;
}

} // namespace gallery
