#include "screenshots.h"

#include "command-line.h"
#include "gallery-window.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPixmap>

namespace gallery {

namespace {

void setUnlessSet(const char* variable, const char* value)
{
    if (!qEnvironmentVariableIsSet(variable)) {
        qputenv(variable, value);
    }
}

// A popup stays within its display, and the offscreen one is smaller than the window. With what opens it
// right above the display, it has all of the display and opens where a user would see it.
void makeRoomBelow(QWidget* opener)
{
    QWidget* window = opener->window();
    window->move(window->pos() - opener->mapToGlobal(QPoint(0, opener->height())));
    QApplication::processEvents();
}

QPixmap pictureOf(QWidget* window)
{
    QPixmap picture = window->grab();
    if (QWidget* popup = QApplication::activePopupWidget()) {
        QPainter(&picture).drawPixmap(window->mapFromGlobal(popup->pos()), popup->grab());
        popup->close();
    }
    return picture;
}

QPixmap pictureOf(const QString& page, const QString& state, const QString& language)
{
    GalleryWindow window(page, language);
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    window.focusWidget()->clearFocus();
    window.growToPage();
    QApplication::processEvents();
    if (QWidget* opener = window.opener(state)) {
        makeRoomBelow(opener);
    }
    window.enterState(state);
    QApplication::processEvents();
    window.growToPage();
    QApplication::processEvents();
    return pictureOf(&window);
}

} // namespace

void prepareScreenshots()
{
    setUnlessSet("QT_QPA_PLATFORM", "offscreen");
    setUnlessSet("QT_FONT_DPI", "96");
}

int takeScreenshots(const Options& options)
{
    for (const PageInfo& page : pages()) {
        if (!options.page.isEmpty() && options.page != page.name) {
            continue;
        }
        for (const QString& state : QStringList(QString()) + page.states) {
            const QString name = state.isEmpty() ? page.name : page.name + QLatin1Char('-') + state;
            const QString file = QDir(options.screenshotsFolder).filePath(name + QStringLiteral(".png"));
            if (!pictureOf(page.name, state, options.language).save(file)) {
                return failure(QStringLiteral("Cannot write '%1'.").arg(file));
            }
        }
    }
    return 0;
}

} // namespace gallery
