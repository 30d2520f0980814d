#include "file-list.h"
#include "file-tree.h"
#include "folder-reader.h"
#include "gallery-window.h"
#include "places.h"
#include "support/guarded-test.h"
#include "texts.h"
#include "theme.h"

#include <vantkit-qt/vantkit.h>

#include <QScrollBar>
#include <QTimer>
#include <QtTest>

#include <filesystem>
#include <fstream>

using namespace gallery;

namespace {

const int patience = 20000;

// In milliseconds, on machines that do much besides. In fact it is a twentieth of it.
const int mostStall = 500;

void writeFile(const QString& path)
{
    std::ofstream(path.toStdString()) << QFileInfo(path).fileName().toStdString();
}

ListingPtr listingOf(const QString& folder, bool isCancelled = false)
{
    return readFolder(folder, QLocale("en_US"), isCancelled);
}

/** The page in the window of the gallery, on made-up folders. Every sheet is answered with Return. */
class Browser
{
public:
    Browser()
    {
        window->show();
        window->activateWindow();
        window->settle();
        answering.callOnTimeout([this] { answer(); });
        answering.start(10);
    }

    QString path(const QString& name) const { return m_folder.filePath("home/" + name); }

    void open(const QString& folder) const
    {
        Q_EMIT tree->folderChosen(path(folder));
        window->settle();
    }

    void press(QWidget* widget, Qt::Key key) const
    {
        widget->setFocus(Qt::TabFocusReason);
        QTest::keyClick(widget, key);
        window->settle();
    }

    QStringList rows() const
    {
        QStringList names;
        for (int row = 0; row < table->rowCount(); ++row) {
            names << table->item(row, 0)->text();
        }
        return names;
    }

    QString shownInBar() const { return pathBar->getPath(pathBar->columnCount() - 1); }

    /** In the bar and in the tree. */
    QString shown() const
    {
        const QTreeWidgetItem* current = tree->currentItem();
        return current && shownInBar().endsWith(current->text(0)) ? shownInBar() : "two folders";
    }

    QLabel* label(const char* key) const
    {
        const QList<QLabel*> labels = window->findChildren<QLabel*>();
        const auto isIt = [key](const QLabel* one) { return one->text() == text(key); };
        return *std::find_if(labels.begin(), labels.end(), isIt);
    }

    VantButton* button(const QString& name) const
    {
        const QList<VantButton*> buttons = window->findChildren<VantButton*>();
        const auto isIt = [&](VantButton* one) {
            return one->accessibleName() == name || one->text() == name;
        };
        return *std::find_if(buttons.begin(), buttons.end(), isIt);
    }

    QTreeWidgetItem* item(const QString& name) const
    {
        return tree->findItems(name, Qt::MatchRecursive).value(0);
    }

private:
    void answer()
    {
        for (auto* sheet : window->findChildren<VantMessageSheet*>()) {
            if (sheet->isVisible()) {
                said += sheet->accessibleDescription();
                QTest::keyClick(sheet->button(QMessageBox::Ok), Qt::Key_Return);
            }
        }
    }

    std::unique_ptr<GalleryWindow> newWindow() const
    {
        useMadeUpPlaces(m_folder.path());
        return std::make_unique<GalleryWindow>("files", "enu");
    }

    QTemporaryDir m_folder;

public:
    std::unique_ptr<GalleryWindow> window = newWindow();
    FileTree* tree = window->findChild<FileTree*>();
    QTableWidget* table = window->findChild<VantTableWidget*>()->getTable();
    VantFilterBar* filterBar = window->findChild<VantFilterBar*>();
    VantButtonPath* pathBar = window->findChild<VantButtonPath*>();
    VantPagingBar* pagingBar = window->findChild<VantPagingBar*>();
    VantDateSelector* day = window->findChild<VantDateSelector*>();
    QTimer answering;
    QString said; ///< by the sheets so far
};

} // namespace

class FilesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void readsInOrder();
    void showsNamesThatAreNotText();
    void filtersByDay();
    void tellsOfTheLastFolderOnly();
    void leads();
    void folderVanishes();
    void filtersThePage();
    void keepsToTheTimeSpan();
    void growsToItsPage();
    void letsTheKeyboardThrough();
    void goesWhileItReads();
    void staysFluid();

