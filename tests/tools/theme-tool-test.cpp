#include "support/files.h"
#include "support/guarded-test.h"
#include "support/program.h"
#include "theme-files/kit-requests.h"
#include "theme-files/style-rules.h"
#include "theme-files/theme-check.h"
#include "vantkit-theme/new-theme.h"
#include "vantkit-theme/preview-window.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QScrollBar>
#include <QtTest>

namespace {

using files::contentOf;
using Names = QSet<QString>;

const QString root = QStringLiteral(PROJECT_ROOT);
const QString defaultTheme = root + "/themes/default/";

/** What the tool prints, with its exit code behind. */
QString tool(const QStringList& arguments)
{
    const Outcome outcome = runProgram(VANTKIT_THEME, arguments);
    return outcome.output + QString::number(outcome.exitCode);
}

/** What @p pattern captures in the sources of the kit, in files that hold what @p user matches. */
Names inSources(const QString& pattern, const QString& user = {})
{
    Names found;
    QDirIterator files(root + "/src", { "*.cpp" }, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString text = contentOf(files.next());
        auto match = QRegularExpression(pattern).globalMatch(text);
        while (text.contains(QRegularExpression(user)) && match.hasNext()) {
            found << match.next().captured(1);
        }
    }
    return found;
}

Names asSet(const QStringList& names)
{
    return Names(names.begin(), names.end());
}

} // namespace

class ThemeToolTest : public GuardedTest
{
    Q_OBJECT

private:
    QTemporaryDir folder;

    QString path(const QString& name) const { return folder.filePath(name); }

    QString copied(const QString& name) const { return path("copy/" + name); }

    void restore(const QString& name) const
    {
        QFile::remove(copied(name));
        QFile::copy(defaultTheme + name, copied(name));
    }

    bool isDrawnAnew(const QString& theme, const QString& image) const
    {
        return QImage(path(theme + image)) != QImage(defaultTheme + image);
    }

private Q_SLOTS:

    void initTestCase() { QCOMPARE(makeTheme(defaultTheme, path("copy"), {}), QString()); }

    // The tool and the guide know by name what the sources ask for.
    void names()
    {
        QCOMPARE(asSet(kitrequests::styleKeys()), inSources("\"(component\\.\\w+)\""));
        // "qt_..." are names of Qt's widgets.
        const QString users =
            "getGlobalImage\\((?!const)|VantIconButton\\(|(getS|componentS|textOrS)tring\\(";
        QCOMPARE(asSet(kitrequests::images() + kitrequests::strings()),
            inSources("\"((?!qt_)[a-z]\\w*)\"", users));
        QCOMPARE(asSet(kitrequests::colours()), inSources("\\{ \"([a-z-]+)\", QPalette") << "ink-off");
        QCOMPARE(
            asSet(kitrequests::fileTypes()), inSources("mappingFile\\(QStringLiteral\\(\"(\\w+)") << "xxx");
        const QString guide = contentOf(root + "/docs/theming.md");
        for (const QString& name : kitrequests::styleKeys() + kitrequests::strings()) {
            QVERIFY2(guide.contains('`' + name + '`'), qPrintable(name));
        }
        for (const auto& [name, colour] : paletteOf(contentOf(defaultTheme + "palette.json"))) {
            const QString row = QStringLiteral("| %1 | `%2` |").arg(name, colour.name().toUpper());
            QVERIFY2(guide.contains(row), qPrintable(row));
        }
    }

    void findings_data();

    void findings()
    {
        QFETCH(QStringList, row);
        const QString file = copied(row[0]);
        const QString replacement = QString(row[2]).replace("\\n", "\n").replace("\\s", " ");
        if (!row[1].isEmpty()) {
            files::write(
                file, QString(contentOf(file)).replace(QRegularExpression(row[1]), replacement).toUtf8());
        } else if (replacement.isEmpty()) {
            QVERIFY(QFile::remove(file));
        } else if (replacement.startsWith('=')) {
            QVERIFY(QFile::remove(file) && QFile::copy(copied(replacement.mid(1)), file));
        } else if (!QImage(replacement.toInt(), 8, QImage::Format_Mono).save(file)) {
            files::write(file, replacement.toUtf8());
        }
        QString found;
        for (const Finding& finding : checkTheme(path("copy"))) {
            found += describe(finding, path("copy")) + '\n';
        }
        restore(row[0]);
        QVERIFY2(found.contains(row[3]), qPrintable(found));
    }

