#include "support/log-guard.h"

#include <vantkit-qt/utils/debug-message.h>

#include <QFontDatabase>
#include <QLabel>
#include <QTextLayout>
#include <QtTest>

/** What the other tests stand on: that a stray log line does not go unseen, and that the fonts are the ones
 * we ship with. */
class SupportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void guardComplains();
    void fontOfFamily_data();
    void fontOfFamily();
    void fontOfScript_data();
    void fontOfScript();
};

void SupportTest::guardComplains()
{
    LogGuard guard;
    guard.start();
    guard.expect(QStringLiteral("twice"), 2);
    guard.expect(QStringLiteral("of the kit"));
    guard.expectFrom(QStringLiteral("default"), QStringLiteral("of Qt"));
    qCWarning(debug_message, "twice");
    qCWarning(debug_message, "twice");
    qWarning("of Qt");
    qWarning("This plugin does not support raise()");
    QCOMPARE(
        guard.complaints(), QStringList { QStringLiteral("Missing log line: debug.message: of the kit") });

    qWarning("of the kit");
    qCWarning(debug_message, "of the kit, and more");
    qCDebug(debug_message, "not even a warning");
    qCCritical(debug_message, "of the kit");
    const QString missed = QStringLiteral("Unexpected log line: ");
    QCOMPARE(guard.complaints(),
        (QStringList {
            missed + QStringLiteral("default: of the kit"),
            missed + QStringLiteral("debug.message: of the kit, and more"),
            missed + QStringLiteral("debug.message: not even a warning"),
            missed + QStringLiteral("debug.message: of the kit"),
            QStringLiteral("Missing log line: debug.message: of the kit"),
        }));
}

void SupportTest::fontOfFamily_data()
{
    QTest::addColumn<QString>("family");
    QTest::newRow("default") << QFont().family();
    QTest::newRow("generic") << QStringLiteral("sans-serif");
    QTest::newRow("unknown") << QStringLiteral("Segoe UI");
    QTest::newRow("monospace") << QStringLiteral("monospace");
}

void SupportTest::fontOfFamily()
{
    QFETCH(QString, family);
    QLabel label;
    label.setStyleSheet(QStringLiteral("font-family: \"%1\"").arg(family));
    label.ensurePolished();
    QCOMPARE(QFontInfo(label.font()).family(), QStringLiteral("Open Sans"));
    QCOMPARE(QRawFont::fromFont(label.font()).familyName(), QStringLiteral("Open Sans"));
}

void SupportTest::fontOfScript_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("family");
    const QString latin = QStringLiteral("Open Sans");
    const QString fallback = QStringLiteral("Droid Sans Fallback");
    QTest::newRow("Polish") << QStringLiteral("Zażółć gęślą") << latin;
    QTest::newRow("Russian") << QStringLiteral("Пятница") << latin;
    QTest::newRow("Japanese") << QStringLiteral("キャンセル日本語") << fallback;
    QTest::newRow("Korean") << QStringLiteral("취소확인") << QStringLiteral("NanumGothic");
    QTest::newRow("traditional Chinese") << QStringLiteral("確定繁體") << fallback;
    QTest::newRow("simplified Chinese") << QStringLiteral("确定简体") << fallback;
}

void SupportTest::fontOfScript()
{
    QFETCH(QString, text);
    QTextLayout layout(text, QFont());
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    QCOMPARE(runs.size(), 1);
    QTEST(runs.first().rawFont().familyName(), "family");
    QVERIFY2(!runs.first().glyphIndexes().contains(0), "a character has no glyph");
}

QTEST_MAIN(SupportTest)

#include "support-test.moc"
