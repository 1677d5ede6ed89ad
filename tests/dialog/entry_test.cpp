// The other entry points: dialog templates, the prescriber selection, and a
// prescription form filled, refused, corrected and accepted (with pictures
// of each step in build/screens).
#include <cstring>
#include <filesystem>
#include <fstream>

#include <vitrail/platform.h>

#include "dialog_steps.h"
#include "prescription.h"
#include "support/temp_resources.h"
#include "support/temp_volumes.h"

using namespace vitrail_test;
namespace fs = std::filesystem;

namespace {

void Png(WindowRef w, const char *name) {
    fs::create_directories(VITRAIL_SCREENS);
    EXPECT_EQ(vitrail_window_write_png(w, (fs::path(VITRAIL_SCREENS) / name).c_str()), 0);
}

// The texts drawn into a window (a message box's lines), UTF-8.
std::string Drawn(WindowRef w) {
    std::string all;
    vitrail_trace_op op;
    GrafPtr port = vitrail_window_port(w);
    for (int32_t k = 0; vitrail_port_trace_get(port, k, &op) == 0; ++k)
        if (op.kind == vitrail_op_text) all += op.text;
    return all;
}

} // namespace

TEST(DialogEntry, TemplatesLayOutDialogsByFieldIds) {
    TempResources resources;
    fs::create_directories(resources.root() / "DLOG");
    fs::copy_file(fs::path(VITRAIL_SOURCE_DIR) / "examples/resources/DLOG/Renouvellement",
                  resources.root() / "DLOG/Renouvellement");
    struct {
        const char *name, *text; // no text: the example
        bool shown;
    } rows[] = {{"Renouvellement", nullptr, true},
                {"Court", "# c\n\ndialog 9 100 80 Court\r\n1 button 10 40 90 60 Fermer\n", true},
                {"Absent", nullptr, false},
                {"SansEntete", "1 button 0 0 10 10 OK\n", false},
                {"Desordre", "dialog 7 100 80 T\n2 edit 0 0 1 1\n1 button 0 0 1 1\n", false},
                {"Inconnu", "dialog 7 100 80 T\n1 knob 0 0 1 1\n", false},
                {"Rectangle", "dialog 7 100 80 T\n1 edit 0 0 1\n", false},
                {"IdZero", "dialog 0 100 80 T\n", false}};
    for (const auto &r : rows) {
        if (r.text) std::ofstream(resources.root() / "DLOG" / r.name) << r.text;
        Fresh();
        TexteDlgBox_param(1, 10);
        TexteDlgBox_set(0, "Douleurs");
        BoolDlgBox_param(1, 20);
        IntDlgBox_param(1, 30);
        IntDlgBox_set(0, 2, 0);
        DateDlgBox_param(1, 40);
        DateDlgBox_set(0, 20240310, 1);
        std::fill(Dlg_itemOffset, Dlg_itemOffset + 128, 77);
        std::vector<vitrail_item_info> items;
        std::string title;
        ScriptedAgent agent({[&](WindowRef w) { title = Title(w), Snap(&items, r.text ? Key(vitrail_key_escape) : Type(30, "3"))(w); },
                             Click(20), Click(1)});
        int32_t result = QarDlgBox(r.name);
        EXPECT_EQ(agent.done() > 0, r.shown) << r.name;
        EXPECT_EQ(TDB, r.shown ? 0 : 1) << r.name; // an unshown dialog leaves the tables
        if (!r.shown || r.text) continue;
        EXPECT_EQ(result, 1);
        EXPECT_EQ(title, "Renouvellement");
        ASSERT_EQ(items.size(), 42u);
        const char *texts[] = {"Douleurs", "Ordonnance urgente", "2", "10", "3", "2024", "Bo\xEEtes :"};
        const int at[] = {10, 20, 30, 40, 41, 42, 4};
        for (int k = 0; k < 7; ++k) EXPECT_STREQ(items[size_t(at[k] - 1)].text, texts[k]);
        EXPECT_EQ(IDB_iInts[0] * 10 + BDB_bFlags[0], 231);
        EXPECT_EQ(Dlg_itemOffset[40], 0);
    }
}

