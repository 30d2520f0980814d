// What a Qt program costs before it does anything: an empty window, closed after its first paint.

#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QTextStream>
#include <QTimer>

namespace {

class EmptyWindow : public QMainWindow
{
protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            QTimer::singleShot(0, this, [] {
                QTextStream(stdout) << "painted\n";
                QCoreApplication::quit();
            });
        }
        return QMainWindow::event(event);
    }
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    EmptyWindow window;
    window.show();
    return QApplication::exec();
}
