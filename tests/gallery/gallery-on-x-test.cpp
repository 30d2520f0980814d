#include "support/guarded-test.h"
#include "support/program.h"

#include <QtTest>

#include <csignal>

namespace {

const int patience = 20000;

QString property(const QStringList& window, const char* name)
{
    return runProgram("xprop", window + QStringList { "-notype", name }).output;
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
    runProgram("xdotool", QStringList("key") + keys);
}

/** Starts a gallery that ends by itself: its exit code, and the lines that it writes to standard error. */
QStringList startAgain(const QStringList& arguments)
{
    const Outcome again = runProgram(GALLERY_PROGRAM, arguments);
    return QStringList(QString::number(again.exitCode)) + again.errors.split('\n', Qt::SkipEmptyParts);
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

    ~Gallery()
    {
        process.kill();
        process.waitForFinished();
    }

    void stop() { kill(static_cast<pid_t>(process.processId()), SIGSTOP); }

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

    /** Of a window with its page, or its title if it has none, and how it lies: "on top" is active, too. */
    QString look(int index = 0) const
    {
        const uint window = windows().value(index);
        if (window == 0) {
            return {};
        }
        const QStringList id = { "-id", QString::number(window) };
        const QString page = property(id, "_NET_WM_NAME").section('"', 1, -2).section(" – ", 0, 0);
        const bool isOnTop = runProgram("xwininfo", id).output.contains("IsViewable")
            && windowsIn(property({ "-root" }, "_NET_CLIENT_LIST_STACKING")).endsWith(window)
            && windowsIn(property({ "-root" }, "_NET_ACTIVE_WINDOW")).endsWith(window);
        return page + (isOnTop ? ", on top" : property(id, "WM_STATE").contains("Iconic") ? ", iconic" : "");
    }

    void minimise() const
    {
        runProgram("xdotool", { "windowminimize", QString::number(windows().value(0)) });
    }

    /** With menus and lists, which the window manager does not have in hand. */
    int visibleWindows() const
    {
        const QStringList all = { "search", "--onlyvisible", "--pid", QString::number(process.processId()) };
        return runProgram("xdotool", all).output.split('\n', Qt::SkipEmptyParts).size();
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

} // namespace

/** The gallery on a desktop: one instance, and what a second start does to it. */
class GalleryOnXTest : public GuardedTest
{
    Q_OBJECT

private Q_SLOTS:

    void bringsTheFirstUp()
    {
        const Gallery first("labels");
        QTRY_COMPARE_WITH_TIMEOUT(first.look(), QString("Labels, on top"), patience);
        first.minimise();
        QTRY_COMPARE_WITH_TIMEOUT(first.look(), QString("Labels, iconic"), patience);
        QCOMPARE(startAgain({ "--page", "sheets", "--lang", "deu" }), QStringList("0"));
        QTRY_COMPARE_WITH_TIMEOUT(first.look(), QString("Sheets, on top"), patience);
        QCOMPARE(first.windows().size(), 1);
    }

    void firstIsBusyWithTheUser()
    {
        const Gallery first("sheets");
        QTRY_COMPARE_WITH_TIMEOUT(first.look(), QString("Sheets, on top"), patience);
        press({ "Tab", "Tab", "Tab", "Tab", "Tab", "Tab", "Tab", "space" });
        QTRY_VERIFY_WITH_TIMEOUT(!first.canClose(), patience);
        QCOMPARE(startAgain({ "--page", "labels" }), QStringList("0"));
        QTRY_COMPARE_WITH_TIMEOUT(first.look(), QString("Sheets, on top"), patience);
        press({ "Return" });
        QTRY_COMPARE_WITH_TIMEOUT(first.look(), QString("Labels, on top"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(first.canClose(), patience);
    }

    void helpOpensAndCloses()
    {
        const Gallery gallery("files");
        QTRY_COMPARE_WITH_TIMEOUT(gallery.look(), QString("File browser, on top"), patience);
        press({ "Tab", "F1" });
        QTRY_COMPARE_WITH_TIMEOUT(gallery.look(1), QString("Help, on top"), patience);
        QCOMPARE(startAgain({}), QStringList("0"));
        press({ "F1", "Tab", "Next", "F1" });
        QTRY_COMPARE_WITH_TIMEOUT(gallery.look(1), QString("Help, on top"), patience);
        QCOMPARE(gallery.windows().size(), 2);
        press({ "Escape" });
        QTRY_COMPARE_WITH_TIMEOUT(gallery.look(), QString("File browser, on top"), patience);
        QCOMPARE(gallery.windows().size(), 1);
        press({ "space" }); // opens the list of the languages, which has the focus again
        QTRY_COMPARE_WITH_TIMEOUT(gallery.visibleWindows(), 2, patience);
    }

    void firstDoesNotAnswer()
    {
        Gallery first("labels");
        QTRY_COMPARE_WITH_TIMEOUT(first.look(), QString("Labels, on top"), patience);
        first.stop();
        const QStringList outcome = startAgain({ "--page", "sheets" });
        QVERIFY2(outcome.size() == 2 && outcome.first() == "1" && outcome.last().contains("does not answer"),
            qPrintable(outcome.join('\n')));
    }
};

QTEST_MAIN(GalleryOnXTest)

#include "gallery-on-x-test.moc"
