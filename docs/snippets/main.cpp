// snippets [FOLDER]: runs every snippet under the default theme and, with a folder, writes a picture of what
// each shows there. The exit code is 0 only if there was no warning and everything asked that should.

#include "guide/task-window.h"
#include "snippets.h"

#include <vantkit-qt/vantkit.h>

#include <QDir>
#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QPainter>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>
#include <functional>

namespace {

/** What is created, and the size in design pixels that it is shown in, 0 for its own. */
struct Widget
{
    const char* name;
    QWidget* (*create)();
    int width = 0;
    int height = 0;
};

/** What asks in a window, and waits for the answer. */
struct Question
{
    const char* name;
    std::function<void(QWidget* window)> ask;
};

int faults = 0;
QString pictures;

void fail(const QString& what)
{
    ++faults;
    std::fprintf(stderr, "%s\n", qPrintable(what));
}

void takeMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    const bool isOfPlatform = text.startsWith(QLatin1String("This plugin does not support"));
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfPlatform) {
        fail(text);
    }
}

int px(int designPixels)
{
    return static_cast<int>(designPixels * DPIinfo::getInstance().getDPI());
}

void save(const QPixmap& picture, const QString& name)
{
    const QString path = QDir(pictures).filePath(name + QStringLiteral(".png"));
    if (!pictures.isEmpty() && !picture.save(path)) {
        fail(QStringLiteral("Cannot write ") + path);
    }
}

void showAtRest(QWidget* window)
{
    window->show();
    window->activateWindow();
    QCoreApplication::processEvents();
    if (QWidget* focused = window->focusWidget()) {
        focused->clearFocus();
    }
    QCoreApplication::processEvents();
}

void run(const Widget& snippet)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(px(16), px(16), px(16), px(16));
    QWidget* widget = snippet.create();
    layout->addWidget(widget, 0, snippet.width == 0 ? Qt::AlignLeft : Qt::Alignment());
    if (snippet.height != 0) {
        widget->setFixedHeight(px(snippet.height));
    }
    window.setFixedWidth(px(qMax(snippet.width, 360)));
    showAtRest(&window);
    save(window.grab(), QLatin1String(snippet.name));
}

// The button with the menu open below it.
void runMenu()
{
    QWidget window;
    window.setFixedSize(px(360), px(150));
    QWidget* button = createMenu();
    button->setParent(&window);
    button->move(px(16), px(16));
    showAtRest(&window);
    auto* menu = button->findChild<QMenu*>();
    const QPoint place = button->geometry().bottomLeft();
    menu->popup(window.mapToGlobal(place));
    QPixmap picture = window.grab();
    QPainter(&picture).drawPixmap(place, menu->grab());
    menu->close();
    save(picture, QStringLiteral("inputs.menu"));
}

/** Takes a picture of what asks in @p window or before it, and answers it with @p button. */
void answer(QWidget* window, const QString& name, QMessageBox::StandardButton button = QMessageBox::NoButton)
{
    QCoreApplication::sendPostedEvents();
    if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        save(box->grab(), name);
        box->done(button);
        return;
    }
    for (VantSheet* sheet : window->findChildren<VantSheet*>()) {
        if (sheet->isVisible()) {
            save(window->grab(), name);
            QMetaObject::invokeMethod(sheet, "done", Q_ARG(int, button));
            return;
        }
    }
    fail(QStringLiteral("Nothing asks: ") + name);
}

void run(const Question& snippet)
{
    QWidget window;
    window.resize(px(640), px(320));
    showAtRest(&window);
    const QString name = QLatin1String(snippet.name);
    QTimer::singleShot(0, &window, [&] { answer(&window, name); });
    snippet.ask(&window);
}