private:
    QTemporaryDir m_userFolder;
};

void FilesTest::initTestCase()
{
    useLightGround();
    const QString theme = defaultThemeFolder();
    UIPathManager::getInstance().setPath("resource_path", theme);
    UIPathManager::getInstance().setPath("user_data_path", m_userFolder.path());
    ComponentStrings::getInstance().installStrings(componentStrings(theme, "enu"));
    installTexts("enu");
    ImageManager::getInstance().initialize(ImageManager::LazyLoad);
    StyleManager::getInstance().initialize(templateFiles(theme));
}

void FilesTest::readsInOrder()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("z folder"));
    for (const char* name : { "b.txt", "a10.txt", "a9.txt", ".hidden", "two\nlines" }) {
        writeFile(folder.filePath(name));
    }
    QVERIFY(QFile::link(folder.path(), folder.filePath("circle")));
    QVERIFY(QFile::link("nowhere", folder.filePath("gone")));

    const ListingPtr listing = listingOf(folder.path());
    QStringList names;
    for (const FileEntry& entry : listing->entries) {
        names << entry.name;
    }
    QCOMPARE(
        names, QStringList({ "circle", "z folder", "a9.txt", "a10.txt", "b.txt", "gone", "two\nlines" }));
    QVERIFY(listing->isReadable);
    QCOMPARE(listing->entries[3].size.value_or(0), 7);
    QVERIFY(!listing->entries[0].size && !listing->entries[5].size); // nobody knows
    QCOMPARE(listing->entries[3].kind, Kind::Document);
    QVERIFY(listingOf(folder.path(), true)->entries.empty());
    for (const char* name : { "b.txt", "nowhere", "b.txt/in" }) {
        const ListingPtr none = listingOf(folder.filePath(name));
        QVERIFY2(!none->isThere && !none->isReadable && none->entries.empty(), name);
    }
}

void FilesTest::showsNamesThatAreNotText()
{
    const QTemporaryDir folder;
    const std::string bytes = folder.path().toStdString() + "/bad \xFF.txt";
    std::ofstream(bytes) << "kept";
    const QString shown = listingOf(folder.path())->entries.at(0).name;
    QCOMPARE(shown, QString("bad \xEF\xBF\xBD.txt"));
    std::filesystem::remove(bytes); // Qt would not find it either
}

// The page does so with kinds and words.
void FilesTest::filtersByDay()
{
    const QDate day(2026, 3, 1);
    FolderListing listing;
    listing.entries = { { "last moment", Kind::Music, 0, day.endOfDay() },
        { "first moment", Kind::Music, 0, day.startOfDay() },
        { "after", Kind::Music, 0, day.addDays(1).startOfDay() }, { "unknown", Kind::Music, 0, {} } };
    FileList list;
    list.setListing(std::make_shared<FolderListing>(listing));
    QCOMPARE(list.count(), 4);
    list.setFilter({ "MOMENT", Kind::Music, day });
    QCOMPARE(list.count(), 2);
    list.setFilter({ {}, {}, day });
    QCOMPARE(list.count(), 2);
}

void FilesTest::tellsOfTheLastFolderOnly()
{
    const QTemporaryDir folder;
    QStringList told;
    auto reader = std::make_unique<FolderReader>();
    connect(
        reader.get(), &FolderReader::done, this, [&](const ListingPtr& listing) { told << listing->folder; });
    reader->read(folder.path());
    QVERIFY(QThreadPool::globalInstance()->waitForDone()); // and what it read waits to be told
    reader->read("/");
    QTRY_VERIFY_WITH_TIMEOUT(!reader->isReading(), patience);
    QCOMPARE(told, QStringList("/"));

    reader->read(folder.path());
    reader.reset();
    QVERIFY(QThreadPool::globalInstance()->waitForDone());
    QCoreApplication::processEvents();
    QCOMPARE(told, QStringList("/"));
}

