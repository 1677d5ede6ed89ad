// Building form dialogs: button widths, items in rank order with the two
// offset tables, date boxes, static items, refused descriptions.
#include <algorithm>

#include "dialog_steps.h"
#include <vitrail/platform.h>

#include "platform/dialogs/controls.h"
#include "platform/dialogs/windows.h"

using namespace vitrail_test;

TEST(DialogBuild, ButtonsAre80Or100WideByTheirLabels) {
    struct {
        const char *ok, *cancel, *shown_ok, *shown_cancel;
        int width;
    } rows[] = {{"OK", "Annuler", "OK", "Annuler", 80}, {"12345678", "Fermer", "12345678", "Fermer", 80},
                {"123456789", "Non", "123456789", "Non", 100}, {"Oui", "123456789", "Oui", "123456789", 100},
                {"", "", "OK", "Annuler", 80}};
    for (const auto &r : rows) {
        Fresh();
        BOKDlgBox_textes(r.ok, r.cancel);
        std::vector<vitrail_item_info> items;
        EXPECT_EQ(Show({Snap(&items)}), 0);
        ASSERT_EQ(items.size(), 2u) << r.ok;
        // 400 x 210 pixels: centre 200, buttons from 176 to 196.
        EXPECT_EQ(Box(items[0]), (std::array<int, 4>{190 - r.width, 176, 190, 196})) << r.ok;
        EXPECT_EQ(Box(items[1]), (std::array<int, 4>{210, 176, 210 + r.width, 196})) << r.ok;
        EXPECT_STREQ(items[0].text, r.shown_ok);
        EXPECT_STREQ(items[1].text, r.shown_cancel);
    }
    BOKDlgBox_textes("OK", "Annuler");
}

TEST(DialogBuild, ItemsFollowTheRanksAndTheOffsetTablesRelateThem) {
    Fresh();
    TexteDlgBox_param(1, 100);
    TexteDlgBox_set_geo(0, 5, 4, 50, 8, 0);
    BoolDlgBox_param(1, 200);
    BoolDlgBox_set_geo(0, "Oui", 5, 12, 50, 8, 0); // same rank: after the text
    IntDlgBox_param(2, 300);                        // field 1 keeps rank -1: no item
    IntDlgBox_set_geo(0, 5, 20, 20, 8, 1);
    DateDlgBox_param(1, 400);
    DateDlgBox_set_geo(0, 10, 30, 0, 8, 5); // ranks 2..4 left empty
    PushDlgBox_param(1, 500);
    PushDlgBox_set_geo(0, "Go", 5, 40, 30, 16, 7);
    std::fill(Dlg_rkOffset, Dlg_rkOffset + 128, 999);
    std::vector<vitrail_item_info> items;
    Show({Snap(&items)});
    ASSERT_EQ(items.size(), 9u);
    const std::array<int, 4> boxes[] = {{10, 7, 110, 17},  {10, 21, 110, 31}, {10, 35, 50, 45},
                                        {20, 52, 40, 62},  {50, 52, 70, 62},  {80, 52, 120, 62},
                                        {10, 70, 70, 90}};
    const int kinds[] = {16, 4, 16, 16, 16, 16, 4}, ids[] = {100, 200, 300, 400, 400, 400, 500};
    for (int n = 3; n <= 9; ++n) {
        EXPECT_EQ(Box(items[size_t(n - 1)]), boxes[n - 3]) << n;
        EXPECT_EQ(items[size_t(n - 1)].kind, kinds[n - 3]) << n;
        EXPECT_EQ(Dlg_itemOffset[n], n - ids[n - 3]) << n;
    }
    const int rk[] = {-4, -4, 999, 999, 999, -1, 999, -2};
    for (int r = 0; r < 8; ++r) EXPECT_EQ(Dlg_rkOffset[r], rk[r]) << r;
}

TEST(DialogBuild, StaticItemsKeepTheirHeights) {
    Fresh();
    StaticDlgBox_param(3);
    StaticDlgBox_set(0, "Groupe");
    StaticDlgBox_set_geo(0, 10, 10, 100, 40); // h = 50: a group box of 70
    StaticDlgBox_set_type(0, -1);
    StaticDlgBox_set_geo(1, 120, 10, 20, 16); // an icon of 2 cy = 32
    StaticDlgBox_set_type(1, 3);
    StaticDlgBox_set(2, "Ag");
    StaticDlgBox_set_geo(2, 10, 60, 80, 4); // h = 5, drawn 15 high from y 105
    std::vector<std::array<int, 4>> frames;
    int inked = 0;
    Show({[&](WindowRef w) {
        for (ControlRef c : w->controls)
            if (c->kind == platform::ControlKind::GroupBox || c->kind == platform::ControlKind::Icon)
                frames.push_back({c->rect.left, c->rect.top, c->rect.right, c->rect.bottom});
        for (int y = 111; y < 120; ++y)
            for (int x = 20; x < 180; ++x) inked += vitrail_port_pixel(vitrail_window_port(w), x, y) >> 24 < 0x80;
        vitrail_press_key(w, vitrail_key_escape);
    }});
    EXPECT_EQ(frames, (std::vector<std::array<int, 4>>{{20, 17, 220, 87}, {240, 17, 280, 49}}));
    EXPECT_GT(inked, 0) << "the text's lower half is cut off";
}

TEST(DialogBuild, DescriptionsBeyondTheItemTablesAreRefused) {
    struct {
        int count, last_rank;
        bool shown;
    } rows[] = {{125, 124, true}, {126, 125, false}, {1, 127, true}, {1, 128, false}};
    for (const auto &r : rows) {
        Fresh();
        IntDlgBox_param(r.count, 10);
        for (int i = 0; i < r.count; ++i) IntDlgBox_set_geo(i, 0, 0, 10, 8, r.last_rank - r.count + 1 + i);
        ScriptedAgent agent({Key(vitrail_key_escape)});
        EXPECT_EQ(QarDlgBoxEx("Trop", nullptr), 0);
        EXPECT_EQ(agent.done(), r.shown ? 1u : 0u) << r.count << " " << r.last_rank;
        EXPECT_EQ(IDB, 0);
        EXPECT_EQ(LDB_cx, r.shown ? 400 : 200);
    }
}
