// Folder scans of 100, 1,000 and 10,000 files: BSDDir_FindFiles beside the
// same shell pipeline run alone through popen into a buffer of the same
// size, measured in wall-clock time (the work is in the child processes).
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <vitrail/unixtools.h>

#include "ratio_report.h"

namespace {

std::string root;

std::string Folder(int64_t files) {
    return root + "/f" + std::to_string(files);
}

void Setup() {
    char pattern[] = "/tmp/vitrail-scan-XXXXXX";
    root = mkdtemp(pattern);
    for (int files : {100, 1000, 10000}) {
        std::filesystem::create_directories(Folder(files));
        for (int i = 0; i < files; ++i)
            std::ofstream(Folder(files) + "/report" + std::to_string(100000 + i) + ".txt");
    }
}

void BM_FindFiles(benchmark::State &state) {
    const std::string folder = Folder(state.range(0));
    std::unique_ptr<char[][256]> table(new char[size_t(state.range(0))][256]);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            BSDDir_FindFiles(table.get(), folder.c_str(), int16_t(state.range(0)), ""));
}

void BM_Pipeline(benchmark::State &state) {
    const std::string command = "ls -1F '" + Folder(state.range(0)) + "/' | grep -i -e ''";
    const size_t size = size_t(state.range(0)) * 256;
    std::unique_ptr<char[]> out(new char[size]);
    for (auto _ : state) {
        FILE *pipe = popen(command.c_str(), "r");
        out[std::fread(out.get(), 1, size - 1, pipe)] = '\0';
        pclose(pipe);
    }
}

BENCHMARK(BM_FindFiles)->Arg(100)->Arg(1000)->Arg(10000)->UseRealTime();
BENCHMARK(BM_Pipeline)->Arg(100)->Arg(1000)->Arg(10000)->UseRealTime();

} // namespace

int main(int argc, char **argv) {
    Setup();
    bench::RunWithRatios(
        argc, argv,
        {{"BSDDir_FindFiles / pipeline, 100 files", "BM_FindFiles/100/real_time",
          "BM_Pipeline/100/real_time", "<= 1.2", false},
         {"BSDDir_FindFiles / pipeline, 1,000 files", "BM_FindFiles/1000/real_time",
          "BM_Pipeline/1000/real_time", "<= 1.2", false},
         {"BSDDir_FindFiles / pipeline, 10,000 files", "BM_FindFiles/10000/real_time",
          "BM_Pipeline/10000/real_time", "<= 1.2", false}});
    std::filesystem::remove_all(root);
    return 0;
}
