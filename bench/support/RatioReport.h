#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <functional>
#include <map>
#include <string>

namespace veltra::bench {

// Runs the registered benchmarks with the usual console output and keeps
// each one's CPU time per iteration, so that a benchmark's main can print
// figures as ratios against a baseline timed in the same run: the machines
// we run on are shared, and only ratios carry over.
class RatioReport : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                seconds_[run.benchmark_name()] = run.GetAdjustedCPUTime() * multiplier(run.time_unit);
    }

    // CPU seconds per iteration of the named benchmark; 0 when it did not run.
    double seconds(const std::string& name) const
    {
        const auto it = seconds_.find(name);
        return it == seconds_.end() ? 0.0 : it->second;
    }

    static int run(int argc, char** argv, const std::function<void(const RatioReport&)>& summarise)
    {
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv))
            return 1;
        RatioReport report;
        benchmark::RunSpecifiedBenchmarks(&report);
        benchmark::Shutdown();
        std::printf("\n");
        summarise(report);
        return 0;
    }

private:
    static double multiplier(benchmark::TimeUnit unit)
    {
        switch (unit) {
        case benchmark::kNanosecond: return 1e-9;
        case benchmark::kMicrosecond: return 1e-6;
        case benchmark::kMillisecond: return 1e-3;
        default: return 1.0;
        }
    }

    std::map<std::string, double> seconds_;
};

} // namespace veltra::bench
