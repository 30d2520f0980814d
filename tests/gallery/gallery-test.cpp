#include "support/guarded-test.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QStringList pictures = { "buttons", "buttons-disabled", "buttons-focus", "buttons-help", "calendar",
    "calendar-bar", "calendar-disabled", "calendar-focus", "calendar-frame", "calendar-month",
    "calendar-year", "dates", "dates-disabled", "dates-focus", "dates-month", "dates-popup", "dates-year",
    "fields", "fields-disabled", "fields-error", "fields-focus", "files", "files-deep", "files-disabled",
    "files-failure", "files-filtered", "files-help", "files-kinds", "files-nothing", "files-selected",
    "filter", "filter-disabled", "filter-focus", "filter-keyword", "filter-kind", "filter-menu",
    "filter-nothing", "footbar", "footbar-disabled", "footbar-filled", "inputs", "inputs-combo",
    "inputs-disabled", "inputs-focus", "inputs-menu", "labels", "labels-disabled", "labels-focus",
    "labels-narrow", "paging", "paging-disabled", "paging-focus", "paging-huge", "paging-last",
    "paging-plain", "path", "path-disabled", "path-focus", "path-hidden", "path-hover", "sheets",
    "sheets-box", "sheets-countdown", "sheets-disabled", "sheets-information", "sheets-input", "sheets-long",
    "sheets-movie", "sheets-processing", "sheets-question", "sheets-upgrading", "sheets-warning",
    "sheets-warningquestion", "table", "table-disabled", "table-empty", "table-many", "table-narrow",
    "table-selected", "tree", "tree-deep", "tree-disabled", "tree-hover", "tree-menu", "tree-rename" };

struct Outcome
{
    int exitCode = -1;
    QString output;
    QStringList errors; ///< line by line, without what the offscreen platform says of itself
};

QStringList errorLines(const QByteArray& bytes)
{
    const QStringList lines = QString::fromUtf8(bytes).split('\n', Qt::SkipEmptyParts);
    QStringList own;
    for (const QString& line : lines) {
        if (!line.startsWith("This plugin does not support ")) {
            own << line;
        }
    }
    return own;
}

Outcome runProgram(
    const QString& program, const QStringList& arguments, const QMap<QString, QString>& variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable) {
        environment.insert(variable.key(), variable.value());
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
        errorLines(process.readAllStandardError()) };
}

Outcome runGallery(const QStringList& arguments, const QMap<QString, QString>& variables = {})
{
    return runProgram(GALLERY_PROGRAM, arguments, variables);
}

// A program that wanted a display would end with an error of its own.
Outcome runWithoutDisplay(const QStringList& arguments)
{
    return runGallery(arguments, { { "QT_QPA_PLATFORM", "there-is-none" } });
}

QStringList picturesIn(const QString& folder)
{
    QStringList names;
    const QStringList files = QDir(folder).entryList(QDir::Files);
    for (const QString& file : files) {
        names << QString(file).remove(".png");
    }
    names.sort();
    return names;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& content = {})
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

// Whether a picture of twice the size holds more than the one of single size drawn larger.
bool isDoubled(const QImage& image)
{
    for (int y = 0; y + 1 < image.height(); y += 2) {
        for (int x = 0; x + 1 < image.width(); x += 2) {
            const QRgb pixel = image.pixel(x, y);
            if (pixel != image.pixel(x + 1, y) || pixel != image.pixel(x, y + 1)) {
                return false;
            }
        }
    }
    return true;
}

QStringList placeMarkers(const QString& text)
{
    QStringList markers;
    for (auto matches = QRegularExpression("%\\d").globalMatch(text); matches.hasNext();) {
        markers << matches.next().captured();
    }
    markers.sort();
    return markers;
}

QJsonObject textsOf(const QString& language)
{
    return QJsonDocument::fromJson(contentOf(QDir(GALLERY_TEXTS).filePath(language))).object();
}

} // namespace

class GalleryTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void answersWithoutDisplay_data();
    void answersWithoutDisplay();
    void refuses_data();
    void refuses();
    void takesEveryPicture();
    void drawsForTheDisplay();
    void repeatsItself_data();
    void repeatsItself();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
    void everyTranslationIsComplete();
    void takesTheThemeItIsGiven_data();
    void takesTheThemeItIsGiven();
    void reportsStartupTimes();

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    Outcome m_all; ///< of the run that takes every picture in English
};

void GalleryTest::initTestCase()
{
    QVERIFY(QDir().mkpath(path("tmp")));
    m_all = runGallery({ "--screenshots", path("all"), "--lang", "enu" },
        { { "XDG_DATA_HOME", path("data") }, { "TMPDIR", path("tmp") } });
}

