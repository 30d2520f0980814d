#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/vantkit.h>

#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMovie>
#include <QtTest>

#include <cmath>

namespace {

using Names = QSet<QString>;

QString contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QJsonObject readJson(const QString& name)
{
    return QJsonDocument::fromJson(contentOf(defaulttheme::folder().filePath(name)).toUtf8()).object();
}

/** What the parentheses of @p pattern hold wherever it matches in a file. */
QStringList captured(const QStringList& paths, const QString& pattern)
{
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    QStringList found;
    for (const QString& path : paths) {
        for (auto match = expression.globalMatch(contentOf(path)); match.hasNext();) {
            found += match.next().captured(1);
        }
    }
    return found;
}

/** What @p pattern finds in the sources of the kit, each once. */
QStringList inSources(const QString& pattern, const QString& users = {})
{
    QStringList sources;
    const QString root = defaulttheme::folder().filePath("../../src");
    QDirIterator files(root, { "*.cpp" }, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        if (contentOf(file).contains(QRegularExpression(users))) {
            sources += file;
        }
    }
    QStringList found = captured(sources, pattern);
    found.removeDuplicates();
    found.sort();
    return found;
}

QStringList listed(const QString& array)
{
    return readJson("images.json").value(array).toVariant().toStringList();
}

QStringList definedKeys()
{
    return captured(defaulttheme::templates(), "^==(.*)==$");
}

/** The names of the files in a folder, without what stands behind the name of their source. */
Names sourcesIn(const QString& subfolder)
{
    Names stems;
    const QStringList files = QDir(defaulttheme::folder().filePath(subfolder)).entryList(QDir::Files);
    for (QString name : files) {
        stems += name.remove(QRegularExpression("(_(hover|click|disable|removed))?(@2x)?\\.\\w+$"));
    }
    return stems;
}

QSize sizeOf(const QString& path)
{
    return QImage(path).size();
}

double luminance(const QColor& color)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& first, const QColor& second)
{
    const auto [darker, lighter] = std::minmax({ luminance(first), luminance(second) });
    return (lighter + 0.05) / (darker + 0.05);
}

/** The colour that @p property has in a block of declarations; invalid if it has none. */
QColor colorOf(const QString& declarations, const QString& property)
{
    const QRegularExpression pattern("(?:^|[;\\s])" + property + ":\\s*(#[0-9A-Fa-f]{6}|transparent)");
    return QColor(pattern.match(declarations).captured(1));
}

} // namespace

class ThemeFilesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void images();
    void styleSheetImages();
    void sources();
    void movie();
    void keys();
    void sections_data();
    void sections();
    void strings();

private:
    QTemporaryDir userFolder;
};

void ThemeFilesTest::initTestCase()
{
    defaulttheme::load(userFolder.path());
}

// The log guard sees to it that no state falls back on the normal image.
void ThemeFilesTest::images()
{
    const QStringList names = listed("images");
    QCOMPARE(names.size(), 20);
    for (const QString& name : names) {
        const QPixmap normal = getGlobalImage(name);
        QCOMPARE(normal.size() * 4, sizeOf(ImageManager::getInstance().getImageFullPath(name)));
        if (name.startsWith("bt_pagebar") || name.startsWith("bt_search")) {
            for (const auto state : { ImageManager::Hover, ImageManager::Click, ImageManager::Disable }) {
                const QPixmap image = getGlobalImage(name, state);
                QCOMPARE(image.size(), normal.size());
                QVERIFY(image.toImage() != normal.toImage());
            }
        }
    }
    const QDir icons(defaulttheme::folder().filePath("filetypes"));
    for (const QString& name : icons.entryList(QDir::Files)) {
        QVERIFY2(sizeOf(icons.filePath(name)) == QSize(80, 80), qPrintable(name));
    }
}

// Every image that a template names is drawn, sharp at a device pixel ratio of 2 too, and none is drawn in
// vain.
void ThemeFilesTest::styleSheetImages()
{
    const QStringList named = captured(defaulttheme::templates(), "url\\(TMPIMG_LOC/tmp_([^)]+)\\.png\\)");
    QCOMPARE(named.size(), captured(defaulttheme::templates(), "url(\\()").size());
    Names expected;
    ImageManager& manager = ImageManager::getInstance();
    for (const QString& name : named) {
        const QSize size = sizeOf(manager.getImageFullPath(name));
        QVERIFY2(!size.isEmpty() && sizeOf(manager.getTempImageFullPath(name)) * 4 == size, qPrintable(name));
        QCOMPARE(sizeOf(manager.getImageFullPath(name + "@2x")), size * 2);
        QCOMPARE(sizeOf(manager.getTempImageFullPath(name + "@2x")) * 2, size);
        expected << name << name + "@2x";
    }
    const QStringList names = listed("tmp_images");
    QCOMPARE(Names(names.begin(), names.end()), expected);
}

