#include "places.h"

#include "texts.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <filesystem>

namespace gallery {

namespace {

QString madeUpFolder;

QDateTime madeUpTime()
{
    return { QDate(2026, 3, 9), QTime(16, 30, 30) };
}

struct MadeUpFile
{
    const char* path;
    qint64 size;
    int daysAgo; ///< before a time that never changes
};

const MadeUpFile madeUpFiles[] = {
    { "home/Documents/Annual report.docx", 482304, 1 },
    { "home/Documents/Budget 2026.xlsx", 96256, 1 },
    { "home/Documents/Contract.pdf", 1310720, 12 },
    { "home/Documents/Invoices/Invoice 0917.pdf", 73728, 3 },
    { "home/Documents/Invoices/Invoice 0918.pdf", 74752, 2 },
    { "home/Documents/Invoices/Reminders/First/Second/Last/Notes.txt", 512, 40 },
    { "home/Documents/Letter.txt", 2048, 5 },
    { "home/Documents/Minutes.docx", 35840, 1 },
    { "home/Documents/Plan of the office.ai", 2621440, 90 },
    { "home/Documents/Presentation.pptx", 5767168, 8 },
    { "home/Documents/Recording.mp3", 8912896, 8 },
    { "home/Documents/Sources.zip", 15728640, 21 },
    { "home/Documents/Template.doc", 28672, 200 },
    { "home/Documents/Tour.mp4", 73400320, 30 },
    { "home/Music/Overture.flac", 31457280, 400 },
    { "home/Pictures/Harbour.jpg", 3355443, 7 },
    { "home/Pictures/Lighthouse.png", 1258291, 7 },
    { "home/Read me.txt", 1024, 365 },
    { "archive/2024.bkpi", 734003200, 500 },
    { "archive/2025.bkpi", 811597824, 150 },
};

void makeUp(const MadeUpFile& made)
{
    const QString path = QDir(madeUpFolder).filePath(QLatin1String(made.path));
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.resize(made.size); // takes no room on the disk
        file.setFileTime(madeUpTime().addDays(-made.daysAgo), QFileDevice::FileModificationTime);
    }
}

// Qt sets the times of files only.
void setTimeOfFolder(const QString& folder)
{
    using namespace std::chrono;
    const qint64 secondsAgo = madeUpTime().secsTo(QDateTime::currentDateTime()) + 3 * 24 * 3600;
    const auto time = std::filesystem::file_time_type::clock::now() - seconds(secondsAgo);
    std::error_code error;
    std::filesystem::last_write_time(std::filesystem::u8path(folder.toStdString()), time, error);
}

QString within(const QString& folder, const Place& place)
{
    const QString relative = QDir(place.folder).relativeFilePath(folder);
    const bool isWithin = !relative.startsWith(QLatin1String("..")) && !QDir::isAbsolutePath(relative);
    return isWithin ? relative : QString();
}

} // namespace

QList<Place> places()
{
    const bool isMadeUp = !madeUpFolder.isEmpty();
    const Place home { QStringLiteral("home"), text("files.place.home"),
        isMadeUp ? madeUpFolder + QStringLiteral("/home") : QDir::homePath() };
    if (isMadeUp) {
        return { home,
            { QStringLiteral("archive"), text("files.place.archive"),
                madeUpFolder + QStringLiteral("/archive") } };
    }
    return { home, { QStringLiteral("computer"), text("files.place.computer"), QDir::rootPath() } };
}

QString startFolder()
{
    return madeUpFolder.isEmpty() ? QDir::homePath() : madeUpFolder + QStringLiteral("/home/Documents");
}

void useMadeUpPlaces(const QString& folder)
{
    madeUpFolder = folder;
    for (const MadeUpFile& file : madeUpFiles) {
        makeUp(file);
    }
    QDirIterator folders(folder, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (folders.hasNext()) {
        setTimeOfFolder(folders.next());
    }
}

QString shownPath(const QString& folder)
{
    QString shortest;
    const QList<Place> all = places();
    for (const Place& place : all) {
        const QString relative = within(folder, place);
        if (!relative.isNull()) {
            const QString path = relative == QLatin1String(".") ? place.name : place.name + '/' + relative;
            shortest = shortest.isNull() || path.count('/') < shortest.count('/') ? path : shortest;
        }
    }
    return shortest;
}

QString folderOf(const QString& path)
{
    const QString name = path.section('/', 0, 0);
    const QList<Place> all = places();
    for (const Place& place : all) {
        if (place.name == name) {
            return QDir::cleanPath(place.folder + '/' + path.section('/', 1));
        }
    }
    return {};
}

} // namespace gallery
