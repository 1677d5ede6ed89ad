// Form dialogs driven as a person would, through the automation interface:
// building (button widths, items in rank order, the two offset tables, date
// boxes, static items, refused descriptions), the run loop and the field
// transfer (validity, the global hook, passwords, dates, choices), dialog
// templates, the prescriber selection and a prescription form filled,
// refused, corrected and accepted, with a picture of each step in
// <build>/screens.
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <vitrail/automation.h>
#include <vitrail/dialog.h>
#include <vitrail/platform.h>

#include "platform/dialogs/controls.h"
#include "platform/dialogs/windows.h"
#include "prescription.h"
#include "support/agent.h"
#include "support/temp_resources.h"
#include "support/temp_volumes.h"

namespace fs = std::filesystem;
using namespace vitrail_test;

namespace {

using Items = std::vector<vitrail_item_info>;
using Step = ScriptedAgent::Step;
using Box = std::array<int, 4>;

// Each test starts from no family, the default hooks and a 200 x 120
// dialog (400 x 210 pixels); the helpers make agent steps.
struct Dialog : ::testing::Test {
    void SetUp() override {
        std::fill(TDB_bPassw, TDB_bPassw + 20, 0);
        DlgBoxFinal_set(nullptr), QarDlgBox_end(nullptr);
        TailleDlgBox_set(200, 120), BOKDlgBox_textes("OK", "Annuler");
    }
    static Step Click(int n) {
        return [n](WindowRef w) { vitrail_click_item(w, n); };
    }
    static Step Key(int k) {
        return [k](WindowRef w) { vitrail_press_key(w, k); };
    }
    static Step Row(int n, int row, int clicks = 1) {
        return [=](WindowRef w) { vitrail_choose_row(w, n, row, clicks); };
    }

