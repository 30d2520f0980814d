#include "support/guarded-test.h"

#include <vantkit-qt/utils/vant-locale.h>

#include <QProcess>
#include <QtTest>

class VantLocaleTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void codes_data();
    void codes();
    void newRows();
    void asksTheSystem_data();
    void asksTheSystem();
};

void VantLocaleTest::codes_data()
{
    QTest::addColumn<QString>("language");

    const char* const rows[][2] = { { "en", "enu" }, { "ja_jp", "jpn" }, { "de", "deu" }, { "ko", "krn" },
        { "fr_ca", "fra" }, { "it", "ita" }, { "es_mx", "esn" }, { "ru", "rus" }, { "da", "dan" },
        { "no", "nor" }, { "nb_no", "nor" }, { "nn_no", "nor" }, { "sv", "sve" }, { "nl", "nld" },
        { "pl", "plk" }, { "hu", "hun" }, { "tr", "trk" }, { "cs_cz", "csy" }, { "pt", "ptg" },
        { "pt_pt", "ptg" }, { "pt_br", "ptb" }, { "pt_pt_x", "ptb" }, { "zh", "chs" }, { "zh_sg", "chs" },
        { "zh_tw", "cht" }, { "zh_hk", "cht" }, { "zh_mo", "cht" }, { "zh_tw_x", "chs" }, { "fi_fi", "enu" },
        { "", "enu" }, { "_de", "enu" }, { "DE", "enu" }, { "ZH_TW", "enu" }, { "zh-tw", "enu" },
        { "de-at", "enu" } };
    for (const auto& row : rows) {
        QTest::addRow("'%s'", row[0]) << row[1];
    }
}

void VantLocaleTest::codes()
{
    QFETCH(QString, language);

    const QString locale = QString::fromLatin1(QTest::currentDataTag()).remove('\'');
    QCOMPARE(VantLocale::getInstance().getLanguageByLocale(locale), language);
}

void VantLocaleTest::newRows()
{
    VantLocale table;
    for (const char* language : { "fi", "en", "pt", "zh" }) {
        table.setLanguageMap(language, "new");
    }
    QCOMPARE(table.getLanguageByLocale("fi_fi"), QString("new"));
    QCOMPARE(table.getLanguageByLocale("en_gb"), QString("new"));
    QCOMPARE(table.getLanguageByLocale("xx"), QString("enu"));
    QCOMPARE(table.getLanguageByLocale("pt_br"), QString("ptb"));
    QCOMPARE(table.getLanguageByLocale("zh_cn"), QString("chs"));
}

void VantLocaleTest::asksTheSystem_data()
{
    QTest::addColumn<QString>("language");

    QTest::newRow("zh_TW.UTF-8") << "cht";
    QTest::newRow("pt_BR.UTF-8") << "ptb";
    QTest::newRow("pt_PT") << "ptg";
    QTest::newRow("nn_NO.UTF-8") << "nor";
    QTest::newRow("C") << "enu";
}

void VantLocaleTest::asksTheSystem()
{
    QFETCH(QString, language);

    // The system is asked once in the life of a process.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", QTest::currentDataTag());
    QProcess probe;
    probe.setProcessEnvironment(environment);
    probe.start(START_UP_PROBE, { "language" });
    QVERIFY(probe.waitForFinished());
    QCOMPARE(QString(probe.readAllStandardOutput()).trimmed(), language);
}

QTEST_GUILESS_MAIN(VantLocaleTest)
#include "vant-locale-test.moc"
