#pragma once

#include "bench.h"

#include <QProcess>
#include <QProcessEnvironment>

namespace bench {

/** Has the suite's child @p name do its work on @p path in a fresh process of this program. */
ChildResult runChild(const QString& name, const QString& path,
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

/** The suite's child @p name at work on @p path for as long as this object lives. The two talk in lines. */
class TalkingChild
{
public:
    explicit TalkingChild(const QString& name, const QString& path = {},
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
    /** Ends what the child hears, which the child has to take as its own end. */
    ~TalkingChild();

    TalkingChild(const TalkingChild&) = delete;
    TalkingChild& operator=(const TalkingChild&) = delete;

    void say(const QByteArray& line);
    /** Waits for the next line of the child, without its end. Fails if there is none. */
    QByteArray hear();

private:
    QProcess m_process;
};

/** The suite's sampler @p name, at work in a process of its own for as long as the sampler is kept. */
Sampler samplerInChild(const QString& name, const QProcessEnvironment& environment);

/** The surroundings of this process, without a display. */
QProcessEnvironment offscreen();

/**
 * The other end of all three: does the work, or takes a sample for each line read, and writes what came out.
 */
void serveAsChild(const Suite& suite, const QString& name, const QString& path);

/** The first line that a program writes, and the time from its start to that line. */
struct FirstLine
{
    double nanoseconds = 0;
    QByteArray text;
};

/** Runs @p program, which ends by itself, with @p dataFolder as the folder of the user's data. */
FirstLine firstLineOf(const QString& program, const QStringList& arguments, const QString& dataFolder);

} // namespace bench
