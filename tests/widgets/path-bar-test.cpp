#include "support/display-scale.h"
#include "support/pointer.h"
#include "support/themed-test.h"

using displayscale::px;

namespace {

const QString fiveNames = "hidden folder/hidden too/partly/visible name/last";
const QString threeNames = "first folder/second folder/third folder";

/** A window with the bar between two fields. */
struct Window : QWidget
{
    explicit Window(int width, const QString& path)
    {
        auto* layout = new QVBoxLayout(this);
        for (QWidget* widget : QWidgetList { before, bar, after }) {
            layout->addWidget(widget);
        }
        setViewWidth(width);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
        bar->refresh(path);
    }

    void setViewWidth(int width) const
    {
        bar->setFixedWidth(width + 2 * bar->frameWidth());
        layout()->activate();
    }

    /** Of the five names the first two are hidden then, and the third partly. */
    void showEndOfFiveNames() const
    {
        setViewWidth(
            bar->columnViewportPosition(8) + bar->columnWidth(8) - bar->columnViewportPosition(4) - 10);
        bar->refresh(fiveNames);
    }

    QPushButton* button(int column) const { return qobject_cast<QPushButton*>(bar->cellWidget(0, column)); }

    int scrolled() const { return bar->horizontalScrollBar()->value(); }

    QLineEdit* before = new QLineEdit;
    QPointer<VantButtonPath> bar = new VantButtonPath;
    QLineEdit* after = new QLineEdit;
    QToolButton* folders = bar->findChild<QToolButton*>();
};

} // namespace

class PathBarTest : public ThemedTest
{
    Q_OBJECT

private Q_SLOTS:

    void row()
    {
        const Window window(400, "another/path/to/begin/with");
        QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
        for (const QString path : { "////", "/a//b/", "C:/a\\b", "R&D/A&&B/&&&/ a b" }) {
            window.bar->refresh(path);
            const QStringList names = path.split('/', Qt::SkipEmptyParts);
            QCOMPARE(window.bar->columnCount(), qMax(0, 2 * names.size() - 1));
            for (int column = 0; column < window.bar->columnCount(); ++column) {
                const QString name = names.at(column / 2);
                QPushButton* button = window.button(column);
                const bool isArrow = column % 2 == 1;
                const int textWidth = QFontMetrics(QPushButton().font()).horizontalAdvance(name);
                QCOMPARE(button->text(), isArrow ? QString() : QString(name).replace("&", "&&"));
                QCOMPARE(button->width(), px(isArrow ? 6 : textWidth + 16));
                QCOMPARE(window.bar->columnWidth(column), button->width());
                button->click();
                const QString told = names.mid(0, column / 2 + 1).join('/');
                QCOMPARE(spy.value(0).value(0).toString(), isArrow ? QString() : told);
                QCOMPARE(window.bar->getPath(column), isArrow ? told + '/' : told);
                spy.clear();
            }
        }
        QCOMPARE(window.bar->getPath(-1), QString());
    }

    void hiddenFolders()
    {
        const QStringList names { "R&D 1", "R&D 2", "R&D 3", "R&D 4", "R&D 5" };
        const Window window(400, QString(500, 'w'));
        QCOMPARE(window.scrolled(), window.bar->columnWidth(0) - 400); // at once
        window.bar->refresh(names.join('/'));
        const int step = window.bar->columnWidth(0) + px(6);
        QMenu* menu = window.folders->menu();
        QCOMPARE(menu->styleSheet(), getStyleSheet("component.menu"));
        QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
        // The pixels that cannot be shown, and the number of folders listed.
        const QPair<int, int> rows[] { { 0, 0 }, { 1, 1 }, { step - px(6) - 1, 1 }, { step - px(6), 2 },
            { 4 * step + 10, 5 }, { -10, 0 } };
        for (const auto& [hidden, listed] : rows) {
            window.setViewWidth(names.size() * step - px(6) - hidden);
            window.bar->refresh(names.join('/'));
            window.bar->updateColumnSize(); // a second look lists no folder twice
            QCOMPARE(window.scrolled(), qMax(0, hidden));
            QCOMPARE(window.folders->isVisible(), listed > 0);
            QCOMPARE(menu->actions().size(), listed);
            for (int index = 0; index < listed; ++index) {
                QCOMPARE(menu->actions().at(index)->text(), QString(names.at(index)).replace("&", "&&"));
                menu->actions().at(index)->trigger();
                QCOMPARE(spy.takeFirst().at(0).toString(), names.mid(0, index + 1).join('/'));
            }
        }
    }

    // The slot of a click runs a loop in which the next one comes; its slot does what an application does.
    void clicks()
    {
        for (const int way : { 0, 1, 2, 3 }) {
            const bool fromMenu = way % 2 == 1;
            const bool deletesBar = way >= 2;
            const Window window(150, threeNames);
            QList<QPointer<QObject>> relays { window.folders->menu() };
            for (QSignalMapper* mapper : window.bar->findChildren<QSignalMapper*>()) {
                relays << mapper;
            }
            QStringList told;
            connect(window.bar, &VantButtonPath::sigUpdatePath, this, [&](const QString& path) {
                told << path;
                QEventLoop loop;
                QTimer::singleShot(20, &loop, &QEventLoop::quit);
                QTimer::singleShot(0, &loop, [&] {
                    told.size() == 1 ? window.button(0)->click()
                        : deletesBar ? delete window.bar
                                     : window.bar->refresh(path);
                });
                loop.exec();
                QCOMPARE(relays.count(nullptr), 0);
            });
            fromMenu ? window.folders->menu()->actions().at(1)->trigger() : window.button(2)->click();
            QCOMPARE(told.join(' '), QString("first folder/second folder first folder"));
            if (deletesBar) {
                QTRY_COMPARE(relays.count(nullptr), 3);
            } else {
                QTRY_COMPARE(window.bar->findChildren<QPushButton*>().size(), 1);
                window.button(0)->click();
                QCOMPARE(told.size(), 3);
            }
        }
    }

