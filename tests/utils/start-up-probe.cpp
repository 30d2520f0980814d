// Carries out its arguments in order and prints what each one gives, for the tests. The first one is the
// folder with its templates. It is not the working directory, in which Wine's console would stay for a
// moment.

#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QTextStream>

#include <functional>

int main(int argc, char** argv)
{
    qSetMessagePattern("%{message}");
    const QApplication application(argc, argv);
    const QString folder = QApplication::arguments().value(1);
    const QHash<QString, std::function<QString()>> commands {
        { "paths", [&] { return ThemeFolder::setPaths(folder, folder), "done"; } },
        { "user_path",
            [&] { return UIPathManager::getInstance().setPath("user_data_path", folder), "done"; } },
        { "images", [] { return ImageManager::getInstance().initialize(), "done"; } },
        { "styles", [&] { return StyleManager::getInstance().initialize({ folder + "/a.style" }), "done"; } },
        { "image_folder", [] { return ImageManager::getInstance().getImageFolder(); } },
        { "string", [] { return ComponentStrings::getInstance().getString("ok"); } },
        { "image", [] { return getGlobalImage("icon").isNull() ? "null" : "image"; } },
        { "label", [] { return VantLabel().styleSheet(); } },
        { "combo_box", [] { return VantComboBox().styleSheet().replace('\n', '\t'); } },
        { "language", [] { return VantLocale::getInstance().getDefaultLanguage(); } },
    };
    for (const QString& argument : QApplication::arguments().mid(2)) {
        QTextStream(stdout) << commands[argument]() << '\n';
    }
    return 0;
}
