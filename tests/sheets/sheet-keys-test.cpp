#include "sheets/covered-window.h"

#include <QAccessible>
#include <QShortcut>
#include <QtTest>

/** Which keys answer a sheet, where the focus goes, and what a screen reader hears. */
class SheetKeysTest : public SheetTest
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();

    void messageTabs();
    void nothingTakesFocus();
    void inputTabs();

    void shortcuts_data() { sheets::addBothSheets(); }

    void shortcuts();
    void messageIsRead();
};

namespace {

const int ok = QMessageBox::Ok;
const int discard = QMessageBox::Discard;
const int stays = -1;

void clearFocus()
{
    if (QApplication::focusWidget()) {
        QApplication::focusWidget()->clearFocus();
    }
}

QByteArray focused(const CoveredWindow& window, const QWidget& sheet)
{
    const auto labels = sheets::labels(&sheet);
    const QHash<const QWidget*, QByteArray> names { { window.field, "below" }, { window.button, "lowest" },
        { labels.first(), "text" }, { labels.value(2), "more" },
        { sheets::button(&sheet, QMessageBox::Ok), "Ok" },
        { sheets::button(&sheet, QMessageBox::Discard), "Discard" },
        { sheet.findChild<QLineEdit*>(), "field" }, { nullptr, "none" } };
    return names.value(QApplication::focusWidget(), "stranger");
}

/** Where a key leads, step by step. */
QByteArray walk(CoveredWindow& window, const QWidget& sheet, int key, int steps)
{
    QByteArrayList places;
    for (int i = 0; i < steps; ++i) {
        window.press(key);
        places += focused(window, sheet);
    }
    return places.join(' ');
}

QString textOf(QObject* object, QAccessible::Text which = QAccessible::Name)
{
    return QAccessible::queryAccessibleInterface(object)->text(which);
}

} // namespace

void SheetKeysTest::answers_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("focus");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("answer");
    const auto row = [](const char* kind, const char* focus, int key, int answer) {
        QTest::addRow("%s, %s, %s", kind, focus, qPrintable(QKeySequence(key).toString()))
            << QByteArray(kind) << QByteArray(focus) << key << answer;
    };
    for (const char* kind : { "question", "input" }) {
        for (const char* focus : { "none", "Discard" }) {
            row(kind, focus, Qt::Key_Escape, discard);
            for (const Qt::Key key : { Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space }) {
                row(kind, focus, key, qstrcmp(focus, "Discard") == 0 ? discard : ok);
            }
            row(kind, focus, Qt::Key_A, stays);
            row(kind, focus, Qt::Key_F1, stays);
        }
    }
    row("question", "text", Qt::Key_Space, ok);
    row("information", "text", Qt::Key_Escape, stays);
    row("information", "text", Qt::Key_Return, ok);
    for (const Qt::Key key :
        { Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Backtab }) {
        row("processing", "none", key, stays);
        row("processing", "text", key, stays);
    }
    row("input", "field", Qt::Key_Escape, discard);
    row("input", "field", Qt::Key_Return, ok);
    row("input", "field", Qt::Key_F1, stays);
    row("input", "field", Qt::Key_Space, stays);
}

void SheetKeysTest::answers()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, focus);
    QFETCH(int, key);
    CoveredWindow window;
    VantSheet* sheet = sheets::make(kind == "input", &window);
    if (kind == "information" || kind == "processing") {
        static_cast<VantMessageSheet*>(sheet)->setMessageType(
            kind == "information" ? VantMessageSheet::Information : VantMessageSheet::Processing);
    }
    sheet->showSheet();
    clearFocus();
    for (auto* widget : sheet->findChildren<QWidget*>()) {
        if (focus != "none" && focused(window, *sheet) != focus) {
            widget->setFocus();
        }
    }
    QCOMPARE(focused(window, *sheet), focus);

    QSignalSpy finished(sheet, SIGNAL(finished(int)));
    window.press(key);
    QTEST(finished.isEmpty() ? stays : finished.takeFirst().first().toInt(), "answer");
    QVERIFY(finished.isEmpty());
    QCOMPARE(window.keys, QList<int>());
    QCOMPARE(window.field->text(), QString());
    if (auto* field = sheet->findChild<QLineEdit*>()) {
        QCOMPARE(field->text(), QString(focus == "field" && key == Qt::Key_Space ? " " : ""));
    }
}

void SheetKeysTest::messageTabs()
{
    CoveredWindow window;
    window.field->setFocus();
    VantMessageSheet sheet(VantMessageSheet::Question, "Text", &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheet(); // which leaves the focus where it is
    QCOMPARE(focused(window, sheet), QByteArray("below"));
    clearFocus();
    QCOMPARE(walk(window, sheet, Qt::Key_Backtab, 1), QByteArray("Discard"));
    clearFocus();
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 1), QByteArray("text"));

    sheet.setInformativeText("More");
    QCoreApplication::processEvents();
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 5), QByteArray("more Ok Discard text more"));
    QCOMPARE(walk(window, sheet, Qt::Key_Backtab, 5), QByteArray("text Discard Ok more text"));
    sheets::labels(&sheet)[2]->setFocus();
    sheet.setInformativeText({}); // goes with the focus in it
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!window.focusWidget() || sheet.isAncestorOf(window.focusWidget()));
    sheets::labels(&sheet).first()->setFocus();
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 3), QByteArray("Ok Discard text"));

    sheet.button(QMessageBox::Discard)->setFocus();
    sheet.setMessageType(VantMessageSheet::Processing); // whose buttons are gone
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 2), QByteArray("text text"));
    sheet.setMessageType(VantMessageSheet::Upgrading);
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 3), QByteArray("Ok Discard text"));
    sheet.setMessageType(VantMessageSheet::Warning);
    QCOMPARE(walk(window, sheet, Qt::Key_Backtab, 2), QByteArray("Ok text"));
    window.press(Qt::Key_Return);
    QCOMPARE(window.remains(), QString());
}

