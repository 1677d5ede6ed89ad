// POSIX files and Mac-to-Unix path conversion, inside a temporary volumes
// root.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <tuple>
#include <vitrail/files.h>

#include "support/temp_volumes.h"

namespace fs = std::filesystem;
using vitrail_test::TempVolumes;

namespace {

std::string Mac2Unix(const char *mac) {
    char out[256];
    MAC2UNIX(mac, out);
    return out;
}

std::string BsdMac2Unix(const char *mac) {
    char out[256];
    BSDMAC2UNIX(mac, out);
    return out;
}

} // namespace

TEST(PathConversion, VolumesFilesAndMissingVolumes) {
    TempVolumes volumes;
    const std::string root = volumes.root().string();
    fs::create_directory_symlink("/", volumes.root() / "Macintosh HD");
    volumes.volume("Vol");
    volumes.write("Plain", "a regular file where a volume would be");
    const struct {
        const char *mac;
        std::string mac2unix, bsd;
    } rows[] = {
        {"Macintosh HD:Users:ann:a.ini", root + "/Macintosh HD/Users/ann/a.ini",
         root + "/Macintosh HD/Users/ann/a.ini"},
        {"Data:x", root + "/Data/x", "/x"},
        {"Vol:a/b", root + "/Vol/a:b", root + "/Vol/a:b"},
        {"Vol:dir:", root + "/Vol/dir/", root + "/Vol/dir/"},
        {"Vol", root + "/Vol", root + "/Vol"},
        {"Data", root + "/Data", ""},
        {"Plain:x:y", "/x/y", root + "/Plain/x/y"},
        {"", root + "/", root + "/"},
    };
    for (const auto &r : rows) {
        EXPECT_EQ(Mac2Unix(r.mac), r.mac2unix) << r.mac;
        EXPECT_EQ(BsdMac2Unix(r.mac), r.bsd) << r.mac;
    }
    EXPECT_EQ(Mac2Unix(nullptr), root + "/");
    MAC2UNIX("Vol:x", nullptr);
    BSDMAC2UNIX("Vol:x", nullptr);
}

TEST(PathConversion, LongPathsAreCutInsideTheBuffer) {
    TempVolumes volumes;
    volumes.volume("Vol");
    std::string mac = "Vol:" + std::string(400, 'n');
    for (auto convert : {MAC2UNIX, BSDMAC2UNIX}) {
        char out[300];
        std::memset(out, '#', sizeof out);
        convert(mac.c_str(), out);
        EXPECT_EQ(std::strlen(out), 255u);
        EXPECT_EQ(out[256], '#');
    }
    EXPECT_EQ(xFile_Open(mac.c_str(), 0, 1), -1);
    EXPECT_EQ(MACRemove(mac.c_str()), -1);
    EXPECT_EQ(MACRename(mac.c_str(), "Vol:b"), -1);
}

TEST(XFileOpen, ModesAndRefusals) {
    TempVolumes volumes;
    volumes.volume("Vol");
    volumes.write("Vol/data.txt", "hello");
    volumes.volume("Vol/folder");
    const struct {
        const char *mac;
        int32_t bRead, bWrite;
        bool opens;
    } rows[] = {
        {"Vol:data.txt", 1, 0, true},    {"Vol:data.txt", 1, 1, true},
        {"Vol:folder", 1, 0, false},     {"Vol:missing", 1, 0, false},
        {"Vol:missing", 1, 1, false},    {"Vol:data.txt", 0, 0, false},
        {"Vol:data.txt", -1, -1, false}, {"Nowhere:dir:new.txt", 0, 1, false},
        {nullptr, 1, 0, false},
    };
    for (const auto &r : rows) {
        int32_t fd = xFile_Open(r.mac, r.bRead, r.bWrite);
        EXPECT_EQ(fd >= 0, r.opens) << (r.mac ? r.mac : "null") << " " << r.bRead << r.bWrite;
        if (fd >= 0) {
            EXPECT_EQ(xFile_Close(fd), 0);
        }
    }
    EXPECT_EQ(volumes.read("Vol/data.txt"), "hello");
    EXPECT_EQ(xFile_Close(-1), -1);
}

