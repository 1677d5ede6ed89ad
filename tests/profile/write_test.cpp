// Profile writing: every row is a whole file before, a call and the whole
// file after, compared byte for byte.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

#include <vitrail/files.h>
#include <vitrail/profile.h>

#include "support/temp_volumes.h"

namespace {

using namespace std::string_literals;

struct WriteRow {
    std::optional<std::string> before; // nullopt: no file
    const char *section, *key, *value; // key "\x01": the section writer, value = text
    int32_t result;
    std::string after;
};

const char *const kSectionCall = "\x01";

TEST(ProfileWrite, WholeFiles) {
    vitrail_test::TempVolumes vols;
    vols.volume("Vol");
    const std::string ab = "[A]\r\nx=1\r\n[B]\r\n";
    WriteRow rows[] = {
        // the string writer
        {std::nullopt, "A", "x", "5", 1, "[A]\r\nx=5\r\n"},
        {"", "A", "x", "5", 1, "[A]\r\nx=5\r\n"},
        {"[A]\r\nx=1\r\n", "B", "y", "2", 1, "[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n"},
        {"[A]\r\nx=1\r\n\r\n[B]\r\n", "A", "z", "3", 1, "[A]\r\nx=1\r\nz=3\r\n\r\n[B]\r\n"},
        {"[A]\r\nx=1\r\nx=2\r\n[A]\r\nx=3\r\n", "A", "x", "9", 1,
         "[A]\r\nx=9\r\nx=2\r\n[A]\r\nx=3\r\n"},
        {"[A]\r\nx =1\r\nx=2\r\n", "A", "x ", "9", 1, "[A]\r\nx =9\r\nx=2\r\n"},
        {"[A]\r\nx=1\r\ny=2\r\n", "A", "x", nullptr, 1, "[A]\r\ny=2\r\n"},
        {"[A]\r\nx=1\r\n\r\n\r\ny=2\r\n", "A", "x", nullptr, 1, "[A]\r\n\r\n\r\ny=2\r\n"},
        {"[A]\rx=1\r\r[B]\ry=2", "A", "q", nullptr, 1, "[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n"},
        {"[A]\rx=1\r[B]\ry=2\r", "B", "y", "3", 1, "[A]\r\nx=1\r\n[B]\r\ny=3\r\n"},
        {"[A]\nx=1\n", "A", "x", "2", 1, "[A]x=1\r\nx=2\r\n"}, // LF only: one line
        {"[A]\r\nx=1\r\n\r\n\r\n", "A", "z", "3", 1, "[A]\r\nx=1\r\nz=3\r\n\r\n\r\n"},
        {"[A]\r\nx=1\r\n\r\n\r\n", "A", "x", "3", 1, "[A]\r\nx=3\r\n"}, // end blanks dropped
        {"[A]\r\nx=1\r\n\r\n", "B", "y", "2", 1, "[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n\r\n"},
        {"[A]\r\ny=[z]\r\nw=1\r\n", "A", "x", "5", 1, "[A]\r\nx=5\r\ny=[z]\r\nw=1\r\n"},
        {"x=0\r\n", "A", "x", "5", 1, "x=0\r\n\r\n[A]\r\nx=5\r\n"},
        {"\n", "A", "x", "5", 1, "\r\n[A]\r\nx=5\r\n"},
        {"[A]\r\nx=1", "A", "x", "", 1, "[A]\r\nx=\r\n"},
        {"[A]\r\nx=1\r\n", "A", "y", nullptr, 1, "[A]\r\nx=1\r\n"},
        {"[B]\r\n", "A", "y", nullptr, 1, "[B]\r\n"},
        {"[A]\r\n" + std::string(20000, 'x') + "\r", "A", "k", "v", 1,
         "[A]\r\n" + std::string(20000, 'x') + "\r\nk=v\r\n"}, // long lines stay whole
        // the section writer, and the string writer with no key
        {ab, "A", kSectionCall, "p=1\r\nq=2", 1, "[A]\r\np=1\r\nq=2\r\n[B]\r\n"},
        {ab, "A", nullptr, nullptr, 1, "[A]\r\n[B]\r\n"},
        {ab, "A", kSectionCall, nullptr, 1, "[A]\r\n[B]\r\n"},
        {"[A]\r\nx=1\r\n\r\n[B]\r\n", "A", kSectionCall, "p=1", 1, "[A]\r\np=1\r\n\r\n[B]\r\n"},
        {"[A]\r\nx=1\r\ny=[\r\nz=2\r\n", "A", kSectionCall, "p=1", 1,
         "[A]\r\np=1\r\ny=[\r\nz=2\r\n"},
        {ab, "C", kSectionCall, "p=1", 1, "[A]\r\nx=1\r\n[B]\r\n\r\n[C]\r\np=1\r\n"},
        {std::nullopt, "C", kSectionCall, "p=1", 1, "[C]\r\np=1\r\n"},
        {ab, "C", kSectionCall, nullptr, 1, ab},
        {"[A]\r\nx=1\r\n\r\n", "A", kSectionCall, "p", 1, "[A]\r\np\r\n"},
    };
    for (const WriteRow &r : rows) {
        std::filesystem::remove(vols.root() / "Vol/a.ini");
        if (r.before) vols.write("Vol/a.ini", *r.before);
        int32_t result = r.key == kSectionCall
                             ? WritePrivateProfileSection(r.section, r.value, "Vol:a.ini")
                             : WritePrivateProfileString(r.section, r.key, r.value, "Vol:a.ini");
        EXPECT_EQ(result, r.result) << r.before.value_or("(none)");
        EXPECT_EQ(vols.read("Vol/a.ini"), r.after) << r.before.value_or("(none)");
    }
    EXPECT_EQ(DATA_MFIL_ID, -1);
}

TEST(ProfileWrite, FailuresLeaveTheFileAlone) {
    vitrail_test::TempVolumes vols;
    vols.write("Vol/a.ini", "[A]\r\nx=1\r\n");
    EXPECT_EQ(WritePrivateProfileString(nullptr, "x", "2", "Vol:a.ini"), 0);
    EXPECT_EQ(WritePrivateProfileSection(nullptr, "x", "Vol:a.ini"), 0);
    EXPECT_EQ(WritePrivateProfileString("A", "x", "2", "Vol:nofolder:a.ini"), 0);
    EXPECT_EQ(WritePrivateProfileString("A", "x", "2", nullptr), 0);
    for (int i = 0; i < 4; ++i) MFil_Open("", 1, 1);
    // one memory file left: the output is had, the input is not
    EXPECT_EQ(WritePrivateProfileString("A", "x", "2", "Vol:a.ini"), 0);
    MFil_Open("", 1, 1);
    EXPECT_EQ(WritePrivateProfileString("A", "x", "2", "Vol:a.ini"), 1); // no output: unchanged
    for (int32_t h = 4; h >= 0; --h) MFil_Close(h);
    EXPECT_EQ(vols.read("Vol/a.ini"), "[A]\r\nx=1\r\n");
}

TEST(ProfileWrite, ReadBackWhatWasWritten) {
    vitrail_test::TempVolumes vols;
    vols.volume("Vol");
    for (int i = 0; i < 50; ++i) {
        std::string s = "S" + std::to_string(i % 7), k = "k" + std::to_string(i);
        ASSERT_EQ(WritePrivateProfileString(s.c_str(), k.c_str(), k.c_str(), "Vol:b.ini"), 1);
    }
    for (int i = 0; i < 50; ++i) {
        std::string s = "S" + std::to_string(i % 7), k = "k" + std::to_string(i);
        char buf[16];
        EXPECT_EQ(GetPrivateProfileString(s.c_str(), k.c_str(), "", buf, 16, "Vol:b.ini"),
                  int32_t(k.size()));
        EXPECT_EQ(std::string(buf), k);
    }
}

} // namespace