TEST(DialogEntry, SelectPresReturnsTheChosenPrescriber) {
    TempVolumes volumes;
    volumes.volume("Vol");
    struct {
        const char *names; // null: no profile file
        std::vector<Step> steps;
        const char *chosen;
        std::vector<std::string> rows;
    } rows[] = {{"Dr A+Dr B+Dr C", {Row(3, 1, 2)}, "Dr B", {"Dr A", "Dr B", "Dr C"}},
                {"Dr A+Dr B+Dr C", {Row(3, 0), Key(vitrail_key_escape)}, "", {"Dr A", "Dr B", "Dr C"}},
                {"Martin, Paul+Durand", {Row(3, 0, 2)}, "Martin, Paul", {"Martin, Paul", "Durand"}},
                {nullptr,
                 {Row(3, 0), [](WindowRef w) { EXPECT_EQ(Item(w, 1).hilite, 255), Row(3, 0, 2)(w); }},
                 "",
                 {""}}};
    for (auto &r : rows) {
        fs::remove(volumes.root() / "Vol/pres.ini");
        if (r.names) volumes.write("Vol/pres.ini", std::string("[Prescriptions]\r\nPrescripteurs=") + r.names + "\r\n");
        std::vector<std::string> shown;
        std::vector<vitrail_item_info> items;
        Rect bounds{};
        r.steps[0] = [&, first = r.steps[0]](WindowRef w) {
            Snap(&items, first)(w);
            vitrail_window_bounds(w, &bounds);
            char row[64];
            for (int k = 0; vitrail_dialog_item_row(w, 3, k, row, sizeof row) >= 0; ++k) shown.push_back(row);
            if (&r == rows) Png(w, "prescribers.png");
        };
        std::strcpy(PRES_szSelect, "avant");
        ScriptedAgent agent(r.steps);
        EXPECT_STREQ(SelectPRES(nullptr, nullptr, "Vol:pres.ini"), r.chosen);
        EXPECT_EQ(shown, r.rows);
        ASSERT_EQ(items.size(), 3u);
        EXPECT_EQ(bounds.right - bounds.left, 280);
        EXPECT_EQ(bounds.bottom - bounds.top, 175);
        const std::array<int, 4> boxes[] = {{50, 141, 130, 161}, {150, 141, 230, 161}, {20, 35, 260, 135}};
        for (int n = 0; n < 3; ++n) EXPECT_EQ(Box(items[size_t(n)]), boxes[n]);
        EXPECT_EQ(items[2].control, vitrail_control_list);
    }
}

TEST(DialogEntry, APrescriptionIsFilledCorrectedAndAccepted) {
    Fresh();
    Prescription rx = {"", "", 3, 0.0, 20240310, 0, 0};
    prescription_describe(&rx);
    std::string interactions, refusal;
    auto shot = [](const char *name, Step then) {
        return [=](WindowRef w) { Png(w, name), then(w); };
    };
    auto date = [](int first, std::vector<const char *> parts) {
        return [=](WindowRef w) {
            vitrail_click_item(w, first);
            vitrail_press_key(w, 'a' | vitrail_key_command);
            for (const char *p : parts) vitrail_type_text(w, p), vitrail_press_key(w, vitrail_key_tab);
        };
    };
    ScriptedAgent agent({
        shot("prescription-1-new.png", Row(3, 2)), // Paracetamol: the hook proposes 1000 mg
        shot("prescription-2-drug.png",
             [&](WindowRef w) { Row(4, 0)(w), date(10, {"5", "3", "2024"})(w), Click(13)(w); }),
        shot("prescription-3-filled.png", Click(14)),
        [&](WindowRef w) { interactions = Drawn(w), shot("prescription-4-interactions.png", Key(vitrail_key_return))(w); },
        Click(1), // the end is before the start
        [&](WindowRef w) { refusal = Title(w) + ": " + Drawn(w), shot("prescription-5-refused.png", Key(vitrail_key_return))(w); },
        date(12, {"2025"}),
        shot("prescription-6-corrected.png", Click(1)),
    });
    EXPECT_EQ(QarDlgBoxEx("Ordonnance", nullptr), 1);
    EXPECT_EQ(agent.done(), 8u);
    EXPECT_EQ(interactions, "Aucune interaction connue pour Parac\xC3\xA9tamol.");
    EXPECT_EQ(refusal, "Ordonnance: La date de fin pr\xC3\xA9" "c\xC3\xA8" "de la date de d\xC3\xA9" "but.");
    prescription_read(&rx);
    EXPECT_STREQ(rx.drug, "Parac\xE9tamol");
    EXPECT_STREQ(rx.route, "Orale");
    EXPECT_EQ(rx.daily, 3);
    EXPECT_EQ(rx.dose, 1000.0);
    EXPECT_EQ(rx.start, 20240310);
    EXPECT_EQ(rx.end, 20250305);
    EXPECT_EQ(rx.renewable, 1);
}
