#include "support/log-guard.h"

#include <vantkit-qt/utils/debug-message.h>

#include <QTextLayout>
#include <QtTest>

/** What the other tests stand on: no stray log line goes unseen, and every script has its font. */
class SupportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void guardComplains();
    void fonts();
};

void SupportTest::guardComplains()
{
    LogGuard guard;
    guard.start();
    guard.expect("twice", 2);
    guard.expect("of the kit");
    qCWarning(debug_message, "twice");
    qCWarning(debug_message, "twice");
    qWarning("This plugin does not support raise()");
    qWarning("of the kit");
    qCDebug(debug_message, "not even a warning");
    qCCritical(debug_message, "of the kit");
    QCOMPARE(guard.complaints().join('\n'),
        QString(
            "Unexpected log line: default: of the kit\n"
            "Unexpected log line: debug.message: not even a warning\n"
            "Unexpected log line: debug.message: of the kit\nMissing log line: debug.message: of the kit"));
}

void SupportTest::fonts()
{
    const QStringList rows { "Open Sans: Zażółć Пятница", "Droid Sans Fallback: キャンセル日本語",
        "Droid Sans Fallback: 确定繁體", "NanumGothic: 취소확인" };
    for (const QString& row : rows) {
        QTextLayout layout(row.section(": ", 1), QFont());
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        QCOMPARE(layout.glyphRuns().size(), 1);
        QCOMPARE(layout.glyphRuns().first().rawFont().familyName(), row.section(": ", 0, 0));
        QVERIFY2(!layout.glyphRuns().first().glyphIndexes().contains(0), "a character has no glyph");
    }
}

QTEST_MAIN(SupportTest)

#include "support-test.moc"
