#pragma once

#include "bench.h"

#include <QProcessEnvironment>

namespace bench {

/** Has the suite's child @p name do its work on @p path in a fresh process of this program. */
ChildResult runChild(const QString& name, const QString& path,
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

/** The suite's sampler @p name, at work in a process of its own for as long as the sampler is kept. */
Sampler samplerInChild(const QString& name, const QProcessEnvironment& environment);

/** The other end of both: does the work, or takes a sample for each line read, and writes what came out. */
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
