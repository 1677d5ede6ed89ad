// Integer and real number text coding against the C library doing the same
// job in the same run: intdco_l beside snprintf("%ld"), realcod_d beside
// strtod, each over one fixed set of values of every magnitude.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <vitrail/numdate.h>

#include "ratio_report.h"

namespace {

// 1024 values spread over every number of digits and both signs.
std::vector<int32_t> Integers() {
    std::vector<int32_t> v;
    uint32_t x = 12345;
    for (int i = 0; i < 1024; ++i) {
        x = x * 1664525u + 1013904223u;
        int32_t digits = int32_t(x >> 28) % 10 + 1;
        int32_t value = int32_t((x >> 1) % 2147483647u);
        for (int32_t d = digits; d < 10; ++d) value /= 10;
        v.push_back(i % 2 ? -value : value);
    }
    return v;
}

// Texts as dialogs and profiles hold them (the "." form strtod also reads).
std::vector<std::string> Reals() {
    return {"12.5",     "3.14159", "-0.001", "1.5e2",    "123456.789", "42",  "0.3",  "2.675",
            "-7.25e-3", "1000",    "99.99",  "0.000125", "6.02e23",    "-15", "1e-5", "250.0"};
}

void BM_intdco_l(benchmark::State &state) {
    const std::vector<int32_t> values = Integers();
    char buf[16];
    for (auto _ : state)
        for (int32_t v : values) benchmark::DoNotOptimize(intdco_l(v, buf, sizeof buf));
}

void BM_snprintf_ld(benchmark::State &state) {
    const std::vector<int32_t> values = Integers();
    char buf[16];
    for (auto _ : state)
        for (int32_t v : values)
            benchmark::DoNotOptimize(std::snprintf(buf, sizeof buf, "%ld", long(v)));
}

void BM_realcod_d(benchmark::State &state) {
    std::vector<std::string> texts = Reals();
    double d = 0;
    for (auto _ : state)
        for (std::string &t : texts) benchmark::DoNotOptimize(realcod_d(t.data(), &d));
}

void BM_strtod(benchmark::State &state) {
    const std::vector<std::string> texts = Reals();
    for (auto _ : state)
        for (const std::string &t : texts)
            benchmark::DoNotOptimize(std::strtod(t.c_str(), nullptr));
}

BENCHMARK(BM_intdco_l);
BENCHMARK(BM_snprintf_ld);
BENCHMARK(BM_realcod_d);
BENCHMARK(BM_strtod);

} // namespace

int main(int argc, char **argv) {
    bench::RunWithRatios(
        argc, argv,
        {{"intdco_l / snprintf(\"%ld\")", "BM_intdco_l", "BM_snprintf_ld", "<= 1", true},
         {"realcod_d / strtod", "BM_realcod_d", "BM_strtod", "<= 1", true}});
    return 0;
}