void FilesTest::leads()
{
    const Browser browser;
    QCOMPARE(browser.rows().value(0), QString("Invoices"));
    browser.press(browser.table, Qt::Key_Return);
    QCOMPARE(browser.shown(), QString("Home/Documents/Invoices"));

    browser.press(browser.table, Qt::Key_Backspace);
    QCOMPARE(browser.shown(), QString("Home/Documents"));
    QCOMPARE(browser.table->currentRow(), 0);

    QTest::mouseClick(browser.pathBar->cellWidget(0, 0), Qt::LeftButton);
    browser.press(browser.table, Qt::Key_Backspace); // leads nowhere from there
    QCOMPARE(browser.shown(), QString("Home"));

    browser.press(browser.tree, Qt::Key_Down);
    QCOMPARE(browser.shown(), QString("Home/Documents"));
    browser.press(browser.tree, Qt::Key_F2);
    QVERIFY2(!browser.tree->findChild<QLineEdit*>(), "nothing is renamed here");
    browser.press(browser.tree, Qt::Key_Backspace);
    QCOMPARE(browser.shown(), QString("Home"));

    // The focus alone leads nowhere.
    browser.tree->setFixedSize(50, 70);
    browser.tree->horizontalScrollBar()->setValue(10);
    browser.tree->verticalScrollBar()->setValue(3);
    QSignalSpy chosen(browser.tree, SIGNAL(folderChosen(QString)));
    browser.table->setFocus();
    browser.tree->setFocus();
    QVERIFY(chosen.isEmpty());
}

void FilesTest::folderVanishes()
{
    const Browser browser;
    QVERIFY(QDir(browser.path("Documents/Invoices")).mkdir("x<y\nz"));
    browser.open("Documents/Invoices/x<y\nz");
    QCOMPARE(browser.rows(), QStringList());
    QVERIFY(browser.label("files.empty")->isVisible());
    QVERIFY(QDir(browser.path("Documents/Invoices")).removeRecursively());
    Q_EMIT browser.pagingBar->sigRefresh();
    QTRY_COMPARE_WITH_TIMEOUT(browser.said, text("files.problem.gone").arg("x<y\nz"), patience);
    QCOMPARE(asRichText("12px"), QString("12p&#120;")); // which the kit would scale
    browser.window->settle();
    QCOMPARE(browser.shown(), QString("Home/Documents"));
    QVERIFY(!browser.item("Invoices"));
    QVERIFY(browser.rows().contains("Letter.txt"));
}

void FilesTest::filtersThePage()
{
    const Browser browser;
    QTest::keyClicks(browser.filterBar, "t");
    browser.press(browser.filterBar, Qt::Key_Return);
    QVERIFY(browser.rows().contains("Contract.pdf") && !browser.rows().contains("Invoices"));
    auto* menu = browser.window->findChild<VantMenu*>();
    menu->actions().value(2)->trigger(); // documents
    Q_EMIT browser.day->getCalendarView()->sigDateSelect(QDate(2026, 3, 8));
    QCOMPARE(browser.rows(), (QStringList { "Annual report.docx", "Budget 2026.xlsx", "Minutes.docx" }));
    const QAbstractItemView* table = browser.table;
    for (int column = 1; column < browser.table->columnCount(); ++column) {
        QVERIFY(table->sizeHintForColumn(column) <= browser.table->columnWidth(column));
    }

    browser.filterBar->setText("zz");
    browser.press(browser.filterBar, Qt::Key_Return);
    QVERIFY(browser.label("filter.none")->isVisible());
    browser.filterBar->clear();
    VantButton* sign = browser.button(text("files.kind.document"));
    QVERIFY(sign->isVisible());
    sign->click();
    QVERIFY(!sign->isVisible());
    browser.button(text("files.any_day"))->click();
    QCOMPARE(browser.rows().size(), 12);
    QCOMPARE(browser.day->currentText(), text("files.day"));
}

