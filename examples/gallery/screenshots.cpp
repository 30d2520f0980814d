#include "screenshots.h"

#include "command-line.h"
#include "controls.h"
#include "gallery-window.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QCursor>
#include <QDialog>
#include <QDir>
#include <QLayout>
#include <QMovie>
#include <QNetworkProxy>
#include <QPainter>
#include <QPixmap>
#include <QStandardPaths>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>

namespace gallery {

namespace {

const QColor windowEdge(0x7F, 0x8E, 0x9C); // line-strong
const int smallest = 0; // how a PNG file is packed

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
    painter.fillRect(place.adjusted(-1, -1, 1, 1), windowEdge);
    painter.drawPixmap(place.topLeft(), box->grab());
    return picture;
}

// Of what waits for an answer on @p window or above it, which is then closed without one; null if nothing
// does.
QPixmap pictureOfQuestion(GalleryWindow* window)
{
    QCoreApplication::sendPostedEvents();
    window->settle();
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

Options on(const QString& page, Options options)
{
    options.page = page;
    return options;
}

void showAtRest(GalleryWindow* window)
{
    QCursor::setPos(-1, -1); // over no window
    window->show();
    window->activateWindow();
    QApplication::processEvents();
    window->settle();
    window->focusWidget()->clearFocus();
}

QPixmap pictureOf(const QString& page, const QString& state, const Options& options)
{
    GalleryWindow window(on(page, options));
    showAtRest(&window);
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

QPixmap pictureOfWindow(const Options& options)
{
    GalleryWindow window(on(QStringLiteral("path"), options));
    window.resize(px(720), px(420));
    showAtRest(&window);
    QPixmap picture = window.grab();
    QPainter painter(&picture);
    painter.setPen(windowEdge);
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    return picture;
}

// The file browser, as wide as the picture of the window.
QPixmap pictureOfBrowser(GalleryWindow* window)
{
    window->enterState(QStringLiteral("selected"));
    QApplication::processEvents();
    auto* top = window->findChild<VantButtonPath*>();
    auto* bottom = window->findChild<VantPagingBar*>();
    QWidget* section = top->parentWidget();
    const QRect place(top->geometry().topLeft(), bottom->mapTo(section, bottom->rect().bottomRight()));
    return section->grab(place);
}

QPixmap pictureOfRenaming(const Options& options)
{
    GalleryWindow window(on(QStringLiteral("tree"), options));
    showAtRest(&window);
    auto* tree = window.findChild<QTreeWidget*>();
    QWidget* frame = tree->parentWidget();
    tree->setFixedSize(px(240), px(8 * 28 + 2));
    frame->setFixedSize(frame->sizeHint());
    frame->layout()->activate();
    window.enterState(QStringLiteral("rename"));
    QApplication::processEvents();
    return frame->grab();
}

bool save(const QPixmap& picture, const QDir& folder, const char* name)
{
    return picture.save(folder.filePath(QLatin1String(name)), nullptr, smallest);
}

// What the pages of help show, in the size in which they show it.
bool saveHelpPictures(const QDir& folder, const Options& options)
{
    GalleryWindow browser(on(QStringLiteral("files"), options));
    browser.resize(px(1050), px(720));
    showAtRest(&browser);
    browser.growToPage();
    return folder.mkpath(QStringLiteral(".")) && save(pictureOfWindow(options), folder, "gallery.png")
        && save(pictureOfBrowser(&browser), folder, "files.png")
        && save(pictureOfRenaming(options), folder, "rename.png");
}

} // namespace

void prepareScreenshots()
{
    setUnlessSet("QT_QPA_PLATFORM", "offscreen");
    setUnlessSet("QT_FONT_DPI", "96");
    // Where the offscreen display does not ask the system for fonts, as on Windows.
    const QString fonts = QStandardPaths::writableLocation(QStandardPaths::FontsLocation);
    setUnlessSet("QT_QPA_FONTDIR", QFile::encodeName(fonts).constData());
    // Nobody answers there, so the help is that on this computer.
    QNetworkProxy::setApplicationProxy({ QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), 1 });
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
            if (!pictureOf(page.name, state, options).save(file)) {
                return failure(QStringLiteral("Cannot write '%1'.").arg(file));
            }
        }
    }
    const QString helpFolder = QDir(options.screenshotsFolder).filePath(QStringLiteral("help"));
    if (options.page.isEmpty() && !saveHelpPictures(helpFolder, options)) {
        return failure(QStringLiteral("Cannot write to the folder '%1'.").arg(helpFolder));
    }
    return 0;
}

} // namespace gallery
