// Draws a theme: every style key in the states of its widget, and every image, as PNG files for people who
// write themes, and for the guide.

#include "sheet.h"
#include "specimens.h"
#include "views.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

using Pictures = std::vector<std::pair<QString, QPixmap>>;

QJsonObject readJson(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

void startKit(const QDir& theme, const QString& userFolder, const QString& language)
{
    UIPathManager::getInstance().setPath(QStringLiteral("resource_path"), theme.path());
    UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"), userFolder);

    QMap<QString, QString> strings;
    const QJsonObject words = readJson(theme.filePath(QStringLiteral("strings/%1.json").arg(language)));
    for (auto word = words.begin(); word != words.end(); ++word) {
        strings.insert(word.key(), word.value().toString());
    }
    ComponentStrings::getInstance().installStrings(strings);

    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    const QDir templates(theme.filePath(QStringLiteral("templates")));
    std::vector<QString> files;
    for (const QString& name : templates.entryList({ QStringLiteral("*.style") }, QDir::Files, QDir::Name)) {
        files.push_back(templates.filePath(name));
    }
    StyleManager::getInstance().initialize(files);
}

QPixmap catalogue(const QDir& theme)
{
    Pictures pictures;
    const QJsonObject list = readJson(theme.filePath(QStringLiteral("images.json")));
    const QStringList states { QString(), QStringLiteral("_hover"), QStringLiteral("_click"),
        QStringLiteral("_disable") };
    for (const QJsonValue& name : list.value(QStringLiteral("images")).toArray()) {
        for (int state = 0; state < states.size(); ++state) {
            const QString file = name.toString() + states[state];
            if (QFile::exists(theme.filePath(QStringLiteral("images/%1.png").arg(file)))) {
                pictures.emplace_back(
                    file, getGlobalImage(name.toString(), static_cast<ImageManager::ImageType>(state)));
            }
        }
    }
    return contactSheet(pictures, 6);
}

QPixmap fileTypes(const QDir& theme)
{
    Pictures pictures;
    const QDir folder(theme.filePath(QStringLiteral("filetypes")));
    const double scale = DPIinfo::getInstance().getDPI() * DPIinfo::getInstance().getDPR();
    for (const QString& name : folder.entryList({ QStringLiteral("*.png") }, QDir::Files, QDir::Name)) {
        const QPixmap source(folder.filePath(name));
        QPixmap icon = source.scaled(qRound(source.width() / 4 * scale), qRound(source.height() / 4 * scale),
            Qt::KeepAspectRatio, Qt::SmoothTransformation);
        icon.setDevicePixelRatio(DPIinfo::getInstance().getDPR());
        pictures.emplace_back(name.chopped(4), icon);
    }
    return contactSheet(pictures, 8);
}

Pictures allPictures(const QDir& theme)
{
    return {
        { QStringLiteral("images"), catalogue(theme) },
        { QStringLiteral("filetypes"), fileTypes(theme) },
        { QStringLiteral("buttons"), pictureOf(buttonSpecimens()) },
        { QStringLiteral("inputs"), pictureOf(inputSpecimens()) },
        { QStringLiteral("fields"), pictureOf(fieldSpecimens()) },
        { QStringLiteral("labels"), pictureOf(labelSpecimens()) },
        { QStringLiteral("paging"), pictureOf(pagingSpecimens()) },
        { QStringLiteral("path"), pictureOf(pathSpecimens()) },
        { QStringLiteral("table-view"), tableView() },
        { QStringLiteral("tree-view"), treeView() },
        { QStringLiteral("paging-bar"), pagingBar() },
        { QStringLiteral("path-bar"), pathBar() },
        { QStringLiteral("calendar"), calendarPopup() },
        { QStringLiteral("message-sheet"), messageSheet() },
        { QStringLiteral("processing-sheet"), processingSheet() },
        { QStringLiteral("input-sheet"), inputSheet() },
        { QStringLiteral("message-box"), messageBox() },
        { QStringLiteral("menu"), menuPopup() },
        { QStringLiteral("combo-box"), comboPopup() },
        { QStringLiteral("scroll-bars"), scrollBars() },
    };
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Draws every style key and image of a theme as PNG files."));
    const QCommandLineOption themeOption(QStringLiteral("theme"), QStringLiteral("The theme's folder."),
        QStringLiteral("folder"), QStringLiteral(THEME_PREVIEW_DEFAULT_THEME));
    const QCommandLineOption languageOption(QStringLiteral("lang"),
        QStringLiteral("The language code of the texts."), QStringLiteral("code"), QStringLiteral("enu"));
    parser.addOptions({ themeOption, languageOption });
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("output"), QStringLiteral("The folder for the pictures."));
    parser.process(application);
    if (parser.positionalArguments().size() != 1) {
        QTextStream(stderr) << "One output folder is needed\n";
        return 2;
    }

    const QDir theme(parser.value(themeOption));
    const QDir output(parser.positionalArguments().first());
    const QTemporaryDir userFolder;
    startKit(theme, userFolder.path(), parser.value(languageOption));
    QFont font = QApplication::font();
    font.setPixelSize(static_cast<int>(13 * DPIinfo::getInstance().getDPI()));
    QApplication::setFont(font);
    output.mkpath(QStringLiteral("."));
    for (const auto& [name, picture] : allPictures(theme)) {
        if (!picture.save(output.filePath(QStringLiteral("theme-%1.png").arg(name)))) {
            QTextStream(stderr) << "Cannot write to " << output.path() << '\n';
            return 1;
        }
    }
    return 0;
}