void GalleryTest::answersWithoutDisplay_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QStringList>("words");

    QTest::newRow("help") << "--help"
                          << QStringList { "--page", "--lang", "--theme", "--screenshots", "--startup-times",
                                 "buttons", "inputs", "fields", "labels", "footbar", "path", "sheets", "enu",
                                 "chs" };
    QTest::newRow("version") << "--version" << QStringList { "gallery " };
}

void GalleryTest::answersWithoutDisplay()
{
    QFETCH(QString, option);
    QFETCH(QStringList, words);

    const Outcome outcome = runWithoutDisplay({ option });
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QStringList());
    for (const QString& word : words) {
        QVERIFY2(outcome.output.contains(word), qPrintable(word));
    }
}

void GalleryTest::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("culprit");

    writeFile(path("file"));
    QVERIFY(QDir().mkpath(path("no-theme/images.json")));

    QTest::newRow("page") << QStringList { "--page", "knobs" } << "knobs";
    QTest::newRow("empty page") << QStringList { "--page", "" } << "page";
    QTest::newRow("page that is a text of lines") << QStringList { "--page", "a\nb" } << "a b";
    QTest::newRow("page without a name") << QStringList { "--page" } << "--page";
    QTest::newRow("language") << QStringList { "--lang", "en" } << "'en'";
    QTest::newRow("theme that is not there") << QStringList { "--theme", path("nowhere") } << path("nowhere");
    QTest::newRow("theme without a list") << QStringList { "--theme", path("no-theme") } << path("no-theme");
    QTest::newRow("pictures below a file")
        << QStringList { "--screenshots", path("file/in") } << path("file/in");
    QTest::newRow("pictures nowhere") << QStringList { "--screenshots", "" } << "folder";
    QTest::newRow("authority in a file without one")
        << QStringList { "--trust", path("file") } << path("file");
    QTest::newRow("option") << QStringList { "--colour" } << "colour";
    QTest::newRow("value of a switch") << QStringList { "--startup-times=1" } << "--startup-times";
    QTest::newRow("surplus argument") << QStringList { "buttons" } << "buttons";
    QTest::newRow("two jobs at once")
        << QStringList { "--startup-times", "--screenshots", path("pictures") } << "--startup-times";
}

void GalleryTest::refuses()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, culprit);

    const Outcome outcome = runWithoutDisplay(arguments);
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.errors.size(), 1);
    QVERIFY2(outcome.errors.first().contains(culprit), qPrintable(outcome.errors.first()));
}

void GalleryTest::takesEveryPicture()
{
    QCOMPARE(m_all.exitCode, 0);
    QCOMPARE(m_all.output, QString());
    QCOMPARE(m_all.errors, QStringList());
    QCOMPARE(picturesIn(path("all")), pictures);
    QCOMPARE(picturesIn(path("all/help")), QStringList({ "files", "gallery", "rename" }));
    QVERIFY2(!QDir(path("data")).exists(), "pictures leave nothing behind");
    QVERIFY2(QDir(path("tmp")).isEmpty(), "nor do they take part in the one instance");

    QMap<QByteArray, QString> seen;
    for (const QString& name : pictures) {
        const QByteArray content = contentOf(path("all/" + name + ".png"));
        const QImage image = QImage::fromData(content);
        QCOMPARE(image.width(), 1100);
        QVERIFY(image.height() >= 720);
        QVERIFY2(!seen.contains(content), qPrintable(name + " looks like " + seen.value(content)));
        seen.insert(content, name);
    }
}

void GalleryTest::drawsForTheDisplay()
{
    const QStringList arguments = { "--page", "inputs", "--lang", "enu", "--screenshots" };
    QCOMPARE(runGallery(QStringList(arguments) << path("dense"), { { "QT_SCALE_FACTOR", "2" } }).errors,
        QStringList());
    QCOMPARE(runGallery(QStringList(arguments) << path("large"), { { "QT_FONT_DPI", "144" } }).errors,
        QStringList());

    for (const QString& name : pictures.filter("inputs")) {
        const QImage one(path("all/" + name + ".png"));
        const QImage dense(path("dense/" + name + ".png"));
        const QImage large(path("large/" + name + ".png"));
        QCOMPARE(dense.width(), one.width() * 2);
        QCOMPARE(large.width(), one.width() * 3 / 2);
        QVERIFY2(qAbs(dense.height() - one.height() * 2) <= 64, qPrintable(name));
        QVERIFY2(qAbs(large.height() - one.height() * 3 / 2) <= 64, qPrintable(name));
        QVERIFY2(!isDoubled(dense), qPrintable(name));
    }
}

