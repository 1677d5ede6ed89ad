// The memory-file and file handle tables (slots and their mark, bounds,
// growth, writes from a file's own block, modes, path tests), Mac paths
// turned into Unix paths and POSIX files, folder listings and their sorts.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <set>
#include <sstream>
#include <sys/stat.h>

#include <vitrail/files.h>

#include "support/temp_volumes.h"

namespace {

struct Files : ::testing::Test {
    vitrail_test::TempVolumes vols;
    void SetUp() override { vols.write("Vol/a", "0123456789"); }
    void TearDown() override {
        for (int32_t h = 4; h >= 0; --h) File_Close(h), MFil_Close(h);
        DATA_FILE_ID = DATA_MFIL_ID = -1;
    }
};

// Rows "<op><n> <answer> <size> <position> [<bytes read>]" on a memory
// file or a file: w writes n bytes of the digit n, r reads, b re-reads, s
// seeks, e sets the end.
void RunScript(bool file, int32_t h, std::initializer_list<const char *> rows) {
    for (const char *r : rows) {
        char op = 0, want[16] = "", io[16] = {};
        int32_t n = 0, answer = 0, size = 0, pos = 0;
        std::sscanf(r, "%c%d %d %d %d %15s", &op, &n, &answer, &size, &pos, want);
        if (op == 'w') std::fill_n(io, 15, char('0' + n));
        const int32_t got = op == 'w'   ? (file ? File_Write : MFil_Write)(h, io, n)
                            : op == 'r' ? (file ? File_Read : MFil_Read)(h, io, n)
                            : op == 'b' ? (file ? File_Re_Read : MFil_Re_Read)(h, io, n)
                            : op == 's' ? (file ? File_Lseek : MFil_Lseek)(h, n)
                                        : File_SetEOF(h, n);
        EXPECT_TRUE(got == answer && (file ? File_Size : MFil_Size)(h) == size &&
                    (file ? File_GetPos : MFil_GetPos)(h) == pos)
            << r;
        EXPECT_STREQ(op == 'w' ? "" : io, want) << r;
    }
}

TEST_F(Files, ReadsSeeksAndWritesStayInBounds) {
    const int32_t m = MFil_Open("", 1, 1);
    // clang-format off
    RunScript(false, m, {"w6 6 6 6", "s2 0 6 2", "w2 2 6 4", "r9 2 6 6 66", "b9 6 6 6 662266",
                         "s7 -1 6 6", "s-1 -1 6 6", "w-1 0 6 6", "r-1 0 6 6", "b-1 0 6 6",
                         "s3 0 6 3", "b4 3 6 3 662"});
    // clang-format on
    auto *block = static_cast<char *>(DATA_MFIL_TAB[m].hMem);
    EXPECT_TRUE(MFil_LockPtr(m, 5) == block + 5 && !MFil_LockPtr(m, 6) && !MFil_LockPtr(m, -1));
    // clang-format off
    RunScript(true, File_Open("Vol:a", 1, 1),
              {"r3 3 10 3 012", "b5 3 10 3 012", "r99 7 10 10 3456789", "s4 0 10 4", "w2 2 10 6",
               "b3 3 10 6 322", "s11 -1 10 6", "e2 0 2 2", "w3 3 5 5", "e-1 -1 5 5", "r-1 0 5 5",
               "w-1 0 5 5", "b-1 0 5 5"});
    // clang-format on
}

// Both tables hand out the slot above the mark while there is one, then the
// first free slot; closing the top slot lowers the mark by one. "o<slot>"
// opens into that slot ("o-": none left), "c<slot>=<mark>" closes. Bad
// handles and free slots (4 at the end) are refused.
TEST_F(Files, SlotsMarkAndBadHandles) {
    for (bool file : {true, false}) {
        std::istringstream script("o0 o1 o2 c1=2 o3 c3=2 c2=1 o2 o3 o4 o1 o- c0=4 o0 c4=3");
        for (std::string s; script >> s;) {
            const int32_t h = s[1] == '-' ? -1 : s[1] - '0';
            EXPECT_TRUE(s[0] == 'o' ? (file ? File_Open("Vol:a", 1, 0) : MFil_Open("", 1, 1)) == h
                                    : (file ? File_Close : MFil_Close)(h) == 0 &&
                                          (file ? DATA_FILE_ID : DATA_MFIL_ID) == s[3] - '0')
                << s;
        }
        for (int32_t bad : {-1, 5, 4})
            RunScript(file, bad, {"w4 0 0 0", "r4 0 0 0", "b4 0 0 0", "s0 -1 0 0", "e0 -1 0 0"});
    }
    EXPECT_TRUE(File_Close(4) == -1 && MFil_Close(4) == 0 && !MFil_LockPtr(4, 0));
}

// Growth, and a source inside the file's own block: found where the block
// is after growing, may overlap the bytes it replaces, may not run past it.
TEST_F(Files, MemoryFilesGrowAndWriteFromTheirOwnBlock) {
    // size, minimum size, then bytes allocated at the open and after writes
    // of 4090 and of the last column's bytes (growth: 4096 past the position)
    // clang-format off
    const int32_t rows[][5] = {{1, 1, 4096, 100, 8186}, {1, 1, 4096, 5000, 9090},
                               {5000, 0, 5000, 6, 5000}, {1, 10000, 10000, 6, 10000}};
    // clang-format on
    const std::string bytes = std::string(4090, 'a') + "012345" + std::string(904, 'x');
    for (const auto &r : rows) {
        const int32_t h = MFil_Open("", r[0], r[1]), alloc = DATA_MFIL_TAB[h].lAlloc;
        MFil_Write(h, bytes.data(), 4090), MFil_Write(h, bytes.data(), r[3]);
        EXPECT_TRUE(alloc == r[2] && DATA_MFIL_TAB[h].lAlloc == r[4]) << r[0] << " " << r[3];
    }
    const int32_t h = MFil_Open("", 1, 1); // the fifth slot
    MFil_Write(h, bytes.data(), 4096);
    EXPECT_EQ(MFil_Write(h, MFil_LockPtr(h, 4090), 6), 6); // grows: the block moves
    EXPECT_TRUE(MFil_Lseek(h, 4092) == 0 && MFil_Write(h, MFil_LockPtr(h, 4090), 6) == 6);
    EXPECT_EQ(std::string(static_cast<char *>(DATA_MFIL_TAB[h].hMem) + 4090, 12), "010123452345");
    EXPECT_TRUE(MFil_Write(h, MFil_LockPtr(h, 4101), 1 << 20) == 0 && MFil_Size(h) == 4102);
    HGLOBAL m = GlobalAlloc(0, 4);
    EXPECT_TRUE(m && !GlobalAlloc(0, -1) && !GlobalReAlloc(m, -1, 0) && !GlobalFree(m));
}

// Opens (the mode kept in the slot, -1 when refused) and the reads and
// writes the mode allows; then the path tests, partial paths relative to the
// current folder.
TEST_F(Files, FileModesAndPathTests) {
    // Rows "<bRead> <bWrite> <result> <mode> <path>".
    for (const char *r : {"1 0 0 0 Vol:a", "0 1 0 1 Vol:a", "1 1 0 2 Vol:a", "0 0 -3 -1 Vol:a",
                          "1 1 -2 -1 Vol:missing", "1 0 -2 -1 Vol", "0 1 -2 -1 Nowhere:x"}) {
        int32_t bRead, bWrite, result, mode;
        char path[16], c;
        std::sscanf(r, "%d %d %d %d %15s", &bRead, &bWrite, &result, &mode, path);
        const int32_t h = File_Open(path, bRead, bWrite);
        EXPECT_TRUE(h == result && DATA_FILE_TAB[0].iMode == mode &&
                    (h < 0 || (File_Size(h) == 10 && File_Read(h, &c, 1) == (mode != 1) &&
                               File_Write(h, "0", 1) == (mode != 0) && File_Close(h) == 0)))
            << r;
        DATA_FILE_ID = -1;
    }
    EXPECT_TRUE(File_Open(nullptr, 1, 0) == -2 && // too long for the slot's name: no slot taken
                File_Open(std::string(144, 'x').c_str(), 1, 0) == -2 && DATA_FILE_ID == -1);
    const int32_t h = File_Open("Vol:new", 0, 1); // created
    EXPECT_TRUE(File_Write(h, "hi", 2) == 2 && File_Close(h) == 0 && vols.read("Vol/new") == "hi");

    vols.write("Vol/dir/inner", "x"), vols.write("Vol/x:y", "1"); // "x:y" shows as "x/y"
    // Rows "<path>=<1 for a file, 2 for a folder, else 0>".
    std::istringstream paths("Vol:a=1 Vol:dir=2 Vol:dir:inner=1 Vol:zz=0 Vol=0 Nowhere:a=0 Vol:=2 "
                             "Vol:a:b=0 Vol:x/y=1");
    for (std::string r; paths >> r;) {
        const int32_t kind = r.back() - '0';
        r.resize(r.size() - 2);
        EXPECT_EQ(File_Is_Existing(r.c_str()) + 2 * Dir_Is_Existing(r.c_str()), kind) << r;
    }
    EXPECT_TRUE(MakeDir("Vol:made") == 1 && MakeDir("Vol:made") == 0 && MakeDir("Vol:a") == 0 &&
                MakeDir("Vol:no:such") == 0 && MakeDir(nullptr) == 0 && !File_Is_Existing(nullptr));
    const auto previous = std::filesystem::current_path();
    std::filesystem::current_path(vols.root() / "Vol/dir");
    EXPECT_TRUE(File_Is_Existing("::a") && MakeDir(":sub") && Dir_Is_Existing("sub") &&
                File_Is_Existing("inner") && File_Is_Existing(":inner") && !Dir_Is_Existing("::a"));
    std::filesystem::current_path(previous);
}

// Rows "<mac>|<MAC2UNIX>|<BSDMAC2UNIX>", "~" standing for the volumes root;
// paths too long for 255 characters are cut inside the buffer, and refused.
// Then POSIX files opened through Mac paths.
TEST_F(Files, MacPathsAndPosixFiles) {
    std::filesystem::create_directory_symlink("/", vols.root() / "Mac HD");
    vols.write("Plain", "a regular file where a volume would be");
    // clang-format off
    const char *rows[] = {"Mac HD:U:a.ini|~/Mac HD/U/a.ini|~/Mac HD/U/a.ini", "Data:x|~/Data/x|/x",
        "Vol:a/b|~/Vol/a:b|~/Vol/a:b", "Vol:dir:|~/Vol/dir/|~/Vol/dir/", "Vol|~/Vol|~/Vol",
        "Data|~/Data|", "Plain:x:y|/x/y|~/Plain/x/y", "|~/|~/"};
    // clang-format on
    char out[2][300];
    for (std::string row : rows) {
        for (size_t at; (at = row.find('~')) != std::string::npos;) row.replace(at, 1, vols.root());
        const std::string mac = row.substr(0, row.find('|'));
        MAC2UNIX(mac.c_str(), out[0]);
        BSDMAC2UNIX(mac.c_str(), out[1]);
        EXPECT_EQ(mac + "|" + out[0] + "|" + out[1], row);
    }
    MAC2UNIX(nullptr, out[0]), MAC2UNIX("Vol:x", nullptr), BSDMAC2UNIX("Vol:x", nullptr);
    const std::string mac = "Vol:" + std::string(400, 'n');
    std::memset(out, '#', sizeof out);
    MAC2UNIX(mac.c_str(), out[0]), BSDMAC2UNIX(mac.c_str(), out[1]);
    EXPECT_TRUE(std::strlen(out[0]) == 255 && std::strlen(out[1]) == 255 && out[0][256] == '#');
    EXPECT_TRUE(xFile_Open(mac.c_str(), 0, 1) == -1 && MACRemove(mac.c_str()) == -1 &&
                MACRename(mac.c_str(), "Vol:b") == -1);

    vols.volume("Vol/folder");
    // Rows "<bRead><bWrite><+ when it opens><path>".
    // A volume that is a plain file is dropped from the path (/etc/passwd).
    for (const char *r : {"10+Vol:a", "11+Vol:a", "10-Vol:folder", "11-Vol:missing", "00-Vol:a",
                          "01-Nowhere:d:new", "10+Plain:etc:passwd", "10+Mac HD:etc:passwd"})
        EXPECT_EQ(xFile_Close(xFile_Open(r + 3, r[0] - '0', r[1] - '0')) == 0, r[2] == '+') << r;
    EXPECT_TRUE(xFile_Open(nullptr, 1, 0) == -1 &&
                !std::filesystem::exists(vols.root() / "Vol/missing"));
    int32_t fd = xFile_Open("Vol:a", 1, 1);
    char buf[8];
    EXPECT_TRUE(xFile_Read(fd, buf, 5) == 5 && xFile_Size(fd) == 10 && xFile_GetPos(fd) == 0);
    EXPECT_TRUE(xFile_Lseek(fd, 7) == 7 && xFile_Lseek(fd, -1) == -1 && xFile_SetEOF(fd, -3) == -1);
    EXPECT_TRUE(xFile_SetEOF(fd, 4) == 0 && xFile_GetPos(fd) == 4 && xFile_Read(fd, buf, -2) == 0);
    EXPECT_TRUE(xFile_Write(fd, "x", -1) == -1 && !xFile_Close(fd) && vols.read("Vol/a") == "0123");
    // A closed descriptor: reads hide the error, the rest pass -1 on.
    EXPECT_TRUE(xFile_Read(fd, buf, 4) == 0 && xFile_Write(fd, "x", 1) == -1 &&
                xFile_Size(fd) == -1 && xFile_GetPos(fd) == -1);

    // Write only: created open to everybody whatever the creation mask, or emptied.
    const mode_t mask = umask(022);
    EXPECT_TRUE(xFile_Write(fd = xFile_Open("Vol:new", 0, 1), "abc", 3) == 3 && !xFile_Close(fd));
    umask(mask);
    struct stat st;
    EXPECT_TRUE(stat((vols.root() / "Vol/new").c_str(), &st) == 0 && (st.st_mode & 0777) == 0777);
    EXPECT_TRUE(!xFile_Close(xFile_Open("Vol:new", 0, 1)) && vols.read("Vol/new").empty());
    EXPECT_TRUE(MACRename("Vol:new", "Vol:b") == 0 && MACRename("Vol:new", "Vol:c") == -1 &&
                MACRemove("Vol:b") == 0 && MACRemove("Vol:b") == -1 && MACRemove(nullptr) == -1);
}

// Vol:dir listed through patterns: files only (a link counts as one), any
// case, one leading and one trailing "*" dropped; sorted by size (largest
// first, equal sizes in their order) and by name (byte order, cut at 255
// bytes), the answer counting the exchanges.
TEST_F(Files, FolderListingsAndSorts) {
    for (auto [name, bytes] :
         {std::pair{"a.ini", "aaaa"}, {"B.INI", "bb"}, {"c.txt", "c"}, {"e", "e"}})
        vols.write(std::string("Vol/dir/") + name, bytes);
    std::filesystem::create_directories(vols.root() / "Vol/dir/sub.ini");
    std::filesystem::create_symlink("a.ini", vols.root() / "Vol/dir/link");
    char table[5][256];
    for (auto [pattern, names] : {std::pair{"*.INI*", "Vol:dir:B.INI Vol:dir:a.ini "},
                                  {"b*", "Vol:dir:B.INI "},
                                  {"zzz", ""}}) {
        const std::set<std::string> got(table, table + Dir_FindFiles(table, "Vol:dir", 5, pattern));
        std::string joined;
        for (const std::string &name : got) joined += name + " ";
        EXPECT_EQ(joined, names) << pattern;
    }
    std::strcpy(table[2], "keep");
    EXPECT_TRUE(Dir_FindFiles(table, "Vol:dir", 2, "*") == 5 && std::strcmp(table[2], "keep") == 0);
    EXPECT_EQ(Dir_FindFiles(table, "Vol:no", 1, "*") + Dir_FindFiles(table, nullptr, 1, "*"), 0);
    static std::string seen;
    EXPECT_EQ(Dir_ProcessFiles("Vol:dir", "*.txt", [](const char *n) { return seen += n, 7; }), 7);
    EXPECT_EQ(seen, "c.txt");

    const char *in[] = {"c.txt", "missing", "B.INI", "a.ini", "e"};
    for (int i = 0; i < 5; ++i) std::snprintf(table[i], 256, "Vol:dir:%s", in[i]);
    EXPECT_EQ(Dir_SortSizeFiles(table, 5), 6); // exchanges
    EXPECT_EQ(std::string(table[0]) + table[1] + table[2] + table[3] + table[4],
              "Vol:dir:a.iniVol:dir:B.INIVol:dir:c.txtVol:dir:eVol:dir:missing");

    char t[3][256] = {"c", "b", "a"}, u[3][256] = {"b", "a", "a"}, v[2][256] = {"B", "a"};
    EXPECT_TRUE(Dir_SortFiles(t, 3) == 3 && Dir_SortFiles(u, 3) == 2 && Dir_SortFiles(v, 2) == 0);
    EXPECT_EQ(std::string(t[0]) + t[1] + t[2] + u[0] + u[1] + u[2] + v[0] + v[1], "abcaabBa");
    std::fill_n(v[0], 256, 'b'); // no terminator
    EXPECT_TRUE(Dir_SortFiles(v, 2) == 1 && std::strlen(v[1]) == 255 && !Dir_SortFiles(nullptr, 2));
}

} // namespace
