#include "support/guarded-test.h"
#include "support/pointer.h"

#include <vantkit-qt/widgets/link-label.h>

class LinkLabelTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void clicks();
    void hover_data();
    void hover();
};

void LinkLabelTest::clicks()
{
    for (const Qt::MouseButton button : { Qt::LeftButton, Qt::RightButton }) {
        LinkLabel label(QStringLiteral("Link"));
        label.setTextInteractionFlags(Qt::TextSelectableByMouse);
        label.setSelection(0, 1);
        label.show();
        QVector<bool> selectedInSlot;
        connect(&label, &LinkLabel::clicked, this, [&] { selectedInSlot << label.hasSelectedText(); });

        // The base class, which ends a selection at a press of the left button, comes after the signal.
        QTest::mouseClick(&label, button, {}, label.rect().bottomRight());
        QCOMPARE(selectedInSlot, QVector<bool> { true });
        QCOMPARE(label.hasSelectedText(), button != Qt::LeftButton);
    }

    // A slot may delete the label.
    QLabel window;
    window.resize(200, 100);
    auto* label = new LinkLabel(QStringLiteral("Link"), &window);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    connect(label, &LinkLabel::clicked, this, [label] { delete label; });
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    pointer::press(label);
    QCOMPARE(window.findChild<LinkLabel*>(), nullptr);
}

void LinkLabelTest::hover_data()
{
    QTest::addColumn<QByteArray>("steps");
    for (const char* steps :
        { "enter leave enter leave", "enter disable enable leave", "enter disable leave enable enter leave",
            "enter hide", "enter delete", "enter disable enable delete", "disable enter leave delete" }) {
        QTest::newRow(steps) << QByteArray(steps);
    }
}

void LinkLabelTest::hover()
{
    QFETCH(QByteArray, steps);
    pointer::moveAway();
    QLabel window;
    window.resize(200, 100);
    const QPointer<LinkLabel> label = new LinkLabel(QStringLiteral("Link"), &window);
    label->setGeometry(10, 10, 80, 30);
    label->setFont(QFont(QStringLiteral("sans-serif"), 10, QFont::Bold));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QGuiApplication::setOverrideCursor(Qt::WaitCursor); // the application's own, below the label's
    const QList<QByteArray> list = steps.split(' ');
    for (const QByteArray& step : list) {
        QVERIFY(pointer::act(label, step));
        const bool isLink = step == "enter" && label->isEnabled();
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(
            QGuiApplication::overrideCursor()->shape(), isLink ? Qt::PointingHandCursor : Qt::WaitCursor);
        QVERIFY(!label || (label->font().underline() == isLink && label->font().bold()));
    }
    QGuiApplication::restoreOverrideCursor();
    QVERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(LinkLabelTest)

#include "link-label-test.moc"
