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

#include <QLabel>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include <filesystem>
#include <fstream>

using namespace gallery;

namespace {

const int patience = 20000;

// In milliseconds, on machines that do much besides. In fact it is a twentieth of it.
const int mostStall = 500;

void writeFile(const QString& path, const QByteArray& content = {})
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

// Folders, links and files below a folder, with what they hold.
QMap<QString, QString> contentsOf(const QString& folder)
{
    QMap<QString, QString> contents;
    const QFileInfoList all =
        QDir(folder).entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo& info : all) {
        QFile file(info.filePath());
        if (info.isSymLink()) {
            contents[info.fileName()] = "-> " + info.symLinkTarget();
        } else if (info.isDir()) {
            contents[info.fileName()] = QDir(info.filePath()).entryList(QDir::Files).join(' ');
        } else if (file.open(QIODevice::ReadOnly)) {
            contents[info.fileName()] = file.readAll();
        }
    }
    return contents;
}

QStringList namesOf(const FolderListing& listing)
{
    QStringList names;
    for (const FileEntry& entry : listing.entries) {
        names << entry.name;
    }
    return names;
}

/** Answers every sheet in a window with Return, and keeps what it said. */
class Answers : public QObject
{
public:
    explicit Answers(QWidget* window)
    {
        m_timer.start(10);
        connect(&m_timer, &QTimer::timeout, this, [this, window] {
            const QList<VantSheet*> sheets = window->findChildren<VantSheet*>();
            for (VantSheet* sheet : sheets) {
                answer(sheet);
            }
        });
    }

    QString said; ///< by the sheets so far

private:
    void answer(VantSheet* sheet)
    {
        auto* button = sheet->findChild<QPushButton*>();
        if (sheet->isVisible() && button && button->isVisible()) {
            for (const QLabel* label : sheet->findChildren<QLabel*>()) {
                said += label->text() + '\n';
            }
            QTest::keyClick(button, Qt::Key_Return);
        }
    }

    QTimer m_timer;
};

/** How long the event loop did not turn, at most. */
class Stall : public QObject
{
public:
    Stall()
    {
        m_sinceTurn.start();
        startTimer(1);
    }

    qint64 longest = 0; ///< in milliseconds

protected:
    void timerEvent(QTimerEvent* /*event*/) override { longest = qMax(longest, m_sinceTurn.restart()); }

private:
    QElapsedTimer m_sinceTurn;
};

/** The page in the window of the gallery, on made-up folders. */
class Browser
{
public:
    Browser()
    {
        useMadeUpPlaces(m_folder.path());
        window = std::make_unique<GalleryWindow>("files", "enu");
        window->show();
        window->activateWindow();
        settle();
    }

    QString path(const QString& name) const { return m_folder.filePath("home/" + name); }

    void settle() const { window->settle(); }

    FileTree* tree() const { return window->findChild<FileTree*>(); }

    QTableWidget* table() const { return window->findChild<VantTableWidget*>()->getTable(); }

    VantFilterBar* filterBar() const { return window->findChild<VantFilterBar*>(); }

    QStringList rows() const
    {
        QStringList names;
        for (int row = 0; row < table()->rowCount(); ++row) {
            names << table()->item(row, 0)->text();
        }
        return names;
    }

    QString shownFolder() const
    {
        auto* bar = window->findChild<VantButtonPath*>();
        return bar->getPath(bar->columnCount() - 1);
    }

    QString currentInTree() const
    {
        const QTreeWidgetItem* item = tree()->currentItem();
        return item ? item->text(0) : QString();
    }

    /** As a user does it, with the keyboard. */
    void renameInTree(const QString& newName) const
    {
        tree()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(tree(), Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        QVERIFY(qobject_cast<QLineEdit*>(editor));
        QTest::keyClicks(editor, newName);
        QTest::keyClick(editor, Qt::Key_Return);
    }

private:
    QTemporaryDir m_folder;

public:
    std::unique_ptr<GalleryWindow> window;
};

} // namespace

class FilesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void renames_data();
    void renames();
    void readsInOrder();
    void showsNamesThatAreNotText();
    void readsWhatIsNoFolder();
    void filters_data();
    void filters();
    void tellsOfTheLastFolderOnly();
    void renamesFromTheTree_data();
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

