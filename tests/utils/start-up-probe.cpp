// Carries out its arguments in order and prints what each one gives, for the tests. Its folders and
// templates lie in the working directory.

#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QDir>
#include <QTextStream>

namespace {

void act(const QString& command, const QString& argument)
{
    const QString folder = QDir::currentPath();
    if (command == QLatin1String("paths")) {
        ThemeFolder::setPaths(folder, folder);
    } else if (command == QLatin1String("user_path")) {
        UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"), folder);
    } else if (command == QLatin1String("images")) {
        ImageManager::getInstance().initialize();
    } else if (argument.isEmpty()) {
        StyleManager::getInstance().initialize({});
    } else {
        StyleManager::getInstance().initialize({ folder + QLatin1Char('/') + argument });
    }
}

QString resultOf(const QString& command, const QString& argument)
{
    if (command == QLatin1String("image_folder")) {
        return ImageManager::getInstance().getImageFolder();
    }
    if (command == QLatin1String("temp_image_folder")) {
        return ImageManager::getInstance().getTempImageFolder();
    }
    if (command == QLatin1String("string")) {
        return ComponentStrings::getInstance().getString(argument);
    }
    if (command == QLatin1String("image")) {
        return getGlobalImage(argument).isNull() ? QStringLiteral("null") : QStringLiteral("image");
    }
    if (command == QLatin1String("label")) {
        return VantLabel().styleSheet();
    }
    if (command == QLatin1String("combo_box")) {
        return VantComboBox().styleSheet().replace(QLatin1Char('\n'), QLatin1Char('\t'));
    }
    if (command == QLatin1String("language")) {
        return VantLocale::getInstance().getDefaultLanguage();
    }
    act(command, argument);
    return QStringLiteral("done");
}

} // namespace

int main(int argc, char** argv)
{
    qSetMessagePattern(QStringLiteral("%{message}"));
    const QApplication application(argc, argv);
    QTextStream out(stdout);
    const QStringList arguments = QApplication::arguments().mid(1);
    for (const QString& argument : arguments) {
        out << resultOf(argument.section(QLatin1Char(':'), 0, 0), argument.section(QLatin1Char(':'), 1))
            << '\n';
        out.flush();
    }
    return 0;
}
