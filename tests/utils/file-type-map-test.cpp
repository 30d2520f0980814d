#include "support/guarded-test.h"

#include <vantkit-qt/utils/file-type-map.h>

#include <QFileInfo>
#include <QTest>

class FileTypeMapTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void kinds();
    void newRows();
};

// Of each kind the last extension of its row, and what could have gone elsewhere.
void FileTypeMapTest::kinds()
{
    const char* const rows[] = { "maf acc", "ai ai", "wma audio", "bkpi bkpi", "rtf doc", "exe exe",
        "fla fla", "html htm", "idn idn", "gif image", "daa iso", "cxx code", "pdf pdf", "ppsx ppt",
        "psd psd", "f4v swf", "otf ttf", "txt txt", "webm video", "xlam xls", "rar zip", "ac3 video",
        "ts video", "bin iso", "xhtml code", "dvr-ms video", "Jpg image", ".jpg xxx", "mp xxx", " xxx" };
    for (const QString row : rows) {
        const QString extension = row.section(' ', 0, 0);
        const QString kind = row.section(' ', 1);
        QCOMPARE(FileTypeMap::getInstance().getFiletypeMapping(extension, false), kind + ".png");
        QCOMPARE(FileTypeMap::getInstance().getFiletypeMapping(extension, true), kind + "_removed.png");
        for (const char* const suffix : { ".png", "_removed.png" }) {
            QVERIFY2(QFileInfo::exists(FILE_TYPE_ICONS "/" + kind + suffix), qPrintable(kind));
        }
    }
}

void FileTypeMapTest::newRows()
{
    FileTypeMap& map = FileTypeMap::getInstance();
    map.mappingFile("archive", "new RaR  Older");
    for (const char* const extension : { "NEW", "rar", "older", "" }) {
        QCOMPARE(map.getFiletypeMapping(extension, false), QString("archive.png"));
    }
    QCOMPARE(map.getFiletypeMapping("zip", false), QString("zip.png"));
}

QTEST_GUILESS_MAIN(FileTypeMapTest)

#include "file-type-map-test.moc"