void FilesTest::renames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("newName");
    QTest::addColumn<QString>("complaint");

    const QString taken = text("files.problem.taken");
    const QString refused = text("files.problem.name");
    QTest::newRow("file") << "a.txt"
                          << "b c.txt"
                          << "";
    QTest::newRow("folder") << "full"
                            << "fuller"
                            << "";
    QTest::newRow("link") << "dangling"
                          << "still dangling"
                          << "";
    QTest::newRow("case only") << "a.txt"
                               << "A.txt"
                               << "";
    QTest::newRow("emoji and a line end") << "a.txt" << QString::fromUtf8("\xF0\x9F\x98\x80\n") << "";
    QTest::newRow("taken by a file") << "a.txt"
                                     << "other.txt" << taken.arg("other.txt");
    QTest::newRow("taken by a folder") << "a.txt"
                                       << "empty" << taken.arg("empty");
    QTest::newRow("folder onto an empty one") << "full"
                                              << "empty" << taken.arg("empty");
    QTest::newRow("taken by a link that leads nowhere") << "a.txt"
                                                        << "dangling" << taken.arg("dangling");
    QTest::newRow("vanished") << "gone.txt"
                              << "new.txt" << text("files.problem.gone").arg("gone.txt");
    QTest::newRow("empty") << "a.txt"
                           << "" << refused.arg("");
    QTest::newRow("blanks") << "a.txt"
                            << "  " << refused.arg("  ");
    QTest::newRow("into another folder") << "a.txt"
                                         << "empty/a.txt" << refused.arg("empty/a.txt");
    QTest::newRow("the folder itself") << "a.txt"
                                       << "." << refused.arg(".");
    QTest::newRow("the folder above") << "a.txt"
                                      << ".." << refused.arg("..");
    QTest::newRow("too long") << "a.txt" << QString(300, 'x')
                              << text("files.problem.refused").arg("a.txt", "File name too long");
}

void FilesTest::renames()
{
    QFETCH(QString, name);
    QFETCH(QString, newName);
    QFETCH(QString, complaint);

    const QTemporaryDir folder;
    writeFile(folder.filePath("a.txt"), "A");
    writeFile(folder.filePath("other.txt"), "B");
    QVERIFY(QDir(folder.path()).mkdir("empty"));
    QVERIFY(QDir(folder.path()).mkdir("full"));
    writeFile(folder.filePath("full/in.txt"));
    QVERIFY(QFile::link("nowhere", folder.filePath("dangling")));
    QMap<QString, QString> expected = contentsOf(folder.path());

    QCOMPARE(renameFile(folder.filePath(name), newName), complaint);
    if (complaint.isEmpty()) {
        expected[newName] = expected.take(name);
    }
    QCOMPARE(contentsOf(folder.path()), expected);
}

void FilesTest::readsInOrder()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("z folder"));
    for (const char* name : { "b.txt", "A.txt", "a10.txt", "a9.txt", ".hidden", "two\nlines" }) {
        writeFile(folder.filePath(name), name);
    }
    QVERIFY(QFile::link(folder.path(), folder.filePath("circle")));

    const ListingPtr listing = readFolder(folder.path(), QLocale("en_US"), false);
    QVERIFY(listing->isReadable);
    const QStringList expected = { "circle", "z folder", "a9.txt", "a10.txt", "A.txt", "b.txt",
        "two\nlines" };
    QStringList names = namesOf(*listing);
    QCOMPARE(names.mid(0, 2), expected.mid(0, 2));
    QVERIFY(names.indexOf("a9.txt") < names.indexOf("a10.txt"));
    names.sort();
    QStringList sorted = expected;
    sorted.sort();
    QCOMPARE(names, sorted);
    const auto file = std::find_if(listing->entries.begin(), listing->entries.end(),
        [](const FileEntry& entry) { return entry.name == "a10.txt"; });
    QCOMPARE(file->size, 7);
    QCOMPARE(file->kind, Kind::Document);
    QVERIFY(namesOf(*readFolder(folder.path(), QLocale("en_US"), true)).isEmpty());
}

