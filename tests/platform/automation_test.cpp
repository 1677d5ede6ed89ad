// Where the automation interface says a list row or popup menu item is: a
// click there (at the same points a person uses) chooses exactly that row.
#include <gtest/gtest.h>

#include <string>

#include <vitrail/automation.h>
#include <vitrail/dialog.h>

#include "support/agent.h"

namespace {

// A form with a 30-row list box (item 3, scrolling) and a 3-choice popup (item 4).
void DescribeListAndPopup() {
    std::string rows = "r0";
    for (int r = 1; r < 30; ++r) rows += "$r" + std::to_string(r);
    TailleDlgBox_set(150, 110);
    TexteDlgBox_param(2, 100);
    TexteDlgBox_set_liste(0, rows.c_str());
    TexteDlgBox_change_liste(0);
    TexteDlgBox_set_geo(0, 10, 6, 120, 40, 0);
    TexteDlgBox_set_liste(1, "a+b+c");
    TexteDlgBox_set_geo(1, 10, 40, 60, 16, 1);
}

void ClickCentre(WindowRef w, const Rect &r) {
    vitrail_click_at(w, (r.left + r.right) / 2, (r.top + r.bottom) / 2, 1);
}

TEST(RowRect, ClickingTheRectChoosesThatRowOrMenuItem) {
    DescribeListAndPopup();
    Rect popupItem{};
    vitrail_test::ScriptedAgent agent({
        [](WindowRef w) {
            Rect r{};
            for (int32_t bad : {-1, 30}) EXPECT_EQ(vitrail_dialog_item_row_rect(w, 3, bad, &r), -1);
            EXPECT_EQ(vitrail_dialog_item_row_rect(w, 4, 0, &r), -1); // menu items count from 1
            EXPECT_EQ(vitrail_dialog_item_row_rect(w, 3, 0, nullptr), -1);
            EXPECT_EQ(vitrail_dialog_item_row_rect(nullptr, 3, 0, &r), -1);
            ASSERT_EQ(vitrail_dialog_item_row_rect(w, 3, 25, &r), 0); // scrolls it into view
            vitrail_item_info list = vitrail_test::Item(w, 3);
            EXPECT_TRUE(r.top > list.rect.top && r.bottom < list.rect.bottom &&
                        r.left > list.rect.left && r.right < list.rect.right);
            ClickCentre(w, r);
        },
        [&](WindowRef w) {
            EXPECT_EQ(vitrail_test::Item(w, 3).selected, 25);
            vitrail_click_item(w, 4);
            ASSERT_EQ(vitrail_dialog_item_row_rect(w, 4, 3, &popupItem), 0);
            ClickCentre(w, popupItem);
        },
        [](WindowRef w) {
            EXPECT_STREQ(vitrail_test::Item(w, 4).text, "c");
            vitrail_press_key(w, vitrail_key_escape);
        },
    });
    EXPECT_EQ(QarDlgBoxEx("Rows", nullptr), 0);
    EXPECT_EQ(agent.done(), 3u);
}

} // namespace
