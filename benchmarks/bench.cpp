#include "bench.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace bench {

namespace {

// Long enough for the clock, and much shorter than the time that the system gives a program at once, so that
// most samples are not interrupted by other programs.
constexpr double sampleNanoseconds = 3e5;

// How many times the samples of a row are taken while they leave open which side of its ceiling it is on.
constexpr std::size_t mostRounds = 4;

double nanosecondsOfRuns(const Action& action, int runs)
{
    const auto begin = std::chrono::steady_clock::now();
    for (int run = 0; run < runs; ++run) {
        action();
    }
    const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - begin;
    return elapsed.count();
}

// The best of some attempts: one that was interrupted says nothing of how long the work takes.
int runsPerSample(const Action& action)
{
    double nanoseconds = nanosecondsOfRuns(action, 1);
    for (int attempt = 0; attempt < 20 && nanoseconds < sampleNanoseconds; ++attempt) {
        nanoseconds = std::min(nanoseconds, nanosecondsOfRuns(action, 1));
    }
    return std::max(1, static_cast<int>(sampleNanoseconds / nanoseconds));
}

double quantile(std::vector<double> values, double share)
{
    const auto at = static_cast<std::ptrdiff_t>(std::floor(static_cast<double>(values.size() - 1) * share));
    const auto nth = values.begin() + at;
    std::nth_element(values.begin(), nth, values.end());
    return *nth;
}

double median(const std::vector<Amounts>& amounts, double Amounts::*side)
{
    std::vector<double> values;
    values.reserve(amounts.size());
    for (const Amounts& both : amounts) {
        values.push_back(both.*side);
    }
    return quantile(std::move(values), 0.5);
}

// Whether the ceiling lies where the true median may lie as well, on the other side of the one found. The
// true one has the chance of 19 in 20 to be within 1 / sqrt(n) of the middle of the n sorted samples.
bool isOpen(const Row& row, const std::vector<double>& ratios)
{
    const double reach = 1 / std::sqrt(static_cast<double>(ratios.size()));
    return row.ceiling && *row.ceiling >= quantile(ratios, 0.5 - reach)
        && *row.ceiling < quantile(ratios, 0.5 + reach);
}

} // namespace

double nanosecondsOf(const Action& action)
{
    return nanosecondsOfRuns(action, 1);
}

Measurement repeated(const Action& action, int units)
{
    const int runs = runsPerSample(action);
    return [action, runs, units] { return nanosecondsOfRuns(action, runs) / runs / units; };
}

Sampler interleaved(const Measurement& kit, const Measurement& alternative)
{
    return [kit, alternative, kitFirst = false]() mutable {
        kitFirst = !kitFirst;
        Amounts amounts;
        if (kitFirst) {
            amounts.kit = kit();
            amounts.alternative = alternative();
        } else {
            amounts.alternative = alternative();
            amounts.kit = kit();
        }
        return amounts;
    };
}

void requireSameWork(bool same)
{
    if (!same) {
        throw Failure(QStringLiteral("the two sides do not do the same work"));
    }
}

Result measure(const Row& row)
{
    const Sampler sample = row.prepare();
    sample(); // fills the caches of the machine
    std::vector<Amounts> amounts;
    std::vector<double> ratios;
    const auto most = static_cast<std::size_t>(row.samples) * mostRounds;
    while (ratios.empty() || (isOpen(row, ratios) && ratios.size() < most)) {
        for (int count = 0; count < row.samples; ++count) {
            amounts.push_back(sample());
            ratios.push_back(amounts.back().kit / amounts.back().alternative);
        }
    }
    Result result;
    result.row = row;
    result.samples = static_cast<int>(ratios.size());
    result.median = { median(amounts, &Amounts::kit), median(amounts, &Amounts::alternative) };
    result.ratio = quantile(ratios, 0.5);
    result.lowerQuartile = quantile(ratios, 0.25);
    result.upperQuartile = quantile(ratios, 0.75);
    return result;
}

} // namespace bench
