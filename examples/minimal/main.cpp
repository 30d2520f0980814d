// The smallest program that uses an installed kit. With a file name as its argument it writes a picture of
// its window there instead of showing it.

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QVBoxLayout>

static QMap<QString, QString> stringsOf(const QDir& theme)
{
    QFile file(theme.filePath("strings/enu.json"));
    QMap<QString, QString> strings;
    if (file.open(QIODevice::ReadOnly)) {
        const QVariantMap entries = QJsonDocument::fromJson(file.readAll()).object().toVariantMap();
        for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
            strings.insert(entry.key(), entry.value().toString());
        }
    }
    return strings;
}

static std::vector<QString> templatesOf(const QDir& theme)
{
    std::vector<QString> files;
    const QFileInfoList entries =
        QDir(theme.filePath("templates")).entryInfoList({ "*.style" }, QDir::Files, QDir::Name);
    for (const QFileInfo& entry : entries) {
        files.push_back(entry.filePath());
    }
    return files;
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);

    const QDir theme(THEME_FOLDER);
    UIPathManager::getInstance().setPath("resource_path", theme.path());
    const QString data = QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    UIPathManager::getInstance().setPath("user_data_path", data);
    ComponentStrings::getInstance().installStrings(stringsOf(theme));
    ImageManager::getInstance().initialize();
    StyleManager::getInstance().initialize(templatesOf(theme));

    QWidget window;
    auto* ok = new VantButton(ComponentStrings::getInstance().getString("ok"), 0);
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(new VantLabel("A window with the look of the kit."));
    layout->addWidget(new VantCheckBox("Check me"));
    layout->addWidget(ok, 0, Qt::AlignRight);
    QObject::connect(ok, SIGNAL(clicked()), &window, SLOT(close()));

    if (argc > 1) {
        return window.grab().save(argv[1], "PNG") ? 0 : 1;
    }
    window.show();
    return QApplication::exec();
}
