#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <vector>

/** The kit beside what one would write without it: rows, how they are measured, and what comes out. */
namespace bench {

/** What rows measure: nanoseconds, bytes, or how often something happens. */
enum class Quantity { Time, Memory, Count };

/** What one unit of work takes of a row's quantity, measured one right after the other. */
struct Amounts
{
    double kit = 0;
    double alternative = 0;
};

/** Why nothing can be measured. */
class Failure : public std::runtime_error
{
public:
    explicit Failure(const QString& reason)
        : std::runtime_error(reason.toStdString())
    { }
};

using Action = std::function<void()>;
using Measurement = std::function<double()>;
using Sampler = std::function<Amounts()>;

struct Row
{
    QString name;
    QString unit; ///< what one amount is the amount of
    QString kit;
    QString alternative;
    std::optional<double> ceiling; ///< of the ratio; a row without one is reported only
    int samples = 0; ///< at least; more if they leave open whether the ceiling is kept
    std::function<Sampler()> prepare; ///< sets up what is not timed, and gives what is
    Quantity quantity = Quantity::Time;
};

struct Result
{
    Row row;
    int samples = 0;
    Amounts median;
    double ratio = 0; ///< the median of the ratios of all samples
    double lowerQuartile = 0;
    double upperQuartile = 0;

    bool isAboveCeiling() const { return row.ceiling && ratio > *row.ceiling; }
};

/** What a child process found. The check is the same for two children that did the same work. */
struct ChildResult
{
    double amount = 0;
    QString check;
};

using Child = std::function<ChildResult(const QString& path)>;

/** All rows, and what some of them have done in another process: a piece of work, or all their samples. */
struct Suite
{
    std::vector<Row> rows;
    std::map<QString, Child> children;
    std::map<QString, std::function<Sampler()>> samplers;
};

/** How long @p action takes, once. */
double nanosecondsOf(const Action& action);

/** Runs @p action as often as it takes to be measured well, and gives the time of one of its @p units. */
Measurement repeated(const Action& action, int units = 1);

/** Measures the two in turn, the one first and then the other, so that neither profits from its place. */
Sampler interleaved(const Measurement& kit, const Measurement& alternative);

/** Fails unless @p same: two sides that do not do the same work have no times to compare. */
void requireSameWork(bool same);

Result measure(const Row& row);

} // namespace bench
