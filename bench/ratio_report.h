// Runs the registered benchmarks as interleaved repetitions (medians.h) and
// prints, after the console table, one line per job:
//   ratio<TAB>job<TAB>median time of vitrail / median time of its peer<TAB>target
#pragma once

#include <cstdio>
#include <initializer_list>

#include "medians.h"

namespace bench {

struct RatioJob {
    const char *job, *ours, *peer, *target; // ours and peer: benchmark names
    bool cpu;                               // compare CPU times, else wall-clock times
};

inline void RunWithRatios(int argc, char **argv, std::initializer_list<RatioJob> jobs) {
    InitializeWithMedians(argc, argv, 9);
    MedianRecorder rec;
    benchmark::RunSpecifiedBenchmarks(&rec);
    std::printf("\n"); // the table may end on a colour code without a line end
    for (const RatioJob &j : jobs) {
        const Median ours = rec.median[j.ours], peer = rec.median[j.peer];
        const double a = j.cpu ? ours.cpu : ours.real, b = j.cpu ? peer.cpu : peer.real;
        if (a > 0 && b > 0) std::printf("ratio\t%s\t%.2f\t%s\n", j.job, a / b, j.target);
    }
    benchmark::Shutdown();
}

} // namespace bench
