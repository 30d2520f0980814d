#include "support/display-scale.h"
#include "support/guarded-test.h"

#include <vantkit-qt/utils/dpi-info.h>

#include <QRandomGenerator>
#include <QRegExp>
#include <QtTest>

class DpiInfoTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void scaledStyleSheet();
    void scalesLikeItsExpression();
    void longRunsOfDigits();
};

namespace {

QString scaled(const QString& text)
{
    return DPIinfo::getInstance().getScaledStyleSheet(text);
}

// The definition of the scaling, word by word.
QString scaledByExpression(QString text)
{
    QRegExp value("(\\d+\\.?\\d*)(px)");
    for (int at = value.indexIn(text); at != -1; at = value.indexIn(text, at)) {
        const int scaledValue = static_cast<int>(value.cap(1).toDouble() * displayscale::dpi() / 96);
        const QString replacement = QString::number(scaledValue) + "px";
        text.replace(at, value.matchedLength(), replacement);
        at += replacement.size();
    }
    return text;
}

} // namespace

void DpiInfoTest::scaledStyleSheet()
{
    QCOMPARE(scaled("0px 1px 3px 10px 2.5px .5px -3px a_16px.png 10PX 10 px 12pt %1 <p>"),
        QString(displayscale::pick("0px 1px 3px 10px 2px .5px -3px a_16px.png 10PX 10 px 12pt %1 <p>",
            "0px 1px 3px 12px 3px .6px -3px a_20px.png 10PX 10 px 12pt %1 <p>",
            "0px 1px 4px 15px 3px .7px -4px a_24px.png 10PX 10 px 12pt %1 <p>",
            "0px 2px 6px 20px 5px .10px -6px a_32px.png 10PX 10 px 12pt %1 <p>")));
    QCOMPARE(DPIinfo::getInstance().getDPR(), double(displayscale::ratio()));
    QCOMPARE(scaled("99999999999px"), QString("2147483647px"));
}

void DpiInfoTest::scalesLikeItsExpression()
{
    const QStringList pieces { "1", "2", ".", "p", "x", "px", " ", QChar(0x0663) };
    QRandomGenerator random(20);
    for (int round = 0; round < 2000; ++round) {
        QString text;
        for (int i = 0; i < 9; ++i) {
            text += pieces.at(random.bounded(pieces.size()));
        }
        QCOMPARE(scaled(text), scaledByExpression(text));
    }
}

void DpiInfoTest::longRunsOfDigits()
{
    const QString digits(1000000, '4');
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(scaled(digits), digits);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_MAIN(DpiInfoTest)

#include "dpi-info-test.moc"
