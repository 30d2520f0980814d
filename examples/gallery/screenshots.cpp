#include "screenshots.h"

#include "command-line.h"
#include "gallery-window.h"

#include <vantkit-qt/sheets/vant-sheet.h>

#include <QApplication>
#include <QCursor>
#include <QDialog>
#include <QDir>
#include <QMovie>
#include <QPainter>
#include <QPixmap>
#include <QTimer>

#include <algorithm>

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

// The open popups, the one on top last.
QWidgetList openPopups()
{
    QWidgetList popups = QApplication::topLevelWidgets();
    popups.erase(std::remove_if(popups.begin(), popups.end(),
                     [](const QWidget* widget) {
                         return !widget->isVisible() || widget->windowType() != Qt::Popup
                             || widget == QApplication::activePopupWidget();
                     }),
        popups.end());
    if (QWidget* top = QApplication::activePopupWidget()) {
        popups << top;
    }
    return popups;
}

QPixmap pictureOf(QWidget* window)
{
    QPixmap picture = window->grab();
    const QWidgetList popups = openPopups();
    for (QWidget* popup : popups) {
        QPainter(&picture).drawPixmap(window->mapFromGlobal(popup->pos()), popup->grab());
    }
    while (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
    }
    return picture;
}

VantSheet* openSheet(const QWidget* window)
{
    const QList<VantSheet*> sheets = window->findChildren<VantSheet*>();
    const auto open =
        std::find_if(sheets.begin(), sheets.end(), [](const VantSheet* sheet) { return sheet->isVisible(); });
    return open == sheets.end() ? nullptr : *open;
}

QPixmap pictureOfSheet(QWidget* window)
{
    const QList<QMovie*> movies = window->findChildren<QMovie*>();
    for (QMovie* movie : movies) {
        movie->setPaused(true);
        movie->jumpToFrame(0);
    }
    return window->grab();
}

// The box in the middle of its window, with a line where a window manager would draw a frame.
QPixmap pictureOfBox(QWidget* window, QWidget* box)
{
    QPixmap picture = window->grab();
    QRect place(QPoint(), box->size());
    place.moveCenter(window->rect().center());
    QPainter painter(&picture);
    painter.fillRect(place.adjusted(-1, -1, 1, 1), QColor(0x7F, 0x8E, 0x9C));
    painter.drawPixmap(place.topLeft(), box->grab());
    return picture;
}

// Of what waits for an answer on @p window or above it, which is then closed without one; null if nothing
// does.
QPixmap pictureOfQuestion(QWidget* window)
{
    QCoreApplication::sendPostedEvents();
    if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        const QPixmap picture = pictureOfBox(window, box);
        box->done(0);
        return picture;
    }
    if (VantSheet* sheet = openSheet(window)) {
        const QPixmap picture = pictureOfSheet(window);
        QMetaObject::invokeMethod(sheet, "quit");
        return picture;
    }
    return {};
}

QPixmap pictureOf(const QString& page, const QString& state, const QString& language)
{
    QCursor::setPos(-1, -1); // over no window
    GalleryWindow window(page, language);
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    window.settle();
    window.focusWidget()->clearFocus();
    window.growToPage();
    QApplication::processEvents();
    if (QWidget* opener = window.opener(state)) {
        makeRoomBelow(opener);
    }
    // A question keeps enterState() waiting, and a timer is what runs meanwhile.
    QPixmap question;
    QTimer::singleShot(0, &window, [&] { question = pictureOfQuestion(&window); });
    window.enterState(state);
    QApplication::processEvents();
    if (!question.isNull()) {
        return question;
    }
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
    QApplication::setCursorFlashTime(0);
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
