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
    void factors();
    void scaledStyleSheet_data();
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
QString scaledByExpression(const QString& text, double dpi)
{
    QRegExp value(QStringLiteral("(\\d+\\.?\\d*)(px)"));
    QString result;
    int copied = 0;
    for (int at = value.indexIn(text); at != -1; at = value.indexIn(text, copied)) {
        result += text.mid(copied, at - copied)
            + QStringLiteral("%1px").arg(static_cast<int>(value.cap(1).toDouble() * dpi));
        copied = at + value.matchedLength();
    }
    return result + text.mid(copied);
}

} // namespace

void DpiInfoTest::factors()
{
    QCOMPARE(DPIinfo::getInstance().getDPI(), displayscale::pick(1.0, 1.25, 1.5, 2.0));
    QCOMPARE(DPIinfo::getInstance().getDPR(), double(displayscale::ratio()));
}

void DpiInfoTest::scaledStyleSheet_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");
    const auto row = [](const char* text, const char* at96, const char* at120, const char* at144,
                         const char* at192) {
        QTest::newRow(text) << QString::fromUtf8(text)
                            << QString::fromUtf8(displayscale::pick(at96, at120, at144, at192));
    };
    row("0px 1px 3px 10px", "0px 1px 3px 10px", "0px 1px 3px 12px", "0px 1px 4px 15px", "0px 2px 6px 20px");
    row("2.5px", "2px", "3px", "3px", "5px");
    row("12.0px", "12px", "15px", "18px", "24px");
    row("a12.5pxb", "a12pxb", "a15pxb", "a18pxb", "a25pxb");
    row("x: 1000px;", "x: 1000px;", "x: 1250px;", "x: 1500px;", "x: 2000px;");
    row("7.px", "7px", "8px", "10px", "14px");
    row(".5px", ".5px", ".6px", ".7px", ".10px");
    row("1.2.3px", "1.2px", "1.2px", "1.3px", "1.4px");
    row("-3px", "-3px", "-3px", "-4px", "-6px");
    row("a_16px.png", "a_16px.png", "a_20px.png", "a_24px.png", "a_32px.png");
    row("16px8px", "16px8px", "20px10px", "24px12px", "32px16px");
    row("99999999999px", "2147483647px", "2147483647px", "2147483647px", "2147483647px");
    for (const char* text : { "", "px", "10PX 10 px 12pt 1em 5p x", "%1 %2", "<p>Größe</p>\n" }) {
        row(text, text, text, text, text);
    }
}

void DpiInfoTest::scaledStyleSheet()
{
    QFETCH(QString, text);
    QTEST(scaled(text), "result");
}

void DpiInfoTest::scalesLikeItsExpression()
{
    const QStringList pieces { QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("."),
        QStringLiteral("p"), QStringLiteral("x"), QStringLiteral("px"), QStringLiteral(" "),
        QString(QChar(0x0663)) };
    QRandomGenerator random(20);
    for (int round = 0; round < 2000; ++round) {
        QString text;
        for (int i = 0; i < 9; ++i) {
            text += pieces.at(random.bounded(pieces.size()));
        }
        QCOMPARE(scaled(text), scaledByExpression(text, DPIinfo::getInstance().getDPI()));
    }
}

void DpiInfoTest::longRunsOfDigits()
{
    const QString digits(1000000, QLatin1Char('4'));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(scaled(digits), digits);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_MAIN(DpiInfoTest)

#include "dpi-info-test.moc"
