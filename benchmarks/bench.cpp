#include "bench.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace bench {

namespace {

// Long enough for the clock, short enough that most samples are not interrupted by other programs.
constexpr double sampleNanoseconds = 4e6;

double nanosecondsOfRuns(const Action& action, int runs)
{
    const auto begin = std::chrono::steady_clock::now();
    for (int run = 0; run < runs; ++run) {
        action();
    }
    const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - begin;
    return elapsed.count();
}

int runsPerSample(const Action& action)
{
    int runs = 1;
    while (nanosecondsOfRuns(action, runs) < sampleNanoseconds / 2) {
        runs *= 2;
    }
    return runs;
}

double quantile(std::vector<double> values, double share)
{
    const auto at = static_cast<std::ptrdiff_t>(std::floor(static_cast<double>(values.size() - 1) * share));
    const auto nth = values.begin() + at;
    std::nth_element(values.begin(), nth, values.end());
    return *nth;
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
        Times times;
        if (kitFirst) {
            times.kit = kit();
            times.alternative = alternative();
        } else {
            times.alternative = alternative();
            times.kit = kit();
        }
        return times;
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
    std::vector<double> kit;
    std::vector<double> alternative;
    std::vector<double> ratios;
    for (int count = 0; count < row.samples; ++count) {
        const Times times = sample();
        kit.push_back(times.kit);
        alternative.push_back(times.alternative);
        ratios.push_back(times.kit / times.alternative);
    }
    Result result;
    result.row = row;
    result.median = { quantile(kit, 0.5), quantile(alternative, 0.5) };
    result.ratio = quantile(ratios, 0.5);
    result.lowerQuartile = quantile(ratios, 0.25);
    result.upperQuartile = quantile(ratios, 0.75);
    return result;
}

} // namespace bench
