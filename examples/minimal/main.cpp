// The smallest program that uses an installed kit. With a file name as its argument it writes a picture of
// its window there instead of showing it.

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QStandardPaths>
#include <QVBoxLayout>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (!VantTheme::of("default").start(data, "enu")) {
        return 1;
    }

    QWidget window;
    auto* ok = new VantButton(ComponentStrings::getInstance().getString("ok"), 0);
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(new VantLabel("A window with the look of the kit."));
    layout->addWidget(new VantCheckBox("Check me"));
    layout->addWidget(ok, 0, Qt::AlignRight);
    QObject::connect(ok, SIGNAL(clicked()), &window, SLOT(close()));

    const QStringList arguments = QApplication::arguments();
    if (arguments.size() > 1) {
        return window.grab().save(arguments.at(1), "PNG") ? 0 : 1;
    }
    window.show();
    return QApplication::exec();
}
