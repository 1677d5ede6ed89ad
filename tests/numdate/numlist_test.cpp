// NUM lists: validation and indexing over the three separators.
#include <vitrail/numdate.h>
#include <vitrail/strings.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

TEST(NumList, CountAndIndex) {
    const std::string long_item = "10," + std::string(70, '1');
    struct Row {
        const char *list;
        int32_t count;
        int32_t values[4]; // Get_NUM_liste at indexes 0..3
    } rows[] = {{"10,20+30", 3, {10, 20, 30, 30}},
                {"10,x", 0, {10, 0, 0, 0}},
                {"", 0, {0, 0, 0, 0}},
                {"7", 1, {7, 7, 7, 7}},
                {" 1 - 2 ", 2, {1, 2, 2, 2}},
                {"1,,2", 0, {1, 0, 0, 0}},
                {"1,2,", 0, {1, 2, 0, 0}},
                {",1", 0, {0, 0, 0, 0}},
                {"00000000005+6", 2, {5, 6, 6, 6}},
                {"000000000005+6", 0, {0, 0, 0, 0}},
                {"32768+2147483647", 2, {32768, 2147483647, 2147483647, 2147483647}},
                {"2147483648+1", 0, {0, 0, 0, 0}},
                {long_item.c_str(), 0, {10, 0, 0, 0}}};
    for (const Row &r : rows) {
        EXPECT_EQ(Teste_NUM_liste(r.list), r.count) << '"' << r.list << '"';
        for (int32_t i = 0; i < 4; ++i)
            EXPECT_EQ(Get_NUM_liste(r.list, i), r.values[i]) << '"' << r.list << "\" " << i;
    }
    EXPECT_EQ(Get_NUM_liste("10,20+30", 5), 30);
    EXPECT_EQ(Get_NUM_liste("10,20+30", INT32_MAX), 30);
    EXPECT_EQ(Get_NUM_liste("10,20+30", -1), 0);
    EXPECT_EQ(Teste_NUM_liste(nullptr), 0);
    EXPECT_EQ(Get_NUM_liste(nullptr, 0), 0);
}

TEST(NumList, LeavesTheItemListAreaAlone) {
    // The host's last item stays where it was.
    const char *item = Get_item_liste("A,BC", 1);
    Teste_NUM_liste("1,2,3");
    Get_NUM_liste("1,2,3", 2);
    EXPECT_STREQ(item, "BC");
}

} // namespace
