#pragma once

#include <QMetaType>
#include <QStringList>

#include <optional>

namespace gallery {

struct Options
{
    QString page;
    QString language;
    QStringList themes; ///< their folders; the last one is shown
    bool rightToLeft = false;
    bool watchesTheme = false;
    QString screenshotsFolder;
    QString trustedFile; ///< PEM file of an authority
    bool startupTimes = false;

    bool takesScreenshots() const { return !screenshotsFolder.isEmpty(); }
};

/** What has a gallery that is started anew show the same. */
QStringList argumentsFor(const Options& options);

struct CommandLine
{
    Options options;
    std::optional<int> exitCode; ///< set if the program is to end now: everything is said already
};

/**
 * Reads the command line, and answers what it can answer without a display: help, version, and one line on
 * standard error with exit code 2 for what cannot be used. Called before the QApplication is made.
 */
CommandLine readCommandLine(int argc, char** argv);

const int usageError = 2;

/** Writes @p message as the one line on standard error and returns @p exitCode. */
int failure(const QString& message, int exitCode = usageError);

} // namespace gallery

Q_DECLARE_METATYPE(gallery::Options)
