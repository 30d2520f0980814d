#include "support/display-scale.h"
#include "support/guarded-test.h"
#include "support/pointer.h"
#include "theme/default-theme.h"

#include <vantkit-qt/widgets/vant-button-path.h>

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalMapper>
#include <QTemporaryDir>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

class PathBarTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { defaulttheme::load(m_user.path()); }

    void row_data();
    void row();
    void hiddenFolders_data();
    void hiddenFolders();
    void clicks();
    void focus();
    void pointerAndStrayKeys();
    void refreshWhileFocusMoves();
    void tableEmptiedByHand();
    void changesUnderOpenMenu();

private:
    QTemporaryDir m_user;
};

namespace {

int designSize(int n)
{
    return displayscale::dpi() * n / 96;
}

/** A window with the bar between two fields. */
struct Window : QWidget
{
    explicit Window(int width = 400)
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(before);
        layout->addWidget(bar);
        layout->addWidget(after);
        setViewWidth(width);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }

    void setViewWidth(int width) const
    {
        bar->setFixedWidth(width + 2 * bar->frameWidth());
        layout()->activate();
    }

    QPushButton* button(int column) const { return qobject_cast<QPushButton*>(bar->cellWidget(0, column)); }

    int scrolled() const { return bar->horizontalScrollBar()->value(); }

    QToolButton* folderButton() const { return bar->findChild<QToolButton*>(); }

    QStringList menuTexts() const
    {
        QStringList texts;
        const QList<QAction*> actions = folderButton()->menu()->actions();
        for (const QAction* action : actions) {
            texts << action->text();
        }
        return texts;
    }

    QLineEdit* before = new QLineEdit;
    QPointer<VantButtonPath> bar = new VantButtonPath;
    QLineEdit* after = new QLineEdit;
};

/** Opens the menu from the keyboard and chooses its entry number @p index. */
void chooseFromMenu(QToolButton* opener, int index)
{
    QTimer::singleShot(0, opener, [index] {
        QWidget* menu = QApplication::activePopupWidget();
        QVERIFY(qobject_cast<QMenu*>(menu));
        for (int count = 0; count <= index; ++count) {
            QTest::keyClick(menu, Qt::Key_Down);
        }
        QTest::keyClick(menu, Qt::Key_Return);
    });
    opener->setFocus(Qt::TabFocusReason);
    QTest::keyClick(opener, Qt::Key_Space);
}

/** Runs an event loop that does @p deed and goes round a few times before it ends. */
void runLoop(const std::function<void()>& deed)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, deed);
    QTimer::singleShot(20, &loop, &QEventLoop::quit);
    loop.exec();
}

const QString fiveNames = QStringLiteral("hidden folder/hidden too/partly/visible name/last");
const QString threeNames = QStringLiteral("first folder/second folder/third folder");

/** The row of the five names, of which the first two are hidden and the third partly. */
void showEndOf(const Window& window)
{
    window.bar->refresh(fiveNames);
    window.setViewWidth(window.bar->columnViewportPosition(8) + window.bar->columnWidth(8)
        - window.bar->columnViewportPosition(4) - 10);
    window.bar->refresh(fiveNames);
}

} // namespace

void PathBarTest::row_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("told");
    const QString deep = QStringLiteral("part/").repeated(300);
    QTest::newRow("separators") << QStringLiteral("////") << QString();
    QTest::newRow("separators around") << QStringLiteral("/a//b/") << QStringLiteral("a/b");
    QTest::newRow("ampersands") << QStringLiteral("R&D/A&&B/&&&/ a b") << QStringLiteral("R&D/A&&B/&&&/ a b");
    QTest::newRow("300 parts") << deep << deep.chopped(1);
}

void PathBarTest::row()
{
    QFETCH(QString, path);
    QFETCH(QString, told);

    const Window window;
    QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
    window.bar->refresh(QStringLiteral("another/path/to/begin/with"));
    window.bar->refresh(path);
    const QStringList names = told.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    QCOMPARE(window.bar->columnCount(), qMax(0, 2 * names.size() - 1));
    QCOMPARE(window.bar->height(), designSize(28));
    int rowWidth = 0;
    for (int i = 0; i < names.size(); ++i) {
        const QPushButton* button = window.button(2 * i);
        const int textWidth = QFontMetrics(QPushButton().font()).horizontalAdvance(names.at(i));
        QCOMPARE(button->text(), QString(names.at(i)).replace(QLatin1Char('&'), QLatin1String("&&")));
        QCOMPARE(button->size(), QSize(designSize(textWidth + 16), designSize(26)));
        QCOMPARE(window.bar->columnWidth(2 * i), button->width());
        QCOMPARE(window.bar->getPath(2 * i), QStringList(names.mid(0, i + 1)).join(QLatin1Char('/')));
        rowWidth += button->width();
    }
    for (int column = 1; column < window.bar->columnCount(); column += 2) {
        QCOMPARE(window.bar->columnWidth(column), designSize(6));
        QCOMPARE(window.button(column)->size(), QSize(designSize(6), designSize(28)));
        QVERIFY(!window.button(column)->icon().isNull());
        window.button(column)->click();
        rowWidth += designSize(6);
    }
    QCOMPARE(window.folderButton()->isVisible(), rowWidth > 400);
    QCOMPARE(spy.count(), 0);
}

