// Item lists: counting, membership and extraction, with the edges of the
// 64-byte result area.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include <vitrail/strings.h>

namespace {

// Items are what lies between the separators , - and + (blanks kept, empty
// items counted); every index in and around each list is checked.
TEST(ItemLists, CountAndExtract) {
    for (const char *list :
         {"", "1,2-3+4", "a,,b", ",", "abc", "-a-", " ; ", ",x", "x,", "a b+ c"}) {
        std::vector<std::string> items(1);
        for (const char *p = list; *p; ++p) {
            if (std::strchr(",-+", *p))
                items.emplace_back();
            else
                items.back() += *p;
        }
        const auto count = static_cast<int32_t>(items.size());
        EXPECT_EQ(Teste_liste(list), count) << list;
        for (int32_t i : {-1, 0, 1, 2, 3, 4, count, INT32_MAX, INT32_MIN}) {
            const char *got = Get_item_liste(list, i);
            if (i < 0 || i >= count) {
                EXPECT_EQ(got, nullptr) << list << "#" << i;
            } else {
                ASSERT_NE(got, nullptr) << list << "#" << i;
                EXPECT_EQ(got, items[i]) << list << "#" << i;
            }
        }
    }
    EXPECT_EQ(Teste_liste(nullptr), 1);
}

TEST(ItemLists, Membership) {
    struct Row {
        const char *list, *item;
        int32_t n, found;
    } rows[] = {{"12,15+20", "15", 2, 1}, {"12,15+20", "1", 1, 0},   {"12,15+20", "20", 2, 1},
                {"12,15+20", "12", 2, 1}, {"12,15+20", "120", 3, 0}, {"AB, CD", "CD", 2, 0},
                {"AB, CD", " CD", 3, 1},  {"ab", "AB", 2, 0},        {"12,15", "15xyz", 2, 1},
                {"a,,b", "", 0, 1},       {"a,b", "", 0, 0},         {"", "", 0, 1},
                {"a,b", "a", -1, 0},      {"a?c", "abc", 3, 0}};
    for (const Row &r : rows) {
        EXPECT_EQ(Teste_item_liste(r.list, r.item, r.n), r.found) << r.list << "|" << r.item;
        const int32_t len = static_cast<int32_t>(std::string(r.list).size());
        EXPECT_EQ(Teste_item_szliste(r.list, len, r.item, r.n), r.found) << r.list;
    }

    struct Counted {
        const char *list;
        int32_t len;
        const char *item;
        int32_t n, found;
    } counted[] = {{"A,B", 1, "B", 1, 0},       {"A,B", 1, "A", 1, 1}, {"A,B", 3, "B", 1, 1},
                   {"A\0B,C", 5, "A\0B", 3, 1}, {"A,B", 0, "", 0, 1},  {"A,B", -1, "A", 1, 0},
                   {"AB", 1, "A", 1, 1}};
    for (const Counted &c : counted)
        EXPECT_EQ(Teste_item_szliste(c.list, c.len, c.item, c.n), c.found) << c.list << c.len;
}

TEST(ItemLists, ResultArea) {
    // The result area holds 63 bytes: an item that long fits, a longer one is cut.
    for (size_t len : {62, 63, 64, 100}) {
        std::string item(len, 'x');
        item[0] = 'a';
        const std::string list = "p," + item + ",q";
        const char *got = Get_item_liste(list.c_str(), 1);
        ASSERT_NE(got, nullptr);
        EXPECT_EQ(std::string(got), item.substr(0, 63)) << len;
    }
    // Every call overwrites the same area.
    const char *first = Get_item_liste("one,two", 0);
    const char *second = Get_item_liste("one,two", 1);
    EXPECT_EQ(first, second);
    EXPECT_STREQ(first, "two");
}

} // namespace
