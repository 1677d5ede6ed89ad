// Profile reading: every row is a whole file, a query and the expected
// buffer and result.
#include <gtest/gtest.h>

#include <string>

#include <vitrail/files.h>
#include <vitrail/profile.h>

#include "support/temp_volumes.h"

namespace {

using namespace std::string_literals;

constexpr const char *kFile = "Vol:prefs:a.ini";

struct ReadRow {
    std::string file;
    const char *section, *key, *def;
    int32_t size;
    std::string buffer;
    int32_t result;
};

const std::string kAB = "[A]\r\nx=1\r\n[B]\r\nx=2\r\n";
char buf_[8];

TEST(ProfileRead, WholeFiles) {
    vitrail_test::TempVolumes vols;
    const std::string longKey(1023, 'k');
    ReadRow rows[] = {
        {kAB, "B", "x", "d", 64, "2", 1},
        {kAB, "A", "x", "d", 64, "1", 1},
        {kAB, "C", "x", "dflt", 64, "dflt", 4},
        {kAB, "a", "x", "d", 64, "d", 1},                  // case-sensitive
        {"[A]\r\nx = 1\r\n", "A", "x", "d", 64, "d", 1},   // the key is "x "
        {"[A]\r\nx = 1\r\n", "A", "x ", "d", 64, " 1", 2}, // no trimming
        {"[A]\r\nX=1\r\n", "A", "x", "d", 64, "d", 1},
        {"[A]\ry=[z]\rx=1\r", "A", "x", "d", 64, "d", 1},           // "[" ends the section
        {"[A]\ry=[z]\rx=1\r[A]\rx=2\r", "A", "x", "d", 64, "2", 1}, // next occurrence
        {"x=0\r\n[A]\r\n", "A", "x", "d", 64, "d", 1},
        {"x=0\r\n[A]\r\n", "", "x", "d", 64, "d", 1}, // no header: no section
        {"[A]\r\nx=" + std::string(30, 'v') + "\r\n", "A", "x", "d", 10, std::string(9, 'v'), 9},
        {kAB, "C", "x", "0123456789", 4, "012", 3},
        {"[A]\r\nx=\r\n", "A", "x", "d", 64, "", 0},
        {"[A]\r\nx=", "A", "x", "d", 64, "d", 1},            // data ends on an empty value
        {"[A]\r\nx=7", "A", "x", "d", 64, "7", 1},           // the end of data ends a line
        {"[A]\nx=1\n", "A", "x", "d", 64, "d", 1},           // LF only: one long line
        {"[A]\r\n\nx\n=1\n\r\n", "A", "x", "d", 64, "1", 1}, // LF bytes dropped anywhere
        {"[ A ]\r\nk=v\r\n", " A ", "k", "d", 64, "v", 1},
        {"[A]junk\r\nk=v=w\r\n", "A", "k", "d", 64, "v=w", 3},
        {"[A]\r\nk=v\r\n[A]\r\nk=w\r\n", "A", "k", "d", 64, "v", 1},
        {"[A]\r\nk=a[b\r\n", "A", "k", "d", 64, "a[b", 3}, // "[" in the found value
        {"[B]\r\nk=1\r\n[A][B]\r\nk=2\r\n", "B", "k", "d", 64, "1", 1},
        {"[A]\r\n" + std::string(1100, 'k') + "=v\r\n", "A", longKey.c_str(), "d", 64, "v",
         1}, // only 1023 bytes of a line are kept for the comparison
        {"", "A", "x", "d", 64, "d", 1},
        {"[A]\r\nzz=0\r\nk\ney=1\r\n", "A", "key", "d", 64, "1", 1}, // key split by a LF
        {"[A]\r\nzz=0\r\nkey\n=2\r\n", "A", "key", "d", 64, "2", 1},
        {"[A]\r\nzz=0\r\nkeyx=0\r\nkey=5", "A", "key", "d", 64, "5", 1},
        {"[A]\r\nzz=0\r\nq=[\r\nkey=5\r\n", "A", "key", "d", 64, "d", 1},
        {"[A]\r\nk=[\r\n[A]\r\nzz\r\nk=6\r\n", "A", "k", "d", 64, "[", 1},
    };
    for (const ReadRow &r : rows) {
        vols.write("Vol/prefs/a.ini", r.file);
        std::string buf(size_t(r.size), '#');
        int32_t n = GetPrivateProfileString(r.section, r.key, r.def, buf.data(), r.size, kFile);
        EXPECT_EQ(n, r.result) << r.file;
        EXPECT_EQ(std::string(buf.c_str()), r.buffer) << r.file;
    }
    EXPECT_EQ(DATA_MFIL_ID, -1); // every memory file was released
}

// Missing files, folders, bad arguments and no memory file: the default.
TEST(ProfileRead, DefaultsComeBack) {
    vitrail_test::TempVolumes vols;
    vols.write("Vol/a.ini", kAB);
    struct {
        const char *def, *file;
        char *buf;
        int32_t size, result;
        const char *after;
    } rows[] = {{"dd", "Vol:none.ini", buf_, 8, 2, "dd"}, {"dd", "Vol", buf_, 8, 2, "dd"},
                {"dd", "Vol:a.ini", buf_, 0, 0, "#"},     {"dd", "Vol:a.ini", nullptr, 8, 0, "#"},
                {nullptr, "Vol:none.ini", buf_, 8, 0, ""}, {"abc", "Vol:none.ini", buf_, 1, 0, ""},
                {"d", "Vol:a.ini", buf_, 8, 1, "d"}}; // the last with every memory file taken
    for (auto &r : rows) {
        if (&r == &rows[6])
            for (int i = 0; i < 5; ++i) MFil_Open("", 1, 1);
        std::fill(std::begin(buf_), std::end(buf_), '\0'), buf_[0] = '#';
        EXPECT_EQ(GetPrivateProfileString("A", "x", r.def, r.buf, r.size, r.file), r.result);
        EXPECT_STREQ(buf_, r.after) << r.file;
    }
    for (int32_t h = 4; h >= 0; --h) MFil_Close(h);
}

TEST(ProfileRead, Integers) {
    vitrail_test::TempVolumes vols;
    vols.write("Vol/a.ini", "[A]\r\na= 42\r\nb=-3\r\nc=abc\r\nd=\r\ne=2147483648\r\n"
                            "f=123456789012345\r\ng=7 \r\n");
    struct Row {
        const char *key;
        int32_t def, result;
    } rows[] = {{"a", 5, 42}, {"b", 5, 0}, {"c", 5, 0}, {"d", 5, 0},  {"e", 5, 0},
                {"f", 5, 0},  {"g", 5, 7}, {"z", 5, 5}, {"z", -5, 0}, {"z", 0, 0}};
    for (const Row &r : rows)
        EXPECT_EQ(GetPrivateProfileInt("A", r.key, r.def, "Vol:a.ini"), r.result) << r.key;
}

} // namespace
