#include "support/guarded-test.h"

#include <QProcess>
#include <QtTest>

#include <csignal>

namespace {

const int patience = 20000;

QString run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

QString property(const QStringList& window, const char* name)
{
    return run("xprop", window + QStringList { "-notype", name });
}

QList<uint> windowsIn(const QString& text)
{
    QList<uint> windows;
    for (auto numbers = QRegularExpression("0x([0-9a-f]+)").globalMatch(text); numbers.hasNext();) {
        windows += numbers.next().captured(1).toUInt(nullptr, 16);
    }
    return windows;
}

void press(const QStringList& keys)
{
    run("xdotool", QStringList("key") + keys);
}

/** Starts a gallery that ends by itself: its exit code, and the lines that it writes to standard error. */
QStringList startAgain(const QStringList& arguments)
{
    QProcess process;
    process.start(GALLERY_PROGRAM, arguments);
    if (!process.waitForFinished(patience)) {
        return { "still runs" };
    }
    const QString errors = QString::fromUtf8(process.readAllStandardError());
    return QStringList(QString::number(process.exitCode())) + errors.split('\n', Qt::SkipEmptyParts);
}

/** A gallery as the user sees it. */
class Gallery
{
public:
    explicit Gallery(const QString& page)
    {
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(GALLERY_PROGRAM, { "--lang", "enu", "--page", page });
        process.waitForStarted();
    }

    ~Gallery() { end(SIGKILL); }

    void signal(int number) { kill(static_cast<pid_t>(process.processId()), number); }

    void end(int number)
    {
        if (process.state() == QProcess::Running) {
            signal(number);
            process.waitForFinished();
        }
    }

    /**
     * The windows that the window manager has in hand, the oldest first. Other programs' may go meanwhile.
     */
    QList<uint> windows() const
    {
        QList<uint> own;
        const QList<uint> all = windowsIn(property({ "-root" }, "_NET_CLIENT_LIST"));
        for (uint window : all) {
            const QString pid = property({ "-id", QString::number(window) }, "_NET_WM_PID");
            if (pid.section('=', 1).trimmed().toLongLong() == process.processId()) {
                own += window;
            }
        }
        return own;
    }

    /** What can be seen of a window, in words: its page, or its title if it has none, and how it lies. */
    QStringList look(int index = 0) const
    {
        const QList<uint> all = windows();
        if (index >= all.size()) {
            return {};
        }
        const uint window = all[index];
        const QStringList id = { "-id", QString::number(window) };
        QStringList words = { property(id, "_NET_WM_NAME").section('"', 1, -2).section(" – ", 0, 0) };
        const auto tell = [&words](bool holds, const char* word) {
            if (holds) {
                words += word;
            }
        };
        const QString state = property(id, "_NET_WM_STATE");
        tell(state.contains("_NET_WM_STATE_HIDDEN"), "hidden");
        tell(state.contains("_VERT") && state.contains("_HORZ"), "maximised");
        tell(property(id, "WM_STATE").contains("Iconic"), "iconic");
        const bool isVisible = run("xwininfo", id).contains("IsViewable");
        tell(isVisible, "visible");
        tell(isVisible && windowsIn(property({ "-root" }, "_NET_CLIENT_LIST_STACKING")).endsWith(window),
            "on top");
        tell(windowsIn(property({ "-root" }, "_NET_ACTIVE_WINDOW")).endsWith(window), "active");
        return words;
    }

    void minimise(int index = 0) const
    {
        run("xdotool", { "windowminimize", QString::number(windows().value(index)) });
    }

    void maximise() const
    {
        run("wmctrl",
            { "-i", "-r", QString::number(windows().value(0)), "-b", "add,maximized_vert,maximized_horz" });
    }

    /** With menus and lists, which the window manager does not have in hand. */
    int visibleWindows() const
    {
        const QStringList all = { "search", "--onlyvisible", "--pid", QString::number(process.processId()) };
        return run("xdotool", all).split('\n', Qt::SkipEmptyParts).size();
    }

