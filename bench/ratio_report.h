// Runs the registered benchmarks as randomly interleaved repetitions and
// prints, after the console table, one line per job:
//   ratio<TAB>job<TAB>median time of vitrail / median time of its peer<TAB>target
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace bench {

struct RatioJob {
    const char *job, *ours, *peer, *target; // ours and peer: benchmark names
    bool cpu;                               // compare CPU times, else wall-clock times
};

// Console output, plus the median times of every benchmark.
class MedianRecorder : public benchmark::ConsoleReporter {
  public:
    MedianRecorder() : ConsoleReporter(OO_Tabular) {} // no colour codes before "ratio"
    std::map<std::string, double> real, cpu;          // medians by benchmark name
    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &r : runs) {
            if (r.aggregate_name != "median") continue;
            real[r.run_name.str()] = r.GetAdjustedRealTime();
            cpu[r.run_name.str()] = r.GetAdjustedCPUTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }
};

inline void RunWithRatios(int argc, char **argv, std::initializer_list<RatioJob> jobs) {
    MedianRecorder rec;
    std::vector<char *> args(argv, argv + argc);
    std::string flags[] = {"--benchmark_repetitions=9",
                           "--benchmark_enable_random_interleaving=true",
                           "--benchmark_report_aggregates_only=true"};
    for (std::string &f : flags) args.insert(args.begin() + 1, f.data());
    int n = int(args.size());
    benchmark::Initialize(&n, args.data());
    benchmark::RunSpecifiedBenchmarks(&rec);
    for (const RatioJob &j : jobs) {
        auto &median = j.cpu ? rec.cpu : rec.real;
        double ours = median[j.ours], peer = median[j.peer];
        if (ours > 0 && peer > 0)
            std::printf("ratio\t%s\t%.2f\t%s\n", j.job, ours / peer, j.target);
    }
    benchmark::Shutdown();
}

} // namespace bench
