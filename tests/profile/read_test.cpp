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

TEST(ProfileRead, MissingFilesAndBadArguments) {
    vitrail_test::TempVolumes vols;
    vols.volume("Vol");
    char buf[8] = "#######";
    EXPECT_EQ(GetPrivateProfileString("A", "x", "dd", buf, 8, "Vol:none.ini"), 2);
    EXPECT_EQ(std::string(buf), "dd");
    EXPECT_EQ(GetPrivateProfileString("A", "x", "dd", buf, 8, "Vol"), 2); // a folder
    EXPECT_EQ(GetPrivateProfileString("A", "x", "dd", buf, 0, "Vol:none.ini"), 0);
    EXPECT_EQ(GetPrivateProfileString("A", "x", "dd", nullptr, 8, "Vol:none.ini"), 0);
    EXPECT_EQ(GetPrivateProfileString("A", "x", nullptr, buf, 8, "Vol:none.ini"), 0);
    EXPECT_EQ(std::string(buf), "");
    EXPECT_EQ(GetPrivateProfileString("A", "x", "abc", buf, 1, "Vol:none.ini"), 0);
    EXPECT_EQ(buf[0], '\0');
}

TEST(ProfileRead, WithEveryMemoryFileTakenTheDefaultComesBack) {
    vitrail_test::TempVolumes vols;
    vols.write("Vol/a.ini", kAB);
    for (int i = 0; i < 5; ++i) MFil_Open("", 1, 1);
    char buf[8];
    EXPECT_EQ(GetPrivateProfileString("A", "x", "d", buf, 8, "Vol:a.ini"), 1);
    EXPECT_EQ(std::string(buf), "d");
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
