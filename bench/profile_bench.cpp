// Profile lookups and writes on a 1 MiB profile of 20,000 keys, against the
// time to read the file once (and to read and write it once). Prints the
// ratios after the benchmark table.
//
//   Profile        Layout
//   sections       200 sections "[Section NNN]" of 100 keys each
//   one section    one section holding all 20,000 keys
//   lines          "keyNNNNN=" and a value padding the file to 1 MiB
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <vitrail/files.h>
#include <vitrail/platform.h>
#include <vitrail/profile.h>

namespace {

constexpr int kKeys = 20000;
constexpr size_t kBytes = 1 << 20;

std::string Profile(int sections) {
    std::string text;
    int perSection = kKeys / sections;
    size_t lineBytes = kBytes / size_t(kKeys + sections);
    for (int s = 0; s < sections; ++s) {
        text += "[Section " + std::to_string(s) + "]\r\n";
        for (int k = 0; k < perSection; ++k) {
            std::string line = "key" + std::to_string(s * perSection + k) + "=";
            line.resize(lineBytes - 2, 'v');
            text += line + "\r\n";
        }
    }
    return text;
}

std::string root;
std::string sectionsFile, oneSectionFile;

void Setup() {
    char pattern[] = "/tmp/vitrail-bench-XXXXXX";
    root = mkdtemp(pattern);
    vitrail_set_volumes_root(root.c_str());
    std::filesystem::create_directories(root + "/Vol");
    std::ofstream(root + "/Vol/sections.ini", std::ios::binary) << Profile(200);
    std::ofstream(root + "/Vol/one.ini", std::ios::binary) << Profile(1);
    sectionsFile = "Vol:sections.ini";
    oneSectionFile = "Vol:one.ini";
}

// Reads the whole file with the library's POSIX layer into a buffer of its size.
struct Whole {
    std::unique_ptr<char[]> bytes;
    int32_t size;
};
Whole ReadWhole(const char *file) {
    int32_t fd = xFile_Open(file, 1, 0);
    Whole w{nullptr, xFile_Size(fd)};
    w.bytes.reset(new char[size_t(w.size)]);
    xFile_Read(fd, w.bytes.get(), w.size);
    xFile_Close(fd);
    return w;
}

void BM_ReadFile(benchmark::State &state) {
    for (auto _ : state) benchmark::DoNotOptimize(ReadWhole(sectionsFile.c_str()));
}

void BM_ReadWriteFile(benchmark::State &state) {
    for (auto _ : state) {
        Whole data = ReadWhole(sectionsFile.c_str());
        int32_t fd = xFile_Open(sectionsFile.c_str(), 0, 1);
        xFile_Write(fd, data.bytes.get(), data.size);
        xFile_Close(fd);
    }
}

void Lookup(benchmark::State &state, const std::string &file, const char *section) {
    char buf[256];
    for (auto _ : state)
        benchmark::DoNotOptimize(
            GetPrivateProfileString(section, "key19999", "", buf, sizeof buf, file.c_str()));
}

void BM_GetLastKeyOf200Sections(benchmark::State &state) {
    Lookup(state, sectionsFile, "Section 199");
}

void BM_GetLastKeyOfOneSection(benchmark::State &state) {
    Lookup(state, oneSectionFile, "Section 0");
}

void BM_GetMissingSection(benchmark::State &state) {
    Lookup(state, sectionsFile, "Nowhere");
}

// Sets a key to values of one length in turn, so the file keeps its size.
void Write(benchmark::State &state, const std::string &file, const char *section, const char *key) {
    bool flip = false;
    for (auto _ : state) {
        flip = !flip;
        WritePrivateProfileString(section, key, flip ? "one" : "two", file.c_str());
    }
}

void BM_WriteMiddleKey(benchmark::State &state) {
    Write(state, sectionsFile, "Section 100", "key10050");
}

void BM_WriteMiddleKeyOfOneSection(benchmark::State &state) {
    Write(state, oneSectionFile, "Section 0", "key10050");
}

BENCHMARK(BM_ReadFile);
BENCHMARK(BM_ReadWriteFile);
BENCHMARK(BM_GetLastKeyOf200Sections);
BENCHMARK(BM_GetLastKeyOfOneSection);
BENCHMARK(BM_GetMissingSection);
BENCHMARK(BM_WriteMiddleKey);
BENCHMARK(BM_WriteMiddleKeyOfOneSection);

// Console output, plus the time per iteration of every run for the ratios.
class Recorder : public benchmark::ConsoleReporter {
  public:
    std::map<std::string, double> ns;
    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &r : runs) ns[r.benchmark_name()] = r.GetAdjustedRealTime();
        ConsoleReporter::ReportRuns(runs);
    }
};

} // namespace

int main(int argc, char **argv) {
    Setup();
    benchmark::Initialize(&argc, argv);
    Recorder rec;
    benchmark::RunSpecifiedBenchmarks(&rec);
    double read = rec.ns["BM_ReadFile"], readWrite = rec.ns["BM_ReadWriteFile"];
    if (read > 0 && readWrite > 0) {
        std::printf("\nRatios (1 MiB, 20,000 keys):\n");
        for (const char *n :
             {"BM_GetLastKeyOf200Sections", "BM_GetLastKeyOfOneSection", "BM_GetMissingSection"})
            std::printf("  %-28s / read file       = %.2f\n", n, rec.ns[n] / read);
        for (const char *n : {"BM_WriteMiddleKey", "BM_WriteMiddleKeyOfOneSection"})
            std::printf("  %-28s / read+write file = %.2f\n", n, rec.ns[n] / readWrite);
    }
    benchmark::Shutdown();
    std::filesystem::remove_all(root);
    return 0;
}
