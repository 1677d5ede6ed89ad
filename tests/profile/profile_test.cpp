// Profiles: the reader and the writers against the byte-by-byte models of
// their rules over random profiles; then the files and arguments that give
// the default or are left alone, the creation mask, killed and concurrent
// writers.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <vitrail/files.h>
#include <vitrail/profile.h>

#include "profile/lookup.h"
#include "support/temp_volumes.h"
#include "tests/profile/model.h"


namespace {

namespace fs = std::filesystem;

// Every write is flushed to disk: the tests keep their profiles in memory.
const bool kInMemory = access("/dev/shm", W_OK) == 0 && setenv("TMPDIR", "/dev/shm", 1) == 0;
const char *const kSection = "\x01";

// The string writer, or the section writer when `key` is kSection.
int32_t Write(const char *section, const char *key, const char *value, const char *file) {
    return key == kSection ? WritePrivateProfileSection(section, value, file)
                           : WritePrivateProfileString(section, key, value, file);
}

// Sets x=2 in section A of `file` from a child process bounded by an alarm,
// its files limited to `limit` bytes, as user nobody when the tests run as
// root and `asNobody` (so that permissions apply): the answer, or -1.
int WriteInChild(const char *file, bool asNobody, rlim_t limit) {
    const pid_t pid = fork();
    if (pid == 0) {
        const rlimit lim{limit, limit};
        alarm(10), signal(SIGXFSZ, SIG_IGN), setrlimit(RLIMIT_FSIZE, &lim);
        if (asNobody && geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(99);
        _exit(Write("A", "x", "2", file));
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Random profiles from pieces that steer the rules, one in `sparse` holding
// a "[", now and then a run past the 1023 bytes kept of a line; every other
// one with CR LF line ends only. Twelve lookups in each, then one write
// with the file compared byte for byte and what was set read back.
TEST(ProfileModel, RandomProfiles) {
    vitrail_test::TempVolumes vols;
    const fs::path path = vols.volume("Vol") / "a.ini";
    const std::string k1023(1023, 'k'), s(1100, 's');
    // clang-format off
    const std::vector<std::string> pieces = {"\r", "\n", "\r\n", "]", "=", "k", "ke", "key", "S",
        "x", "v", " ", "\rkey=", "\r\nkey=v", "\rke=", "\r\nkex=", "\n\r", "key=", "=key", "\r\n\n",
        "\r\nkey", "\r\n\r\n", "vvvvvvvvvvvvvvvvvvvvvvvv"};
    const std::vector<std::string> brackets = {"[", "[S]", "[S", "\r[S]\r\n", "y=[z]", "\r\n[S]",
        "\r\n[S][\r\n", "\r[[S]\r\n", "x[S]", "\r\n[" + s + "]\r\n", "\r\n" + k1023 + "kkk=v"};
    const std::vector<std::string> sections = {"S", "", "S]", "s", "[S", s.substr(78),
        s.substr(77)};
    const std::vector<std::string> keys = {"key", "k", "ke", "", "x", "key ", "=", "key=", "kk",
        "x[", k1023, k1023 + "k"};
    const std::vector<const char *> values = {"v", "", nullptr, "a[b", "x\ry", "p=1\r\nq=2", "a\nb",
        "k=[\r\nkey=2"};
    // clang-format on
    std::mt19937 rng(20261123);
    auto pick = [&](const auto &v) { return v[rng() % v.size()]; };
    for (int round = 0; round < 3000; ++round) {
        std::string text, crlf;
        const unsigned sparse = 3 + rng() % 60;
        for (int i = int(rng() % 300); i > 0; --i) {
            if (rng() % 500 == 0) text.append(1000 + rng() % 100, "kv"[rng() % 2]);
            text += rng() % sparse ? pick(pieces) : pick(brackets);
        }
        for (char c : text) crlf += c == '\r' ? "\r\n" : c == '\n' ? "" : std::string(1, c);
        if (round % 2) text = crlf;
        for (int q = 0; q < 12; ++q) {
            const std::string section = pick(sections), key = pick(keys);
            const int32_t size = int32_t(1 + rng() % 16);
            char buf[32];
            std::fill(std::begin(buf), std::end(buf), '#');
            const int32_t n = profile::Lookup(text, section, key.c_str(), buf, size);
            const auto want = profile_model::Read(text, section, key, size_t(size));
            ASSERT_EQ(std::string(buf, n >= 0 ? size_t(n) + 1 : 32),
                      want ? *want + '\0' : std::string(32, '#'))
                << "round " << round << " " << section << "|" << key;
        }
        const std::string section = pick(sections), key = pick(keys);
        const unsigned mode = rng() % 8; // 0: the section writer; 1: the string writer, no key
        const char *k = mode > 1 ? key.c_str() : nullptr, *value = pick(values);
        vols.write(path, text);
        const int32_t r = Write(section.c_str(), mode ? k : kSection, value, "Vol:a.ini");
        const auto want = profile_model::Write(text, section, k, mode == 1 ? nullptr : value);
        ASSERT_EQ(std::to_string(r) + vols.read(path), want ? "1" + *want : "0" + text)
            << "round " << round;
        char buf[64];
        const int32_t n =
            r && k ? GetPrivateProfileString(section.c_str(), k, "-", buf, 64, "Vol:a.ini") : 0;
        ASSERT_EQ(std::string(buf, size_t(n)), r && k ? value ? value : "-" : "")
            << "round " << round;
    }
    EXPECT_EQ(DATA_MFIL_ID, -1); // every memory file was released
}

// Missing files, folders and FIFOs, bad arguments, read-only folders,
// unreadable files, a full disk, memory files all taken: the reader gives
// the default, the writers the answer documented, every file as it was.
TEST(ProfileFiles, DefaultsAndFilesLeftAlone) {
    vitrail_test::TempVolumes vols;
    const std::string text = "[A]\r\nx=1\r\na= 42\r\nb=-3\r\nc=abc\r\nd=\r\ne=2147483648\r\n"
                             "f=123456789012345\r\ng=7 \r\n",
                      vol = (vols.root() / "Vol").string();
    for (const char *f : {"Vol/a.ini", "Vol/ro/a.ini", "Vol/wo.ini"}) vols.write(f, text);
    fs::permissions(vols.root(), fs::perms::all);
    fs::permissions(vol, fs::perms::all);
    chmod((vol + "/ro").c_str(), 0555);
    chmod((vol + "/wo.ini").c_str(), 0200);
    EXPECT_EQ(chown((vol + "/wo.ini").c_str(), 65534, 65534) == 0, geteuid() == 0);
    mkfifo((vol + "/fifo").c_str(), 0666);
    char buf[8];
    // clang-format off
    const struct { const char *def, *file; char *buf; int32_t size, result; const char *after; }
    reads[] = {
        {"dd", "Vol:none.ini", buf, 8, 2, "dd"}, {"dd", "Vol", buf, 8, 2, "dd"},
        {"dd", "Vol:a.ini", buf, 0, 0, "#"}, {"dd", "Vol:a.ini", nullptr, 8, 0, "#"},
        {nullptr, "Vol:none.ini", buf, 8, 0, ""}, {"abc", "Vol:none.ini", buf, 1, 0, ""},
        {"dd", nullptr, buf, 8, 2, "dd"}};
    // clang-format on
    for (const auto &r : reads) {
        std::fill(std::begin(buf), std::end(buf), '\0'), buf[0] = '#';
        EXPECT_EQ(GetPrivateProfileString("A", "x", r.def, r.buf, r.size, r.file), r.result)
            << r.file;
        EXPECT_STREQ(buf, r.after) << r.file;
    }
    EXPECT_EQ(WriteInChild("Vol:fifo", false, RLIM_INFINITY), 0); // refused at once
    EXPECT_EQ(WriteInChild("Vol:ro:a.ini", true, RLIM_INFINITY), 0);
    EXPECT_EQ(WriteInChild("Vol:wo.ini", true, RLIM_INFINITY), 1); // cannot be read: left as it is
    EXPECT_EQ(WriteInChild("Vol:a.ini", false, 4), 0);             // a full disk
    EXPECT_EQ(Write(nullptr, "x", "2", "Vol:a.ini") + Write(nullptr, kSection, "x", "Vol:a.ini") +
                  Write("A", "x", "2", "Vol:nofolder:a.ini") + Write("A", "x", "2", "Vol") +
                  Write("A", "x", "2", nullptr),
              0);
    for (int i = 0; i < 4; ++i) MFil_Open("", 1, 1);
    EXPECT_EQ(Write("A", "x", "2", "Vol:a.ini"), 0); // the output is had, the input is not
    MFil_Open("", 1, 1);
    EXPECT_EQ(Write("A", "x", "2", "Vol:a.ini"), 1); // no output: left as it is
    EXPECT_EQ(GetPrivateProfileString("A", "x", "d", buf, 8, "Vol:a.ini"), 1);
    EXPECT_STREQ(buf, "d");
    for (int32_t h = 4; h >= 0; --h) MFil_Close(h);
    chmod((vol + "/wo.ini").c_str(), 0600);
    for (const char *f : {"Vol/a.ini", "Vol/ro/a.ini", "Vol/wo.ini"})
        EXPECT_EQ(vols.read(f), text) << f;
    EXPECT_EQ(std::distance(fs::directory_iterator(vol), {}), 4); // no temporary file left
    // clang-format off
    const struct { const char *key; int32_t def, result; } ints[] = {{"a", 5, 42}, {"b", 5, 0},
        {"c", 5, 0}, {"d", 5, 0}, {"e", 5, 0}, {"f", 5, 0}, {"g", 5, 7}, {"z", 5, 5}, {"z", -5, 0},
        {"z", 0, 0}};
    // clang-format on
    for (const auto &r : ints)
        EXPECT_EQ(GetPrivateProfileInt("A", r.key, r.def, "Vol:a.ini"), r.result) << r.key;
}

// Files the library creates get their world-writable modes whatever the
// host's creation mask, which stays as it was; a symbolic link is followed.
TEST(ProfileFiles, CreationMaskAndLinks) {
    vitrail_test::TempVolumes vols;
    vols.write("Vol/keep.ini", "[A]\r\n");
    chmod((vols.root() / "Vol/keep.ini").c_str(), 0640);
    fs::create_symlink("keep.ini", vols.root() / "Vol/link.ini");
    umask(022);
    // clang-format off
    const struct { const char *name; int (*create)(); mode_t mode; } rows[] = {
        {"x.ini", [] { return xFile_Close(xFile_Open("Vol:x.ini", 0, 1)); }, 0777},
        {"f.txt", [] { return File_Close(File_Open("Vol:f.txt", 0, 1)); }, 0777},
        {"d", [] { return MakeDir("Vol:d") - 1; }, 0777},
        {"p.ini", [] { return Write("A", "x", "1", "Vol:p.ini") - 1; }, 0777},
        {"s.ini", [] { return Write("A", kSection, "x=1", "Vol:s.ini") - 1; }, 0777},
        {"keep.ini", [] { return Write("A", "x", "1", "Vol:link.ini") - 1; }, 0640}};
    // clang-format on
    for (const auto &r : rows) {
        struct stat st {};
        EXPECT_EQ(r.create(), 0) << r.name;
        EXPECT_EQ(umask(022), mode_t(022)) << r.name;
        stat((vols.root() / "Vol" / r.name).c_str(), &st);
        EXPECT_EQ(st.st_mode & 07777, r.mode) << r.name;
    }
    EXPECT_TRUE(fs::is_symlink(vols.root() / "Vol/link.ini"));
    EXPECT_EQ(vols.read("Vol/keep.ini"), "[A]\r\nx=1\r\n");
}

// A writer killed at any moment leaves the old file or the new one; writers
// in 8 processes at once lose none of each other's keys.
TEST(ProfileFiles, KilledAndConcurrentWriters) {
    vitrail_test::TempVolumes vols;
    std::string big, texts[2];
    for (int i = 0; i < 4000; ++i)
        big += "[S" + std::to_string(i) + "]\r\nk=" + std::string(40, 'v') + "\r\n";
    vols.write("Vol/a.ini", big);
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(Write("S2000", "k", i ? "B" : "A", "Vol:a.ini"), 1);
        texts[i] = vols.read("Vol/a.ini");
    }
    for (int round = 0; round < 30; ++round) {
        const pid_t pid = fork();
        if (pid == 0)
            for (int i = 0;; ++i) Write("S2000", "k", i % 2 ? "B" : "A", "Vol:a.ini");
        usleep(useconds_t(1000 + 997 * round % 5000));
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        const std::string now = vols.read("Vol/a.ini");
        ASSERT_TRUE(now == texts[0] || now == texts[1]) << "round " << round << ", " << now.size();
    }
    auto key = [](int p, int k) { return "p" + std::to_string(p) + "k" + std::to_string(k); };
    std::vector<pid_t> children;
    for (int p = 0; p < 8; ++p)
        if (children.emplace_back(fork()) == 0) {
            alarm(20);
            int ok = 0;
            for (int k = 0; k < 200; ++k)
                ok += Write(p % 2 ? "A" : "B", key(p, k).c_str(), key(p, k).c_str(), "Vol:b.ini");
            _exit(ok == 200 ? 0 : 1);
        }
    for (pid_t pid : children) {
        int status = -1;
        waitpid(pid, &status, 0);
        EXPECT_EQ(status, 0);
    }
    for (int p = 0; p < 8; ++p)
        for (int k = 0; k < 200; ++k) {
            char buf[16];
            GetPrivateProfileString(p % 2 ? "A" : "B", key(p, k).c_str(), "", buf, 16, "Vol:b.ini");
            ASSERT_EQ(buf, key(p, k));
        }
}

} // namespace
