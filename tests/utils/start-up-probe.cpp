// Carries out its arguments in order and prints what each one gives, for the start-up test.

#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QTextStream>

namespace {

QString carriedOut(const QString& command, const QString& argument)
{
    if (command == QLatin1String("paths")) {
        ThemeFolder::setPaths(argument, argument);
    } else if (command == QLatin1String("user_path")) {
        UIPathManager::getInstance().setPath(QStringLiteral("user_data_path"), argument);
    } else if (command == QLatin1String("images")) {
        ImageManager::getInstance().initialize(ImageManager::EagerLoad);
    } else if (command == QLatin1String("image_folder")) {
        return ImageManager::getInstance().getImageFolder();
    } else if (command == QLatin1String("temp_image_folder")) {
        return ImageManager::getInstance().getTempImageFolder();
    } else if (command == QLatin1String("styles")) {
        StyleManager::getInstance().initialize(
            argument.isEmpty() ? std::vector<QString> {} : std::vector<QString> { argument });
    } else if (command == QLatin1String("path")) {
        return UIPathManager::getInstance().getPath(argument);
    } else if (command == QLatin1String("string")) {
        return ComponentStrings::getInstance().getString(argument);
    } else if (command == QLatin1String("image")) {
        return getGlobalImage(argument).isNull() ? QStringLiteral("null") : QStringLiteral("image");
    } else if (command == QLatin1String("label")) {
        return VantLabel().styleSheet();
    } else if (command == QLatin1String("combo_box")) {
        return VantComboBox().styleSheet();
    } else {
        qFatal("No such command: %s", qUtf8Printable(command));
    }
    return QStringLiteral("done");
}

} // namespace

int main(int argc, char** argv)
{
    qSetMessagePattern(QStringLiteral("%{category} %{type}: %{message}"));
    const QApplication application(argc, argv);
    QTextStream out(stdout);
    const QStringList arguments = QApplication::arguments().mid(1);
    for (const QString& argument : arguments) {
        const int colon = argument.indexOf(QLatin1Char(':'));
        out << carriedOut(argument.left(colon), colon < 0 ? QString() : argument.mid(colon + 1)) << '\n';
        out.flush();
    }
    return 0;
}