// The button for today leads out of every limit of that time.
void FilesTest::keepsToTheTimeSpan()
{
    const GalleryWindow window("dates", "enu");
    VantDateSelector* ends[2] {};
    for (auto* selector : window.findChildren<VantDateSelector*>()) {
        for (const int end : { 0, 1 }) {
            ends[end] =
                selector->accessibleName() == text(end ? "dates.to" : "dates.from") ? selector : ends[end];
        }
    }
    Q_EMIT ends[1]->getCalendarView()->sigDateSelect(QDate(2017, 3, 20));
    ends[0]->getCalendarView()->selectToday();
    QCOMPARE(ends[0]->currentText(), text("dates.none"));
    Q_EMIT ends[0]->getCalendarView()->sigDateSelect(QDate(2017, 3, 20));
    ends[0]->getCalendarView()->selectToday();
    QCOMPARE(ends[0]->currentText(), QString("2017-03-20"));
    Q_EMIT ends[1]->getCalendarView()->sigDateSelect(QDate(2017, 3, 19));
    QCOMPARE(ends[1]->currentText(), QString("2017-03-20"));
    ends[1]->getCalendarView()->selectToday();
    QCOMPARE(ends[1]->currentText(), QDate::currentDate().toString(Qt::ISODate));
}

// As for a picture, after one turn of the event loop: layouts take one for each level.
void FilesTest::growsToItsPage()
{
    GalleryWindow window("footbar", "enu");
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.enterState("filled");
    QCoreApplication::processEvents();
    window.growToPage();
    for (const VantButton* button : window.findChildren<VantButton*>()) {
        QVERIFY(button->height() >= button->sizeHint().height());
    }
}

// Around the window by the Tab key: every view in the order in which they are seen, and the foot at last.
void FilesTest::letsTheKeyboardThrough()
{
    const Browser browser;
    const QWidget* first = QApplication::focusWidget();
    QVERIFY(first);
    QStringList kinds;
    do {
        kinds << QApplication::focusWidget()->metaObject()->className();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && kinds.size() < 50);
    kinds.erase(std::unique(kinds.begin(), kinds.end()), kinds.end());
    QCOMPARE(kinds,
        (QStringList { "QListWidget", "VantComboBox", "VantCheckBox", "QPushButton", "VantFilterBar",
            "VantDateSelector", "gallery::FileTree", "ResizeSignalTableWidget", "VantButton",
            "VantIconButton", "VantButton" }));
}

void FilesTest::goesWhileItReads()
{
    for (int i = 0; i < 5; ++i) {
        Browser browser;
        Q_EMIT browser.tree->folderChosen(browser.path("Documents/Invoices/Reminders/First"));
        QVERIFY(browser.tree->isReading());
        browser.answering.stop();
        browser.window.reset();
        QCoreApplication::processEvents();
    }
}

void FilesTest::staysFluid()
{
    const Browser browser;
    QVERIFY(QDir().mkpath(browser.path("Many")));
    const std::string prefix = browser.path("Many/file ").toStdString();
    for (int i = 0; i < 50000; ++i) {
        std::ofstream(prefix + std::to_string(i) + ".txt");
    }
    browser.tree->refresh(QFileInfo(browser.path("Many")).path());
    browser.window->settle();

    QElapsedTimer sinceTurn;
    qint64 longest = 0; // that the event loop did not turn
    QTimer turns;
    turns.callOnTimeout([&] { longest = qMax(longest, sinceTurn.restart()); });
    turns.start(1);
    const auto step = [&](const std::function<void()>& act) {
        sinceTurn.start();
        act();
        browser.window->settle();
        QTest::qWait(20); // for what follows, such as painting
    };
    step([&] { browser.open("Many"); });
    QCOMPARE(browser.rows().value(49), QString("file 49.txt"));
    step([&] { browser.item("Many")->setExpanded(true); });
    browser.filterBar->setText("49999");
    step([&] { QTest::keyClick(browser.filterBar, Qt::Key_Return); });
    QCOMPARE(browser.rows(), QStringList("file 49999.txt"));
    step([&] { browser.filterBar->clear(); });
    step([&] { Q_EMIT browser.day->getCalendarView()->sigDateSelect(QDate::currentDate()); });
    step([&] { QMetaObject::invokeMethod(browser.pagingBar, "last_page"); });
    step([&] { Q_EMIT browser.pagingBar->sigRefresh(); });
    step([&] { browser.open("Documents"); });
    QVERIFY2(longest < mostStall, qPrintable(QString::number(longest)));
}

QTEST_MAIN(FilesTest)
#include "files-test.moc"