    // Reads every item, then acts (a step that acts on nothing lets the
    // dialog answer for itself).
    static Step Snap(Items *items, Step then = Key(vitrail_key_escape)) {
        return [=](WindowRef w) {
            items->assign(size_t(vitrail_dialog_item_count(w)), {});
            for (size_t n = 0; n < items->size(); ++n)
                vitrail_dialog_item(w, int(n + 1), &(*items)[n]);
            then(w);
        };
    }
    // Several acts in one step.
    static Step All(std::vector<Step> acts) {
        return [=](WindowRef w) {
            for (const Step &act : acts) act(w);
        };
    }
    // Clicks box n and replaces its text; after a "+", types at its end
    // (where the click puts the caret). "" empties the box.
    static Step Edit(int n, std::string text) {
        return [=](WindowRef w) {
            vitrail_click_item(w, n);
            if (text[0] != '+')
                vitrail_press_key(w, 'a' | vitrail_key_command),
                    vitrail_press_key(w, vitrail_key_backspace);
            vitrail_type_text(w, text.c_str() + (text[0] == '+'));
        };
    }
    static int32_t Show(std::vector<Step> steps) {
        ScriptedAgent agent(std::move(steps));
        return QarDlgBoxEx("Essai", nullptr);
    }
    static void Png(WindowRef w, const char *name) {
        fs::create_directories(VITRAIL_SCREENS);
        EXPECT_EQ(vitrail_window_write_png(w, (fs::path(VITRAIL_SCREENS) / name).c_str()), 0);
    }
};

// Items: OK and Cancel (80 wide while both labels have at most 8
// characters), then the fields by rank, families in their order within a
// rank; dates take three boxes, a field of negative rank none. Static
// texts, group boxes and icons take no item.
TEST_F(Dialog, ItemsFollowTheRanksAndTheOffsetTablesRelateThem) {
    // clang-format off
    const struct { const char *ok, *cancel; int width; } labels[] = {
        {"12345678", "Fermer", 80}, {"Oui", "123456789", 100}, {"", "", 80}};
    // clang-format on
    for (const auto &l : labels) {
        SetUp();
        BOKDlgBox_textes(l.ok, l.cancel);
        TexteDlgBox_param(1, 100), TexteDlgBox_set_geo(0, 5, 4, 50, 8, 0);
        BoolDlgBox_param(1, 200), BoolDlgBox_set_geo(0, "Oui", 5, 12, 50, 8, 0); // after the text
        IntDlgBox_param(2, 300), IntDlgBox_set_geo(0, 5, 20, 20, 8, 1);          // field 1: rank -1
        DateDlgBox_param(1, 400), DateDlgBox_set_geo(0, 10, 30, 0, 8, 5);        // ranks 2..4 empty
        PushDlgBox_param(1, 500), PushDlgBox_set_geo(0, "Go", 5, 40, 30, 16, 7);
        StaticDlgBox_param(3);
        StaticDlgBox_set_geo(0, 150, 10, 40, 40), StaticDlgBox_set_type(0, -1); // group box 70 high
        StaticDlgBox_set_geo(1, 150, 70, 20, 16), StaticDlgBox_set_type(1, 3);  // icon: 2 cy = 32
        StaticDlgBox_set(2, "Ag"),
            StaticDlgBox_set_geo(2, 60, 60, 40, 4); // text 15 high from y 105

        Items items;
        std::vector<Box> frames;
        int inked = 0; // dark pixels in the lower half of the static text
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
        // clang-format off
        const Box boxes[] = {{190 - l.width, 176, 190, 196}, {210, 176, 210 + l.width, 196},
            {10, 7, 110, 17}, {10, 21, 110, 31}, {10, 35, 50, 45}, {20, 52, 40, 62},
            {50, 52, 70, 62}, {80, 52, 120, 62}, {10, 70, 70, 90}};
        // clang-format on
        const int kinds[] = {4, 4, 16, 4, 16, 16, 16, 16, 4},
                  ids[] = {0, 0, 100, 200, 300, 400, 400, 400, 500};
        for (int n = 1; n <= 9; ++n) {
            const Rect &r = items[size_t(n - 1)].rect;
            EXPECT_TRUE((Box{r.left, r.top, r.right, r.bottom}) == boxes[n - 1] &&
                        items[size_t(n - 1)].kind == kinds[n - 1] &&
                        (n < 3 || Dlg_itemOffset[n] == n - ids[n - 1]))
                << n;
        }

        EXPECT_EQ(std::string(items[0].text) + "|" + items[1].text,
                  std::string(*l.ok ? l.ok : "OK") + "|" + (*l.cancel ? l.cancel : "Annuler"));
        EXPECT_EQ(frames, (std::vector<Box>{{300, 17, 380, 87}, {300, 122, 340, 154}}));
        EXPECT_GT(inked, 0) << "the static text's lower half is cut off";
    }
}

// Descriptions beyond the item tables (items or ranks past 127) are
// refused unshown, the tables cleared; the size is converted when shown.
TEST_F(Dialog, DescriptionsBeyondTheItemTablesAreRefused) {
    // count, last rank, shown
    const int rows[][3] = {{125, 124, 1}, {126, 125, 0}, {1, 127, 1}, {1, 128, 0}};
    for (const auto &r : rows) {
        SetUp();
        IntDlgBox_param(r[0], 10);
        for (int i = 0; i < r[0]; ++i) IntDlgBox_set_geo(i, 0, 0, 10, 8, r[1] - r[0] + 1 + i);
        ScriptedAgent agent({Key(vitrail_key_escape)});
        EXPECT_TRUE(QarDlgBoxEx("Trop", nullptr) == 0 && agent.done() == size_t(r[2]))
            << r[0] << " " << r[1];
        EXPECT_EQ(IDB * 1000 + LDB_cx, r[2] ? 400 : 200);
    }
}

int final_calls;
int32_t CountFinal(WindowRef, int32_t, char **, int32_t, int32_t, int32_t *, int32_t, int32_t,
                   int32_t *, int32_t, int32_t, double *, int32_t, int32_t, int32_t *, int32_t) {
    return ++final_calls, 1;
}

// OK is active while every field is valid; a field never initialised
// keeps the validity it was given until edited. Cancel asks no hook.
TEST_F(Dialog, OkFollowsValidityAndCancelAsksNoHook) {
    for (bool initialised : {true, false}) {
        SetUp();
        TexteDlgBox_param(1, 10), TexteDlgBox_set_geo(0, 5, 5, 50, 12, 0);
        if (initialised) TexteDlgBox_set(0, "");
        DlgBoxFinal_set(CountFinal), final_calls = 0;
        std::vector<int> ok;
        auto then = [&](Step s) {
            return [&, s](WindowRef w) { ok.push_back(Item(w, 1).hilite), s(w); };
        };
        Show({then(Edit(3, "+a")), then(Key(vitrail_key_backspace)), then(Edit(3, "+b")),
              Key(vitrail_key_escape)});
        EXPECT_EQ(ok, (std::vector<int>{initialised ? 255 : 0, 0, 255}));
        EXPECT_TRUE(!std::strcmp(TDB_pszBuffer[0], "b") && final_calls == 0 && TDB == 0 &&
                    DlgBoxFinal_fonct == DlgBoxFinal_nul);
    }
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

// The global hook is told the field ID of each valid change and of a push
// button; its refresh list redraws or clears fields.
TEST_F(Dialog, TheGlobalHookIsToldFieldIdsAndRefreshesFields) {
    TexteDlgBox_param(4, 10);
    TexteDlgBox_set(0, "abc"), TexteDlgBox_set_geo(0, 5, 5, 50, 12, 0);
    TexteDlgBox_set(3, "xyz"), TexteDlgBox_set_geo(3, 5, 15, 50, 12, 1);
    IntDlgBox_param(4, 12); // integer 1 has text 3's ID, 13
    for (int i = 1; i < 4; ++i) IntDlgBox_set_geo(i, 5, 15 + 10 * i, 20, 12, i + 1);
    for (int i = 0; i < 4; ++i) IntDlgBox_mandatory(i, 0);
    IntDlgBox_set(2, 5, 0);
    PushDlgBox_param(1, 30), PushDlgBox_set_geo(0, "Go", 100, 5, 30, 12, 5); // no action
    DlgBoxGlobal_set(Refresh);
    hook_ids.clear();
    Items items;
    Show({Edit(5, "+7"), Edit(7, "+9"), Click(8), Snap(&items)});
    // Each click and key of a valid field, then the button; the 7 went to text 3.
    EXPECT_EQ(hook_ids, (std::vector<int32_t>{13, 13, 15, 15, 30}));
    ASSERT_EQ(items.size(), 8u);
    EXPECT_TRUE(!std::strcmp(items[5].text, "42") && !std::strcmp(items[2].text, ""));
    EXPECT_EQ(items[0].hilite, 255); // the cleared text is mandatory
}

// A password box shows a "*" per character; a "*" typed over takes back
// the stored character under it (past them it stays a "*"), and a text
// still the mask last shown (after a click) stands for the stored value.
TEST_F(Dialog, PasswordsTakeTheStoredCharacterUnderEachStar) {
    // clang-format off
    const struct { bool text; const char *initial; Step act; const char *value, *shown; } rows[] = {
        {true, "abc1", Key(vitrail_key_left), "abc1", "****"},
        {true, "abc1", All({Edit(3, "+x"), Edit(3, "+*")}), "abc1x*", "******"},
        {false, "1234", Edit(3, "+5"), "12345", "*****"},
        {false, "12345", All({Click(3), Key(vitrail_key_backspace)}), "1234", "****"},
        {false, "1234", Click(3), "1234", "****"}};
    // clang-format on
    for (const auto &r : rows) {
        SetUp();
        TexteDlgBox_param(1, 10), IntDlgBox_param(1, 20);
        (r.text ? TexteDlgBox_set_geo : IntDlgBox_set_geo)(0, 5, 5, 50, 12, 0);
        r.text ? (TexteDlgBox_set(0, r.initial), TexteDlgBox_password(0, 1))
               : (IntDlgBox_set(0, std::atoi(r.initial), 0), IntDlgBox_password(0, 1));
        std::string shown, value;
        Show({r.act, [&](WindowRef w) {
                  shown = Item(w, 3).text,
                  value = r.text ? TDB_pszBuffer[0] : std::to_string(IDB_iInts[0]);
                  vitrail_press_key(w, vitrail_key_escape);
              }});
        EXPECT_EQ(value + "|" + shown, r.value + std::string("|") + r.shown) << r.initial;
    }
}

// Edits of the day (3), month (4) and year (5) boxes of 01/01/2024: the
// box's text is replaced, or "+" types at its end; "" empties the box.
TEST_F(Dialog, DatesAreReadFromTheirThreeBoxes) {
    // clang-format off
    const struct { bool mandatory; Step edit; int32_t ok, date; } rows[] = {
        {true, All({Edit(3, "31"), Edit(4, "12")}), 1, 20241231},
        {true, Edit(5, "+x"), 0, 20240101}, {true, Edit(3, ""), 0, 20240101},
        {false, All({Edit(3, ""), Edit(4, ""), Edit(5, "")}), 1, 20240101},
        {false, Edit(3, "-3"), 1, 20240101}};
    // clang-format on
    for (const auto &r : rows) {
        SetUp();
        DateDlgBox_param(1, 30), DateDlgBox_set(0, 20240101, 1);
        DateDlgBox_mandatory(0, r.mandatory), DateDlgBox_set_geo(0, 10, 5, 0, 12, 0);
        Show({r.edit, Key(vitrail_key_escape)});
        EXPECT_TRUE(DDB_bOK[0] == r.ok && DDB_lDates[0] == r.date) << &r - rows;
    }
}

// Popup choices are cut at "+" and ",", list rows at "$"; a push button's
// action updates texts, lists and numbers of the running dialog.
TEST_F(Dialog, ChoicesAreCutFromTheListTextAndHooksUpdateFields) {
    TexteDlgBox_param(4, 10);
    const char *values[] = {"", "Peut", "Non", ""};
    for (int i = 0; i < 4; ++i) {
        if (i) TexteDlgBox_set_liste(i, i < 3 ? "Oui+Non,Peut-\xEAtre" : "A$B$");
        TexteDlgBox_set(i, values[i]), TexteDlgBox_set_geo(i, 5, 5 + 15 * i, 80, 12, i);
    }
    TexteDlgBox_password(0, 1), TexteDlgBox_change_liste(3);
    NumDlgBox_param(1, 20), NumDlgBox_set_geo(0, 5, 65, 40, 12, 4);
    PushDlgBox_param(1, 30), PushDlgBox_set_geo(0, "Go", 100, 5, 30, 12, 5);
    PushDlgBox_set_fvalid(0, [](WindowRef) {
        QarDlgBox_texte_set(0, "secret");
        QarDlgBox_texte_set(1, ""); // mandatory: invalid
        std::strcpy(TDB_PSZLBUFFER[2], "A+B,C"), std::strcpy(TDB_PSZLBUFFER[3], "A$B");
        QarDlgBox_texte_set_liste(2), QarDlgBox_texte_set_liste(3);
        QarDlgBox_texte_set(-1, "x"), QarDlgBox_texte_set(4, "x"), QarDlgBox_num_set(1, "x");
        return QarDlgBox_num_set(0, "1,5x");
    });
    Items before, after;
    Show({Snap(&before, [&](WindowRef w) { Row(5, 3)(w), Row(6, 1)(w); }), Click(8), Snap(&after)});
    ASSERT_EQ(before.size() + after.size(), 16u);
    EXPECT_EQ(before[4].count * 10 + before[4].value, 32); // "-" does not separate

    EXPECT_EQ(before[5].count * 10 + before[5].selected, 29);

    EXPECT_EQ(std::string(TDB_pszBuffer[2]) + "|" + TDB_pszBuffer[3], "Peut-\xEAtre|B");
    EXPECT_EQ(std::string(after[2].text) + "|" + TDB_pszBuffer[0], "******|secret");
    EXPECT_EQ(after[4].count * 10 + after[4].value, 30); // three choices, none chosen
    EXPECT_TRUE(after[5].count == 2 && !std::strcmp(after[6].text, "1,5x") &&
                TDB_bOK[1] + NDB_bOK[0] == 0);
}

// A template lays its dialog out by field IDs: item n holds field ID n,
// whatever the offset tables held.
TEST_F(Dialog, TemplatesLayOutDialogsByFieldIds) {
    TempResources resources;
    fs::create_directories(resources.root() / "DLOG");
    fs::copy_file(fs::path(VITRAIL_SOURCE_DIR) / "examples/resources/DLOG/Renouvellement",
                  resources.root() / "DLOG/Renouvellement");
    TexteDlgBox_param(1, 10), TexteDlgBox_set(0, "Douleurs");
    BoolDlgBox_param(1, 20), IntDlgBox_param(1, 30), IntDlgBox_set(0, 2, 0);
    DateDlgBox_param(1, 40), DateDlgBox_set(0, 20240310, 1);
    std::fill(Dlg_itemOffset, Dlg_itemOffset + 128, 77);
    std::string title, day;
    ScriptedAgent agent(
        {[&](WindowRef w) { title = Title(w), day = Item(w, 40).text, Edit(30, "+3")(w); },
         Click(20), Click(1)});
    EXPECT_EQ(QarDlgBox("Renouvellement"), 1);
    EXPECT_TRUE(title == "Renouvellement" && day == "10" && Dlg_itemOffset[40] == 0);
    EXPECT_EQ(IDB_iInts[0] * 10 + BDB_bFlags[0], 231);
}

// The prescriber list comes from the profile ("+" separates names); a
// double click returns the chosen name, Cancel "".
TEST_F(Dialog, SelectPresReturnsTheChosenPrescriber) {
    TempVolumes volumes;
    volumes.volume("Vol");
    // clang-format off
    struct { const char *names, *shown; std::vector<Step> steps; const char *pick; } rows[] = {
        {"Dr A+Dr B+Dr C", "Dr A|Dr B|Dr C|", {Row(3, 1, 2)}, "Dr B"},
        {"Dr A+Dr B+Dr C", "Dr A|Dr B|Dr C|", {Row(3, 0), Key(vitrail_key_escape)}, ""},
        {"Martin, Paul+Durand", "Martin, Paul|Durand|", {Row(3, 0, 2)}, "Martin, Paul"}};
    // clang-format on
    for (auto &r : rows) {
        volumes.write("Vol/pres.ini", std::string("[Prescriptions]\r\nPrescripteurs=") + r.names);
        std::string shown; // the list's rows, each followed by "|"
        Rect bounds{};
        r.steps[0] = [&, first = r.steps[0]](WindowRef w) {
            vitrail_window_bounds(w, &bounds), first(w);
            char row[64];
            for (int k = 0; vitrail_dialog_item_row(w, 3, k, row, sizeof row) >= 0; ++k)
                shown += row + std::string("|");
            if (&r == rows) Png(w, "prescribers.png");
        };
        std::strcpy(PRES_szSelect, "avant");
        ScriptedAgent agent(r.steps);
        EXPECT_STREQ(SelectPRES(nullptr, nullptr, "Vol:pres.ini"), r.pick);
        EXPECT_EQ(shown, r.shown);
        EXPECT_EQ((bounds.right - bounds.left) * 1000 + bounds.bottom - bounds.top, 280175);
    }
}

// Choosing a drug proposes its dose; OK is refused with a message while
// the end is before the start, accepted once corrected.
TEST_F(Dialog, APrescriptionIsFilledCorrectedAndAccepted) {
    Prescription rx = {"", "", 3, 0.0, 20240310, 0, 0};
    prescription_describe(&rx);
    std::string interactions, refusal;
    std::vector<int> ok;
    auto shot = [&](const char *name, Step then) {
        return [&, name, then](WindowRef w) {
            ok.push_back(Item(w, 1).hilite), Png(w, name), then(w);
        };
    };

    auto answer = [&](std::string *text, const char *name) { // a message box: its title and lines
        return [&, text, name](WindowRef w) {
            vitrail_trace_op op;
            *text = Title(w) + ": ";
            for (int32_t k = 0; vitrail_port_trace_get(vitrail_window_port(w), k, &op) == 0; ++k)
                if (op.kind == vitrail_op_text) *text += op.text; // UTF-8
            shot(name, Key(vitrail_key_return))(w);
        };
    };
    ScriptedAgent agent({
        shot("prescription-1-new.png", Row(3, 2)), // Paracetamol: the hook proposes 1000 mg
        shot("prescription-2-drug.png",
             [&](WindowRef w) {
                 Row(4, 0)(w), Edit(10, "5")(w), Edit(11, "3")(w), Edit(12, "2024")(w),
                     Click(13)(w);
             }),
        shot("prescription-3-filled.png", Click(14)),
        answer(&interactions, "prescription-4-interactions.png"),
        Click(1), // the end is before the start
        answer(&refusal, "prescription-5-refused.png"),
        Edit(12, "2025"),
        shot("prescription-6-corrected.png", Click(1)),
    });
    EXPECT_EQ(QarDlgBoxEx("Ordonnance", nullptr), 1);

    EXPECT_EQ(ok, (std::vector<int>{255, 255, 0, 0, 0, 0})); // the form's, then the message boxes'
    EXPECT_EQ(interactions, "Interactions: Aucune interaction connue pour Parac\xC3\xA9tamol.");
    EXPECT_EQ(refusal, "Ordonnance: La date de fin pr\xC3\xA9"
                       "c\xC3\xA8"
                       "de la date de d\xC3\xA9"
                       "but.");
    prescription_read(&rx);
    EXPECT_EQ(std::string(rx.drug) + "|" + rx.route, "Parac\xE9tamol|Orale");
    EXPECT_EQ(std::vector<double>({double(rx.daily), rx.dose, double(rx.start), double(rx.end),
                                   double(rx.renewable)}),
              std::vector<double>({3, 1000, 20240310, 20250305, 1}));
}

} // namespace