void FilesTest::showsNamesThatAreNotText()
{
    const QTemporaryDir folder;
    const std::string bytes = folder.path().toStdString() + "/bad \xFF.txt";
    std::ofstream(bytes) << "kept";

    const ListingPtr listing = readFolder(folder.path(), QLocale("en_US"), false);
    QCOMPARE(namesOf(*listing), QStringList(QString::fromUtf8("bad \xEF\xBF\xBD.txt")));
    const QString shown = folder.filePath(listing->entries[0].name);
    QCOMPARE(renameFile(shown, "good.txt"), text("files.problem.gone").arg(listing->entries[0].name));
    QCOMPARE(std::filesystem::file_size(bytes), 4U);
    std::filesystem::remove(bytes); // Qt would not find it either
}

void FilesTest::readsWhatIsNoFolder()
{
    const QTemporaryDir folder;
    writeFile(folder.filePath("file"));
    for (const char* name : { "file", "nowhere", "file/in" }) {
        const ListingPtr listing = readFolder(folder.filePath(name), QLocale("en_US"), false);
        QVERIFY2(!listing->isThere && !listing->isReadable && listing->entries.empty(), name);
    }
}

void FilesTest::filters_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QString>("names");

    const QDate first(2026, 3, 1);
    QTest::newRow("nothing") << "" << -1 << QDate() << "Letters letter.TXT photo.png song.mp3";
    QTest::newRow("keyword") << "LETTER" << -1 << QDate() << "Letters letter.TXT";
    QTest::newRow("kind") << "" << int(Kind::Picture) << QDate() << "photo.png";
    QTest::newRow("first moment of the day") << "" << -1 << first << "letter.TXT";
    QTest::newRow("last moment of the day") << "" << -1 << first.addDays(1) << "Letters photo.png";
    QTest::newRow("all of them") << "o" << int(Kind::Picture) << first.addDays(1) << "photo.png";
    QTest::newRow("that do not meet") << "o" << int(Kind::Picture) << first << "";
}

void FilesTest::filters()
{
    QFETCH(QString, keyword);
    QFETCH(int, kind);
    QFETCH(QDate, day);
    QFETCH(QString, names);

    const auto listing = std::make_shared<FolderListing>();
    const QDate first(2026, 3, 1);
    const QDateTime morning = first.startOfDay();
    const QDateTime night = first.addDays(1).endOfDay();
    listing->entries = { { "Letters", Kind::Folder, 0, night }, { "letter.TXT", Kind::Document, 10, morning },
        { "photo.png", Kind::Picture, 20, night }, { "song.mp3", Kind::Music, 30, {} } };
    FileList list;
    list.setListing(listing);
    list.setFilter({ keyword, kind < 0 ? std::nullopt : std::optional(static_cast<Kind>(kind)), day });

    QStringList seen;
    for (int i = 0; i < list.count(); ++i) {
        seen << list.at(i).name;
    }
    QCOMPARE(seen.join(' '), names);
    list.setListing(nullptr);
    QCOMPARE(list.count(), 0);
}

void FilesTest::tellsOfTheLastFolderOnly()
{
    const QTemporaryDir folder;
    QStringList told;
    auto reader = std::make_unique<FolderReader>();
    connect(
        reader.get(), &FolderReader::done, this, [&](const ListingPtr& listing) { told << listing->folder; });
    reader->read(folder.path());
    reader->read("/");
    QVERIFY(reader->isReading());
    QTRY_VERIFY_WITH_TIMEOUT(!reader->isReading(), patience);
    QCOMPARE(told, QStringList("/"));

    reader->read(folder.path());
    reader.reset();
    QVERIFY(QThreadPool::globalInstance()->waitForDone());
    QCoreApplication::processEvents();
    QCOMPARE(told, QStringList("/"));
}

void FilesTest::renamesFromTheTree_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("item"); // from there on, by keys
    QTest::addColumn<QString>("newPath");
    QTest::addColumn<QString>("shown");

    QTest::newRow("the folder that is shown") << "Documents"
                                              << "Documents"
                                              << "Papers"
                                              << "Home/Papers";
    QTest::newRow("a folder around it") << "Documents/Invoices/Reminders"
                                        << "Documents"
                                        << "Papers"
                                        << "Home/Papers/Invoices/Reminders";
    QTest::newRow("a file in another one") << "Music"
                                           << "Read me.txt"
                                           << "Read.txt"
                                           << "Home/Music";
}

