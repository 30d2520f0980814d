#include "sheets/covered-window.h"

#include <QtTest>

#include <functional>

using sheets::soon;
using Show = std::function<int(QWidget*)>; // the result of functions that have one
Q_DECLARE_METATYPE(Show)

namespace {

QString textsOf(const QList<QAbstractButton*>& buttons)
{
    QStringList found;
    for (const QAbstractButton* button : buttons) {
        found += button->text();
    }
    return found.join('|');
}

/** A sheet in words: its texts and its buttons. */
QString lookOf(const VantMessageSheet* sheet)
{
    return sheet->accessibleName() + sheet->accessibleDescription() + ' '
        + textsOf(sheet->findChild<QDialogButtonBox*>()->buttons());
}

QString lookOf(const QMessageBox* box)
{
    return box->windowTitle() + box->text() + box->informativeText() + ' ' + textsOf(box->buttons());
}

} // namespace

class MessageFunctionsTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void asks_data()
    {
        QTest::addColumn<QString>("icon");
        QTest::addColumn<int>("boxIcon");
        QTest::addColumn<QString>("boxStyle");
        QTest::addColumn<Show>("show");
        const auto row = [](const char* icon, int boxIcon, const char* style, const char* look,
                             const Show& show) {
            QTest::newRow(look) << QString("icon_") + icon << boxIcon << style << show;
        };
        row("information", QMessageBox::Information, "info", "A ok",
            [](QWidget* parent) { return showInfoMsg("T", "A", parent), -1; });
        row("warning", QMessageBox::Warning, "warning", "B ok",
            [](QWidget* parent) { return showWarningMsg("T", "B", parent), -1; });
        row("warning", QMessageBox::Warning, "warning", "CMore ok",
            [](QWidget* parent) { return showWarningMsg("T", "C", "More", parent), -1; });
        row("information", QMessageBox::Warning, "upgrading", "D wizard_client_upgrade|cancel",
            [](QWidget* parent) { return showUpgradingMsg("T", "D", parent), -1; });
        row("question", QMessageBox::Question, "confirm", "E ok|cancel",
            [](QWidget* parent) { return showConfirmMsg("T", "E", parent); });
        row("question", QMessageBox::Question, "confirm", "F Own|cancel", [](QWidget* parent) {
            return showConfirmMsgCustomBtn("T", "F", { "Own", {} }, parent);
        });
        row("question", QMessageBox::Question, "confirm", "G ok|Own", [](QWidget* parent) {
            return showConfirmMsgCustomBtn("T", "G", { {}, "Own" }, parent);
        });
    }

    void asks()
    {
        QFETCH(QString, icon);
        QFETCH(QString, boxStyle);
        const QString look = QTest::currentDataTag();
        QFETCH(Show, show);
        CoveredWindow window;
        QWidget narrow(&window);
        narrow.resize(400, 300);
        for (const int key : { Qt::Key_Return, Qt::Key_Escape }) {
            soon(&window, [&] {
                const auto end = qScopeGuard([&] {
                    window.press(key);
                    if (window.shownMask()) {
                        window.press(Qt::Key_Return); // for want of a cancel button
                    }
                });
                const VantMask* mask = window.shownMask();
                QVERIFY(mask && mask->parent() == &window);
                const auto* sheet = mask->findChild<VantMessageSheet*>();
                QCOMPARE(sheet->width(), 360);
                const QPixmap shown = sheets::labels(sheet)[1]->pixmap(Qt::ReturnByValue);
                QCOMPARE(shown.toImage(), getGlobalImage(icon).toImage());
                QCOMPARE(lookOf(sheet), look);
            });
            const int overWindow = show(&narrow);
            QCOMPARE(window.remains(), QString());
            soon(qApp, [&] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                QVERIFY(box);
                const auto end = qScopeGuard([&] { QTest::keyClick(box, Qt::Key(key)); });
                QTEST(int(box->icon()), "boxIcon");
                QCOMPARE(lookOf(box), 'T' + (boxStyle == "upgrading" ? "D ok" : look));
                QCOMPARE(box->styleSheet(), getStyleSheet("component." + boxStyle + "_message_box"));
                for (QAbstractButton* button : box->buttons()) {
                    QCOMPARE(button->styleSheet(),
                        getStyleSheet(box->buttons().indexOf(button) == 1 ? "component.cancel_button"
                                                                          : "component.apply_button"));
                }
            });
            const int boxAnswer = show(nullptr);
            const bool yes = key == Qt::Key_Return;
            QCOMPARE(overWindow, boxStyle != "confirm" ? -1 : yes ? sheets::ok : sheets::discard);
            QCOMPARE(boxAnswer, boxStyle != "confirm" ? -1 : yes ? sheets::ok : int(QMessageBox::Cancel));
        }
    }

    /** With the seconds passed by hand, and the last one by itself. */
    void countdown()
    {
        for (const auto& [seconds, button] : { std::pair(3, QMessageBox::Ok), { 1, QMessageBox::Discard } }) {
            VantCountdownMessageBox box(seconds);
            if (seconds == 1) {
                box.setDefaultButton(button);
            }
            QSignalSpy finished(&box, SIGNAL(finished(int)));
            QCOMPARE(textsOf(box.buttons()), QString("ok(%1)|cancel").arg(seconds));
            QElapsedTimer elapsed;
            elapsed.start();
            box.open();
            for (int left = seconds - 1; left >= 0; --left) {
                QCOMPARE(textsOf(box.buttons()), QString("ok(%1)|cancel").arg(left));
                QVERIFY(finished.isEmpty());
                QVERIFY(seconds == 1 || QMetaObject::invokeMethod(&box, "slotTick"));
            }
            QTRY_COMPARE(finished, QList<QList<QVariant>> { { int(button) } });
            if (seconds == 1) {
                QVERIFY2(elapsed.elapsed() >= 900, qPrintable(QString::number(elapsed.elapsed())));
                QTest::qWait(1200); // no second goes by after that
                QCOMPARE(finished.size(), 1);
            }
        }
    }
};

QTEST_MAIN(MessageFunctionsTest)

#include "message-functions-test.moc"
