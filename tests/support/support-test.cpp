#include "support/log-guard.h"

#include <vantkit-qt/utils/debug-message.h>

#include <QTextLayout>
#include <QtTest>

/**
 * What the other tests stand on: that a stray log line does not go unseen, and that the fonts
 * are the ones we ship with.
 */
class SupportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void guardComplains();
    void fonts_data();
    void fonts();
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

void SupportTest::fonts_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("found");
    const auto row = [](const QString& family, const char* text, const char* found) {
        QTest::addRow("%s, %s", qUtf8Printable(family), text)
            << family << QString::fromUtf8(text) << QString::fromUtf8(found);
    };
    row(QFont().family(), "Text", "Open Sans");
    row(QStringLiteral("sans-serif"), "Zażółć gęślą", "Open Sans");
    row(QStringLiteral("Segoe UI"), "Пятница", "Open Sans");
    row(QFont().family(), "キャンセル日本語", "Droid Sans Fallback");
    row(QFont().family(), "確定繁體", "Droid Sans Fallback");
    row(QFont().family(), "确定简体", "Droid Sans Fallback");
    row(QFont().family(), "취소확인", "NanumGothic");
}

void SupportTest::fonts()
{
    QFETCH(QString, family);
    QFETCH(QString, text);
    QTextLayout layout(text, QFont(family));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    QCOMPARE(runs.size(), 1);
    QTEST(runs.first().rawFont().familyName(), "found");
    QVERIFY2(!runs.first().glyphIndexes().contains(0), "a character has no glyph");
}

QTEST_MAIN(SupportTest)

#include "support-test.moc"
