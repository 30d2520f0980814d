#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <QDir>
#include <QImageReader>
#include <QPixmapCache>
#include <QtTest>

class ImageCatalogueTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void states_data();
    void states();
    void loadsWhen();
    void temporaryImages();
    void badImage();
    void badUserFolder();
    // The last, since its many names stay in the catalogue.
    void badList_data();
    void badList();
};

namespace {

const QSize sourceSize(32, 32);
const QColor stateColors[] { Qt::black, Qt::green, Qt::blue, Qt::red };

void writeState(const ThemeFolder& theme, const QString& name, int state = ImageManager::Normal)
{
    const char* const suffixes[] { "", "_hover", "_click", "_disable" };
    theme.writeImage(name + suffixes[state], sourceSize, stateColors[state]);
}

QColor colorOf(const char* name, ImageManager::ImageType state = ImageManager::Normal)
{
    const QPixmap pixmap = getGlobalImage(name, state);
    return pixmap.isNull() ? QColor() : pixmap.toImage().pixelColor(4, 4);
}

} // namespace

void ImageCatalogueTest::states_data()
{
    QTest::addColumn<bool>("eager");
    QTest::addColumn<QByteArray>("files"); // the states that have one
    for (const char* files : { "0123", "02", "1", "" }) {
        QTest::addRow("eager, %s", files) << true << QByteArray(files);
        QTest::addRow("lazy, %s", files) << false << QByteArray(files);
    }
}

void ImageCatalogueTest::states()
{
    QFETCH(bool, eager);
    QFETCH(QByteArray, files);
    const ThemeFolder theme;
    theme.writeList({ "icon", "other", "icon" });
    for (const char state : qAsConst(files)) {
        writeState(theme, "icon", state - '0');
    }
    theme.initializeImages(eager ? ImageManager::EagerLoad : ImageManager::LazyLoad);

    const QColor normal = files.startsWith('0') ? stateColors[ImageManager::Normal] : QColor();
    for (const auto state :
        { ImageManager::Hover, ImageManager::Normal, ImageManager::Click, ImageManager::Disable }) {
        const bool hasFile = files.contains(char('0' + state));
        if (!hasFile) {
            log.expect(QString("Cannot load pixmap \"icon\" with type %1 [use default icon]").arg(state));
        }
        QCOMPARE(colorOf("icon", state), hasFile ? stateColors[state] : normal);
    }
    log.expect("Cannot load pixmap \"Icon\"");
    log.expect("Cannot load pixmap \"icon_hover\"");
    QVERIFY(getGlobalImage("Icon").isNull());
    QVERIFY(getGlobalImage("icon_hover", ImageManager::Hover).isNull());
}

void ImageCatalogueTest::loadsWhen()
{
    for (const auto type : { ImageManager::EagerLoad, ImageManager::LazyLoad }) {
        const ThemeFolder theme;
        theme.writeList({ "late", "kept" });
        for (const char* const name : { "late", "late_hover", "kept" }) {
            theme.writeImage(name, sourceSize, Qt::black);
        }
        theme.initializeImages(type);
        theme.writeImage("late", sourceSize, Qt::yellow);
        QPixmapCache::clear(); // where files of the same second and size are the same
        const QColor first = type == ImageManager::EagerLoad ? Qt::black : Qt::yellow;
        QCOMPARE(colorOf("late"), first);

        // From here on the files are not looked at again, in any state ...
        theme.writeImage("late", sourceSize, Qt::magenta);
        QPixmapCache::clear();
        QVERIFY(QFile::remove(theme.path("images/late_hover.png")));
        QCOMPARE(colorOf("late"), first);
        QCOMPARE(colorOf("late", ImageManager::Hover), QColor(Qt::black));
        // ... but for what the next list names.
        theme.writeList({ "late" });
        theme.initializeImages(type);
        QCOMPARE(colorOf("kept"), QColor(Qt::black));
        log.expect("Cannot load pixmap \"late\" with type 1 [use default icon]");
        QCOMPARE(colorOf("late", ImageManager::Hover), QColor(Qt::magenta));
    }
}