void runWidgets()
{
    const Widget widgets[] = {
        { "buttons.push", createPushButtons },
        { "buttons.icon", createIconButton },
        { "inputs.check", createCheckBoxes },
        { "inputs.radio", createRadioButtons },
        { "inputs.combo", createComboBox },
        { "fields.row", createField },
        { "fields.test", createTestedField },
        { "labels.wrap", createWrappedLabel, 480 },
        { "labels.message", createMessage, 480 },
        { "labels.link", createLink },
        { "footbar.bar", createFootBar, 480 },
        { "path.live", createPathBar, 480 },
        { "path.fit", createLongPathBar, 480 },
        { "path.odd", createOddPathBar, 480 },
        { "table.tasks", createTable, 480, 140 },
        { "paging.list", createPagedList, 640, 240 },
        { "paging.moment", createBarInTheMiddle, 640 },
        { "calendar.month", [] { return static_cast<QWidget*>(createCalendar()); } },
        { "calendar.limits", createLimitedCalendar },
        { "dates.selector", createDateSelector },
        { "dates.span", createSpan },
        { "filter.list", createFilteredList, 480, 190 },
        { "filter.bars", createFilterBar },
        { "filter.types", createFileIcons },
        { "files.browser", [] { return createFileBrowser(QStringLiteral(SNIPPETS_HELP)); }, 640, 190 },
        { "tree.folders",
            [] {
                VantTreeWidget* tree = createFolderTree();
                showFolder(tree, tree->topLevelItem(2)->child(0));
                return static_cast<QWidget*>(tree);
            },
            360, 180 },
    };
    for (const Widget& widget : widgets) {
        run(widget);
    }
}

void runQuestions()
{
    QTimer work;
    work.setInterval(60'000);
    const Question questions[] = {
        { "sheets.functions", [](QWidget* window) { isDeletionWanted("Photos", window); } },
        { "sheets.kinds", [](QWidget* window) { isRestoreWanted(window); } },
        { "sheets.work", [&work](QWidget* window) { waitForCopy(&work, window); } },
        { "sheets.input", [](QWidget* window) { askForName("Photos", window); } },
        { "sheets.countdown", [](QWidget* window) { mayShutDown(window); } },
    };
    for (const Question& question : questions) {
        run(question);
    }
}

// Nobody answers at the proxy, so the page is the one on disk.
void runHelp()
{
    QNetworkProxy::setApplicationProxy({ QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), 1 });
    QWidget window;
    window.show();
    showHelp(QStringLiteral(SNIPPETS_HELP), &window);
    auto* help = window.findChild<HelpWindow*>();
    const auto* text = help->findChild<QTextBrowser*>();
    QElapsedTimer clock;
    clock.start();
    while (text->document()->isEmpty() && clock.elapsed() < 20'000) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    if (text->document()->isEmpty()) {
        fail(QStringLiteral("There is no page of help"));
    }
    save(help->grab(), QStringLiteral("help"));
    help->close();
}

void runGuide()
{
    TaskWindow window;
    QTableWidget* table = window.findChild<VantTableWidget*>()->getTable();
    showAtRest(&window);
    table->selectRow(0);
    save(window.grab(), QStringLiteral("guide.window"));
    for (const auto button : { QMessageBox::Discard, QMessageBox::Ok }) {
        QTimer::singleShot(0, &window, [&] { answer(&window, QStringLiteral("guide.sheet"), button); });
        window.findChild<VantButton*>()->click();
        if (table->rowCount() != (button == QMessageBox::Ok ? 2 : 3)) {
            fail(QStringLiteral("The guide's window does not delete what it should"));
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    QtSingleApplication application(QStringLiteral("vantkit-snippets"), argc, argv);
    qInstallMessageHandler(takeMessage);
    if (argc > 1) {
        pictures = QString::fromLocal8Bit(argv[1]);
        QDir().mkpath(pictures);
    }
    const QTemporaryDir data;
    if (!VantTheme::of("default").start(data.path(), "enu")) {
        return 1;
    }
    QApplication::setCursorFlashTime(0);
    runWidgets();
    runMenu();
    runQuestions();
    runHelp();
    runGuide();

    QWidget window;
    if (!isLeftToAnother(application, "open")) {
        answerOthers(application, &window);
    }
    return faults == 0 ? 0 : 1;
}
