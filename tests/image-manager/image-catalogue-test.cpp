#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <QDir>
#include <QImageReader>
#include <QtTest>

class ImageCatalogueTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void states_data();
    void states();
    void loadsWhen();
    void secondInitialize();
    void temporaryImages();
    void folders();
    void badImage_data();
    void badImage();
    void badUserFolder_data();
    void badUserFolder();
    // The last, since its many names stay in the catalogue.
    void badList_data();
    void badList();
};

namespace {

const QSize sourceSize(32, 32);
const QColor stateColors[] { Qt::black, Qt::green, Qt::blue, Qt::red };
const char* const stateSuffixes[] { "", "_hover", "_click", "_disable" };

void writeState(const ThemeFolder& theme, const char* name, ImageManager::ImageType state)
{
    theme.writeImage(
        QLatin1String(name) + QLatin1String(stateSuffixes[state]), sourceSize, stateColors[state]);
}

QColor colorOf(const QPixmap& pixmap)
{
    return pixmap.isNull() ? QColor() : pixmap.toImage().pixelColor(4, 4);
}

} // namespace

Q_DECLARE_METATYPE(ImageManager::InitializeType)

void ImageCatalogueTest::states_data()
{
    QTest::addColumn<ImageManager::InitializeType>("type");
    QTest::addColumn<QByteArray>("files"); // the states that have one
    for (const char* files : { "0123", "02", "0", "1", "" }) {
        QTest::addRow("eager, %s", files) << ImageManager::EagerLoad << QByteArray(files);
        QTest::addRow("lazy, %s", files) << ImageManager::LazyLoad << QByteArray(files);
    }
}

void ImageCatalogueTest::states()
{
    QFETCH(ImageManager::InitializeType, type);
    QFETCH(QByteArray, files);
    const ThemeFolder theme;
    theme.writeList({ QStringLiteral("icon"), QStringLiteral("other"), QStringLiteral("icon") });
    for (const char state : qAsConst(files)) {
        writeState(theme, "icon", ImageManager::ImageType(state - '0'));
    }
    theme.initializeImages(type);

    const QColor normal = files.startsWith('0') ? stateColors[ImageManager::Normal] : QColor();
    for (const auto state :
        { ImageManager::Hover, ImageManager::Normal, ImageManager::Click, ImageManager::Disable }) {
        const bool hasFile = files.contains(char('0' + state));
        if (!hasFile) {
            log.expect(
                QStringLiteral("Cannot load pixmap \"icon\" with type %1 [use default icon]").arg(state), 2);
        }
        QCOMPARE(colorOf(getGlobalImage("icon", state)), hasFile ? stateColors[state] : normal);
        QCOMPARE(
            colorOf(getGlobalImage(QStringLiteral("icon"), state)), hasFile ? stateColors[state] : normal);
    }
    log.expect(QStringLiteral("Cannot load pixmap \"Icon\""));
    log.expect(QStringLiteral("Cannot load pixmap \"icon_hover\""));
    QVERIFY(getGlobalImage("Icon").isNull());
    QVERIFY(getGlobalImage("icon_hover", ImageManager::Hover).isNull());
}

void ImageCatalogueTest::loadsWhen()
{
    const ThemeFolder theme;
    theme.writeList({ QStringLiteral("late") });
    for (const auto type : { ImageManager::EagerLoad, ImageManager::LazyLoad }) {
        writeState(theme, "late", ImageManager::Normal);
        writeState(theme, "late", ImageManager::Hover);
        theme.initializeImages(type);
        theme.writeImage(QStringLiteral("late"), sourceSize, Qt::yellow);
        const QColor first =
            type == ImageManager::EagerLoad ? stateColors[ImageManager::Normal] : QColor(Qt::yellow);
        QCOMPARE(colorOf(getGlobalImage("late")), first);

        // From here on the files are not looked at again, in any state.
        theme.writeImage(QStringLiteral("late"), sourceSize, Qt::magenta);
        theme.writeImage(QStringLiteral("late_hover"), sourceSize, Qt::magenta);
        QCOMPARE(colorOf(getGlobalImage("late")), first);
        QCOMPARE(colorOf(getGlobalImage("late", ImageManager::Hover)), stateColors[ImageManager::Hover]);
    }
}