void GalleryTest::repeatsItself_data()
{
    QTest::addColumn<QString>("page");

    QTest::newRow("popups") << "inputs";
    QTest::newRow("movies and countdowns") << "sheets";
    QTest::newRow("files") << "files";
}

void GalleryTest::repeatsItself()
{
    QFETCH(QString, page);

    const QString folder = path("again-" + page);
    QCOMPARE(runGallery({ "--page", page, "--lang", "enu", "--screenshots", folder }).exitCode, 0);
    QCOMPARE(picturesIn(folder), pictures.filter(page));
    for (const QString& name : pictures.filter(page)) {
        const QByteArray again = contentOf(folder + '/' + name + ".png");
        QVERIFY2(again == contentOf(path("all/" + name + ".png")), qPrintable(name));
    }
}

void GalleryTest::speaksTheLanguage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("locale");

    QTest::newRow("translated") << QStringList { "--lang", "deu" } << "C";
    QTest::newRow("as the system") << QStringList() << "ja_JP.UTF-8";
}

void GalleryTest::speaksTheLanguage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, locale);

    arguments << "--page"
              << "buttons"
              << "--screenshots" << path("other");
    const Outcome outcome = runGallery(arguments, { { "LC_ALL", locale }, { "LANG", locale } });
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QStringList());
    QVERIFY(contentOf(path("all/buttons.png")) != contentOf(path("other/buttons.png")));
}

void GalleryTest::everyTranslationIsComplete()
{
    const QJsonObject english = textsOf("enu.json");
    QVERIFY(!english.isEmpty());
    for (const QString& file : QDir(GALLERY_TEXTS).entryList({ "*.json" })) {
        const QJsonObject translated = textsOf(file);
        QCOMPARE(translated.keys(), english.keys());
        for (const QString& key : english.keys()) {
            const QString text = translated.value(key).toString();
            QVERIFY2(!text.trimmed().isEmpty(), qPrintable(file + ' ' + key));
            QVERIFY2(placeMarkers(text) == placeMarkers(english.value(key).toString()),
                qPrintable(file + ' ' + key));
        }
    }
}

void GalleryTest::takesTheThemeItIsGiven_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");

    // A theme of one button; where it is in use, the kit misses everything else.
    const QString installed = path("prefix/share/vantkit-qt/themes/default");
    for (const QString& theme : { path("theme"), installed }) {
        writeFile(theme + "/images.json", "{}");
        writeFile(theme + "/templates/a.style", "==component.apply_button==\nQPushButton { color: red; }\n");
    }
    const QString copy = path("prefix/bin/gallery");
    QVERIFY(QDir().mkpath(path("prefix/bin")));
    QVERIFY(QFile::copy(GALLERY_PROGRAM, copy));

    QTest::newRow("by option") << GALLERY_PROGRAM << QStringList { "--theme", path("theme") };
    QTest::newRow("installed beside the program") << copy << QStringList();
}

void GalleryTest::takesTheThemeItIsGiven()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);

    const Outcome outcome = runProgram(program,
        arguments << "--page"
                  << "buttons"
                  << "--screenshots" << path("themed"),
        {});
    QCOMPARE(outcome.exitCode, 0);
    const QString errors = outcome.errors.join('\n');
    QVERIFY(!errors.contains("Cannot find stylesheet \"component.apply_button\""));
    QVERIFY(errors.contains("Cannot find stylesheet \"component.cancel_button\""));
    QVERIFY(errors.contains("Cannot find key in ComponentStrings \"ok\""));
}

void GalleryTest::reportsStartupTimes()
{
    const Outcome outcome = runGallery({ "--startup-times" },
        { { "TMPDIR", path("tmp") }, { "XDG_DATA_HOME", m_folder.path() + "//data" } }); // with "//" in it
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QStringList());
    QVERIFY2(QDir(path("tmp")).isEmpty(), "they take no part in the one instance");
    QJsonObject times = QJsonDocument::fromJson(outcome.output.toUtf8()).object();

    const double total = times.take("total").toDouble();
    double sum = 0;
    for (const char* phase : { "application", "strings", "images", "templates", "widgets", "first_paint" }) {
        const double time = times.take(phase).toDouble(-1);
        QVERIFY2(time >= 0, phase);
        sum += time;
    }
    QVERIFY(times.isEmpty());
    QVERIFY(total > 0);
    QVERIFY(qAbs(sum - total) < 0.01);
}

QTEST_GUILESS_MAIN(GalleryTest)
#include "gallery-test.moc"
