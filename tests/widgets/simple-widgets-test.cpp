#include "support/display-scale.h"
#include "support/pointer.h"
#include "support/themed-test.h"

using displayscale::px;

/** The widgets that are a look and a rule or two. */
class SimpleWidgetsTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void comboBox()
    {
        // The padding keeps its fraction, and the border its pixel.
        auto box = std::make_unique<VantComboBox>();
        const QString padding = displayscale::pick("6px", "7.5px", "9px", "12px");
        QCOMPARE(box->styleSheet(),
            getStyleSheet("component.combobox")
                    .arg("padding-left: " + padding + "; \npadding-right: " + padding + ";",
                        "border: 1px solid #C8D2DC;")
                + getStyleSheet("component.scrollbar"));

        const QPointer<QAbstractItemDelegate> delegate = box->itemDelegate();
        QCOMPARE(delegate->metaObject()->className(), "QStyledItemDelegate");
        box.reset();
        QVERIFY(!delegate);
    }

    void menuStaysOnScreen()
    {
        // QRect's right and bottom belong to it.
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        const QPoint begin = area.topLeft();
        const QPoint end = area.bottomRight() - QPoint(100, 80);
        const QPair<QPoint, QPoint> rows[] { { end, end }, { end + QPoint(1, 1), end },
            { begin + QPoint(-1, 9), begin + QPoint(0, 9) },
            { begin + QPoint(9, -300), begin + QPoint(9, 0) } };
        for (const auto& [asked, shown] : rows) {
            VantMenu menu;
            menu.setFixedSize(100, 80);
            menu.winId(); // the offscreen platform moves a new window once, by the frame that it gives it
            menu.move(asked);
            menu.show();
            QCOMPARE(menu.pos(), shown);
        }
    }

    void labelHeights()
    {
        QWidget window;

        const std::tuple<QLabel*, bool, QSizePolicy::Policy, bool> rows[] { { new VantLabel(&window), true,
                                                                                QSizePolicy::Minimum, true },
            { new VantLabel(&window), false, QSizePolicy::Minimum, false },
            { new VantLabel(&window), true, QSizePolicy::MinimumExpanding, false },
            { new MessageLabel(&window), true, QSizePolicy::Preferred, true } };
        window.show();
        for (const auto& [label, wraps, policy, follows] : rows) {
            label->setWordWrap(wraps);
            label->setSizePolicy(QSizePolicy::Preferred, policy);
            for (const QString& text : { QString(), QString("word ").repeated(60) }) {
                label->setText(text);
                QLabel twin(text);
                twin.setStyleSheet(label->styleSheet());
                twin.ensurePolished();
                twin.setWordWrap(wraps);
                for (const int width : { 600, 300, 900 }) {
                    label->resize(width, 10);
                    QCOMPARE(label->minimumHeight(), follows ? qMax(0, twin.heightForWidth(width)) : 0);
                }
            }
        }
        QCOMPARE(std::get<0>(rows[0])->styleSheet(), getStyleSheet("component.label"));
        QLabel* message = std::get<0>(rows[3]);
        QCOMPARE(message->maximumHeight(), message->minimumHeight());
        message->setText("<p>" + QString(300, 'x'));
        message->resize(100, 10);
        QVERIFY(message->height() > 5 * message->fontMetrics().height()); // a long word is broken
    }

    void footbar()
    {
        VantFootbar bar;
        const QWidgetList widgets { new QWidget, new QWidget, new QWidget, new QWidget };
        for (int i = 0; i < 4; ++i) {
            i % 2 == 0 ? bar.pushRightWidget(widgets[i]) : bar.pushLeftWidget(widgets[i]);
        }
        bar.init();
        bar.init();
        QCOMPARE(bar.layout()->count(), 5); // with the stretch
        const int places[] { 3, 0, 4, 1 };
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(bar.layout()->indexOf(widgets[i]), places[i]);
            QCOMPARE(bar.layout()->itemAt(places[i])->alignment(), Qt::AlignVCenter);
        }
        QCOMPARE(bar.layout()->contentsMargins(), QMargins(px(20), px(8), px(20), px(8)));
        QCOMPARE(bar.layout()->spacing(), px(10));
        QCOMPARE(bar.layout()->alignment(), Qt::AlignLeft);
        bar.setMargins(1, 2, 3, 4);
        QCOMPARE(bar.layout()->contentsMargins(), QMargins(px(1), px(2), px(3), px(4)));
    }

    void mouseFilters()
    {
        for (const QEvent::Type type : { QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                 QEvent::MouseButtonDblClick, QEvent::MouseMove }) {
            QEvent event(type);
            QCOMPARE(MouseButtonFilter().eventFilter(this, &event), type != QEvent::MouseMove);
            QCOMPARE(MouseReleaseFilter().eventFilter(this, &event), type == QEvent::MouseButtonRelease);
        }
    }

    void lineEdit()
    {
        VantLineEdit edit;
        QLineEdit* field = edit.getLineEdit();
        for (QLabel* label : { edit.getPreLabel(), edit.getPostLabel() }) {
            label->setStyleSheet(QString());
        }
        edit.show();
        QCOMPARE(field->width(), edit.width()); // labels without a text take no room
        edit.setSpacing(7);
        edit.setMargins(3, 1, 5, 2);
        QCOMPARE(edit.layout()->spacing(), px(7));
        QCOMPARE(edit.layout()->contentsMargins(), QMargins(px(3), px(1), px(5), px(2)));
        QCOMPARE(edit.layout()->itemAt(1)->widget(), field);
        QCOMPARE(edit.layout()->itemAt(2)->widget(), edit.getPostLabel());

        QVERIFY(edit.validate());
        edit.setValidator([](const QString& text) { return text == "good"; });
        QVERIFY(!edit.validate());
        field->setText("good");
        QVERIFY(edit.validate() && edit.getEditText() == "good");

        QVERIFY(QTest::qWaitForWindowActive(&edit));
        edit.setFocus();
        QVERIFY(field->hasFocus());
        field->clearFocus();
        edit.getPreLabel()->setText("&Before");
        QTest::keyClick(&edit, Qt::Key_B, Qt::AltModifier);
        QVERIFY(field->hasFocus());
    }

    void linkClicks()
    {
        QLabel window;
        window.resize(200, 100);
        for (const Qt::MouseButton button : { Qt::LeftButton, Qt::RightButton }) {
            auto* label = new LinkLabel("Link", &window);
            label->setHyperLink("link");
            QCOMPARE(label->getHyperLink(), QString("link"));
            label->setTextInteractionFlags(Qt::TextSelectableByMouse);
            label->setSelection(0, 1);
            window.show();
            label->show();
            bool selectedInSlot = false;
            connect(label, &LinkLabel::clicked, this, [&] { selectedInSlot = label->hasSelectedText(); });

            // The base class, which ends a selection at a press of the left button, comes after the signal.
            QTest::mouseClick(label, button, {}, label->rect().bottomRight());
            QVERIFY(selectedInSlot);
            QCOMPARE(label->hasSelectedText(), button != Qt::LeftButton);

            // A new font makes it larger, and a slot may delete it.
            const int height = label->sizeHint().height();
            label->setFont(QFont("sans-serif", 30));
            QVERIFY(label->sizeHint().height() > height);
            connect(label, &LinkLabel::clicked, this, [label] { delete label; });
            pointer::press(label);
            QVERIFY(!window.findChild<LinkLabel*>());
        }
    }

    void linkHover()
    {
        for (const QByteArray steps : { "enter leave enter leave", "enter disable leave enable enter leave",
                 "enter disable enable leave", "disable enter", "enter delete",
                 "enter disable enable delete" }) {
            pointer::moveAway();
            QLabel window;
            window.resize(200, 100);
            const QPointer<LinkLabel> label = new LinkLabel("Link", &window);
            label->setGeometry(10, 10, 80, 30);
            label->setFont(QFont("sans-serif", 10, QFont::Bold));
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));

            QGuiApplication::setOverrideCursor(Qt::WaitCursor); // the application's own, below the label's
            for (const QByteArray& step : steps.split(' ')) {
                pointer::act(label, step);
                const bool isLink = step == "enter" && label->isEnabled();
                QVERIFY(QGuiApplication::overrideCursor());
                const auto shape = QGuiApplication::overrideCursor()->shape();
                QVERIFY2(shape == (isLink ? Qt::PointingHandCursor : Qt::WaitCursor), steps + ", " + step);
                QVERIFY(!label || (label->font().underline() == isLink && label->font().bold()));
            }
            QGuiApplication::restoreOverrideCursor();
            QVERIFY(!QGuiApplication::overrideCursor());
        }
    }
};

QTEST_MAIN(SimpleWidgetsTest)

#include "simple-widgets-test.moc"