TEST(XFileOpen, WriteOnlyCreatesForEverybodyOrEmpties) {
    TempVolumes volumes;
    volumes.volume("Vol");
    int32_t fd = xFile_Open("Vol:new.txt", 0, 1);
    ASSERT_GE(fd, 0);
    EXPECT_EQ(xFile_Write(fd, "abc", 3), 3);
    EXPECT_EQ(xFile_Close(fd), 0);
    struct stat st;
    ASSERT_EQ(stat((volumes.root() / "Vol/new.txt").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0777u);
    EXPECT_EQ(volumes.read("Vol/new.txt"), "abc");

    fd = xFile_Open("Vol:new.txt", 0, 1);
    ASSERT_GE(fd, 0);
    EXPECT_EQ(xFile_Close(fd), 0);
    EXPECT_EQ(volumes.read("Vol/new.txt"), "");
}

TEST(XFile, SizeRewindsAndSetEOFCutsAtThePosition) {
    TempVolumes volumes;
    volumes.volume("Vol");
    volumes.write("Vol/f.txt", "0123456789");
    int32_t fd = xFile_Open("Vol:f.txt", 1, 1);
    ASSERT_GE(fd, 0);
    char buf[16] = {};
    EXPECT_EQ(xFile_Read(fd, buf, 5), 5);
    EXPECT_EQ(xFile_GetPos(fd), 5);
    EXPECT_EQ(xFile_Size(fd), 10);
    EXPECT_EQ(xFile_GetPos(fd), 0);
    EXPECT_EQ(xFile_Read(fd, buf, 3), 3);
    EXPECT_EQ(std::string(buf, 3), "012");

    EXPECT_EQ(xFile_Lseek(fd, 7), 7);
    EXPECT_EQ(xFile_Lseek(fd, -1), -1);
    EXPECT_EQ(xFile_GetPos(fd), 7);
    EXPECT_EQ(xFile_SetEOF(fd, -3), -1);
    EXPECT_EQ(xFile_SetEOF(fd, xFile_GetPos(fd)), 0);
    EXPECT_EQ(xFile_GetPos(fd), 7);
    EXPECT_EQ(xFile_Size(fd), 7);

    EXPECT_EQ(xFile_Lseek(fd, 7), 7);
    EXPECT_EQ(std::make_tuple(xFile_Read(fd, buf, 4), xFile_Read(fd, buf, -2),
                              xFile_Read(fd, nullptr, 4), xFile_Write(fd, nullptr, 4),
                              xFile_Write(fd, "x", -1)),
              std::make_tuple(0, 0, 0, -1, -1));
    EXPECT_EQ(xFile_Close(fd), 0);
    EXPECT_EQ(volumes.read("Vol/f.txt"), "0123456");

    // A closed descriptor: reads hide the error, the rest pass -1 on.
    EXPECT_EQ(std::make_tuple(xFile_Read(fd, buf, 4), xFile_Write(fd, "x", 1), xFile_Size(fd),
                              xFile_GetPos(fd), xFile_SetEOF(fd, 0)),
              std::make_tuple(0, -1, -1, -1, -1));
}

TEST(MacRemoveRename, ActOnConvertedPaths) {
    TempVolumes volumes;
    volumes.volume("Vol");
    volumes.write("Vol/a.txt", "a");
    EXPECT_EQ(MACRename("Vol:a.txt", "Vol:b.txt"), 0);
    EXPECT_EQ(volumes.read("Vol/b.txt"), "a");
    EXPECT_FALSE(fs::exists(volumes.root() / "Vol/a.txt"));
    EXPECT_EQ(MACRename("Vol:a.txt", "Vol:c.txt"), -1);
    EXPECT_EQ(MACRemove("Vol:b.txt"), 0);
    EXPECT_FALSE(fs::exists(volumes.root() / "Vol/b.txt"));
    EXPECT_EQ(MACRemove("Vol:b.txt"), -1);
    EXPECT_EQ(MACRemove(nullptr), -1);
    EXPECT_EQ(MACRename(nullptr, "Vol:x"), -1);
}
