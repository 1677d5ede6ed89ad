// The run loop and the field transfer: OK following validity, the hooks,
// field IDs, passwords, choices and dates, driven as a person would.
#include "dialog_steps.h"

using namespace vitrail_test;

namespace {

int final_calls;
int32_t AcceptSecond(WindowRef, int32_t, char **, int32_t, int32_t, int32_t *, int32_t, int32_t,
                     int32_t *, int32_t, int32_t, double *, int32_t, int32_t, int32_t *, int32_t) {
    return ++final_calls >= 2;
}

std::vector<int32_t> hook_ids;
int32_t Refresh(int32_t id, int32_t, int32_t, char **, int32_t, int32_t, int32_t, int32_t *, int32_t,
                int32_t, int32_t, int32_t *ints, int32_t, int32_t, int32_t, double *, int32_t, int32_t,
                int32_t, int32_t *, int32_t, int32_t *refresh, int32_t capacity) {
    hook_ids.push_back(id);
    if (id != 20 || capacity != 32) return -1;
    ints[1] = 42;
    refresh[0] = 21, refresh[1] = -10, refresh[2] = 99999; // redraw, clear, no such field
    return 1000;
}

} // namespace

TEST(DialogRun, OkIsActiveOnlyWhileEveryFieldIsValid) {
    for (bool initialised : {true, false}) {
        Fresh();
        TexteDlgBox_param(1, 10);
        TexteDlgBox_set_geo(0, 5, 5, 50, 12, 0);
        if (initialised) TexteDlgBox_set(0, "");
        std::vector<int> hilites;
        auto ok = [&](WindowRef w) { hilites.push_back(Item(w, 1).hilite); };
        Show({[&](WindowRef w) { ok(w), Type(3, "a")(w); }, [&](WindowRef w) { ok(w), Key(vitrail_key_backspace)(w); },
              [&](WindowRef w) { ok(w), Key(vitrail_key_escape)(w); }});
        // Never initialised, the field keeps the validity it was given until edited.
        EXPECT_EQ(hilites, (std::vector<int>{initialised ? 255 : 0, 0, 255}));
    }
}

TEST(DialogRun, OkAsksTheFinalHookAndCancelDoesNot) {
    for (bool cancel : {false, true}) {
        Fresh();
        TexteDlgBox_param(1, 10);
        TexteDlgBox_set_geo(0, 5, 5, 50, 12, 0);
        DlgBoxFinal_set(AcceptSecond);
        final_calls = 0;
        ScriptedAgent agent({cancel ? Type(3, "xy") : Key(vitrail_key_return), cancel ? Key(vitrail_key_escape) : Click(1)});
        EXPECT_EQ(QarDlgBoxEx("Essai", nullptr), cancel ? 0 : 1);
        EXPECT_EQ(agent.done(), 2u); // a refused OK keeps the dialog open
        EXPECT_EQ(final_calls, cancel ? 0 : 2);
        EXPECT_STREQ(TDB_pszBuffer[0], cancel ? "xy" : "");
        EXPECT_EQ(TDB + DlgBoxFinal_fonct(nullptr, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0), 1);
    }
}

TEST(DialogRun, TheGlobalHookRedrawsAndClearsFieldsByTheirIds) {
    Fresh();
    TexteDlgBox_param(1, 10);
    TexteDlgBox_set(0, "abc");
    TexteDlgBox_set_geo(0, 5, 5, 50, 12, 0);
    IntDlgBox_param(2, 20);
    IntDlgBox_set(1, 5, 0);
    IntDlgBox_set_geo(0, 5, 20, 20, 12, 1);
    IntDlgBox_set_geo(1, 5, 35, 20, 12, 2);
    DlgBoxGlobal_set(Refresh);
    hook_ids.clear();
    std::vector<vitrail_item_info> items;
    Show({Type(4, "7"), Snap(&items)});
    EXPECT_EQ(hook_ids, std::vector<int32_t>{20});
    ASSERT_EQ(items.size(), 5u);
    EXPECT_STREQ(items[4].text, "42");
    EXPECT_STREQ(items[2].text, "");
    EXPECT_EQ(items[0].hilite, 255); // the cleared field is mandatory
    EXPECT_STREQ(TDB_pszBuffer[0], "abc");
    EXPECT_EQ(IDB_iInts[0], 7);
}

TEST(DialogRun, HitsGoToTheFirstFamilyHoldingTheirId) {
    Fresh();
    TexteDlgBox_param(5, 100);
    TexteDlgBox_set(3, "abc");
    TexteDlgBox_set_geo(3, 5, 5, 50, 12, 0);
    IntDlgBox_param(2, 102); // integer 1 has the ID of text 3
    IntDlgBox_set_geo(1, 5, 20, 20, 12, 1);
    PushDlgBox_param(1, 200); // no action: the hook is still told
    PushDlgBox_set_geo(0, "Go", 5, 40, 30, 12, 2);
    DlgBoxGlobal_set(Refresh);
    hook_ids.clear();
    Show({Type(4, "7"), Click(5), Key(vitrail_key_escape)});
    EXPECT_EQ(hook_ids, (std::vector<int32_t>{103, 103, 200})); // the click, the key, the button
    EXPECT_EQ(IDB_bInit[1] * 100 + IDB_iInts[1], 0);
    EXPECT_STREQ(TDB_pszBuffer[3], "abc");
}

