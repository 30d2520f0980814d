// Has many processes contend for one identity, end, be killed and talk, for longer than a test should take.
// One line of figures says what was done; the exit code is 1 if the library broke a promise.

#include "drivers.h"
#include "failure.h"
#include "participant.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

namespace {

/** What lies in the temporary folder is gone after the run, and in nobody's way during it. */
void moveTemporaryFolder(const QTemporaryDir& folder)
{
    for (const char* variable : { "TMPDIR", "TMP", "TEMP" }) {
        qputenv(variable, QFile::encodeName(folder.path()));
    }
}

/** Without --NUMBER on the command line it is the one of the long form. */
class Numbers
{
public:
    explicit Numbers(const QStringList& arguments)
    {
        m_parser.addOptions({ { QStringLiteral("processes"), QString(), QStringLiteral("n") },
            { QStringLiteral("rounds"), QString(), QStringLiteral("n") },
            { QStringLiteral("clients"), QString(), QStringLiteral("n") },
            { QStringLiteral("messages"), QString(), QStringLiteral("n") } });
        m_parser.process(arguments);
    }

    int number(const char* name, int longForm) const
    {
        const QString value = m_parser.value(QLatin1String(name));
        return value.isEmpty() ? longForm : value.toInt();
    }

    QString driver() const { return m_parser.positionalArguments().value(0); }

private:
    QCommandLineParser m_parser;
};

QString drive(const Numbers& numbers)
{
    const QString driver = numbers.driver();
    if (driver == QLatin1String("starts")) {
        return manyStart(numbers.number("processes", 100), numbers.number("rounds", 20));
    }
    if (driver == QLatin1String("kills")) {
        return primaryIsKilled(numbers.number("rounds", 1000));
    }
    if (driver == QLatin1String("ends")) {
        return primaryEnds(numbers.number("rounds", 1000));
    }
    if (driver == QLatin1String("messages")) {
        return manyMessages(numbers.number("clients", 8), numbers.number("messages", 10000));
    }
    throw Failure(QStringLiteral("the drivers are: starts [--processes N] [--rounds N], kills [--rounds N], "
                                 "ends [--rounds N], messages [--clients N] [--messages N]"));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("participant")) {
        return participate(arguments.value(2));
    }

    const QTemporaryDir folder;
    moveTemporaryFolder(folder);
    const Numbers numbers(arguments);
    QElapsedTimer time;
    time.start();
    try {
        const QString figures = drive(numbers);
        std::printf("%s: %s, in %.1f s\n", qUtf8Printable(numbers.driver()), qUtf8Printable(figures),
            static_cast<double>(time.elapsed()) / 1000);
        return 0;
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s: %s\n", qUtf8Printable(numbers.driver()), failure.what());
        return 1;
    }
}
