// Profile lookups and writes on profiles of 10 KB, 1 MB and 10 MB, beside
// the floors a program that keeps its settings in a file cannot go below and
// beside inih, in one process. Prints the ratios of the medians of
// interleaved repetitions, then how each cost grows with the file.
//
//   Job           vitrail                          floor / peer
//   read          GetPrivateProfileString, last    open, fstat, read, close (POSIX)
//                 key of the last section          inih ini_parse of the same key
//   write         WritePrivateProfileString,       read + open(O_TRUNC), write, close
//                 middle key, value of one length  read under flock + temporary file,
//                                                  write, fdatasync, rename (durable)
//
//   Profile       sections of 100 keys "keyNNNNNN=vvv..." of 52 bytes a line
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#if __has_include(<ini.h>)
#include <ini.h>
#define HAVE_INIH 1
#endif

#include <vitrail/platform.h>
#include <vitrail/profile.h>

#include "bench/medians.h"

namespace {

constexpr int kLine = 52, kPerSection = 100;
const char *const kSizes[] = {"10 KB", "1 MB", "10 MB"};
constexpr size_t kBytes[] = {10 << 10, 1 << 20, 10 << 20};

struct Profile {
    std::string mac, unix, lastSection, lastKey, midSection, midKey;
};
std::string root;
Profile files[3];

std::string KeyName(int k) {
    return "key" + std::to_string(k);
}

void Setup() {
    char pattern[] = "/tmp/vitrail-bench-XXXXXX";
    root = mkdtemp(pattern);
    vitrail_set_volumes_root(root.c_str());
    std::filesystem::create_directories(root + "/Vol");
    for (int i = 0; i < 3; ++i) {
        Profile &p = files[i];
        int keys = int(kBytes[i] / kLine), sections = (keys + kPerSection - 1) / kPerSection;
        std::string text;
        for (int k = 0; k < keys; ++k) {
            if (k % kPerSection == 0) text += "[Section " + std::to_string(k / kPerSection) + "]\r\n";
            std::string line = KeyName(k) + "=";
            line.resize(kLine - 2, 'v');
            text += line + "\r\n";
        }
        p.mac = "Vol:p" + std::to_string(i) + ".ini";
        p.unix = root + "/Vol/p" + std::to_string(i) + ".ini";
        p.lastSection = "Section " + std::to_string(sections - 1);
        p.lastKey = KeyName(keys - 1);
        p.midSection = "Section " + std::to_string(sections / 2);
        p.midKey = KeyName(sections / 2 * kPerSection + kPerSection / 2);
        std::ofstream(p.unix, std::ios::binary) << text;
    }
}

// The floor of a lookup: the whole file into a buffer of its size.
struct Whole {
    std::unique_ptr<char[]> bytes;
    ssize_t size = 0;
};
Whole ReadWhole(int fd) {
    struct stat st;
    fstat(fd, &st);
    Whole w{std::unique_ptr<char[]>(new char[size_t(st.st_size)]), 0};
    w.size = read(fd, w.bytes.get(), size_t(st.st_size));
    return w;
}

void BM_Read(benchmark::State &state) {
    const Profile &p = files[state.range(0)];
    for (auto _ : state) {
        int fd = open(p.unix.c_str(), O_RDONLY | O_CLOEXEC);
        benchmark::DoNotOptimize(ReadWhole(fd));
        close(fd);
    }
}

void BM_ReadWrite(benchmark::State &state) {
    const Profile &p = files[state.range(0)];
    for (auto _ : state) {
        int fd = open(p.unix.c_str(), O_RDONLY | O_CLOEXEC);
        Whole w = ReadWhole(fd);
        close(fd);
        fd = open(p.unix.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
        benchmark::DoNotOptimize(write(fd, w.bytes.get(), size_t(w.size)));
        close(fd);
    }
}

void BM_DurableReadWrite(benchmark::State &state) {
    const Profile &p = files[state.range(0)];
    std::string temp = root + "/Vol/.floor-XXXXXX";
    for (auto _ : state) {
        int fd = open(p.unix.c_str(), O_RDONLY | O_CLOEXEC);
        flock(fd, LOCK_EX);
        Whole w = ReadWhole(fd);
        std::string name = temp;
        int out = mkostemp(name.data(), O_CLOEXEC);
        benchmark::DoNotOptimize(write(out, w.bytes.get(), size_t(w.size)));
        fchmod(out, 0644);
        fdatasync(out);
        close(out);
        rename(name.c_str(), p.unix.c_str());
        close(fd);
    }
}

void BM_Get(benchmark::State &state) {
    const Profile &p = files[state.range(0)];
    char buf[256];
    for (auto _ : state)
        benchmark::DoNotOptimize(GetPrivateProfileString(p.lastSection.c_str(), p.lastKey.c_str(),
                                                         "", buf, sizeof buf, p.mac.c_str()));
}

#ifdef HAVE_INIH
struct IniQuery {
    const Profile *p;
    std::string value;
};
int IniHandler(void *user, const char *section, const char *name, const char *value) {
    auto *q = static_cast<IniQuery *>(user);
    if (q->p->lastSection == section && q->p->lastKey == name) q->value = value;
    return 1;
}
void BM_Inih(benchmark::State &state) {
    IniQuery q{&files[state.range(0)], {}};
    for (auto _ : state) benchmark::DoNotOptimize(ini_parse(q.p->unix.c_str(), IniHandler, &q));
}
BENCHMARK(BM_Inih)->DenseRange(0, 2);
#endif

void BM_Set(benchmark::State &state) {
    const Profile &p = files[state.range(0)];
    bool flip = false;
    for (auto _ : state)
        WritePrivateProfileString(p.midSection.c_str(), p.midKey.c_str(), (flip = !flip) ? "one" : "two",
                                  p.mac.c_str());
}

BENCHMARK(BM_Read)->DenseRange(0, 2);
BENCHMARK(BM_Get)->DenseRange(0, 2);
BENCHMARK(BM_ReadWrite)->DenseRange(0, 2);
BENCHMARK(BM_DurableReadWrite)->DenseRange(0, 2);
BENCHMARK(BM_Set)->DenseRange(0, 2);

} // namespace

int main(int argc, char **argv) {
    Setup();
    bench::InitializeWithMedians(argc, argv, 7, {"--benchmark_min_time=0.1"});
    bench::MedianRecorder rec;
    benchmark::RunSpecifiedBenchmarks(&rec);
    auto at = [&](const char *name, int i) { return rec.median[std::string(name) + "/" + std::to_string(i)]; };
    auto ratio = [&](const std::string &job, double a, double b, const char *target) {
        if (a > 0 && b > 0) std::printf("ratio\t%s\t%.2f\t%s\n", job.c_str(), a / b, target);
    };
    std::printf("\n");
    for (int i = 0; i < 3; ++i) {
        std::string s = kSizes[i];
        ratio("GetPrivateProfileString " + s + " / open+read+close", at("BM_Get", i).real, at("BM_Read", i).real,
              i ? "<= 1.2" : "<= 1.5");
        ratio("GetPrivateProfileString " + s + " / inih", at("BM_Get", i).real, at("BM_Inih", i).real, "<= 1");
        for (int cpu = 0; cpu < 2; ++cpu) {
            auto pick = [&](const char *name) { return cpu ? at(name, i).cpu : at(name, i).real; };
            std::string kind = cpu ? " (CPU)" : " (wall)";
            ratio("WritePrivateProfileString " + s + " / read+write" + kind, pick("BM_Set"), pick("BM_ReadWrite"),
                  "<= 1.5");
            ratio("WritePrivateProfileString " + s + " / durable read+write" + kind, pick("BM_Set"),
                  pick("BM_DurableReadWrite"), "<= 1.5");
        }
    }
    // How each cost grows from 10 KB to 10 MB: time ~ size^exponent.
    for (const char *name : {"BM_Read", "BM_Get", "BM_Inih", "BM_ReadWrite", "BM_DurableReadWrite", "BM_Set"})
        if (at(name, 0).real > 0)
            std::printf("growth\t%s\t%.3g us .. %.3g us\texponent %.2f\n", name, at(name, 0).real / 1e3,
                        at(name, 2).real / 1e3, std::log(at(name, 2).real / at(name, 0).real) / std::log(1024.0));
    benchmark::Shutdown();
    std::filesystem::remove_all(root);
    return 0;
}