void ImageCatalogueTest::temporaryImages()
{
    const ThemeFolder theme;
    theme.writeList({}, { "arrow up", "arrow_hover", "gone" });
    theme.writeImage("arrowup", { 40, 24 }, Qt::red);
    theme.writeImage("arrow_hover", { 16, 16 });
    const QString folder = "../user/data/tmp_images/";
    const QString arrow = theme.path(folder + "tmp_arrowup.png");
    const QString gone = theme.path(folder + "tmp_gone.png");
    qint64 size = 0;
    for (const auto type : { ImageManager::EagerLoad, ImageManager::LazyLoad }) {
        theme.initializeImages(type);
        QCOMPARE(theme.temporaryImageSize("arrowup"), QSize(10, 6));
        QCOMPARE(theme.temporaryImageSize("arrow_hover"), QSize(4, 4));
        QCOMPARE(QImageReader::imageFormat(arrow), QByteArray("png"));
        QVERIFY(QFile::exists(gone));
        QCOMPARE(QFile(gone).size(), 0);
        // What an earlier start has left is gone, down to the last byte.
        QVERIFY(size == 0 || size == QFile(arrow).size());
        size = QFile(arrow).size();
        theme.write(folder + "tmp_arrowup.png", QByteArray(5000, 'x'));
        theme.write(folder + "tmp_gone.png", QByteArray(5000, 'x'));
    }
    log.expect("Cannot load pixmap \"arrowup\"");
    QVERIFY(getGlobalImage("arrowup").isNull());
}

void ImageCatalogueTest::badImage()
{
    const ThemeFolder theme;
    theme.writeImage("bad", { 64, 64 });
    theme.writeList({ "bad" }, { "bad" });
    QFile file(theme.path("images/bad.png"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray sound = file.readAll();
    // An image header of 0 by 0 pixels, with its right checksum.
    const QByteArray nothing =
        sound.left(16) + QByteArray::fromHex("000000000000000008060000003b8b7c12") + sound.mid(33);
    log.expectFrom("default", "libpng warning: Image width is zero in IHDR", 2);
    log.expectFrom("default", "libpng warning: Image height is zero in IHDR", 2);
    for (const QByteArray& bytes :
        { QByteArray(), QByteArray("not a picture"), sound.left(20), sound.chopped(30), nothing }) {
        theme.write("images/bad.png", bytes);
        theme.initializeImages(ImageManager::EagerLoad);
        QVERIFY(theme.temporaryImageSize("bad").isEmpty());
        log.expect("Cannot load pixmap \"bad\" with type 0 [use default icon]");
        QVERIFY(getGlobalImage("bad").isNull());
    }
}

void ImageCatalogueTest::badUserFolder()
{
    for (const char* const blocked :
        { "../user", "../user/data/tmp_images", "../user/data/tmp_images/tmp_plain.png/x" }) {
        const ThemeFolder theme;
        QVERIFY(QDir().mkpath(QFileInfo(theme.path(blocked)).path()));
        theme.write(blocked, "in the way");
        writeState(theme, "plain");
        theme.writeList({ "plain" }, { "plain" });
        theme.initializeImages(ImageManager::EagerLoad);
        QVERIFY(!getGlobalImage("plain").isNull());
        QVERIFY(theme.temporaryImageSize("plain").isEmpty());
    }
}

void ImageCatalogueTest::badList_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("listed");
    const auto row = [](const char* name, const QByteArray& json, bool listed) {
        QTest::newRow(name) << json << listed;
    };
    const QByteArray good = R"({ "images": ["good"] })";
    QByteArray names = R"({ "images": ["good")";
    for (int i = 0; names.size() < 10'000'000; ++i) {
        names += ", \"a name that no file has, " + QByteArray::number(i) + '"';
    }
    row("empty", "", false);
    row("no JSON", "images: good", false);
    row("cut off", good.chopped(1), false);
    row("array at the top", R"(["good"])", false);
    row("other values for arrays", R"({ "images": { "good": "good" }, "tmp_images": 5 })", false);
    row("wrong elements", R"({ "images": [1, null, ["x"], "good", {}], "tmp_images": [[], 7] })", true);
    row("NUL behind", good + '\0' + "no JSON", true);
    row("NUL in front", '\0' + good, false);
    row("no UTF-8", R"({ "images": ["\xff\xfe", "good"] })", true);
    row("10 MB of names", names + "] }", true);
    row("10 MB of brackets", QByteArray(10'000'000, '['), false);
}

void ImageCatalogueTest::badList()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, listed);
    // Entries outlive the list, so every row takes a name of its own.
    const QByteArray name = "good" + QByteArray(QTest::currentDataTag()).replace(' ', '_');
    const ThemeFolder theme;
    writeState(theme, name);
    theme.write("images.json", json.replace("\"good\"", '"' + name + '"'));
    theme.initializeImages(ImageManager::LazyLoad);
    if (!listed) {
        log.expect("Cannot load pixmap \"" + name + '"');
    }
    QCOMPARE(getGlobalImage(name.constData()).isNull(), !listed);
}

QTEST_MAIN(ImageCatalogueTest)

#include "image-catalogue-test.moc"
