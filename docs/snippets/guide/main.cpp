//! [guide.main]
#include "task-window.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QStandardPaths>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QString language = VantLocale::getInstance().getDefaultLanguage();
    if (!VantTheme::of("default").start(data, language)) {
        return 1; // a warning has told what is missing, and where
    }

    TaskWindow window;
    window.show();
    return QApplication::exec();
}

//! [guide.main]
