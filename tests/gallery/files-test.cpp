#include "file-list.h"
#include "file-renaming.h"
#include "file-tree.h"
#include "folder-reader.h"
#include "gallery-window.h"
#include "places.h"
#include "support/guarded-test.h"
#include "texts.h"
#include "theme.h"

#include <vantkit-qt/vantkit.h>

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

// Everything below a folder, with its type and size.
QStringList contentsOf(const QString& folder)
{
    QStringList contents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.toStdString())) {
        const auto type = static_cast<int>(entry.symlink_status().type());
        const auto size = entry.is_regular_file() ? entry.file_size() : 0;
        contents << QString("%1|%2|%3").arg(QString::fromStdString(entry.path())).arg(type).arg(size);
    }
    contents.sort();
    return contents;
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

    QTreeWidgetItem* item(const QString& name) const
    {
        return tree->findItems(name, Qt::MatchRecursive).value(0);
    }

    void renameInTree(const QString& newName) const
    {
        press(tree, Qt::Key_F2);
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(editor);
        editor->setText(newName);
        QTest::keyClick(editor, Qt::Key_Return);
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
    void renames();
    void readsInOrder();
    void showsNamesThatAreNotText();
    void filtersByDay();
    void tellsOfTheLastFolderOnly();
    void renamesFromTheTree();
    void renamesWhatIsRead();
    void nameIsTaken();
    void leads();
    void folderVanishes();
    void filtersThePage();
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

void FilesTest::renames()
{
    const QString taken = text("files.problem.taken");
    const QString bad = text("files.problem.name");
    // What is renamed, its new name, and the complaint. The link "dangling" leads nowhere.
    const QString rows[][3] { { "a.txt", "\xF0\x9F\x98\x80\n", "" }, { "full", "fuller", "" },
        { "dangling", "still dangling", "" }, { "a.txt", "A.txt", "" },
        { "a.txt", "other.txt", taken.arg("other.txt") }, { "full", "empty", taken.arg("empty") },
        { "a.txt", "dangling", taken.arg("dangling") },
        { "gone.txt", "new.txt", text("files.problem.gone").arg("gone.txt") },
        { "a.txt", "  ", bad.arg("  ") }, { "a.txt", "empty/a.txt", bad.arg("empty/a.txt") },
        { "a.txt", ".", bad.arg(".") }, { "a.txt", "..", bad.arg("..") },
        { "a.txt", QString(300, 'x'), text("files.problem.refused").arg("a.txt", "File name too long") } };
    for (const auto& [name, newName, complaint] : rows) {
        const QTemporaryDir folder;
        writeFile(folder.filePath("a.txt"));
        writeFile(folder.filePath("other.txt"));
        QVERIFY(QDir(folder.path()).mkdir("empty") && QDir(folder.path()).mkdir("full"));
        writeFile(folder.filePath("full/in.txt"));
        QVERIFY(QFile::link("nowhere", folder.filePath("dangling")));
        QStringList expected = contentsOf(folder.path());

        QCOMPARE(renameFile(folder.filePath(name), newName), complaint);
        if (complaint.isEmpty()) {
            expected.replaceInStrings(folder.filePath(name), folder.filePath(newName)).sort();
        }
        QCOMPARE(contentsOf(folder.path()), expected);
    }
}

void FilesTest::readsInOrder()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("z folder"));
    for (const char* name : { "b.txt", "a10.txt", "a9.txt", ".hidden", "two\nlines" }) {
        writeFile(folder.filePath(name));
    }
    QVERIFY(QFile::link(folder.path(), folder.filePath("circle")));

    const ListingPtr listing = listingOf(folder.path());
    QStringList names;
    for (const FileEntry& entry : listing->entries) {
        names << entry.name;
    }
    QCOMPARE(names, QStringList({ "circle", "z folder", "a9.txt", "a10.txt", "b.txt", "two\nlines" }));
    QVERIFY(listing->isReadable);
    QCOMPARE(listing->entries[3].size, 7);
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
    QCOMPARE(renameFile(folder.filePath(shown), "good.txt"), text("files.problem.gone").arg(shown));
    QCOMPARE(std::filesystem::file_size(bytes), 4U);
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

void FilesTest::renamesFromTheTree()
{
    // The folder that is open, what is renamed, and what is shown then.
    const QString rows[][4] { { "Documents", "Documents", "Papers", "Home/Papers" },
        { "Documents/Invoices", "Documents", "Papers", "Home/Papers/Invoices" },
        { "Music", "Read me.txt", "Read.txt", "Home/Music" } };
    for (const auto& [folder, item, newName, shown] : rows) {
        const Browser browser;
        browser.open(folder);
        browser.item(item)->setCheckState(0, Qt::Checked);
        if (folder.startsWith(item + '/')) {
            Q_EMIT browser.tree->nameEdited(browser.path(item), newName); // else it would be opened first
        } else {
            browser.tree->setCurrentItem(browser.item(item));
            browser.renameInTree(newName);
        }
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(browser.path(newName)), patience);
        browser.window->settle();
        QVERIFY(!QFileInfo::exists(browser.path(item)) && !browser.item(item));
        QCOMPARE(browser.shownInBar(), shown);
        QCOMPARE(browser.tree->findItems(newName, Qt::MatchRecursive).size(), 1);
        QCOMPARE(browser.item(newName)->checkState(0), Qt::Checked);
    }
}

void FilesTest::renamesWhatIsRead()
{
    const Browser browser;
    const QString path = browser.path("Pictures");
    browser.item("Pictures")->setExpanded(true);
    QVERIFY(browser.tree->isReading());
    QCOMPARE(renameFile(path, "Images"), QString());
    browser.tree->renamed(path, browser.path("Images"));
    browser.window->settle();
    QCOMPARE(browser.item("Images")->childCount(), 2);
}

void FilesTest::nameIsTaken()
{
    const Browser browser;
    const QStringList before = contentsOf(browser.path(""));
    browser.renameInTree("Pictures");
    QTRY_COMPARE_WITH_TIMEOUT(browser.said, text("files.problem.taken").arg("Pictures"), patience);
    QTRY_COMPARE_WITH_TIMEOUT(browser.shown(), QString("Home/Documents"), patience);
    QCOMPARE(contentsOf(browser.path("")), before);
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
    browser.press(browser.tree, Qt::Key_Backspace);
    QCOMPARE(browser.shown(), QString("Home"));
}

void FilesTest::folderVanishes()
{
    const Browser browser;
    browser.open("Documents/Invoices/Reminders");
    QCOMPARE(browser.rows(), QStringList("First"));
    QVERIFY(QDir(browser.path("Documents/Invoices")).removeRecursively());
    Q_EMIT browser.pagingBar->sigRefresh();
    QTRY_COMPARE_WITH_TIMEOUT(browser.said, text("files.problem.gone").arg("Reminders"), patience);
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

    browser.filterBar->clear();
    menu->actions().value(0)->trigger();
    for (auto* button : browser.window->findChildren<VantButton*>()) {
        if (button->text() == text("files.any_day")) {
            button->click();
        }
    }
    QCOMPARE(browser.rows().size(), 12);
    QCOMPARE(browser.day->currentText(), text("files.day"));
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
