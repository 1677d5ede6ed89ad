// Profile writing: every row is a whole file before, a call and the whole
// file after, compared byte for byte; then the files the writers must leave
// alone, the creation mask, killed and concurrent writers.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vitrail/files.h>
#include <vitrail/profile.h>

#include "support/temp_volumes.h"

namespace {

namespace fs = std::filesystem;

const char *const kSectionCall = "\x01";

// Calls the string writer, or the section writer when `key` is kSectionCall.
int32_t Write(const char *section, const char *key, const char *value, const char *file) {
    return key == kSectionCall ? WritePrivateProfileSection(section, value, file)
                               : WritePrivateProfileString(section, key, value, file);
}

// Runs `f` in a child process, bounded by an alarm, as user nobody when the
// tests run as root (so that permissions apply): its exit code, or -1.
template <typename F> int InChild(F f, bool asNobody = false) {
    pid_t pid = fork();
    if (pid == 0) {
        alarm(10);
        if (asNobody && geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(99);
        _exit(f());
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(ProfileWrite, WholeFiles) {
    vitrail_test::TempVolumes vols;
    vols.volume("Vol");
    const std::string ab = "[A]\r\nx=1\r\n[B]\r\n", k1100(1100, 'k'), s1023(1023, 's');
    struct {
        std::optional<std::string> before; // nullopt: no file
        const char *section, *key, *value;
        int32_t result;
        std::string after; // "": unchanged
    } rows[] = {
        // the string writer
        {std::nullopt, "A", "x", "5", 1, "[A]\r\nx=5\r\n"},
        {"[A]\r\nx=1\r\n", "B", "y", "2", 1, "[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n"},
        {"[A]\r\nx=1\r\n\r\n[B]\r\n", "A", "z", "3", 1, "[A]\r\nx=1\r\nz=3\r\n\r\n[B]\r\n"},
        {"[A]\r\nx=1\r\nx=2\r\n[A]\r\nx=3\r\n", "A", "x", "9", 1,
         "[A]\r\nx=9\r\nx=2\r\n[A]\r\nx=3\r\n"},
        {"[A]\r\nx =1\r\nx=2\r\n", "A", "x ", "9", 1, "[A]\r\nx =9\r\nx=2\r\n"},
        {"[A]\r\nx=1\r\n\r\n\r\ny=2\r\n", "A", "x", nullptr, 1, "[A]\r\n\r\n\r\ny=2\r\n"},
        {"[A]\rx=1\r\r[B]\ry=2", "A", "q", nullptr, 1, "[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n"},
        {"[A]\nx=1\n", "A", "x", "2", 1, "[A]x=1\r\nx=2\r\n"}, // LF only: one line
        {"[A]\r\nx=1\r\n\r\n\r\n", "A", "z", "3", 1, "[A]\r\nx=1\r\nz=3\r\n\r\n\r\n"},
        {"[A]\r\nx=1\r\n\r\n\r\n", "A", "x", "3", 1, "[A]\r\nx=3\r\n"}, // end blanks dropped
        {"[A]\r\nx=1\r\n\r\n", "B", "y", "2", 1, "[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n\r\n"},
        {"[A]\r\ny=[z]\r\nw=1\r\n", "A", "x", "5", 1, "[A]\r\nx=5\r\ny=[z]\r\nw=1\r\n"},
        {"x=0\r\n", "A", "x", "5", 1, "x=0\r\n\r\n[A]\r\nx=5\r\n"},
        {"\n", "A", "x", "5", 1, "\r\n[A]\r\nx=5\r\n"},
        {"[A]\r\n" + k1100 + "\r", "A", "k", "v", 1, "[A]\r\n" + k1100 + "\r\nk=v\r\n"},
        // deleted wherever the reader would find it
        {"[A]\r\nx=1\r\nx=2\r\n[B]\r\nx=0\r\n[A]\r\ny=[\r\nx=3\r\n\r\n", "A", "x", nullptr, 1,
         "[A]\r\n[B]\r\nx=0\r\n[A]\r\ny=[\r\nx=3\r\n"},
        {"[A]\r\nx=a[b\r\nx=2\r\n", "A", "x", nullptr, 1, "[A]\r\n"},
        // refused: the reader would not find what is written
        {"[B]\r\n[A][\r\n[A]\r\nx=1\r\n", "A", "x", "2", 0, ""},
        {ab, "A", "x", "a\rb", 0, ""},
        {ab, "A", "x[", "1", 0, ""},
        {ab, "A", k1100.c_str(), "1", 0, ""},
        {ab, s1023.c_str(), "x", "1", 0, ""},
        {ab, "A\n", "x", "1", 0, ""},
        {ab, s1023.c_str() + 1, k1100.c_str() + 77, "1", 1,
         ab + "\r\n[" + s1023.substr(1) + "]\r\n" + k1100.substr(77) + "=1\r\n"},
        // the section writer, and the string writer with no key
        {ab, "A", kSectionCall, "p=1\r\nq=2", 1, "[A]\r\np=1\r\nq=2\r\n[B]\r\n"},
        {ab, "A", nullptr, nullptr, 1, "[A]\r\n[B]\r\n"},
        {"[A]\r\n\r\nx=1\r\n\r\n[B]\r\n", "A", kSectionCall, "p", 1, "[A]\r\np\r\n\r\n\r\n[B]\r\n"},
        {"[A]\r\nx=1\r\ny=[\r\nz=2\r\n", "A", kSectionCall, "p=1", 1,
         "[A]\r\np=1\r\ny=[\r\nz=2\r\n"},
        {ab, "C", kSectionCall, "p=1", 1, "[A]\r\nx=1\r\n[B]\r\n\r\n[C]\r\np=1\r\n"},
        {std::nullopt, "C", kSectionCall, "p=1", 1, "[C]\r\np=1\r\n"},
        {"[A]\r\nx=1\r\n\r\n", "A", kSectionCall, "p", 1, "[A]\r\np\r\n"},
        {"[A][\r\nx=1\r\n", "A", kSectionCall, "p=1", 0, ""},
        {ab, "A", kSectionCall, "p=1\nq=2", 0, ""},
        {"[A][\r\nx=1\r\n", "A", kSectionCall, nullptr, 1, "[A][\r\nx=1\r\n"},
    };
    for (const auto &r : rows) {
        fs::remove(vols.root() / "Vol/a.ini");
        if (r.before) vols.write("Vol/a.ini", *r.before);
        EXPECT_EQ(Write(r.section, r.key, r.value, "Vol:a.ini"), r.result) << *r.before;
        EXPECT_EQ(vols.read("Vol/a.ini"), r.after.empty() ? *r.before : r.after) << *r.before;
    }
    EXPECT_EQ(DATA_MFIL_ID, -1);
    EXPECT_EQ(std::distance(fs::directory_iterator(vols.root() / "Vol"), {}), 1); // no temporaries
}

// Files the writers must leave as they are, and the answer they get.
TEST(ProfileWrite, FilesLeftAlone) {
    vitrail_test::TempVolumes vols;
    const std::string text = "[A]\r\nx=1\r\n", vol = (vols.root() / "Vol").string();
    vols.write("Vol/a.ini", text);
    vols.write("Vol/ro/a.ini", text);
    vols.write("Vol/wo.ini", text);
    fs::permissions(vols.root(), fs::perms::all);
    fs::permissions(vol, fs::perms::all);
    chmod((vol + "/ro").c_str(), 0555);
    chmod((vol + "/wo.ini").c_str(), 0200);
    EXPECT_EQ(chown((vol + "/wo.ini").c_str(), 65534, 65534) == 0, geteuid() == 0);
    mkfifo((vol + "/fifo").c_str(), 0666);
    auto write = [](const char *file) { return [=] { return int(Write("A", "x", "2", file)); }; };
    EXPECT_EQ(InChild(write("Vol:fifo")), 0); // refused at once
    EXPECT_EQ(InChild(write("Vol:ro:a.ini"), true), 0);
    EXPECT_EQ(InChild(write("Vol:wo.ini"), true), 1); // cannot be read: left as it is
    EXPECT_EQ(Write(nullptr, "x", "2", "Vol:a.ini"), 0);
    EXPECT_EQ(Write(nullptr, kSectionCall, "x", "Vol:a.ini"), 0);
    EXPECT_EQ(Write("A", "x", "2", "Vol:nofolder:a.ini"), 0);
    EXPECT_EQ(Write("A", "x", "2", "Vol"), 0);
    EXPECT_EQ(Write("A", "x", "2", nullptr), 0);
    EXPECT_EQ(InChild([] { // a full disk
                  signal(SIGXFSZ, SIG_IGN);
                  rlimit lim{4, 4};
                  setrlimit(RLIMIT_FSIZE, &lim);
                  return int(Write("A", "x", "2", "Vol:a.ini"));
              }),
              0);
    for (int i = 0; i < 4; ++i) MFil_Open("", 1, 1);
    EXPECT_EQ(Write("A", "x", "2", "Vol:a.ini"), 0); // the output is had, the input is not
    MFil_Open("", 1, 1);
    EXPECT_EQ(Write("A", "x", "2", "Vol:a.ini"), 1); // no output: left as it is
    for (int32_t h = 4; h >= 0; --h) MFil_Close(h);
    chmod((vol + "/wo.ini").c_str(), 0600);
    for (const char *f : {"a.ini", "ro/a.ini", "wo.ini"}) EXPECT_EQ(vols.read("Vol/" + std::string(f)), text) << f;
    EXPECT_EQ(std::distance(fs::directory_iterator(vol), {}), 4);
}

// Files the library creates get their world-writable modes; the host's
// creation mask stays what it was.
TEST(ProfileWrite, CreationMaskKept) {
    vitrail_test::TempVolumes vols;
    vols.write("Vol/keep.ini", "[A]\r\n");
    chmod((vols.root() / "Vol/keep.ini").c_str(), 0640);
    umask(022);
    struct {
        const char *name;
        int (*create)();
        mode_t mode;
    } rows[] = {
        {"x.ini", [] { return xFile_Close(xFile_Open("Vol:x.ini", 0, 1)); }, 0777},
        {"f.txt", [] { return File_Close(File_Open("Vol:f.txt", 0, 1)); }, 0777},
        {"d", [] { return MakeDir("Vol:d") - 1; }, 0777},
        {"p.ini", [] { return Write("A", "x", "1", "Vol:p.ini") - 1; }, 0777},
        {"s.ini", [] { return Write("A", kSectionCall, "x=1", "Vol:s.ini") - 1; }, 0777},
        {"keep.ini", [] { return Write("A", "x", "1", "Vol:keep.ini") - 1; }, 0640},
    };
    for (const auto &r : rows) {
        EXPECT_EQ(r.create(), 0) << r.name;
        EXPECT_EQ(umask(022), mode_t(022)) << r.name;
        struct stat st {};
        stat((vols.root() / "Vol" / r.name).c_str(), &st);
        EXPECT_EQ(st.st_mode & 07777, r.mode) << r.name;
    }
}

// A writer killed at any moment leaves the old file or the new one.
TEST(ProfileWrite, KilledWritersLeaveAWholeFile) {
    vitrail_test::TempVolumes vols;
    std::string big;
    for (int i = 0; i < 4000; ++i) big += "[S" + std::to_string(i) + "]\r\nk=" + std::string(40, 'v') + "\r\n";
    vols.write("Vol/a.ini", big);
    std::string texts[2];
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(Write("S2000", "k", i ? "B" : "A", "Vol:a.ini"), 1);
        texts[i] = vols.read("Vol/a.ini");
    }
    for (int round = 0; round < 30; ++round) {
        pid_t pid = fork();
        if (pid == 0)
            for (int i = 0;; ++i) Write("S2000", "k", i % 2 ? "B" : "A", "Vol:a.ini");
        usleep(useconds_t(1000 + 997 * round % 5000));
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        std::string now = vols.read("Vol/a.ini");
        ASSERT_TRUE(now == texts[0] || now == texts[1]) << "round " << round << ", " << now.size();
    }
}

// Writers in 8 processes at once lose none of each other's keys.
TEST(ProfileWrite, ConcurrentWritersKeepEveryKey) {
    vitrail_test::TempVolumes vols;
    vols.volume("Vol");
    auto key = [](int p, int k) { return "p" + std::to_string(p) + "k" + std::to_string(k); };
    std::vector<pid_t> children;
    for (int p = 0; p < 8; ++p)
        if ((children.emplace_back(fork())) == 0) {
            alarm(20);
            int ok = 0;
            for (int k = 0; k < 200; ++k)
                ok += Write(p % 2 ? "A" : "B", key(p, k).c_str(), key(p, k).c_str(), "Vol:a.ini");
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
            GetPrivateProfileString(p % 2 ? "A" : "B", key(p, k).c_str(), "", buf, 16, "Vol:a.ini");
            ASSERT_EQ(buf, key(p, k));
        }
}

} // namespace