void ImageCatalogueTest::secondInitialize()
{
    const ThemeFolder theme;
    theme.writeList({ QStringLiteral("kept"), QStringLiteral("again") });
    writeState(theme, "kept", ImageManager::Normal);
    writeState(theme, "again", ImageManager::Normal);
    writeState(theme, "again", ImageManager::Hover);
    theme.initializeImages(ImageManager::EagerLoad);

    theme.writeList({ QStringLiteral("again") });
    theme.writeImage(QStringLiteral("again"), sourceSize, Qt::cyan);
    QVERIFY(QFile::remove(theme.path(QStringLiteral("images/again_hover.png"))));
    theme.initializeImages(ImageManager::LazyLoad);
    QCOMPARE(colorOf(getGlobalImage("kept")), stateColors[ImageManager::Normal]);
    log.expect(QStringLiteral("Cannot load pixmap \"again\" with type 1 [use default icon]"));
    QCOMPARE(colorOf(getGlobalImage("again", ImageManager::Hover)), QColor(Qt::cyan));
}

void ImageCatalogueTest::temporaryImages()
{
    const ThemeFolder theme;
    theme.writeList(
        {}, { QStringLiteral("arrow up"), QStringLiteral("arrow_hover"), QStringLiteral("gone") });
    theme.writeImage(QStringLiteral("arrowup"), { 40, 24 }, Qt::red);
    theme.writeImage(QStringLiteral("arrow_hover"), { 16, 16 });
    for (const auto type : { ImageManager::EagerLoad, ImageManager::LazyLoad }) {
        theme.initializeImages(type);
        QCOMPARE(theme.temporaryImageSize(QStringLiteral("arrowup")), QSize(10, 6));
        QCOMPARE(theme.temporaryImageSize(QStringLiteral("arrow_hover")), QSize(4, 4));
        QVERIFY(QDir(theme.userFolder()).removeRecursively());
    }

    const QString arrow = ImageManager::getInstance().getTempImageFullPath(QStringLiteral("arrowup"));
    const QString gone = ImageManager::getInstance().getTempImageFullPath(QStringLiteral("gone"));
    theme.initializeImages(ImageManager::LazyLoad);
    QCOMPARE(QImageReader::imageFormat(arrow), QByteArray("png"));
    const qint64 size = QFile(arrow).size();
    // What an earlier start has left is gone, down to the last byte.
    theme.write(QStringLiteral("../user/data/tmp_images/tmp_arrowup.png"), QByteArray(5000, 'x'));
    theme.write(QStringLiteral("../user/data/tmp_images/tmp_gone.png"), QByteArray(5000, 'x'));
    theme.initializeImages(ImageManager::LazyLoad);
    QCOMPARE(theme.temporaryImageSize(QStringLiteral("arrowup")), QSize(10, 6));
    QCOMPARE(QFile(arrow).size(), size);
    QVERIFY(QFile::exists(gone));
    QCOMPARE(QFile(gone).size(), 0);
    QCOMPARE(QDir(theme.userFolder() + QStringLiteral("/tmp_images")).entryList(QDir::Files),
        (QStringList { QStringLiteral("tmp_arrow_hover.png"), QStringLiteral("tmp_arrowup.png"),
            QStringLiteral("tmp_gone.png") }));

    log.expect(QStringLiteral("Cannot load pixmap \"arrowup\""));
    QVERIFY(getGlobalImage("arrowup").isNull());
}

void ImageCatalogueTest::folders()
{
    ThemeFolder::setPaths(QStringLiteral("/proc/none/res"), QStringLiteral("/proc/none/user"));
    ImageManager& images = ImageManager::getInstance();
    images.initialize(ImageManager::EagerLoad);
    QCOMPARE(images.getImageFolder(), QStringLiteral("/proc/none/res/images"));
    QCOMPARE(images.getTempImageFolder(), QStringLiteral("/proc/none/user/tmp_images"));
    QCOMPARE(images.getImageFullPath(QStringLiteral("a_hover")),
        QStringLiteral("/proc/none/res/images/a_hover.png"));
    QCOMPARE(images.getTempImageFullPath(QStringLiteral("a")),
        QStringLiteral("/proc/none/user/tmp_images/tmp_a.png"));
}

