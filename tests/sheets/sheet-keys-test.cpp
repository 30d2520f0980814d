#include "sheets/covered-window.h"

#include <QAccessible>
#include <QShortcut>
#include <QtTest>

using namespace sheets;

namespace {

const int stays = -1;

void clearFocus()
{
    if (QApplication::focusWidget()) {
        QApplication::focusWidget()->clearFocus();
    }
}

int keyOf(const QString& name)
{
    return QKeySequence(name)[0];
}

QString focused(const CoveredWindow& window, VantSheet& sheet)
{
    const QHash<const QWidget*, const char*> names { { window.field, "below" },
        { labels(&sheet).first(), "text" }, { labels(&sheet).value(2), "more" }, { button(&sheet, ok), "Ok" },
        { button(&sheet, discard), "Discard" }, { sheet.findChild<QLineEdit*>(), "field" },
        { nullptr, "none" } };
    return names.value(QApplication::focusWidget(), "stranger");
}

/** Where keys lead, step by step. */
QString walk(CoveredWindow& window, VantSheet& sheet, const char* keys)
{
    QStringList places;
    for (const QString& key : QString(keys).split(' ')) {
        window.press(keyOf(key));
        places += focused(window, sheet);
    }
    return places.join(' ');
}

QString textOf(QObject* object, QAccessible::Text which = QAccessible::Name)
{
    return QAccessible::queryAccessibleInterface(object)->text(which);
}

} // namespace

