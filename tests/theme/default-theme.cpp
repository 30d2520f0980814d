#include "theme/default-theme.h"

#include <vantkit-qt/vantkit.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace defaulttheme {

QDir folder()
{
    return QDir(QStringLiteral(DEFAULT_THEME));
}

QStringList templates()
{
    const QDir templateFolder(folder().filePath(QStringLiteral("templates")));
    QStringList paths;
    for (const QString& name :
        templateFolder.entryList({ QStringLiteral("*.style") }, QDir::Files, QDir::Name)) {
        paths += templateFolder.filePath(name);
    }
    return paths;
}

QJsonObject readJson(const QString& name)
{
    QFile file(folder().filePath(name));
    QJsonParseError error;
    const QJsonDocument document =
        file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll(), &error) : QJsonDocument();
    if (!document.isObject()) {
        qFatal("%s is no JSON object", qUtf8Printable(name));
    }
    return document.object();
}

QStringList imageList(const QString& key)
{
    QStringList names;
    for (const QJsonValue& name : readJson(QStringLiteral("images.json")).value(key).toArray()) {
        names += name.toString();
    }
    return names;
}

QStringList kitKeys()
{
    QStringList keys;
    for (const char* name : { "apply_button", "button_path", "button_path_arrow",
             "button_path_change_folder_btn", "button_path_name_button", "cancel_button", "checkbox",
             "combobox", "confirm_message_box", "date_selector", "default_button", "filter_bar_padding",
             "filter_search_button", "icon_button", "info_message_box", "label", "lineedit", "lineedit_label",
             "menu", "message_sheet_informative_text", "message_sheet_other", "message_sheet_processing",
             "message_sheet_text", "nonselect_paging_button", "paging_bar_border", "paging_bar_label",
             "paging_bar_rightmost_label", "radio_button", "red_button", "scrollbar", "select_paging_button",
             "table", "table_header", "tree_item", "upgrading_message_box", "warning_message_box" }) {
        keys += QStringLiteral("component.") + QLatin1String(name);
    }
    return keys;
}

void load(const QString& userFolder)
{
    UIPathManager::getInstance().setPath(QStringLiteral("resource_path"), folder().path());
    UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"), userFolder);
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    const QStringList files = templates();
    StyleManager::getInstance().initialize({ files.begin(), files.end() });
}

} // namespace defaulttheme
