#include "support/guarded-test.h"

#include <vantkit-qt/utils/file-type-map.h>

#include <QFileInfo>
#include <QTest>

class FileTypeMapTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void kinds_data();
    void kinds();
    void newRows();
};

void FileTypeMapTest::kinds_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("kind");
    const auto row = [](const char* extension, const char* kind) {
        QTest::addRow("'%s'", extension) << QString::fromLatin1(extension) << QString::fromLatin1(kind);
    };
    // Of each kind the last extension of its row, and what could have gone elsewhere.
    row("maf", "acc");
    row("ai", "ai");
    row("wma", "audio");
    row("bkpi", "bkpi");
    row("rtf", "doc");
    row("exe", "exe");
    row("fla", "fla");
    row("html", "htm");
    row("idn", "idn");
    row("gif", "image");
    row("daa", "iso");
    row("cxx", "code");
    row("pdf", "pdf");
    row("ppsx", "ppt");
    row("psd", "psd");
    row("f4v", "swf");
    row("otf", "ttf");
    row("txt", "txt");
    row("webm", "video");
    row("xlam", "xls");
    row("rar", "zip");
    row("ac3", "video");
    row("ts", "video");
    row("bin", "iso");
    row("c", "code");
    row("xhtml", "code");
    row("dvr-ms", "video");
    row("jpg", "image");
    row("JPG", "image");
    row("Jpg", "image");
    row(".jpg", "xxx");
    row("photo.jpg", "xxx");
    row("jpg ", "xxx");
    row("mp", "xxx");
    row("", "xxx");
}

void FileTypeMapTest::kinds()
{
    QFETCH(QString, extension);
    QFETCH(QString, kind);
    FileTypeMap& map = FileTypeMap::getInstance();
    for (const bool removed : { false, true }) {
        const QString file = map.getFiletypeMapping(extension, removed);
        QCOMPARE(file, kind + (removed ? "_removed.png" : ".png"));
        QVERIFY2(QFileInfo(QStringLiteral(FILE_TYPE_ICONS "/") + file).isFile(), qPrintable(file));
    }
}

void FileTypeMapTest::newRows()
{
    FileTypeMap& map = FileTypeMap::getInstance();
    map.mappingFile(QStringLiteral("archive"), QStringLiteral("new RaR  Older"));
    QCOMPARE(map.getFiletypeMapping(QStringLiteral("NEW"), false), QStringLiteral("archive.png"));
    QCOMPARE(map.getFiletypeMapping(QStringLiteral("rar"), false), QStringLiteral("archive.png"));
    QCOMPARE(map.getFiletypeMapping(QStringLiteral("older"), true), QStringLiteral("archive_removed.png"));
    QCOMPARE(map.getFiletypeMapping(QString(), false), QStringLiteral("archive.png"));
    QCOMPARE(map.getFiletypeMapping(QStringLiteral("zip"), false), QStringLiteral("zip.png"));
}

QTEST_GUILESS_MAIN(FileTypeMapTest)

#include "file-type-map-test.moc"