/** Which keys answer a sheet, where the focus goes, and what a screen reader hears. */
class SheetKeysTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void answers_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("focus");
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("answer");
        const auto row = [](const char* kind, const char* focus, const char* keys, int answer) {
            for (const QString& key : QString(keys).split(' ')) {
                QTest::addRow("%s, %s, %s", kind, focus, qPrintable(key)) << kind << focus << key << answer;
            }
        };
        for (const char* kind : { "question", "input" }) {
            row(kind, "none", "Return Enter Space", ok);
            row(kind, "none", "Esc", discard);
            row(kind, "none", "A F1", stays);
            row(kind, "Discard", "Esc Return Enter Space", discard);
        }
        row("question", "text", "Space", ok);
        row("information", "text", "Return", ok);
        row("information", "text", "Esc", stays);
        row("processing", "none", "Esc Return Space Tab Backtab", stays);
        row("input", "field", "Return", ok);
        row("input", "field", "Esc", discard);
        row("input", "field", "F1 Space", stays);
    }

    void answers()
    {
        QFETCH(QString, kind);
        QFETCH(QString, focus);
        QFETCH(QString, key);
        QFETCH(int, answer);
        CoveredWindow window;
        VantSheet* sheet = make(kind == "input", &window);
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
        window.press(keyOf(key));
        QCOMPARE(finished.isEmpty() ? stays : finished.takeFirst().first().toInt(), answer);
        QVERIFY(finished.isEmpty());
        QVERIFY(answer != stays || key.endsWith("ab") || focused(window, *sheet) == focus);
        QCOMPARE(window.keys, QList<int>());
        QCOMPARE(window.field->text(), QString());
        if (auto* input = qobject_cast<VantInputSheet*>(sheet)) {
            QCOMPARE(input->getContent(), QString(focus == "field" && key == "Space" ? " " : ""));
        }
    }

    void messageTabs()
    {
        CoveredWindow window;
        window.field->setFocus();
        VantMessageSheet sheet(VantMessageSheet::Question, "Text", &window);
        VantMask::createMask(&sheet, &window);
        sheet.findChild<QDialogButtonBox*>()->setFocusPolicy(Qt::StrongFocus); // which it loses when it shows
        sheet.button(QMessageBox::Ok)->setFocusPolicy(Qt::NoFocus); // the other way round
        sheet.showSheet(); // which leaves the focus where it is
        QCOMPARE(focused(window, sheet), QString("below"));
        clearFocus();
        QCOMPARE(walk(window, sheet, "Backtab"), QString("Discard"));
        clearFocus();
        QCOMPARE(walk(window, sheet, "Tab"), QString("text"));

        sheet.setInformativeText("More");
        QCoreApplication::processEvents();
        QCOMPARE(walk(window, sheet, "Tab Tab Tab Tab Tab"), QString("more Ok Discard text more"));
        QCOMPARE(walk(window, sheet, "Backtab Backtab Backtab Backtab"), QString("text Discard Ok more"));
        sheet.setInformativeText({}); // goes with the focus in it
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!window.focusWidget() || sheet.isAncestorOf(window.focusWidget()));
        labels(&sheet).first()->setFocus();
        sheet.button(QMessageBox::Ok)->setDisabled(true);
        QCOMPARE(walk(window, sheet, "Tab Tab"), QString("Discard text"));

        button(&sheet, discard)->setFocus();
        sheet.setMessageType(VantMessageSheet::Processing); // whose buttons are gone
        QCOMPARE(walk(window, sheet, "Tab Tab"), QString("text text"));
        sheet.setMessageType(VantMessageSheet::Warning);
        QCOMPARE(walk(window, sheet, "Backtab Backtab"), QString("Ok text"));
        window.press(Qt::Key_Return);
        QCOMPARE(window.remains(), QString());
    }

    void inputTabs()
    {
        CoveredWindow window;
        window.field->setFocus();
        VantInputSheet sheet("Text", &window);
        VantMask::createMask(&sheet, &window);
        sheet.showSheet();
        QCOMPARE(focused(window, sheet), QString("field"));
        QCOMPARE(textOf(&sheet) + textOf(sheet.getLineEdit()), QString("TextText"));
        QCOMPARE(walk(window, sheet, "Tab Tab Tab Backtab"), QString("Ok Discard field Discard"));
        clearFocus();
        QCOMPARE(walk(window, sheet, "Tab"), QString("none"));
        sheet.getLineEdit()->setFocus();
        sheet.quit();
        QCOMPARE(focused(window, sheet), QString("below"));
    }

    void nothingTakesFocus_data() { addRows({ "Space", "Return", "Esc", "click" }); }

    /** In the window, to which the focus could go when a sheet closes, nor in the sheet. */
    void nothingTakesFocus()
    {
        QFETCH(bool, input);
        QFETCH(QByteArray, way);
        CoveredWindow window;
        window.field->setFocusPolicy(Qt::NoFocus);
        window.button->setFocusPolicy(Qt::NoFocus);
        clearFocus();
        VantMessageSheet bare(VantMessageSheet::Processing, &window); // where there is nowhere to go either
        bare.showSheet();
        QCOMPARE(walk(window, bare, "Tab"), QString("none"));
        bare.quit();
        VantSheet* sheet = make(input, &window);
        QSignalSpy finished(sheet, SIGNAL(finished(int)));
        soon(sheet, [&] {
            QCOMPARE(walk(window, *sheet, "Tab Tab"), QString("Ok Discard"));
            way == "click" ? window.click(button(sheet, discard)) : window.press(keyOf(way));
            window.press(Qt::Key_Space); // to nobody who is closed
        });
        QCOMPARE(exec(sheet), discard);
        QCOMPARE(finished.size(), 1);
        QVERIFY(!QApplication::focusWidget());
    }

    void shortcuts_data() { addRows(); }

    void shortcuts()
    {
        QFETCH(bool, input);
        CoveredWindow other;
        CoveredWindow window;
        QShortcut save(QKeySequence("Ctrl+S"), &window);
        QSignalSpy saved(&save, SIGNAL(activated()));
        window.button->setText("&Below");
        const auto pressBoth = [&window] {
            window.press(keyOf("Ctrl+S"));
            window.press(keyOf("Alt+B"));
        };
        VantSheet* sheet = make(input, &window);
        button(sheet, ok)->setText("&Own");
        button(sheet, discard)->setDisabled(true);
        button(sheet, discard)->setText("&Back");
        QSignalSpy finished(sheet, SIGNAL(finished(int)));
        sheet->showSheet();
        pressBoth();
        QCOMPARE(saved.size() + window.clicks, 0);
        QVERIFY(other.open());
        other.button->setText("&Other"); // what the sheet has as well is that window's own there
        other.press(keyOf("Alt+O"));
        QTRY_COMPARE(other.clicks, 1);
        other.button->setText("N&ext");
        other.press(keyOf("Alt+E"));
        QTRY_COMPARE(other.clicks, 2);
        QVERIFY(window.open() && finished.isEmpty());
        window.button->setText("Bel&ow"); // which is the sheet's own as well
        window.press(keyOf("Alt+O"));
        QTRY_COMPARE(finished, QList<QList<QVariant>> { { ok } });
        window.button->setText("&Below");
        pressBoth();
        QTRY_COMPARE(saved.size() + window.clicks, 2);
    }

    /** What a screen reader finds from the window down, and can press. */
    void messageIsRead()
    {
        CoveredWindow window;
        VantMessageSheet sheet(
            VantMessageSheet::Question, "Delete <b>3</b> files?", "Gone<br>then.", &window);
        VantMask::createMask(&sheet, &window);
        soon(&sheet, [&] {
            auto closing = qScopeGuard([&] { sheet.quit(); });
            const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&sheet);
            QCOMPARE(seen->role(), QAccessible::Dialog);
            QVERIFY(seen->state().modal && !seen->state().invisible);
            QCOMPARE(textOf(&sheet), QString("Delete 3 files?"));
            QCOMPARE(textOf(&sheet, QAccessible::Description), QString("Gone\nthen."));
            QCOMPARE(textOf(labels(&sheet)[2]), QString("Gone\nthen."));
            // What the reader comes to from the window down.
            const auto* focus = QAccessible::queryAccessibleInterface(&window)->focusChild();
            QCOMPARE(focus->object(), labels(&sheet)[0]);
            QCOMPARE(focus->parent()->object(), &sheet);
            QCOMPARE(seen->parent()->parent()->object(), &window);
            sheet.setText("2 %");
            sheet.setInformativeText({});
            QCOMPARE(textOf(&sheet) + textOf(&sheet, QAccessible::Description), QString("2 %"));
            auto* back = QAccessible::queryAccessibleInterface(button(&sheet, discard));
            closing.dismiss();
            back->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        });
        QCOMPARE(sheet.exec(), discard);
    }
};

QTEST_MAIN(SheetKeysTest)

#include "sheet-keys-test.moc"