void PathBarTest::hiddenFolders_data()
{
    // What cannot be shown, in whole widths of a name and an arrow and pixels beside, and the folders listed.
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("listed");
    QTest::newRow("exactly fits") << 0 << 0 << 0;
    QTest::newRow("one pixel short") << 0 << 1 << 1;
    QTest::newRow("first hidden, arrow not") << 1 << -designSize(6) << 2;
    QTest::newRow("last pixel of first not hidden") << 1 << -designSize(6) - 1 << 1;
    QTest::newRow("last one alone") << 4 << 10 << 5;
}

void PathBarTest::hiddenFolders()
{
    QFETCH(int, steps);
    QFETCH(int, pixels);
    QFETCH(int, listed);
    const Window window;
    window.bar->refresh(QString(500, QLatin1Char('w')));
    QCOMPARE(window.scrolled(), window.bar->columnWidth(0) - 400); // at once
    QStringList names;
    QStringList texts;
    for (int number = 1; number <= 5; ++number) {
        names << QStringLiteral("R&D %1").arg(number);
        texts << QStringLiteral("R&&D %1").arg(number);
    }
    const QString path = names.join(QLatin1Char('/'));
    window.bar->refresh(path);
    const int step = window.bar->columnWidth(0) + designSize(6);
    const int hidden = steps * step + pixels;
    window.setViewWidth(names.size() * step - designSize(6) - hidden);
    window.bar->refresh(path);
    QCOMPARE(window.scrolled(), hidden);
    QCOMPARE(window.folderButton()->isVisible(), listed > 0);
    QCOMPARE(window.menuTexts(), QStringList(texts.mid(0, listed)));
    QCOMPARE(window.folderButton()->geometry(),
        QRect(designSize(1), designSize(1), designSize(26), designSize(26)));

    QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
    for (int index = 0; index < listed; ++index) {
        chooseFromMenu(window.folderButton(), index);
        QCOMPARE(
            spy.takeFirst(), QVariantList { QStringList(names.mid(0, index + 1)).join(QLatin1Char('/')) });
    }

    // A wider bar shows the whole row with its next refresh, a second look lists no folder twice.
    window.bar->updateColumnSize();
    QCOMPARE(window.menuTexts().size(), listed);
    window.setViewWidth(6 * step);
    window.bar->refresh(path);
    QVERIFY(window.folderButton()->isHidden());
    QCOMPARE(window.menuTexts(), QStringList());
}

// The slot of a click runs a loop in which the next one comes; the slot of that does what an application
// does.
void PathBarTest::clicks()
{
    for (const bool fromMenu : { false, true }) {
        for (const bool deletesBar : { false, true }) {
            const Window window(150);
            window.bar->refresh(threeNames);
            QList<QPointer<QObject>> relays { window.folderButton()->menu() };
            for (QSignalMapper* mapper : window.bar->findChildren<QSignalMapper*>()) {
                relays << mapper;
            }
            QStringList told;
            connect(window.bar, &VantButtonPath::sigUpdatePath, this, [&](const QString& path) {
                told << path;
                runLoop([&] {
                    if (told.size() == 1) {
                        window.button(0)->click();
                    } else if (deletesBar) {
                        delete window.bar;
                    } else {
                        window.bar->refresh(path);
                    }
                });
                QCOMPARE(relays.count(nullptr), 0);
            });
            if (fromMenu) {
                chooseFromMenu(window.folderButton(), 1);
            } else {
                QTest::mouseClick(window.button(2), Qt::LeftButton);
            }

            const QStringList bothPaths { "first folder/second folder", "first folder" };
            QCOMPARE(told, bothPaths);
            if (deletesBar) {
                QTRY_COMPARE(relays.count(nullptr), 3);
            } else {
                QTRY_COMPARE(window.bar->findChildren<QPushButton*>().size(), 1);
                QTest::mouseClick(window.button(0), Qt::LeftButton);
                QCOMPARE(told.size(), 3);
            }
        }
    }
}

