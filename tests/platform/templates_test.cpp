// Dialog templates: which texts parse, and what a parsed template holds.
#include <gtest/gtest.h>

#include "platform/dialogs/templates.h"

TEST(DialogTemplates, OnlyWellFormedTextsParse) {
    struct {
        const char *text;
        int id, items; // id 0: refused
    } rows[] = {
        {"# c\n\ndialog 9 100 80 Court\r\n1 button 10 40 90 60 Fermer\n5 static 1 2 3 4  Ab  \n", 9,
         2},
        {"dialog 32767 8192 1", 32767, 0},
        {"1 button 0 0 10 10 OK\n", 0, 0}, // no header
        {"dialog 7 100 80 T\n2 edit 0 0 1 1\n1 button 0 0 1 1\n", 0, 0},
        {"dialog 7 100 80 T\n1 knob 0 0 1 1\n", 0, 0},
        {"dialog 7 100 80 T\n1 edit 0 0 1\n", 0, 0},
        {"dialog 7 100 80 T\n1 edit 0 0 1 40000\n", 0, 0},
        {"dialog 7 100 80 T\n256 user 0 0 1 1\n", 0, 0},
        {"dialog 0 100 80 T\n", 0, 0},
        {"dialog 7 8193 80 T\n", 0, 0}};
    for (const auto &r : rows) {
        auto t = platform::ParseTemplate(r.text);
        EXPECT_EQ(t ? t->id : 0, r.id) << r.text;
        EXPECT_EQ(t ? t->items.size() : 0u, size_t(r.items)) << r.text;
    }
    auto t = platform::ParseTemplate(rows[0].text);
    ASSERT_TRUE(t);
    EXPECT_EQ(t->title + "|" + t->items[0].text + "|" + t->items[1].text, "Court|Fermer|Ab");
    const Rect &r = t->items[0].rect;
    EXPECT_EQ((std::array<int, 4>{r.left, r.top, r.right, r.bottom}),
              (std::array<int, 4>{10, 40, 90, 60}));
    EXPECT_EQ(t->items[1].number * 1000 + t->items[1].kind, 5000 + 8 + 128); // static, inactive
}