    void exitCodes()
    {
        QCOMPARE(tool({ "check", defaultTheme }), QString("0"));
        QCOMPARE(tool({ "check", path("nowhere") }), QString("2"));
        const QString palette = copied("palette.json");
        QFile::remove(palette);
        QCOMPARE(tool({ "check", path("copy") }), palette + ": is missing\n1");
        const QString json = tool({ "check", "--json", path("copy") }).chopped(1);
        QCOMPARE(QJsonDocument::fromJson(json.toUtf8())[0].toObject()["file"].toString(), palette);
        files::write(copied("images.json"), "[");
        QVERIFY(tool({ "check", path("copy") }).endsWith("\n2"));
        restore("palette.json");
        restore("images.json");
    }

    void newColours()
    {
#ifdef Q_OS_WIN
        QSKIP("The script that draws images is for a shell that is not there");
#endif
        QCOMPARE(tool({ "new", path("green"), "--accent", "green ink" }), QString("2"));
        QCOMPARE(tool({ "new", path("copy"), "--accent", "green" }), QString("2"));
        QCOMPARE(tool({ "new", path("green"), "--accent", "#1B7F5C" }), QString("0"));
        const Palette palette = paletteOf(contentOf(path("green/palette.json")));
        const Colours colours(std::map<QString, QColor>(palette.begin(), palette.end()));
        const QColor press = colours.value("accent-press");
        QCOMPARE(press.hslHue(), QColor("#1B7F5C").hslHue());
        QVERIFY(press.lightness() < colours.value("accent-hover").lightness());
        QVERIFY(QString(contentOf(path("green/templates/buttons.style"))).contains(press.name().toUpper()));
        QVERIFY(isDrawnAnew("green", "/images/app_img.png") && !isDrawnAnew("green", "/images/folder.png"));

        // Names that share a value are told apart, and a bad contrast is told. There is little to draw.
        QDirIterator sources(copied("svg"), { "[b-oq-z]*.svg" }, QDir::Files, QDirIterator::Subdirectories);
        while (sources.hasNext()) {
            sources.next().contains("radio_on") || QFile::remove(sources.filePath());
        }
        files::write(
            path("p"), "{ \"focus\": \"#7A3FB0\", \"on-accent\": \"#FFFFE0\", \"ink-faint\": \"#A0A0A0\" }");
        const QString told = tool({ "new", path("other"), "--from", path("copy"), "--palette", path("p") });
        QVERIFY(told.contains("paging.style:73: text in #A0A0A0 on #FFFFFF") && told.endsWith("\n1"));
        const QString buttons = contentOf(path("other/templates/buttons.style"));
        QCOMPARE(buttons.count("#FFFFE0"), 2);
        QVERIFY(buttons.contains("background-color: #FFFFFF") && buttons.contains("1px solid #0B6BCB"));
        QVERIFY(buttons.contains("2px solid #7A3FB0") && !buttons.contains("2px solid #0B6BCB"));
        QVERIFY(isDrawnAnew("other", "/images/radio_on_focus.png"));
        QVERIFY(!isDrawnAnew("other", "/images/radio_on.png"));
    }

    // A theme that is broken in the middle of its writing keeps its last good look.
    void preview()
    {
        PreviewWindow window(path("copy"), "enu", VANTKIT_THEME);
        window.resize(500, 200);
        window.show();
        auto* list = window.findChild<QListWidget*>();
        auto* area = window.findChild<QScrollArea*>();
        auto* message = window.findChild<QLabel*>({}, Qt::FindDirectChildrenOnly);
        const auto picture = [area] {
            return qobject_cast<QLabel*>(area->widget())->pixmap(Qt::ReturnByValue).toImage();
        };
        list->setCurrentRow(2);
        QTRY_VERIFY_WITH_TIMEOUT(!picture().isNull(), 30000);
        area->verticalScrollBar()->setValue(30);
        const QImage before = picture();
        const QString file = copied("templates/inputs.style");
        const QString inputs = contentOf(file);
        files::write(file, inputs.chopped(2).toUtf8());
        QTRY_VERIFY_WITH_TIMEOUT(message->isVisible(), 30000);
        QVERIFY(message->text().contains("inputs.style:222: Qt: Could not parse stylesheet"));
        QCOMPARE(picture(), before);
        files::write(file, QString(inputs).replace("#1D2733", "#C8372D").toUtf8());
        QTRY_VERIFY_WITH_TIMEOUT(picture() != before, 30000);
        QVERIFY(!message->isVisible());
        QCOMPARE(list->currentRow(), 2);
        QCOMPARE(area->verticalScrollBar()->value(), 30);
    }
};

