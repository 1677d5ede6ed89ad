// Building form dialogs: button widths, items in rank order with the two
// offset tables, date boxes, static items, refused descriptions.
#include <vitrail/platform.h>

#include "dialog_steps.h"
#include "platform/dialogs/controls.h"
#include "platform/dialogs/windows.h"

using namespace vitrail_test;

TEST(DialogBuild, ItemsFollowTheRanksAndTheOffsetTablesRelateThem) {
    struct {
        const char *ok, *cancel;
        int width; // 80 while both labels have at most 8 characters
    } labels[] = {{"12345678", "Fermer", 80}, {"Oui", "123456789", 100}, {"", "", 80}};
    for (const auto &l : labels) {
        Fresh();
        BOKDlgBox_textes(l.ok, l.cancel);
        TexteDlgBox_param(1, 100);
        TexteDlgBox_set_geo(0, 5, 4, 50, 8, 0);
        BoolDlgBox_param(1, 200);
        BoolDlgBox_set_geo(0, "Oui", 5, 12, 50, 8, 0); // same rank: after the text
        IntDlgBox_param(2, 300);                       // field 1 keeps rank -1: no item
        IntDlgBox_set_geo(0, 5, 20, 20, 8, 1);
        DateDlgBox_param(1, 400);
        DateDlgBox_set_geo(0, 10, 30, 0, 8, 5); // ranks 2..4 stay empty
        PushDlgBox_param(1, 500);
        PushDlgBox_set_geo(0, "Go", 5, 40, 30, 16, 7);
        StaticDlgBox_param(3);
        StaticDlgBox_set_geo(0, 150, 10, 40, 40); // h = 50: a group box of 70
        StaticDlgBox_set_type(0, -1);
        StaticDlgBox_set_geo(1, 150, 70, 20, 16); // an icon of 2 cy = 32
        StaticDlgBox_set_type(1, 3);
        StaticDlgBox_set(2, "Ag");
        StaticDlgBox_set_geo(2, 60, 60, 40, 4); // h = 5: a text 15 high from y 105
        std::fill(Dlg_rkOffset, Dlg_rkOffset + 128, 999);
        Items items;
        std::vector<std::array<int, 4>> frames;
        int inked = 0;
        Show({Snap(&items, [&](WindowRef w) {
            for (ControlRef c : w->controls)
                if (c->kind == platform::ControlKind::GroupBox ||
                    c->kind == platform::ControlKind::Icon)
                    frames.push_back({c->rect.left, c->rect.top, c->rect.right, c->rect.bottom});
            for (int y = 111; y < 120; ++y)
                for (int x = 120; x < 200; ++x)
                    inked += vitrail_port_pixel(w->port, x, y) >> 24 < 0x80;
            vitrail_press_key(w, vitrail_key_escape);
        })});
        ASSERT_EQ(items.size(), 9u);
        const std::array<int, 4> boxes[] = {{190 - l.width, 176, 190, 196},
                                            {210, 176, 210 + l.width, 196},
                                            {10, 7, 110, 17},
                                            {10, 21, 110, 31},
                                            {10, 35, 50, 45},
                                            {20, 52, 40, 62},
                                            {50, 52, 70, 62},
                                            {80, 52, 120, 62},
                                            {10, 70, 70, 90}};
        const int kinds[] = {4, 4, 16, 4, 16, 16, 16, 16, 4},
                  ids[] = {0, 0, 100, 200, 300, 400, 400, 400, 500};
        for (int n = 1; n <= 9; ++n) {
            EXPECT_EQ(Box(items[size_t(n - 1)]), boxes[n - 1]) << n;
            EXPECT_EQ(items[size_t(n - 1)].kind, kinds[n - 1]) << n;
            EXPECT_EQ(n > 2 ? Dlg_itemOffset[n] : 0, n > 2 ? n - ids[n - 1] : 0) << n;
        }
        const int rk[] = {-4, -4, 999, 999, 999, -1, 999, -2};
        for (int r = 0; r < 8; ++r) EXPECT_EQ(Dlg_rkOffset[r], rk[r]) << r;
        EXPECT_STREQ(items[0].text, *l.ok ? l.ok : "OK"); // an empty label stands for the default
        EXPECT_STREQ(items[1].text, *l.cancel ? l.cancel : "Annuler");
        EXPECT_EQ(frames,
                  (std::vector<std::array<int, 4>>{{300, 17, 380, 87}, {300, 122, 340, 154}}));
        EXPECT_GT(inked, 0) << "the static text's lower half is cut off";
    }
}

TEST(DialogBuild, DescriptionsBeyondTheItemTablesAreRefused) {
    const int rows[][3] = {
        {125, 124, 1}, {126, 125, 0}, {1, 127, 1}, {1, 128, 0}}; // count, last rank, shown
    for (const auto &r : rows) {
        Fresh();
        IntDlgBox_param(r[0], 10);
        for (int i = 0; i < r[0]; ++i) IntDlgBox_set_geo(i, 0, 0, 10, 8, r[1] - r[0] + 1 + i);
        ScriptedAgent agent({Key(vitrail_key_escape)});
        EXPECT_EQ(QarDlgBoxEx("Trop", nullptr), 0);
        EXPECT_EQ(agent.done(), size_t(r[2])) << r[0] << " " << r[1];
        EXPECT_EQ(IDB * 1000 + LDB_cx, r[2] ? 400 : 200); // cleared; the size converted if shown
    }
}