    void focus()
    {
        const Window window(400, fiveNames);
        connect(window.bar, SIGNAL(sigUpdatePath(QString)), window.bar, SLOT(slotUpdatePath(QString)));
        window.showEndOfFiveNames();
        window.before->setFocus();
        for (QWidget* stop : QWidgetList {
                 window.folders, window.button(4), window.button(6), window.button(8), window.after }) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            QCOMPARE(window.focusWidget(), stop);
        }
        QTest::keyClick(window.after, Qt::Key_Backtab);
        QTest::keyClick(window.button(8), Qt::Key_Left);
        QCOMPARE(window.focusWidget(), window.button(6));

        // A row that is built anew keeps it, and it visits no other widget on its way.
        int lost = 0;
        const QObject listener; // hears no more of the window's end
        connect(qApp, &QApplication::focusChanged, &listener,
            [&](QWidget*, QWidget* now) { lost += now == window.before || now == window.after ? 1 : 0; });
        QTest::keyClick(window.button(6), Qt::Key_Return);
        QCOMPARE(window.bar->columnCount(), 7);
        QCOMPARE(window.focusWidget(), window.button(6));
        window.folders->setFocus();
        window.folders->menu()->actions().at(1)->trigger();
        QCOMPARE(window.bar->columnCount(), 3);
        QCOMPARE(window.focusWidget(), window.button(2));

        // Through an empty row, and from a name that is hidden then to the menu that it is in.
        window.bar->refresh(QString());
        window.bar->refresh("first");
        QCOMPARE(window.focusWidget(), window.button(0));
        window.bar->refresh(fiveNames);
        QCOMPARE(window.focusWidget(), window.folders);
        window.bar->refresh("a/b");
        QCOMPARE(window.focusWidget(), window.button(2));
        QCOMPARE(lost, 0);

        window.after->setFocus();
        window.bar->refresh("first");
        QCOMPARE(window.focusWidget(), window.after);
    }

    // The table below the row has a will of its own: it edits what is pointed at, and follows the keys.
    void pointerAndStrayKeys()
    {
        const Window window(400, fiveNames);
        window.showEndOfFiveNames();
        const int end = window.scrolled();
        window.before->setFocus();
        for (const int column : { 4, 5, 8 }) {
            QTest::mouseMove(window.button(column));
            QCOMPARE(window.focusWidget(), window.before);
            QCOMPARE(window.scrolled(), end);
        }
        window.button(4)->setFocus();
        for (const Qt::Key key : { Qt::Key_Left, Qt::Key_Home, Qt::Key_PageUp }) {
            QTest::keyClick(window.button(4), key);
            QCOMPARE(window.focusWidget(), window.button(4));
            QCOMPARE(window.scrolled(), end);
        }
        // A row that comes then is at its end, even if the name that has the focus begins before it.
        window.bar->refresh(QString(100, 'm'));
        QCoreApplication::processEvents();
        QCOMPARE(window.focusWidget(), window.button(0));
        QCOMPARE(window.scrolled(), window.bar->horizontalScrollBar()->maximum());
    }

    // A field that is left shows what was typed, by which the name that is to get the focus goes.
    void refreshWhileFocusMoves()
    {
        const Window window(600, threeNames);
        connect(window.before, &QLineEdit::editingFinished, window.bar,
            [&window] { window.bar->refresh("typed/by hand"); });
        QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
        for (const int column : { 0, 2 }) {
            window.before->setFocus();
            QTest::keyClick(window.before, Qt::Key_X);
            column == 0 ? QTest::keyClick(window.before, Qt::Key_Tab) : pointer::press(window.button(column));
            pointer::release(window.button(column));
            QCOMPARE(window.bar->columnCount(), 3);
            QCOMPARE(window.focusWidget(), window.button(column));
        }
        QCOMPARE(spy.count(), 0); // what was clicked is gone
    }

    void changesFromOutside()
    {
        const Window window(150, threeNames);
        const QPointer<QMenu> menu = window.folders->menu();
        window.bar->clear();
        window.bar->updateColumnSize();
        for (const bool deletesBar : { false, true }) {
            window.bar->refresh(threeNames);
            QTimer::singleShot(0, this, [&] {
                QVERIFY(QApplication::activePopupWidget());
                deletesBar ? delete window.bar : window.bar->refresh(QString());
                QVERIFY(!QApplication::activePopupWidget());
            });
            QTest::keyClick(window.folders, Qt::Key_Space);
        }
        QVERIFY(!window.bar && !menu);
    }
};

QTEST_MAIN(PathBarTest)

#include "path-bar-test.moc"
