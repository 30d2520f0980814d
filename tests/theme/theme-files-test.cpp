#include "support/guarded-test.h"
#include "theme/default-theme.h"

#include <vantkit-qt/vantkit.h>

#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonObject readJson(const QString& name)
{
    return QJsonDocument::fromJson(contentOf(defaulttheme::folder().filePath(name))).object();
}

/** What the parentheses of @p pattern hold wherever it matches in a file: each once, and sorted. */
QStringList captured(const QStringList& paths, const QString& pattern)
{
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    QStringList found;
    for (const QString& path : paths) {
        for (auto match = expression.globalMatch(contentOf(path)); match.hasNext();) {
            found += match.next().captured(1);
        }
    }
    found.removeDuplicates();
    found.sort();
    return found;
}

/** The same in the sources of the kit that match @p users. */
QStringList inSources(const QString& pattern, const QString& users = {})
{
    QStringList sources;
    QDirIterator files(
        defaulttheme::folder().filePath("../../src"), { "*.cpp" }, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        if (QString(contentOf(file)).contains(QRegularExpression(users))) {
            sources += file;
        }
    }
    return captured(sources, pattern);
}

QStringList listed(const QString& array)
{
    QStringList names = readJson("images.json").value(array).toVariant().toStringList();
    names.sort();
    return names;
}

} // namespace

// What the sources of the kit ask a theme for is there, and nothing else.
class ThemeFilesTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { defaulttheme::load(userFolder.path()); }

    void images();
    void styleSheetImages();
    void sections();
    void strings();

private:
    QTemporaryDir userFolder;
};

// The log guard sees to it that no state falls back on the normal image.
void ThemeFilesTest::images()
{
    const QStringList names = listed("images");
    QCOMPARE(names, inSources("\"((?:bg|bt|icon)_\\w+|folder|app_img)\""));
    for (const QString& name : names) {
        const QPixmap normal = getGlobalImage(name);
        QCOMPARE(normal.size() * 4, QImage(ImageManager::getInstance().getImageFullPath(name)).size());
        if (name.startsWith("bt_pagebar") || name.startsWith("bt_search")) {
            for (const auto state : { ImageManager::Hover, ImageManager::Click, ImageManager::Disable }) {
                const QPixmap image = getGlobalImage(name, state);
                QVERIFY(image.size() == normal.size() && image.toImage() != normal.toImage());
            }
        }
    }
}

// Every image that a template names is drawn, sharp at a device pixel ratio of 2 too, and none is drawn in
// vain.
void ThemeFilesTest::styleSheetImages()
{
    const QStringList named =
        captured(defaulttheme::templates(), "url\\((?:TMPIMG_LOC/tmp_)?([^)]+)\\.png\\)");
    QStringList expected = named + QStringList(named).replaceInStrings(QRegularExpression("$"), "@2x");
    expected.sort();
    QCOMPARE(listed("tmp_images"), expected);
    ImageManager& manager = ImageManager::getInstance();
    for (const QString& name : named) {
        const QSize size = QImage(manager.getImageFullPath(name)).size();
        QVERIFY2(!size.isEmpty() && QImage(manager.getTempImageFullPath(name)).size() * 4 == size,
            qPrintable(name));
        QCOMPARE(QImage(manager.getTempImageFullPath(name + "@2x")).size() * 2, size);
    }
}

// What Qt cannot parse it warns about, when the sheet is used.
void ThemeFilesTest::sections()
{
    const QStringList keys = captured(defaulttheme::templates(), "^==(.*)==$");
    QCOMPARE(keys, inSources("\"(component\\.\\w+)\"") << "theme.tree");
    for (const QString& key : keys) {
        QString text = getStyleSheet(key, true);
        const bool isCombo = key == "component.combobox";
        QCOMPARE(text.count(QRegularExpression("%[1-9]")), isCombo ? 2 : 0);
        QVERIFY2(!text.contains(QRegularExpression("/\\*|\\*/|IMG_LOC|==|\\d\\.\\d+px|\\d(pt|em)\\b")),
            qPrintable(key));
        QWidget widget;
        widget.setStyleSheet(isCombo ? text.arg("padding-left: 6px;", "border: 1px solid red;") : text);
        widget.ensurePolished();
    }
}

void ThemeFilesTest::strings()
{
    // What is in quotes where words are asked for, but for the names of images and of Qt's widgets.
    const QStringList keys = inSources(
        "\"((?!qt_|bt_|bg_|icon_|app_img|folder\")[a-z]\\w*)\"", "(getS|componentS|textOrS)tring\\(");
    for (const QString& file : QDir(defaulttheme::folder().filePath("strings")).entryList({ "???.json" })) {
        const QJsonObject words = readJson("strings/" + file);
        QCOMPARE(words.keys(), keys);
        for (const QString& key : keys) {
            QVERIFY2(!words.value(key).toString().trimmed().isEmpty(), qPrintable(file + key));
        }
    }
}

QTEST_MAIN(ThemeFilesTest)
#include "theme-files-test.moc"
