// Item lists (counting, membership, extraction into the 64-byte area) and
// chained-string lists (building, walking, cutting, binding, deleting and
// checking items against the files of a folder).
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include <vitrail/strings.h>

#include "support/temp_volumes.h"

namespace {

using namespace std::string_literals;

// Items are what lies between the separators , - and + (blanks kept, empty
// items counted); every index in and around each list, every item found.
TEST(ItemLists, CountExtractAndFind) {
    for (const char *list : {"", "1,2-3+4", "a,,b", ",", "-a-", " ; ", "x,", "a b+ c"}) {
        std::vector<std::string> items(1);
        for (const char *p = list; *p; ++p)
            std::strchr(",-+", *p) ? items.emplace_back() : items.back() += *p;
        const auto count = int32_t(items.size());
        EXPECT_EQ(Teste_liste(list), count) << list;
        for (int32_t i : {-1, 0, 1, 2, 3, count, INT32_MAX, INT32_MIN}) {
            const char *got = Get_item_liste(list, i);
            EXPECT_EQ(got ? got : "(null)", i < 0 || i >= count ? "(null)" : items[i]) << list << i;
        }
        for (const std::string &item : items) {
            EXPECT_EQ(Teste_item_liste(list, item.data(), int32_t(item.size())), 1) << list;
            EXPECT_EQ(Teste_item_szliste(list, int32_t(std::strlen(list)), item.data(),
                                         int32_t(item.size())),
                      1)
                << list;
        }
    }
    const struct {
        const char *list;
        int32_t len; // -2: the string's length
        const char *item;
        int32_t n, found;
    } rows[] = {
        {"12,15+20", -2, "1", 1, 0}, {"12,15+20", -2, "120", 3, 0}, {"AB, CD", -2, "CD", 2, 0},
        {"ab", -2, "AB", 2, 0},      {"12,15", -2, "15xyz", 2, 1},  {"a,b", -2, "", 0, 0},
        {"a,b", -2, "a", -1, 0},     {"a?c", -2, "abc", 3, 0},      {"A,B", 1, "B", 1, 0},
        {"A,B", 1, "A", 1, 1},       {"A\0B,C", 5, "A\0B", 3, 1},   {"A,B", 0, "", 0, 1},
        {"A,B", -1, "A", 1, 0},      {"AB", 1, "A", 1, 1}};
    for (const auto &r : rows) {
        if (r.len == -2) EXPECT_EQ(Teste_item_liste(r.list, r.item, r.n), r.found) << r.list;
        const int32_t len = r.len == -2 ? int32_t(std::strlen(r.list)) : r.len;
        EXPECT_EQ(Teste_item_szliste(r.list, len, r.item, r.n), r.found) << r.list << len;
    }
    // The result area holds 63 bytes and every call overwrites it.
    for (size_t len : {62, 63, 64, 100}) {
        const std::string item = "a" + std::string(len - 1, 'x');
        EXPECT_EQ(Get_item_liste(("p," + item + ",q").c_str(), 1), item.substr(0, 63)) << len;
    }
    EXPECT_EQ(Get_item_liste("one,two", 0), Get_item_liste("one,two", 1));
    EXPECT_EQ(Teste_liste(nullptr), 1);
}

// The bytes of `buf` up to and including the first two consecutive zeros.
std::string Bytes(const char *buf) {
    size_t i = 1;
    while (buf[i] || buf[i - 1]) ++i;
    return std::string(buf, i + 1);
}

TEST(ChainedLists, BuildCutBindDelete) {
    const struct {
        std::string text;
        int32_t size;
        std::string list;
    } puts[] = {
        {"abc", 10, "abc\0\0"s}, {"abc", 4, "ab\0\0"s}, {"abc", 5, "abc\0\0"s}, {"", 2, "\0\0"s}};
    for (const auto &r : puts) {
        char buf[16];
        std::memcpy(std::memset(buf, 'z', sizeof buf), r.text.c_str(), r.text.size() + 1);
        ChCh_Put_00(buf, r.size);
        EXPECT_EQ(Bytes(buf), r.list) << r.text << " " << r.size;
    }
    const struct {
        std::string text;
        char sep, bindSep; // 0: ChCh_Cut, '+': ChCh_Bind
        int32_t count;
        std::string list, bound;
    } rows[] = {{"x;y;z", ';', '|', 3, "x\0y\0z\0\0"s, "x|y|z\0\0"s},
                {"1-2,3", 0, '+', 2,
                 "1-2\0"
                 "3\0\0"s,
                 "1-2+3\0\0"s},
                {"a+b,c", 0, '+', 3, "a\0b\0c\0\0"s, "a+b+c\0\0"s},
                {"a++b", 0, '+', 1, "a\0\0"s, "a\0\0"s}, // the empty item ends the list
                {"", ';', '+', 1, "\0\0"s, "\0\0"s}};
    for (const auto &r : rows) {
        std::string buf = r.text + "\0\0\0"s;
        r.sep ? ChCh_Cut_sep(buf.data(), r.sep) : ChCh_Cut(buf.data());
        EXPECT_EQ(Bytes(buf.data()), r.list) << r.text;
        EXPECT_EQ(ChCh_Count_Item(buf.data()), r.count) << r.text;
        r.bindSep == '+' ? ChCh_Bind(buf.data()) : ChCh_Bind_sep(buf.data(), r.bindSep);
        EXPECT_EQ(Bytes(buf.data()), r.bound) << r.text;
    }
    char list[] = "a\0bc\0\0";
    char *second = ChCh_Get_Next_Item(list);
    EXPECT_TRUE(second == list + 2 && !ChCh_Is_00(list) && ChCh_Is_00(second));
    EXPECT_EQ(ChCh_Get_Next_Item(second), second);
    for (const std::string &left : {"bc\0\0"s, "\0\0"s, "\0\0"s}) {
        ChCh_Delete_Item(list);
        EXPECT_EQ(Bytes(list), left);
    }
    EXPECT_EQ(ChCh_Count_Item(list) + ChCh_Count_Item(nullptr), 1);
    char one[1] = {'q'};
    ChCh_Put_00(one, 1);
    ChCh_Put_00(nullptr, 4);
    EXPECT_EQ(one[0], '\0');
}

TEST(ChainedLists, MissingFiles) {
    vitrail_test::TempVolumes vols;
    for (const char *f : {"f2", "f4", "sub/f"}) vols.write("Disque/Dossier/"s + f, "x");
    const struct {
        std::string list;
        int32_t detect;
        size_t offset; // of the missing item
        std::string kept;
    } rows[] = {{"f1\0f2\0\0"s, 1, 0, "f2\0\0"s},
                {"f2\0f4\0\0"s, 0, 0, "f2\0f4\0\0"s},
                {"f2\0f1\0f3\0f4\0\0"s, 1, 3, "f2\0f4\0\0"s},
                {"f2\0sub\0\0"s, 1, 3, "f2\0\0"s},
                {"f1\0f3\0\0"s, 1, 0, "\0\0"s},
                {"\0\0"s, 1, 0, "\0\0"s}};
    for (const auto &r : rows) {
        std::string buf = r.list;
        char *item = nullptr;
        EXPECT_EQ(ChCh_Detect_Missing_File("Disque:Dossier", buf.data(), &item), r.detect);
        EXPECT_EQ(item, r.detect ? buf.data() + r.offset : nullptr);
        ChCh_Remove_Missing_File("Disque:Dossier", buf.data());
        EXPECT_EQ(Bytes(buf.data()), r.kept);
    }
}

} // namespace
