// SPDX-License-Identifier: MIT
#include <QApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <malloc.h>
#include <vector>

#include "ratio.h"

namespace {

double median(std::vector<double> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/** Lets a side do its work in a tidy heap: what the last one has freed would be put together in
 *  the time of this one. */
double takeTurn(const Side& side)
{
    malloc_trim(0);
    return side();
}

/** Takes the ratio of each turn: whatever slows the machine down slows down both sides of it. */
void measure(benchmark::State& state, const Ratio& ratio, const Scale& scale)
{
    constexpr double microsecond = 1e-6;
    std::vector<double> turns;
    bool hasBase = false;
    try {
        const Sides sides = ratio.prepare(scale);
        hasBase = bool(sides.base);
        for (auto _ : state) {
            const double measured = takeTurn(sides.measured);
            turns.push_back(measured / (hasBase ? takeTurn(sides.base) : microsecond));
            state.SetIterationTime(measured);
        }
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
        return;
    }
    state.counters["measured"] = median(turns);
    state.counters["times"] = hasBase;
    state.counters["at_most"] = ratio.atMost;
}

/** Prints a line for each ratio and remembers what went wrong. */
class Table : public benchmark::BenchmarkReporter
{
public:
    explicit Table(const Scale& scale)
        : mScale(scale)
    { }

    int failures() const { return mFailures; }
    int missed() const { return mMissed; }

    bool ReportContext(const Context&) override
    {
        std::printf("%-58s %10s %10s\n", "What", "measured", "at most");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            const char* const what = run.run_name.function_name.c_str();
            if (run.error_occurred) {
                ++mFailures;
                std::printf("%-58s failed: %s\n", what, run.error_message.c_str());
                continue;
            }
            const double measured = run.counters.at("measured");
            const double atMost = run.counters.at("at_most");
            const char* const unit = run.counters.at("times") != 0.0 ? "x " : "us";
            const bool isMissed = !mScale.smoke && measured > atMost;
            mMissed += isMissed;
            std::printf("%-58s %7.2f %s %7.2f %s  %s\n", what, measured, unit, atMost, unit,
                mScale.smoke   ? "not judged"
                    : isMissed ? "missed"
                               : "ok");
        }
        std::fflush(stdout);
    }

private:
    Scale mScale;
    int mFailures = 0;
    int mMissed = 0;
};

} // namespace

/** brox_bench [--smoke] [options of Google Benchmark]; 1 if a ratio is missed or was not measured.
 */
int main(int argc, char* argv[])
{
    const auto smoke = std::find_if(
        argv + 1, argv + argc, [](const char* arg) { return std::strcmp(arg, "--smoke") == 0; });
    const Scale scale{smoke != argv + argc};
    argc = int(std::remove(argv + 1, argv + argc, scale.smoke ? *smoke : nullptr) - argv);
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    for (const auto& ratios : {drillRatios(), fileRatios(), outputRatios(), tableRatios()}) {
        for (const Ratio& ratio : ratios) {
            benchmark::RegisterBenchmark(ratio.what, measure, ratio, scale)
                ->UseManualTime()
                ->Iterations(scale.rounds(ratio.rounds));
        }
    }
    Table table(scale);
    benchmark::RunSpecifiedBenchmarks(&table);
    return table.failures() + table.missed() > 0 ? 1 : 0;
}