    /** Whether the window can be closed, which an open sheet does not let it. */
    bool canClose() const
    {
        const QString hints = property({ "-id", QString::number(windows().value(0)) }, "_MOTIF_WM_HINTS");
        return windowsIn(hints).value(1) & 0x20;
    }

private:
    QProcess process;
};

QStringList inFront(const QString& page)
{
    return { page, "visible", "on top", "active" };
}

} // namespace

/** The gallery on a desktop: one instance, and what a second start does to it. */
class GalleryOnXTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:
    void bringsTheFirstUp_data();
    void bringsTheFirstUp();
    void firstIsBusyWithTheUser();
    void helpOpensAndCloses();
    void firstDoesNotAnswer();
};

void GalleryOnXTest::bringsTheFirstUp_data()
{
    QTest::addColumn<bool>("isMaximised");
    QTest::addColumn<QStringList>("look");
    QTest::newRow("minimised") << false << inFront("Sheets");
    QTest::newRow("maximised, then minimised")
        << true << QStringList { "Sheets", "maximised", "visible", "on top", "active" };
}

void GalleryOnXTest::bringsTheFirstUp()
{
    QFETCH(bool, isMaximised);
    QFETCH(QStringList, look);

    const Gallery first("labels");
    QTRY_COMPARE_WITH_TIMEOUT(first.look(), inFront("Labels"), patience);
    if (isMaximised) {
        first.maximise();
        QTRY_VERIFY_WITH_TIMEOUT(first.look().contains("maximised"), patience);
    }
    first.minimise();
    QTRY_VERIFY_WITH_TIMEOUT(first.look().contains("iconic"), patience);

    QCOMPARE(startAgain({ "--page", "sheets", "--lang", "deu" }), QStringList("0"));
    QTRY_COMPARE_WITH_TIMEOUT(first.look(), look, patience);
    QCOMPARE(first.windows().size(), 1);
}

void GalleryOnXTest::firstIsBusyWithTheUser()
{
    const Gallery first("sheets");
    QTRY_COMPARE_WITH_TIMEOUT(first.look(), inFront("Sheets"), patience);
    press({ "Tab", "Tab", "Tab", "space" });
    QTRY_VERIFY_WITH_TIMEOUT(!first.canClose(), patience);
    QCOMPARE(startAgain({ "--page", "labels" }), QStringList("0"));
    QTRY_COMPARE_WITH_TIMEOUT(first.look(), inFront("Sheets"), patience);
    press({ "Return" });
    QTRY_COMPARE_WITH_TIMEOUT(first.look(), inFront("Labels"), patience);
    QTRY_VERIFY_WITH_TIMEOUT(first.canClose(), patience);
}

void GalleryOnXTest::helpOpensAndCloses()
{
    const Gallery gallery("files");
    QTRY_COMPARE_WITH_TIMEOUT(gallery.look(), inFront("File browser"), patience);
    press({ "Tab", "F1" });
    QTRY_COMPARE_WITH_TIMEOUT(gallery.look(1), inFront("Help"), patience);
    QCOMPARE(startAgain({}), QStringList("0"));
    press({ "F1", "Tab", "Next", "F1" });
    QTRY_COMPARE_WITH_TIMEOUT(gallery.look(1), inFront("Help"), patience);
    QCOMPARE(gallery.windows().size(), 2);
    press({ "Escape" });
    QTRY_COMPARE_WITH_TIMEOUT(gallery.look(), inFront("File browser"), patience);
    QCOMPARE(gallery.windows().size(), 1);
    press({ "space" }); // opens the list of the languages, which has the focus again
    QTRY_COMPARE_WITH_TIMEOUT(gallery.visibleWindows(), 2, patience);
}

void GalleryOnXTest::firstDoesNotAnswer()
{
    Gallery first("labels");
    QTRY_COMPARE_WITH_TIMEOUT(first.look(), inFront("Labels"), patience);
    first.signal(SIGSTOP);
    const QStringList outcome = startAgain({ "--page", "sheets" });
    QVERIFY2(outcome.size() == 2 && outcome.first() == "1" && outcome.last().contains("does not answer"),
        qPrintable(outcome.join('\n')));
}

QTEST_MAIN(GalleryOnXTest)

#include "gallery-on-x-test.moc"
