// The run loop and the field transfer, driven as a person would: OK and
// validity, the global hook and field IDs, passwords, choices and dates.
// (The prescription run of entry_test.cpp covers a refusing final hook.)
#include <cstring>

#include "dialog_steps.h"

using namespace vitrail_test;

namespace {

int final_calls;
int32_t CountFinal(WindowRef, int32_t, char **, int32_t, int32_t, int32_t *, int32_t, int32_t,
                   int32_t *, int32_t, int32_t, double *, int32_t, int32_t, int32_t *, int32_t) {
    return ++final_calls, 1;
}

std::vector<int32_t> hook_ids;
int32_t Refresh(int32_t id, int32_t, int32_t, char **, int32_t, int32_t, int32_t, int32_t *,
                int32_t, int32_t, int32_t, int32_t *ints, int32_t, int32_t, int32_t, double *,
                int32_t, int32_t, int32_t, int32_t *, int32_t, int32_t *refresh, int32_t capacity) {
    hook_ids.push_back(id);
    if (id != 15 || capacity != 32) return -1;
    ints[2] = 42;
    refresh[0] = 14, refresh[1] = -10, refresh[2] = 99999; // redraw, clear, no such field
    return 1000;
}

} // namespace

TEST(DialogRun, OkFollowsValidityAndCancelAsksNoHook) {
    for (bool initialised : {true, false}) {
        Fresh();
        TexteDlgBox_param(1, 10);
        TexteDlgBox_set_geo(0, 5, 5, 50, 12, 0);
        if (initialised) TexteDlgBox_set(0, "");
        DlgBoxFinal_set(CountFinal);
        final_calls = 0;
        std::vector<int> ok;
        auto then = [&](Step s) {
            return [&, s](WindowRef w) { ok.push_back(Item(w, 1).hilite), s(w); };
        };
        EXPECT_EQ(Show({then(Type(3, "a")), then(Key(vitrail_key_backspace)), then(Type(3, "b")),
                        Key(vitrail_key_escape)}),
                  0);
        // Never initialised, the field keeps the validity it was given until edited.
        EXPECT_EQ(ok, (std::vector<int>{initialised ? 255 : 0, 0, 255}));
        EXPECT_STREQ(TDB_pszBuffer[0], "b"); // stored as typed
        EXPECT_EQ(final_calls, 0);
        EXPECT_EQ(TDB + (DlgBoxFinal_fonct == DlgBoxFinal_nul), 1);
    }
}

TEST(DialogRun, TheGlobalHookIsToldFieldIdsAndRefreshesFields) {
    Fresh();
    TexteDlgBox_param(4, 10);
    TexteDlgBox_set(0, "abc");
    TexteDlgBox_set_geo(0, 5, 5, 50, 12, 0);
    TexteDlgBox_set(3, "xyz");
    TexteDlgBox_set_geo(3, 5, 15, 50, 12, 1);
    IntDlgBox_param(4, 12); // integer 1 has text 3's ID, 13
    for (int i = 1; i < 4; ++i) IntDlgBox_set_geo(i, 5, 15 + 10 * i, 20, 12, i + 1);
    for (int i = 0; i < 4; ++i) IntDlgBox_mandatory(i, 0);
    IntDlgBox_set(2, 5, 0);
    PushDlgBox_param(1, 30); // no action: the hook is still told
    PushDlgBox_set_geo(0, "Go", 100, 5, 30, 12, 5);
    DlgBoxGlobal_set(Refresh);
    hook_ids.clear();
    Items items;
    Show({Type(5, "7"), Type(7, "9"), Click(8), Snap(&items)});
    EXPECT_EQ(hook_ids,
              (std::vector<int32_t>{13, 13, 15, 15, 30})); // each click and key, the button
    ASSERT_EQ(items.size(), 8u);
    EXPECT_STREQ(items[5].text, "42");
    EXPECT_STREQ(items[2].text, "");
    EXPECT_EQ(items[0].hilite, 255); // the cleared text is mandatory
    EXPECT_STREQ(TDB_pszBuffer[0], "abc");
    EXPECT_EQ(IDB_iInts[1] * 100 + IDB_iInts[3], 9); // the 7 went to text 3, never to integer 1
}

TEST(DialogRun, PasswordsTakeTheStoredCharacterUnderEachStar) {
    struct Turn {
        Step act;
        const char *value, *shown; // after the act
    };
    const std::vector<Turn> sequences[] = {
        {{Type(3, "x"), "abc1x", "*****"}, {Type(3, "*"), "abc1x*", "******"}}, // past the end: "*"
        {{Type(3, "5"), "12345", "*****"},
         {Key(vitrail_key_backspace), "1234", "****"},
         {Click(3), "1234", "****"}}};
    for (bool text : {true, false}) {
        Fresh();
        TexteDlgBox_param(1, 10);
        IntDlgBox_param(1, 20);
        (text ? TexteDlgBox_set_geo : IntDlgBox_set_geo)(0, 5, 5, 50, 12, 0);
        text ? (TexteDlgBox_set(0, "abc1"), TexteDlgBox_password(0, 1))
             : (IntDlgBox_set(0, 1234, 0), IntDlgBox_password(0, 1));
        std::vector<Turn> turns = {{Key(vitrail_key_escape), text ? "abc1" : "1234", "****"}};
        turns.insert(turns.begin(), sequences[!text].begin(), sequences[!text].end());
        std::vector<Step> steps;
        for (size_t k = 0; k < turns.size(); ++k)
            steps.push_back([&, k](WindowRef w) {
                const Turn &before = turns[(k + turns.size() - 1) % turns.size()];
                EXPECT_STREQ(Item(w, 3).text, before.shown);
                EXPECT_EQ(text ? TDB_pszBuffer[0] : std::to_string(IDB_iInts[0]), before.value);
                turns[k].act(w);
            });
        Show(steps);
    }
}