void ThemeFilesTest::sources()
{
    QCOMPARE(sourcesIn("images"), sourcesIn("svg/images") + sourcesIn("svg/marks") + sourcesIn("svg/movies"));
    QCOMPARE(sourcesIn("filetypes"), sourcesIn("svg/filetypes"));
}

// A turn that goes on for ever, with nothing painted where the ring is not.
void ThemeFilesTest::movie()
{
    QMovie movie(ImageManager::getInstance().getImageFolder() + "/processing.gif");
    QCOMPARE(movie.loopCount(), -1);
    QVERIFY(movie.frameCount() >= 24);
    for (int frame = 0; frame < movie.frameCount(); ++frame) {
        QVERIFY(movie.jumpToFrame(frame));
        const QImage image = movie.currentImage();
        QCOMPARE(image.size(), QSize(128, 128));
        QVERIFY(qAlpha(image.pixel(0, 0)) == 0 && qAlpha(image.pixel(64, 64)) == 0);
    }
}

void ThemeFilesTest::keys()
{
    QStringList defined = definedKeys();
    defined.sort();
    QCOMPARE(defined, inSources("\"(component\\.\\w+)\"") << "theme.tree");
}

void ThemeFilesTest::sections_data()
{
    QTest::addColumn<QString>("key");
    for (const QString& key : definedKeys()) {
        QTest::newRow(qUtf8Printable(key)) << key;
    }
}

void ThemeFilesTest::sections()
{
    QFETCH(QString, key);
    QString text = getStyleSheet(key, true);
    QCOMPARE(text.count('{'), text.count('}'));
    QVERIFY(!text.contains(QRegularExpression("/\\*|\\*/|IMG_LOC|==|\\d\\.\\d+px|\\d(pt|em)\\b")));
    const bool isCombo = key == "component.combobox";
    QCOMPARE(text.count(QRegularExpression("%[1-9]")), isCombo ? 2 : 0);
    if (isCombo) {
        text = text.arg("padding-left: 6px;", "border: 1px solid red;");
    }
    // What Qt cannot parse it warns about, when the sheet is used.
    QWidget widget;
    widget.setStyleSheet(text);
    widget.ensurePolished();

    // Text stands on the ground that its rule names, or that the first rule for the same selector names, or
    // on a page's.
    QMap<QString, QColor> grounds;
    const QRegularExpression rule("([^{}]+)\\{([^}]*)\\}");
    for (auto match = rule.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        const QString selector = found.captured(1).simplified();
        const QString plain = selector.section(QRegularExpression("[:[]"), 0, 0);
        QColor ground = colorOf(found.captured(2), "background-color");
        if (!ground.isValid()) {
            ground = grounds.value(plain, Qt::transparent);
        }
        if (!grounds.contains(plain)) {
            grounds.insert(plain, ground);
        }
        const QColor color = colorOf(found.captured(2), "color");
        const bool counts = color.isValid() && !selector.endsWith(":disabled");
        for (const QColor& page : { QColor(Qt::white), QColor("#F5F8FA") }) {
            const double ratio = counts ? contrast(color, ground.alpha() > 0 ? ground : page) : 21;
            QVERIFY2(ratio >= 4.5, qPrintable(selector + color.name() + QString::number(ratio)));
        }
    }
}

void ThemeFilesTest::strings()
{
    // What is in quotes where words are asked for, but for the names of images and of Qt's widgets.
    QStringList keys = inSources("\"((?!qt_)[a-z]\\w*)\"", "(getS|componentS|textOrS)tring\\(");
    for (const QString& image : listed("images")) {
        keys.removeAll(image);
    }
    const QString guide = contentOf(defaulttheme::folder().filePath("../../docs/theming.md"));
    for (const QString& key : keys) {
        QVERIFY2(guide.contains('`' + key + '`'), qPrintable(key));
    }
    const Names files = sourcesIn("strings");
    QCOMPARE(files.size(), 20);
    for (const QString& file : files) {
        const QJsonObject words = readJson("strings/" + file + ".json");
        QCOMPARE(words.keys(), keys);
        for (const QString& key : keys) {
            QVERIFY2(!words.value(key).toString().trimmed().isEmpty(), qPrintable(file + key));
        }
    }
}

QTEST_MAIN(ThemeFilesTest)
#include "theme-files-test.moc"
