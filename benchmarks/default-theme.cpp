#include "default-theme.h"

#include "bench.h"

#include <vantkit-qt/vantkit.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace bench {

namespace {

const QString theme = QStringLiteral(VANTKIT_BENCH_THEME);

void installEnglish()
{
    QFile file(theme + QStringLiteral("/strings/enu.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        throw Failure(QStringLiteral("cannot read ") + file.fileName());
    }
    const QJsonObject texts = QJsonDocument::fromJson(file.readAll()).object();
    QMap<QString, QString> strings;
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        strings.insert(text.key(), text.value().toString());
    }
    ComponentStrings::getInstance().installStrings(strings);
}

std::vector<QString> templateFiles()
{
    const QDir templates(theme + QStringLiteral("/templates"));
    std::vector<QString> files;
    for (const QString& name : templates.entryList({ QStringLiteral("*.style") }, QDir::Files, QDir::Name)) {
        files.push_back(templates.filePath(name));
    }
    return files;
}

} // namespace

void useDefaultTheme()
{
    static const QTemporaryDir userData; // for the temporary images of this process
    UIPathManager::getInstance().setPath(QStringLiteral("resource_path"), theme);
    UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"), userData.path());
    installEnglish();
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    StyleManager::getInstance().initialize(templateFiles());
}

} // namespace bench