void FilesTest::renamesFromTheTree()
{
    QFETCH(QString, folder);
    QFETCH(QString, item);
    QFETCH(QString, newPath);
    QFETCH(QString, shown);

    const Browser browser;
    Q_EMIT browser.tree()->folderChosen(browser.path(folder));
    browser.settle();
    QTreeWidgetItem* renamed =
        browser.tree()->findItems(item, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    QVERIFY(renamed);
    renamed->setCheckState(0, Qt::Checked);
    if (folder.startsWith(item + '/')) {
        Q_EMIT browser.tree()->nameEdited(browser.path(item), newPath); // else it would be opened first
    } else {
        browser.tree()->setCurrentItem(renamed);
        browser.renameInTree(newPath);
    }
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(browser.path(newPath)), patience);
    browser.settle();
    QVERIFY(!QFileInfo::exists(browser.path(item)));
    QCOMPARE(browser.shownFolder(), shown);
    QVERIFY(browser.tree()->findItems(item, Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
    const auto items = browser.tree()->findItems(newPath, Qt::MatchExactly | Qt::MatchRecursive);
    QCOMPARE(items.size(), 1);
    QCOMPARE(items[0]->checkState(0), Qt::Checked);
}

void FilesTest::renamesWhatIsRead()
{
    const Browser browser;
    const QString path = browser.path("Pictures");
    browser.tree()->findItems("Pictures", Qt::MatchRecursive).value(0)->setExpanded(true);
    QVERIFY(browser.tree()->isReading());
    QCOMPARE(renameFile(path, "Images"), QString());
    browser.tree()->renamed(path, browser.path("Images"));
    browser.settle();
    QCOMPARE(browser.tree()->findItems("Images", Qt::MatchRecursive).value(0)->childCount(), 2);
}

void FilesTest::nameIsTaken()
{
    const Browser browser;
    const Answers answers(browser.window.get());
    const QStringList before = QDir(browser.path("")).entryList();
    browser.renameInTree("Pictures");
    QTRY_VERIFY_WITH_TIMEOUT(answers.said.contains(text("files.problem.taken").arg("Pictures")), patience);
    QTRY_COMPARE_WITH_TIMEOUT(browser.currentInTree(), QString("Documents"), patience);
    QCOMPARE(QDir(browser.path("")).entryList(), before);
}

void FilesTest::leads()
{
    const Browser browser;
    QCOMPARE(browser.shownFolder(), QString("Home/Documents"));
    QCOMPARE(browser.rows().value(0), QString("Invoices"));

    browser.table()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(browser.table(), Qt::Key_Return);
    browser.settle();
    QCOMPARE(browser.shownFolder(), QString("Home/Documents/Invoices"));
    QCOMPARE(browser.currentInTree(), QString("Invoices"));

    QTest::keyClick(browser.table(), Qt::Key_Backspace);
    browser.settle();
    QCOMPARE(browser.shownFolder(), QString("Home/Documents"));
    QCOMPARE(browser.table()->currentRow(), 0);

    auto* bar = browser.window->findChild<VantButtonPath*>();
    QTest::mouseClick(bar->cellWidget(0, 0), Qt::LeftButton);
    browser.settle();
    QCOMPARE(browser.shownFolder(), QString("Home"));
    QCOMPARE(browser.currentInTree(), QString("Home"));

    QTest::keyClick(browser.table(), Qt::Key_Backspace);
    QCOMPARE(browser.shownFolder(), QString("Home"));

    browser.tree()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(browser.tree(), Qt::Key_Down);
    browser.settle();
    QCOMPARE(browser.shownFolder(), QString("Home/Documents"));
    QTest::keyClick(browser.tree(), Qt::Key_Backspace);
    browser.settle();
    QCOMPARE(browser.shownFolder(), QString("Home"));
}

void FilesTest::folderVanishes()
{
    const Browser browser;
    Answers answers(browser.window.get());
    Q_EMIT browser.tree()->folderChosen(browser.path("Documents/Invoices/Reminders"));
    browser.settle();
    QCOMPARE(browser.rows(), QStringList("First"));

    QVERIFY(QDir(browser.path("Documents/Invoices")).removeRecursively());
    browser.window->findChild<VantPagingBar*>()->sigRefresh();
    QTRY_COMPARE_WITH_TIMEOUT(browser.shownFolder(), QString("Home/Documents"), patience);
    QTRY_VERIFY_WITH_TIMEOUT(answers.said.contains(text("files.problem.gone").arg("Reminders")), patience);
    browser.settle();
    QCOMPARE(browser.currentInTree(), QString("Documents"));
    QVERIFY(browser.tree()->findItems("Invoices", Qt::MatchRecursive).isEmpty());
    QVERIFY(browser.rows().contains("Letter.txt"));
}

void FilesTest::filtersThePage()
{
    const Browser browser;
    browser.filterBar()->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(browser.filterBar(), "t");
    QTest::keyClick(browser.filterBar(), Qt::Key_Return);
    QVERIFY(browser.rows().contains("Contract.pdf") && browser.rows().contains("Invoices") == false);

    auto* menu = browser.window->findChild<VantMenu*>();
    menu->actions().value(2)->trigger(); // documents
    auto* day = browser.window->findChild<VantDateSelector*>();
    Q_EMIT day->getCalendarView()->sigDateSelect(QDate(2026, 3, 8));
    QCOMPARE(browser.rows(), (QStringList { "Annual report.docx", "Budget 2026.xlsx", "Minutes.docx" }));

    browser.filterBar()->clear();
    menu->actions().value(0)->trigger();
    for (auto* button : browser.window->findChildren<VantButton*>()) {
        if (button->text() == text("files.any_day")) {
            button->click();
        }
    }
    QCOMPARE(browser.rows().size(), 12);
    QCOMPARE(day->currentText(), text("files.day"));
}

// Around the window by the Tab key: every view in the order in which they are seen, and the foot at last.
void FilesTest::letsTheKeyboardThrough()
{
    const Browser browser;
    const QWidget* first = QApplication::focusWidget();
    QVERIFY(first);
    QStringList kinds;
    do {
        const QString kind = QApplication::focusWidget()->metaObject()->className();
        if (kinds.isEmpty() || kinds.last() != kind) {
            kinds << kind;
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && kinds.size() < 50);
    QCOMPARE(kinds,
        (QStringList { "QListWidget", "VantComboBox", "VantCheckBox", "QPushButton", "VantFilterBar",
            "VantDateSelector", "gallery::FileTree", "ResizeSignalTableWidget", "VantButton",
            "VantIconButton", "VantButton" }));
}

void FilesTest::goesWhileItReads()
{
    for (int i = 0; i < 5; ++i) {
        Browser browser;
        Q_EMIT browser.tree()->folderChosen(browser.path("Documents/Invoices/Reminders/First"));
        QVERIFY(browser.tree()->isReading());
        browser.window.reset();
        QCoreApplication::processEvents();
    }
}

void FilesTest::staysFluid()
{
    const Browser browser;
    const QString folder = browser.path("Many");
    QVERIFY(QDir().mkpath(folder));
    const std::string prefix = folder.toStdString() + "/file ";
    for (int i = 0; i < 50000; ++i) {
        std::ofstream(prefix + std::to_string(i) + ".txt");
    }
    QApplication::processEvents();

    Stall stall;
    const auto step = [&](const char* what, const std::function<void()>& act) {
        act();
        browser.settle();
        QTest::qWait(20); // for what follows, such as painting
        const qint64 longest = std::exchange(stall.longest, 0);
        QVERIFY2(longest < mostStall, qPrintable(QString("%1: %2 ms").arg(what).arg(longest)));
    };
    auto* bar = browser.window->findChild<VantPagingBar*>();
    step("opened", [&] { Q_EMIT browser.tree()->folderChosen(folder); });
    QCOMPARE(browser.rows().value(49), QString("file 49.txt"));
    step("open in the tree", [&] {
        for (QTreeWidgetItem* item : browser.tree()->findItems("Many", Qt::MatchRecursive)) {
            item->setExpanded(true);
        }
    });
    step("filtered", [&] {
        browser.filterBar()->setText("49999");
        QTest::keyClick(browser.filterBar(), Qt::Key_Return);
    });
    QCOMPARE(browser.rows(), QStringList("file 49999.txt"));
    step("unfiltered", [&] { browser.filterBar()->clear(); });
    step("by day", [&] {
        Q_EMIT browser.window->findChild<VantDateSelector*>()->getCalendarView()->sigDateSelect(
            QDate::currentDate());
    });
    step("paged", [&] { QMetaObject::invokeMethod(bar, "last_page"); });
    step("read again", [&] { Q_EMIT bar->sigRefresh(); });
    step("left", [&] { Q_EMIT browser.tree()->folderChosen(browser.path("Documents")); });
}

QTEST_MAIN(FilesTest)
#include "files-test.moc"
