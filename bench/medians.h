// Medians for the benchmarks: every job runs in interleaved repetitions, only
// the aggregates are printed, and the reporter keeps each job's median wall
// and CPU time an iteration (in the job's time unit) under its name, as
// "BM_Get/2" for a job with an argument.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

struct Median {
    double real = 0, cpu = 0;
};

class MedianRecorder : public benchmark::ConsoleReporter {
  public:
    std::map<std::string, Median> median;
    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &r : runs)
            if (r.run_type == Run::RT_Aggregate && r.aggregate_name == "median")
                median[r.run_name.str()] = {r.GetAdjustedRealTime(), r.GetAdjustedCPUTime()};
        ConsoleReporter::ReportRuns(runs);
    }
};

// benchmark::Initialize with `repetitions` interleaved repetitions and the
// extra `flags`; flags given on the command line win.
inline void InitializeWithMedians(int argc, char **argv, int repetitions,
                                  std::vector<std::string> flags = {}) {
    static std::vector<std::string> kept;
    kept = {"--benchmark_repetitions=" + std::to_string(repetitions),
            "--benchmark_enable_random_interleaving=true",
            "--benchmark_report_aggregates_only=true"};
    kept.insert(kept.end(), flags.begin(), flags.end());
    std::vector<char *> args{argv[0]};
    for (std::string &f : kept) args.push_back(f.data());
    args.insert(args.end(), argv + 1, argv + argc);
    int n = int(args.size());
    benchmark::Initialize(&n, args.data());
}

} // namespace bench
