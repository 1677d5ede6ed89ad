// Chained-string lists: building, walking, cutting, binding, deleting and
// checking items against the files of a folder.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vitrail/strings.h>

#include "support/temp_volumes.h"

namespace {

using namespace std::string_literals;

// The bytes of `buf` up to and including the first two consecutive zeros.
std::string Bytes(const char *buf) {
    std::string out;
    for (size_t i = 0;; ++i) {
        out += buf[i];
        if (buf[i] == '\0' && i > 0 && buf[i - 1] == '\0') return out;
    }
}

TEST(ChainedLists, PutCloses) {
    struct Row {
        std::string text;
        int32_t size;
        std::string list;
    } rows[] = {
        {"abc", 10, "abc\0\0"s}, {"abc", 4, "ab\0\0"s}, {"abc", 5, "abc\0\0"s}, {"", 2, "\0\0"s}};
    for (const Row &r : rows) {
        char buf[16];
        std::memset(buf, 'z', sizeof buf);
        std::memcpy(buf, r.text.c_str(), r.text.size() + 1);
        ChCh_Put_00(buf, r.size);
        EXPECT_EQ(Bytes(buf), r.list) << r.text << " " << r.size;
    }
    char one[1] = {'q'};
    ChCh_Put_00(one, 1);
    EXPECT_EQ(one[0], '\0');
    ChCh_Put_00(one, 0);
    ChCh_Put_00(nullptr, 4);
}

TEST(ChainedLists, CutCountBind) {
    struct Row {
        std::string text;
        char sep; // 0: ChCh_Cut
        int32_t count;
        std::string list;
        char bindSep;
        std::string bound;
    } rows[] = {
        {"x;y;z\0"s, ';', 3, "x\0y\0z\0\0"s, '|', "x|y|z\0\0"s},
        {"1-2,3\0"s, 0, 2,
         "1-2\0"
         "3\0\0"s,
         '+', "1-2+3\0\0"s},
        {"a+b,c\0"s, 0, 3, "a\0b\0c\0\0"s, '+', "a+b+c\0\0"s},
        {"a++b\0"s, 0, 1, "a\0\0"s, '+', "a\0\0"s}, // the empty item ends the list
        {"\0\0"s, ';', 1, "\0\0"s, '+', "\0\0"s},
    };
    for (const Row &r : rows) {
        std::string buf = r.text + "\0\0"s;
        if (r.sep)
            ChCh_Cut_sep(buf.data(), r.sep);
        else
            ChCh_Cut(buf.data());
        EXPECT_EQ(Bytes(buf.data()), r.list) << r.text;
        EXPECT_EQ(ChCh_Count_Item(buf.data()), r.count) << r.text;
        if (r.bindSep == '+')
            ChCh_Bind(buf.data());
        else
            ChCh_Bind_sep(buf.data(), r.bindSep);
        EXPECT_EQ(Bytes(buf.data()), r.bound) << r.text;
    }
}

TEST(ChainedLists, WalkAndDelete) {
    char list[] = "a\0bc\0\0";
    char *second = ChCh_Get_Next_Item(list);
    EXPECT_EQ(second, list + 2);
    EXPECT_EQ(ChCh_Is_00(list), 0);
    EXPECT_EQ(ChCh_Is_00(second), 1);
    EXPECT_EQ(ChCh_Get_Next_Item(second), second);
    ChCh_Delete_Item(list);
    EXPECT_EQ(Bytes(list), "bc\0\0"s);
    ChCh_Delete_Item(list);
    EXPECT_EQ(Bytes(list), "\0\0"s);
    ChCh_Delete_Item(list);
    EXPECT_EQ(Bytes(list), "\0\0"s);
    EXPECT_EQ(ChCh_Count_Item(list), 1);
    EXPECT_EQ(ChCh_Count_Item(nullptr), 0);
}

TEST(ChainedLists, MissingFiles) {
    vitrail_test::TempVolumes vols;
    vols.write("Disque/Dossier/f2", "x");
    vols.write("Disque/Dossier/f4", "x");
    vols.write("Disque/Dossier/sub/f", "x");
    struct Row {
        std::string list;
        int32_t detect;
        size_t offset; // of the missing item
        std::string kept;
    } rows[] = {
        {"f1\0f2\0\0"s, 1, 0, "f2\0\0"s},
        {"f2\0f4\0\0"s, 0, 0, "f2\0f4\0\0"s},
        {"f2\0f1\0f3\0f4\0\0"s, 1, 3, "f2\0f4\0\0"s},
        {"f2\0sub\0\0"s, 1, 3, "f2\0\0"s}, // a folder is not a file
        {"f1\0f3\0\0"s, 1, 0, "\0\0"s},
        {"\0\0"s, 1, 0, "\0\0"s},
    };
    for (const Row &r : rows) {
        std::string buf = r.list;
        char *item = nullptr;
        EXPECT_EQ(ChCh_Detect_Missing_File("Disque:Dossier", buf.data(), &item), r.detect);
        if (r.detect) {
            EXPECT_EQ(item, buf.data() + r.offset);
        }
        ChCh_Remove_Missing_File("Disque:Dossier", buf.data());
        EXPECT_EQ(Bytes(buf.data()), r.kept);
    }
}

} // namespace