// Rows: a file, what is replaced in it, by what ("\n" is a line end), and what is found then. An image gets
// another width; without a pattern and a replacement the file goes.
void ThemeToolTest::findings_data()
{
    QTest::addColumn<QStringList>("row");
    const QString rows = R"(
images.json | "folder", | | json: "images" lacks "folder"
images.json | "folder", | "folder", "folder", | 3: "folder" stands twice in "images"
images.json | "folder", | "folder", "more", | 3: nobody asks for "more"
images.json | "dash", | | inputs.style:44: nobody makes TMPIMG_LOC/tmp_dash.png
images.json | "dash", | "dash", "bt_next", | 26: no style sheet asks for "bt_next"
images.json | "dash", | "dash", "bt_next", | 26: "bt_next@2x" is missing
images.json | "dash", | "dash", "dash", | 26: "dash" stands twice in "tmp_images"
images.json | \],\s*"tmp[^$]* | | 23: unterminated array
images/folder.png | | | images.json:3: there is no file images/folder.png
images/bt_pagebar_next_hover.png | | | json:20: there is no file images/bt_pagebar_next_hover.png
images/folder.png | | 81 | is 81 by 8, which are no multiples of four
images/bt_pagebar_next_hover.png | | 32 | is not as large as the image at rest
images/bt_pagebar_next_hover.png | | =images/bt_pagebar_next.png | looks like the image at rest
images/dash@2x.png | | 32 | is not twice as large as dash.png
images/folder.png | | text | folder.png: is no image
filetypes/pdf_removed.png | | | there is no file filetypes/pdf_removed.png
images/more.png | | 8 | more.png: nobody asks for this file
templates/labels.style | label== | lable== | templates: the key "component.label" is missing
templates/labels.style | $ | ==theme.tree==\n | tree.style:17: the key "theme.tree" stands twice
templates/labels.style | $ | ====\n | 12: the header has no key
templates/labels.style | ==comp | QLabel { }\n==comp | 3: the text before the file's first header
templates/buttons.style | ==component.a | Q { }\n==component.a | 12: the text before the first header
templates/labels.style | label== | label== // text | 3: "==component.label== // text" is no header, as a c
templates/labels.style | ==comp | \s// text\n==comp | 4: "==component.label==" is no header, as a comment
templates/labels.style | ==comp | \s==comp | 3: "==component.label==" is no header, as there is a blank
templates/labels.style | $ | /* text | 10: the comment goes on in templates/menu.style
templates/tree.style | $ | /* text | 81: the comment is never closed
templates/labels.style | classes. \*/ | classes. | 1: the comment takes in the header "component.label"
templates/labels.style | ink \*/ | ink | 5: the comment takes in the text
templates/labels.style | font-size | // /*\nfont-size | 6: "/*" in a line comment begins another one
templates/labels.style | 13px; | 13px; image: url(file:///x.png); | 6: "//" begins a comment in an address
templates/labels.style | 13px; | 13px; image: url("IMG_LOC/x.png"); | 6: there is no file images/x.png
templates/labels.style | 13px; | 13px; image: url(IMG_LOC/dash.png); | 6: IMG_LOC/dash.png has to stand
templates/labels.style | 13px; | 13px; image: url(x.png); | 6: there is no file x.png
templates/labels.style | ink-off \*/\s*\} | ink-off */ | 8: Qt: Could not parse stylesheet
templates/labels.style | font-size | fontsize | 6: Qt: Unknown property fontsize
templates/labels.style | font-size: | font-size | 6: "font-size 13px" has no value
templates/labels.style | 13px; | 13px outline: none; | 6: a semicolon is missing behind "font-size"
templates/labels.style | 13px | 13.5px | 6: 13.5px is cut to a whole number
templates/labels.style | #1D2733 | #808080 | 5: text in #808080 on #FFFFFF has a contrast of 3.95,
templates/menu.style | color: #1D2733 | color: #FFFFFF | 8: text in #FFFFFF on #FFFFFF
templates/tree.style | selection-color: #FFFFFF | selection-color: #000 | 14: text in #000000 on #0B6BCB
templates/inputs.style | %2\n | \n | 106: the place marker %2 has to stand here once
templates/inputs.style | %2\n | %2 %3\n | 106: there are other place markers than %1 and %2
strings/deu.json | "today" | "todai" | deu.json: "today" is missing
strings/deu.json | "Heute" | " " | deu.json:29: "today" is empty
strings/deu.json | "Juli" | "Juni" | 23: "month_jul" looks like "month_jun" in the menu of months: "Jun"
strings/deu.json | "Heute", | "Heute" | deu.json:30: unterminated object
strings/enu.json | | | enu.json: is missing
images/processing.gif | | | there is no file images/processing.gif
palette.json | #8C9AA8 | pale | palette.json:5: "ink-off" is no colour
palette.json | "ground" | "page" | palette.json: "ground" is missing
)";
    for (const QString& row : rows.trimmed().split('\n')) {
        QTest::newRow(qUtf8Printable(row)) << row.split(QRegularExpression(" *\\| *"));
    }
}

QTEST_MAIN(ThemeToolTest)
#include "theme-tool-test.moc"
