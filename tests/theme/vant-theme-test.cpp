#include "support/guarded-test.h"
#include "support/theme-folder.h"

#include <vantkit-qt/vantkit.h>

#include <QApplication>
#include <QtTest>

class VantThemeTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void themesOfTheKit()
    {
        const VantTheme theme = VantTheme::of("default");
        QCOMPARE(VantTheme::installed(), QStringList { "default" });
        QCOMPARE(VantTheme(QString(DEFAULT_THEME) + "//").folder(), QString(DEFAULT_THEME));
        QCOMPARE(theme.languages().size(), 20);
        QVERIFY(theme.languages().contains("deu"));
        QVERIFY(QFile::exists(theme.movie()));

        const double scale = DPIinfo::getInstance().getDPI();
        const double ratio = DPIinfo::getInstance().getDPR();
        const QPixmap icon = theme.fileTypeIcon("docx");
        QCOMPARE(icon.size(), QSize(1, 1) * qRound(20 * scale * ratio));
        QCOMPARE(icon.devicePixelRatio(), ratio);
        QVERIFY(icon.toImage() != theme.fileTypeIcon("docx", true).toImage());
    }

    // What is wrong is told at once, and nothing is half done.
    void incompleteThemes()
    {
        const std::pair<QStringList, QString> rows[] {
            { {}, "images.json, templates/*.style, strings/deu.json" },
            { { "templates/a.style", "strings/enu.json" }, "images.json" },
            { { "images.json", "strings/deu.json" }, "templates/*.style" },
            { { "images.json", "templates/a.style", "strings/fra.json" }, "strings/deu.json" }
        };
        for (const auto& [files, lacks] : rows) {
            const ThemeFolder folder;
            for (const QString& file : files + QStringList { "palette.json" }) {
                folder.write(file, "{ \"ok\": \"?\", \"ground\": \"#F0E0D0\" }");
            }
            const VantTheme theme(folder.path(""));
            log.expect(QStringLiteral("Theme \"%1\" lacks \"%2\"").arg(theme.folder(), lacks), 2);
            QVERIFY(!theme.start(folder.userFolder(), "deu"));
            QVERIFY(!theme.load("deu"));
            QVERIFY(qApp->palette().color(QPalette::Window) != QColor("#F0E0D0"));
        }
    }

    void start()
    {
        const ThemeFolder folder;
        folder.writeList({}, { "mark" });
        folder.writeImage("mark", { 16, 16 });
        folder.write("templates/1.style", "==a==\nimage: url(TMPIMG_LOC/tmp_mark.png)");
        folder.write("templates/2.style", "==b==\nwidth: 8px");
        folder.write("strings/enu.json", "{ \"ok\": \"OK\", \"cancel\": \"Cancel\", \"close\": \"Close\" }");
        folder.write("strings/deu.json", "{ \"cancel\": \"Abbrechen\", \"close\": 3 }");
        folder.write(
            "palette.json", "{ \"ground\": \"#F0E0D0\", \"ink-off\": \"#111111\", \"ink\": \"no colour\" }");

        const QPalette before = qApp->palette();
        QVERIFY(VantTheme(folder.path("") + "//").start(folder.userFolder() + "//", "deu"));
        const auto word = [](const char* key) { return ComponentStrings::getInstance().getString(key); };
        QCOMPARE(word("ok") + word("cancel") + word("close"), QString("OKAbbrechenClose"));
        QVERIFY(QFile::exists(folder.userFolder() + "/tmp_images/tmp_mark.png"));
        QCOMPARE(getStyleSheet("a").simplified(),
            QStringLiteral("image: url(%1/tmp_images/tmp_mark.png)").arg(folder.userFolder()));
        QCOMPARE(getStyleSheet("b", true).simplified(), QString("width: 8px"));
        QVERIFY(QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps));
        QCOMPARE(qApp->style()->objectName(), QString("fusion"));
        QCOMPARE(qApp->palette().color(QPalette::Window), QColor("#F0E0D0"));
        QCOMPARE(qApp->palette().color(QPalette::Disabled, QPalette::Text), QColor("#111111"));
        QVERIFY(qApp->palette().color(QPalette::Text).lightness() < 64);

        folder.write("templates/2.style", "==b==\nwidth: 9px");
        QVERIFY(VantTheme(folder.path("")).load("enu"));
        QCOMPARE(getStyleSheet("b", true).simplified(), QString("width: 9px"));
        QCOMPARE(word("cancel"), QString("Cancel"));
        qApp->setPalette(before);
    }
};

QTEST_MAIN(VantThemeTest)
#include "vant-theme-test.moc"
