#include <QTextLayout>
#include <QtTest>

/** What the other tests stand on. */
class SupportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void everyScriptHasItsFont()
    {
        for (const QString row : { "Open Sans: Zażółć Пятница", "Droid Sans Fallback: キャンセル日本語",
                 "Droid Sans Fallback: 确定繁體", "NanumGothic: 취소확인" }) {
            QTextLayout layout(row.section(": ", 1), QFont());
            layout.beginLayout();
            layout.createLine();
            layout.endLayout();
            QCOMPARE(layout.glyphRuns().size(), 1);
            QCOMPARE(layout.glyphRuns().first().rawFont().familyName(), row.section(": ", 0, 0));
            QVERIFY2(!layout.glyphRuns().first().glyphIndexes().contains(0), "a character has no glyph");
        }
    }
};

QTEST_MAIN(SupportTest)

#include "support-test.moc"