void PathBarTest::focus()
{
    const Window window;
    connect(window.bar, SIGNAL(sigUpdatePath(QString)), window.bar, SLOT(slotUpdatePath(QString)));
    showEndOf(window);
    window.before->setFocus();
    for (QWidget* stop : QWidgetList {
             window.folderButton(), window.button(4), window.button(6), window.button(8), window.after }) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        QCOMPARE(window.focusWidget(), stop);
    }
    QTest::keyClick(window.after, Qt::Key_Backtab);
    QCOMPARE(window.focusWidget(), window.button(8));
    QTest::keyClick(window.button(8), Qt::Key_Left);
    QCOMPARE(window.focusWidget(), window.button(6));

    // A row that is built anew keeps it, and it visits no other widget on its way.
    int lost = 0;
    connect(qApp, &QApplication::focusChanged, window.bar,
        [&](QWidget*, QWidget* now) { lost += now == window.before || now == window.after ? 1 : 0; });
    for (const Qt::Key key : { Qt::Key_Return, Qt::Key_Space }) {
        QTest::keyClick(window.button(6), key);
        QCOMPARE(window.bar->columnCount(), 7);
        QCOMPARE(window.focusWidget(), window.button(6));
    }
    chooseFromMenu(window.folderButton(), 1);
    QCOMPARE(window.bar->columnCount(), 3);
    QCOMPARE(window.focusWidget(), window.button(2));

    // Through an empty row, and from a name that is hidden then to the menu that it is in.
    window.bar->refresh(QString());
    window.bar->refresh(QStringLiteral("first"));
    QCOMPARE(window.focusWidget(), window.button(0));
    window.bar->refresh(fiveNames);
    QCOMPARE(window.focusWidget(), window.folderButton());
    QCOMPARE(lost, 0);

    window.after->setFocus();
    window.bar->refresh(QStringLiteral("first"));
    QCOMPARE(window.focusWidget(), window.after);
}

// The table below the row has a will of its own: it edits what is pointed at, and goes where the keys lead.
void PathBarTest::pointerAndStrayKeys()
{
    const Window window;
    showEndOf(window);
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
    window.bar->refresh(QString(100, QLatin1Char('m')));
    QCoreApplication::processEvents();
    QCOMPARE(window.focusWidget(), window.button(0));
    QCOMPARE(window.scrolled(), window.bar->horizontalScrollBar()->maximum());

    window.folderButton()->setFocus();
    window.bar->refresh(QStringLiteral("a/b"));
    QCOMPARE(window.focusWidget(), window.button(2));
}

// A field that is left shows what was typed, by which the name that is to get the focus goes.
void PathBarTest::refreshWhileFocusMoves()
{
    const Window window(600);
    window.bar->refresh(threeNames);
    connect(window.before, &QLineEdit::editingFinished, window.bar,
        [&window] { window.bar->refresh(QStringLiteral("typed/by hand")); });
    QSignalSpy spy(window.bar, &VantButtonPath::sigUpdatePath);
    const auto type = [&window] {
        window.before->setFocus();
        QTest::keyClick(window.before, Qt::Key_X);
    };
    type();
    QTest::keyClick(window.before, Qt::Key_Tab);
    QCOMPARE(window.bar->columnCount(), 3);
    QCOMPARE(window.focusWidget(), window.button(0));

    type();
    pointer::press(window.button(2));
    pointer::release(window.button(2));
    QCOMPARE(window.focusWidget(), window.button(2));
    QCOMPARE(spy.count(), 0); // what was clicked is gone
}

void PathBarTest::tableEmptiedByHand()
{
    const Window window(150);
    window.bar->refresh(threeNames);
    window.bar->clear();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window.bar->updateColumnSize();
    window.bar->refresh(threeNames);
    window.bar->removeColumn(0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window.bar->refresh(threeNames);
    QCOMPARE(window.bar->columnCount(), 5);
    QCOMPARE(window.button(4)->text(), QStringLiteral("third folder"));
}

void PathBarTest::changesUnderOpenMenu()
{
    const Window window(150);
    for (const bool deletesBar : { false, true }) {
        window.bar->refresh(threeNames);
        QTimer::singleShot(0, this, [&] {
            QVERIFY(QApplication::activePopupWidget());
            if (deletesBar) {
                delete window.bar;
            } else {
                window.bar->refresh(QString());
            }
            QVERIFY(!QApplication::activePopupWidget());
        });
        QTest::keyClick(window.folderButton(), Qt::Key_Space);
    }
    QVERIFY(!window.bar);
}

QTEST_MAIN(PathBarTest)

#include "path-bar-test.moc"
