// The other entry points: dialog templates, the prescriber selection, and a
// prescription form filled, refused, corrected and accepted, with a picture
// of each step in <build>/screens.
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
    for (int32_t k = 0; vitrail_port_trace_get(vitrail_window_port(w), k, &op) == 0; ++k)
        if (op.kind == vitrail_op_text) all += op.text;
    return all;
}

} // namespace

TEST(DialogEntry, TemplatesLayOutDialogsByFieldIds) {
    TempResources resources;
    fs::create_directories(resources.root() / "DLOG");
    fs::copy_file(fs::path(VITRAIL_SOURCE_DIR) / "examples/resources/DLOG/Renouvellement",
                  resources.root() / "DLOG/Renouvellement");
    const char *rows[][2] = {{"Renouvellement", nullptr}, // shown; the others not
                             {"Absent", nullptr},
                             {"Inconnu", "dialog 7 100 80 T\n1 knob 0 0 1 1\n"}};
    for (const auto &r : rows) {
        if (r[1]) std::ofstream(resources.root() / "DLOG" / r[0]) << r[1];
        bool shown = &r == rows;
        Fresh();
        TexteDlgBox_param(1, 10);
        TexteDlgBox_set(0, "Douleurs");
        BoolDlgBox_param(1, 20);
        IntDlgBox_param(1, 30);
        IntDlgBox_set(0, 2, 0);
        DateDlgBox_param(1, 40);
        DateDlgBox_set(0, 20240310, 1);
        std::fill(Dlg_itemOffset, Dlg_itemOffset + 128, 77);
        Items items;
        std::string title;
        ScriptedAgent agent({[&](WindowRef w) { title = Title(w), Snap(&items, Type(30, "3"))(w); },
                             Click(20), Click(1)});
        int32_t result = QarDlgBox(r[0]);
        EXPECT_EQ(agent.done() > 0, shown) << r[0];
        EXPECT_EQ(TDB, shown ? 0 : 1) << r[0]; // an unshown dialog leaves the tables as they are
        if (!shown) continue;
        EXPECT_EQ(result, 1);
        EXPECT_EQ(title, "Renouvellement");
        ASSERT_EQ(items.size(), 42u);
        const char *texts[] = {"Douleurs", "Ordonnance urgente", "2", "10", "3",
                               "2024",     "Bo\xEEtes :"};
        const int at[] = {10, 20, 30, 40, 41, 42, 4};
        for (int k = 0; k < 7; ++k) EXPECT_STREQ(items[size_t(at[k] - 1)].text, texts[k]);
        EXPECT_EQ(IDB_iInts[0] * 10 + BDB_bFlags[0], 231);
        EXPECT_EQ(Dlg_itemOffset[40], 0);
    }
}

TEST(DialogEntry, SelectPresReturnsTheChosenPrescriber) {
    TempVolumes volumes;
    volumes.volume("Vol");
    auto ok_off = [](WindowRef w) { EXPECT_EQ(Item(w, 1).hilite, 255), Row(3, 0, 2)(w); };
    struct {
        const char *names; // null: no profile file
        std::vector<Step> steps;
        const char *chosen;
        std::vector<std::string> rows;
    } rows[] = {
        {"Dr A+Dr B+Dr C", {Row(3, 1, 2)}, "Dr B", {"Dr A", "Dr B", "Dr C"}},
        {"Dr A+Dr B+Dr C", {Row(3, 0), Key(vitrail_key_escape)}, "", {"Dr A", "Dr B", "Dr C"}},
        {"Martin, Paul+Durand", {Row(3, 0, 2)}, "Martin, Paul", {"Martin, Paul", "Durand"}},
        {nullptr, {Row(3, 0), ok_off}, "", {""}}};
    for (auto &r : rows) {
        fs::remove(volumes.root() / "Vol/pres.ini");
        if (r.names)
            volumes.write("Vol/pres.ini",
                          std::string("[Prescriptions]\r\nPrescripteurs=") + r.names);
        std::vector<std::string> shown;
        Items items;
        Rect bounds{};
        r.steps[0] = [&, first = r.steps[0]](WindowRef w) {
            Snap(&items, first)(w);
            vitrail_window_bounds(w, &bounds);
            char row[64];
            for (int k = 0; vitrail_dialog_item_row(w, 3, k, row, sizeof row) >= 0; ++k)
                shown.push_back(row);
            if (&r == rows) Png(w, "prescribers.png");
        };
        std::strcpy(PRES_szSelect, "avant");
        ScriptedAgent agent(r.steps);
        EXPECT_STREQ(SelectPRES(nullptr, nullptr, "Vol:pres.ini"), r.chosen);
        EXPECT_EQ(shown, r.rows);
        ASSERT_EQ(items.size(), 3u);
        EXPECT_EQ((bounds.right - bounds.left) * 1000 + bounds.bottom - bounds.top, 280175);
        const std::array<int, 4> boxes[] = {
            {50, 141, 130, 161}, {150, 141, 230, 161}, {20, 35, 260, 135}};
        for (int n = 0; n < 3; ++n) EXPECT_EQ(Box(items[size_t(n)]), boxes[n]);
        EXPECT_EQ(items[2].control, vitrail_control_list);
    }
}

TEST(DialogEntry, APrescriptionIsFilledCorrectedAndAccepted) {
    Fresh();
    Prescription rx = {"", "", 3, 0.0, 20240310, 0, 0};
    prescription_describe(&rx);
    std::string interactions, refusal;
    std::vector<int> ok;
    auto shot = [&](const char *name, Step then) {
        return [&, name, then](WindowRef w) {
            ok.push_back(Item(w, 1).hilite), Png(w, name), then(w);
        };
    };
    auto date = [](int first, std::vector<const char *> parts) {
        return [=](WindowRef w) {
            vitrail_click_item(w, first);
            vitrail_press_key(w, 'a' | vitrail_key_command);
            for (const char *p : parts)
                vitrail_type_text(w, p), vitrail_press_key(w, vitrail_key_tab);
        };
    };
    auto answer = [&](std::string *text, const char *name) {
        return [&, text, name](WindowRef w) {
            *text = Title(w) + ": " + Drawn(w), shot(name, Key(vitrail_key_return))(w);
        };
    };
    ScriptedAgent agent({
        shot("prescription-1-new.png", Row(3, 2)), // Paracetamol: the hook proposes 1000 mg
        shot("prescription-2-drug.png",
             [&](WindowRef w) {
                 Row(4, 0)(w), date(10, {"5", "3", "2024"})(w), Click(13)(w);
             }),
        shot("prescription-3-filled.png", Click(14)),
        answer(&interactions, "prescription-4-interactions.png"),
        Click(1), // the end is before the start
        answer(&refusal, "prescription-5-refused.png"),
        date(12, {"2025"}),
        shot("prescription-6-corrected.png", Click(1)),
    });
    EXPECT_EQ(QarDlgBoxEx("Ordonnance", nullptr), 1);
    EXPECT_EQ(agent.done(), 8u);
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