TEST(DialogRun, DatesAreReadFromTheirThreeBoxes) {
    // Edits of the day (3), month (4) and year (5) boxes of 01/01/2024: the
    // box's text is replaced, or "+" types at its end; "" empties the box.
    struct {
        bool mandatory;
        std::vector<std::pair<int, std::string>> edits;
        int32_t ok, date;
    } rows[] = {{true, {{3, "31"}, {4, "12"}}, 1, 20241231},
                {true, {{5, "+x"}}, 0, 20240101},
                {true, {{3, ""}}, 0, 20240101},
                {false, {{3, ""}, {4, ""}, {5, ""}}, 1, 20240101},
                {false, {{3, "-3"}}, 1, 20240101}};
    for (const auto &r : rows) {
        Fresh();
        DateDlgBox_param(1, 30);
        DateDlgBox_set(0, 20240101, 1);
        DateDlgBox_mandatory(0, r.mandatory);
        DateDlgBox_set_geo(0, 10, 5, 0, 12, 0);
        Show({[&](WindowRef w) {
                  for (const auto &[box, text] : r.edits) {
                      vitrail_click_item(w, box);
                      if (text[0] != '+') vitrail_press_key(w, 'a' | vitrail_key_command);
                      if (text.empty()) vitrail_press_key(w, vitrail_key_backspace);
                      vitrail_type_text(w, text.c_str() + (text[0] == '+'));
                  }
              },
              Key(vitrail_key_escape)});
        EXPECT_EQ(DDB_bOK[0] * 100000000 + DDB_lDates[0], r.ok * 100000000 + r.date)
            << r.edits[0].first << r.edits[0].second;
    }
}

TEST(DialogRun, ChoicesAreCutFromTheListTextAndHooksUpdateFields) {
    Fresh();
    TexteDlgBox_param(4, 10);
    const char *values[] = {"", "Peut", "Non", ""};
    for (int i = 0; i < 4; ++i) {
        if (i) TexteDlgBox_set_liste(i, i < 3 ? "Oui+Non,Peut-\xEAtre" : "A$B$");
        TexteDlgBox_set(i, values[i]);
        TexteDlgBox_set_geo(i, 5, 5 + 15 * i, 80, 12, i);
    }
    TexteDlgBox_password(0, 1);
    TexteDlgBox_change_liste(3);
    NumDlgBox_param(1, 20);
    NumDlgBox_set_geo(0, 5, 65, 40, 12, 4);
    PushDlgBox_param(1, 30);
    PushDlgBox_set_geo(0, "Go", 100, 5, 30, 12, 5);
    PushDlgBox_set_fvalid(0, [](WindowRef) {
        QarDlgBox_texte_set(0, "secret");
        QarDlgBox_texte_set(1, ""); // mandatory: invalid
        std::strcpy(TDB_PSZLBUFFER[2], "A+B,C");
        std::strcpy(TDB_PSZLBUFFER[3], "A$B");
        QarDlgBox_texte_set_liste(2), QarDlgBox_texte_set_liste(3);
        QarDlgBox_texte_set(-1, "x"), QarDlgBox_texte_set(4, "x"), QarDlgBox_num_set(1, "x");
        return QarDlgBox_num_set(0, "1,5x");
    });
    Items before, after;
    char third[32] = "", last[32] = "?";
    Show({Snap(&before,
               [&](WindowRef w) {
                   vitrail_dialog_item_row(w, 5, 3, third, sizeof third);
                   vitrail_dialog_item_row(w, 6, 2, last, sizeof last);
                   Row(5, 3)(w), Row(6, 1)(w);
               }),
          Click(8), Snap(&after)});
    ASSERT_EQ(before.size() + after.size(), 16u);
    EXPECT_EQ(before[4].count * 10 + before[4].value, 32); // "-" does not separate
    EXPECT_EQ(before[3].value, 0);                         // "Peut" is no choice
    EXPECT_EQ(before[5].count * 10 + before[5].selected, 29);
    EXPECT_EQ(std::string(third) + "|" + last, "Peut-\xEAtre|");
    EXPECT_EQ(std::string(TDB_pszBuffer[2]) + "|" + TDB_pszBuffer[3], "Peut-\xEAtre|B");
    EXPECT_EQ(std::string(after[2].text) + "|" + TDB_pszBuffer[0], "******|secret");
    EXPECT_EQ(after[4].count * 10 + after[4].value, 30); // three choices, none chosen
    EXPECT_EQ(after[5].count, 2);
    EXPECT_STREQ(after[6].text, "1,5x");
    EXPECT_EQ(TDB_bOK[1] + NDB_bOK[0], 0);
}