/** In the window, to which the focus could go when a sheet closes, nor in the sheet. */
void SheetKeysTest::nothingTakesFocus()
{
    CoveredWindow window;
    window.field->setFocusPolicy(Qt::NoFocus);
    window.button->setFocusPolicy(Qt::NoFocus);
    clearFocus();
    for (const bool input : { false, true }) {
        for (const int key :
            std::initializer_list<int> { Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, 0 }) { // or by mouse
            const QPointer<VantSheet> asked = sheets::make(input, &window);
            QSignalSpy finished(asked, SIGNAL(finished(int)));
            sheets::soon(asked, [&] {
                QCOMPARE(walk(window, *asked, Qt::Key_Tab, 2), QByteArray("Ok Discard"));
                key ? window.press(key) : window.click(sheets::button(asked, QMessageBox::Discard));
                window.press(Qt::Key_Space); // to nobody who is closed
            });
            QCOMPARE(sheets::exec(asked), discard);
            QCOMPARE(finished.size(), 1);
            QVERIFY(!QApplication::focusWidget());
            delete asked;
        }
    }
}

void SheetKeysTest::inputTabs()
{
    CoveredWindow window;
    window.field->setFocus();
    VantInputSheet sheet("Text", &window);
    VantMask::createMask(&sheet, &window);
    sheet.showSheet();
    QCOMPARE(focused(window, sheet), QByteArray("field"));
    QCOMPARE(textOf(&sheet) + textOf(sheet.getLineEdit()), QString("TextText"));
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 4), QByteArray("Ok Discard field Ok"));
    QCOMPARE(walk(window, sheet, Qt::Key_Backtab, 3), QByteArray("field Discard Ok"));
    clearFocus();
    QCOMPARE(walk(window, sheet, Qt::Key_Tab, 1), QByteArray("none"));
    sheet.getLineEdit()->setFocus();
    sheet.quit();
    QCOMPARE(focused(window, sheet), QByteArray("below"));
}

void SheetKeysTest::shortcuts()
{
    QFETCH(bool, input);
    CoveredWindow window;
    window.button->setText("&Below");
    QShortcut save(QKeySequence(Qt::CTRL | Qt::Key_S), &window);
    QSignalSpy saved(&save, SIGNAL(activated()));
    const auto pressBoth = [&window] {
        QTest::keyClick(window.windowHandle(), Qt::Key_S, Qt::ControlModifier);
        QTest::keyClick(window.windowHandle(), Qt::Key_B, Qt::AltModifier);
    };
    VantSheet* sheet = sheets::make(input, &window);
    sheets::button(sheet, QMessageBox::Ok)->setText("&Own");
    sheets::button(sheet, QMessageBox::Discard)->setDisabled(true);
    sheets::button(sheet, QMessageBox::Discard)->setText("&Back");
    QSignalSpy finished(sheet, SIGNAL(finished(int)));
    sheet->showSheet();
    pressBoth();
    QCOMPARE(saved.size() + window.clicks, 0);
    window.button->setText("Bel&ow"); // which is the sheet's own as well
    QTest::keyClick(window.windowHandle(), Qt::Key_O, Qt::AltModifier);
    QTRY_COMPARE(finished, QList<QList<QVariant>> { { ok } });
    window.button->setText("&Below");
    pressBoth();
    QTRY_COMPARE(saved.size() + window.clicks, 2);
}

/** What a screen reader finds from the window down, and can press. */
void SheetKeysTest::messageIsRead()
{
    CoveredWindow window;
    VantMessageSheet sheet(VantMessageSheet::Question, "Delete <b>3</b> files?", "Gone<br>then.", &window);
    VantMask::createMask(&sheet, &window);
    sheets::soon(&sheet, [&] {
        auto closing = qScopeGuard([&] { sheet.quit(); });
        const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&sheet);
        QCOMPARE(seen->role(), QAccessible::Dialog);
        QVERIFY(seen->state().modal && !seen->state().invisible);
        QCOMPARE(textOf(&sheet), QString("Delete 3 files?"));
        QCOMPARE(textOf(&sheet, QAccessible::Description), QString("Gone\nthen."));
        QCOMPARE(textOf(sheets::labels(&sheet)[2]), QString("Gone\nthen."));
        // What the reader comes to from the window down.
        const auto* focus = QAccessible::queryAccessibleInterface(&window)->focusChild();
        QCOMPARE(focus->object(), sheets::labels(&sheet)[0]);
        QCOMPARE(focus->parent()->object(), &sheet);
        QCOMPARE(seen->parent()->parent()->object(), &window);
        sheet.setText("2 %");
        sheet.setInformativeText({});
        QCOMPARE(textOf(&sheet) + textOf(&sheet, QAccessible::Description), QString("2 %"));
        auto* back = QAccessible::queryAccessibleInterface(sheet.button(QMessageBox::Discard));
        QCOMPARE(back->text(QAccessible::Name), QString("Back"));
        closing.dismiss();
        back->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    });
    QCOMPARE(sheet.exec(), discard);
}

QTEST_MAIN(SheetKeysTest)

#include "sheet-keys-test.moc"
