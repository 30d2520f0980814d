#pragma once

#include "bench.h"

namespace bench {

/** Has the suite's child @p name do its work on @p path in a fresh process of this program. */
ChildResult runChild(const QString& name, const QString& path);

/** The other end of runChild: does the work and writes what came out. */
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