TEST(DialogRun, PasswordsTakeTheStoredCharacterUnderEachStar) {
    struct Turn {
        Step act;
        const char *text;
        int32_t number;
        const char *shown;
    };
    for (bool text : {true, false}) {
        Fresh();
        TexteDlgBox_param(1, 10);
        IntDlgBox_param(1, 20);
        (text ? TexteDlgBox_set_geo : IntDlgBox_set_geo)(0, 5, 5, 50, 12, 0);
        text ? (TexteDlgBox_set(0, "abc1"), TexteDlgBox_password(0, 1)) : (IntDlgBox_set(0, 1234, 0), IntDlgBox_password(0, 1));
        std::vector<Turn> turns = text ? std::vector<Turn>{{Type(3, "x"), "abc1x", 0, "*****"},
                                                           {Type(3, "*"), "abc1x*", 0, "******"}} // past the end: stays "*"
                                       : std::vector<Turn>{{Type(3, "5"), nullptr, 12345, "*****"},
                                                           {Key(vitrail_key_backspace), nullptr, 1234, "****"},
                                                           {Click(3), nullptr, 1234, "****"}};
        std::vector<Step> steps;
        for (size_t k = 0; k <= turns.size(); ++k)
            steps.push_back([&, k](WindowRef w) {
                EXPECT_STREQ(Item(w, 3).text, k ? turns[k - 1].shown : "****");
                if (k) {
                    EXPECT_EQ(text ? std::string(TDB_pszBuffer[0]) : std::to_string(IDB_iInts[0]),
                              text ? turns[k - 1].text : std::to_string(turns[k - 1].number));
                }
                (k < turns.size() ? turns[k].act : Key(vitrail_key_escape))(w);
            });
        Show(steps);
    }
}

TEST(DialogRun, ChoicesAreCutFromTheListText) {
    Fresh();
    TexteDlgBox_param(3, 10);
    const char *values[] = {"Non", "Peut", ""};
    for (int i = 0; i < 3; ++i) {
        TexteDlgBox_set_liste(i, i < 2 ? "Oui+Non,Peut-\xEAtre" : "A$B$");
        TexteDlgBox_set(i, values[i]);
        TexteDlgBox_set_geo(i, 5, 5 + 20 * i, 80, 12, i);
    }
    TexteDlgBox_change_liste(2);
    std::vector<vitrail_item_info> items;
    char third[32] = "", last[32] = "?";
    Show({Snap(&items, [&](WindowRef w) {
              vitrail_dialog_item_row(w, 3, 3, third, sizeof third);
              vitrail_dialog_item_row(w, 5, 2, last, sizeof last);
              Row(4, 3)(w), Row(5, 1)(w);
          }),
          Key(vitrail_key_escape)});
    ASSERT_EQ(items.size(), 5u);
    EXPECT_EQ(items[2].count * 10 + items[2].value, 32); // "-" does not separate
    EXPECT_EQ(items[3].value, 0);                         // "Peut" is no choice
    EXPECT_EQ(items[4].count * 10 + items[4].selected, 3 * 10 - 1);
    EXPECT_STREQ(third, "Peut-\xEAtre");
    EXPECT_STREQ(last, "");
    EXPECT_STREQ(TDB_pszBuffer[1], "Peut-\xEAtre");
    EXPECT_STREQ(TDB_pszBuffer[2], "B");
}

TEST(DialogRun, DatesAreReadFromTheirThreeBoxes) {
    struct Edit {
        int box;
        const char *text;
        bool replace; // select the box's text first, else type at its end
    };
    struct {
        bool mandatory;
        std::vector<Edit> edits;
        int32_t ok, date;
    } rows[] = {{true, {{3, "31", true}, {4, "12", true}}, 1, 20241231},
                {true, {{5, "x", false}}, 0, 20240101}, // 2024x
                {true, {{3, "", true}}, 0, 20240101},
                {false, {{3, "", true}, {4, "", true}, {5, "", true}}, 1, 20240101},
                {false, {{3, "-3", true}}, 1, 20240101}};
    for (const auto &r : rows) {
        Fresh();
        DateDlgBox_param(1, 30);
        DateDlgBox_set(0, 20240101, 1);
        DateDlgBox_mandatory(0, r.mandatory);
        DateDlgBox_set_geo(0, 10, 5, 0, 12, 0);
        Show({[&](WindowRef w) {
                  for (const Edit &e : r.edits) {
                      vitrail_click_item(w, e.box);
                      if (e.replace) vitrail_press_key(w, 'a' | vitrail_key_command);
                      *e.text ? vitrail_type_text(w, e.text) : vitrail_press_key(w, vitrail_key_backspace);
                  }
              },
              Key(vitrail_key_escape)});
        EXPECT_EQ(DDB_bOK[0], r.ok) << r.edits[0].box << r.edits[0].text;
        EXPECT_EQ(DDB_lDates[0], r.date) << r.edits[0].box << r.edits[0].text;
    }
}