void ImageCatalogueTest::badImage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("complaints"); // of Qt's own reader
    const ThemeFolder theme;
    theme.writeImage(QStringLiteral("sound"), { 64, 64 });
    QFile file(theme.path(QStringLiteral("images/sound.png")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray sound = file.readAll();
    // An image header of 0 by 0 pixels, with its right checksum.
    const QByteArray nothing = sound.left(16)
        + QByteArray::fromHex("0000000000000000"
                              "0806000000"
                              "3b8b7c12")
        + sound.mid(33);
    QTest::newRow("empty") << QByteArray() << QStringList();
    QTest::newRow("text") << QByteArray("not a picture") << QStringList();
    QTest::newRow("signature alone") << sound.left(8) << QStringList();
    QTest::newRow("cut in the header") << sound.left(20) << QStringList();
    QTest::newRow("cut in the pixels") << sound.left(sound.size() - 30) << QStringList();
    QTest::newRow("0 by 0") << nothing
                            << QStringList { QStringLiteral("libpng warning: Image width is zero in IHDR"),
                                   QStringLiteral("libpng warning: Image height is zero in IHDR") };
    QTest::newRow("directory") << QByteArray() << QStringList();
}

void ImageCatalogueTest::badImage()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, complaints);
    const ThemeFolder theme;
    const QString name = QStringLiteral("images/bad.png");
    if (qstrcmp(QTest::currentDataTag(), "directory") == 0) {
        QVERIFY(QDir().mkpath(theme.path(name)));
    } else {
        theme.write(name, bytes);
    }
    theme.writeList({ QStringLiteral("bad") }, { QStringLiteral("bad") });
    for (const QString& complaint : qAsConst(complaints)) {
        log.expectFrom(QStringLiteral("default"), complaint, 2);
    }
    theme.initializeImages(ImageManager::EagerLoad);
    QVERIFY(theme.temporaryImageSize(QStringLiteral("bad")).isEmpty());
    log.expect(QStringLiteral("Cannot load pixmap \"bad\" with type 0 [use default icon]"));
    QVERIFY(getGlobalImage("bad").isNull());
}

void ImageCatalogueTest::badUserFolder_data()
{
    QTest::addColumn<QString>("blocked");
    QTest::newRow("a file in its place") << QStringLiteral("user");
    QTest::newRow("a file for the images' folder") << QStringLiteral("user/data/tmp_images");
    QTest::newRow("a folder for the image") << QStringLiteral("user/data/tmp_images/tmp_plain.png/x");
    QTest::newRow("nothing may be written there") << QString();
}

void ImageCatalogueTest::badUserFolder()
{
    QFETCH(QString, blocked);
    const ThemeFolder theme;
    QString user = QStringLiteral("/proc/none");
    if (!blocked.isEmpty()) {
        user = theme.userFolder();
        const QString obstacle = QStringLiteral("../") + blocked;
        QVERIFY(QDir().mkpath(QFileInfo(theme.path(obstacle)).path()));
        theme.write(obstacle, "in the way");
    }
    writeState(theme, "plain", ImageManager::Normal);
    theme.writeList({ QStringLiteral("plain") }, { QStringLiteral("plain") });
    ThemeFolder::setPaths(theme.resourceFolder(), user);
    ImageManager::getInstance().initialize(ImageManager::EagerLoad);
    QVERIFY(!getGlobalImage("plain").isNull());
    QVERIFY(theme.temporaryImageSize(QStringLiteral("plain")).isEmpty());
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
    row("good", good, true);
    row("empty", "", false);
    row("no JSON", "images: good", false);
    row("cut off", good.chopped(1), false);
    row("array at the top", R"(["good"])", false);
    row("string for an array", R"({ "images": "good", "tmp_images": "good" })", false);
    row("object for an array", R"({ "images": { "good": "good" }, "tmp_images": 5 })", false);
    row("wrong elements", R"({ "images": [1, null, ["good"], "good", {}, true], "tmp_images": [[], 7] })",
        true);
    row("other keys", R"({ "Images": ["x"], "more": [1], "images": ["good"] })", true);
    row("NUL behind", good + '\0' + "no JSON", true);
    row("NUL in front", '\0' + good, false);
    row("no UTF-8", R"({ "images": ["\xff\xfe", "good"] })", true);
    row("10 MB of names", names + "] }", true);
    row("10 MB of one name", R"({ "images": ["good", ")" + QByteArray(10'000'000, 'x') + R"("] })", true);
    row("10 MB of brackets", QByteArray(10'000'000, '['), false);
}

void ImageCatalogueTest::badList()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, listed);
    // Entries outlive the list, so every row takes a name of its own.
    const QByteArray name = "good" + QByteArray(QTest::currentDataTag()).replace(' ', '_');
    const ThemeFolder theme;
    writeState(theme, name.constData(), ImageManager::Normal);
    theme.write(QStringLiteral("images.json"), json.replace("\"good\"", '"' + name + '"'));
    theme.initializeImages(ImageManager::LazyLoad);
    if (!listed) {
        log.expect(QStringLiteral("Cannot load pixmap \"%1\"").arg(QLatin1String(name)));
    }
    QCOMPARE(getGlobalImage(name.constData()).isNull(), !listed);
}

QTEST_MAIN(ImageCatalogueTest)

#include "image-catalogue-test.moc"
