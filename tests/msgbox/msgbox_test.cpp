// Message boxes driven through the automation interface: line breaking,
// geometry, icons, default buttons, results, the over-long fallback and
// the host record called by the filter.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <vitrail/automation.h>
#include <vitrail/form.h>
#include <vitrail/msgbox.h>
#include <vitrail/platform.h>

#include "support/agent.h"

using vitrail_test::Item;
using vitrail_test::ScriptedAgent;
using vitrail_test::Title;

namespace {

// What one box looked like when the agent saw it.
struct Seen {
    std::string title;
    Rect bounds{};
    std::vector<vitrail_item_info> items;
    std::vector<std::string> lines; // texts drawn at x 80, top to bottom
    std::vector<int16_t> baselines;
    uint32_t iconPixel = 0; // inside the icon's body
};

Seen Look(WindowRef w) {
    Seen s;
    s.title = Title(w);
    vitrail_window_bounds(w, &s.bounds);
    for (int32_t i = 1; i <= vitrail_dialog_item_count(w); ++i) s.items.push_back(Item(w, i));
    GrafPtr port = vitrail_window_port(w);
    vitrail_trace_op op;
    for (int32_t i = 0; vitrail_port_trace_get(port, i, &op) == 0; ++i)
        if (op.kind == vitrail_op_text && op.x1 == 80) {
            s.lines.push_back(op.text);
            s.baselines.push_back(op.y1);
        }
    s.iconPixel = vitrail_port_pixel(port, 26, 42);
    return s;
}

// Shows one box with an agent that looks at it, then presses `key`.
int32_t Show(const std::string &text, const std::string &caption, uint32_t flags, Seen *seen,
             int32_t key = vitrail_key_return, WindowRef parent = nullptr) {
    ScriptedAgent agent({[&](WindowRef w) {
        if (seen) *seen = Look(w);
        vitrail_press_key(w, key);
    }});
    return MessageBox(parent, text.c_str(), caption.c_str(), flags);
}

int32_t Height(const Seen &s) {
    return s.bounds.bottom - s.bounds.top;
}

int32_t Width(const Seen &s) {
    return s.bounds.right - s.bounds.left;
}

TEST(MessageBox, BreaksLinesAndCountsThem) {
    const std::string x51(51, 'x'), x50(50, 'x');
    struct Row {
        std::string text;
        int32_t lines; // as the note box's height tells: 14 n + 62
        std::vector<std::string> drawn;
    } rows[] = {
        {std::string(60, 'y'), 2, {std::string(60, 'y')}},
        {x51 + " abc", 2, {x51, "abc"}},
        {x50 + " abc", 2, {x50 + " abc"}},
        {x51 + " : abc def", 2, {x51 + " :", "abc def"}},
        {x51 + " , abc", 2, {x51 + " ,", "abc"}},
        {"un\r\ndeux", 3, {"un", "", "deux"}},
        {"un\ndeux\ntrois", 3, {"un", "deux", "trois"}},
        {x51 + " " + x51 + " z", 3, {x51, x51, "z"}},
        {"", 2, {}},
    };
    for (const Row &row : rows) {
        Seen seen;
        EXPECT_EQ(Show(row.text, "Lignes", 0, &seen), MSGBOX_OK);
        EXPECT_EQ(Height(seen), 14 * row.lines + 62) << row.text;
        std::vector<std::string> drawn;
        for (const std::string &l : seen.lines)
            if (!l.empty()) drawn.push_back(l);
        std::vector<std::string> expected;
        for (const std::string &l : row.drawn)
            if (!l.empty()) expected.push_back(l);
        EXPECT_EQ(drawn, expected) << row.text;
        for (size_t k = 0; k < seen.baselines.size(); ++k)
            EXPECT_EQ(seen.baselines[k] % 14, 26 % 14) << row.text;
    }
}

TEST(MessageBox, GeometryOfBothBoxes) {
    const std::string c50(50, 'c'), t50(50, 't');
    struct Row {
        uint32_t flags;
        std::string caption, text;
        int32_t width, height;
        std::vector<Rect> buttons; // top, left, bottom, right
    } rows[] = {
        {0, c50, t50, 400, 90, {{58, 300, 78, 380}}},
        {MSGBOX_QUESTION, c50, t50, 400, 90, {{58, 200, 78, 280}, {58, 300, 78, 380}}},
        {MSGBOX_QUESTION, c50 + "c", "t", 540, 90, {{58, 340, 78, 420}, {58, 440, 78, 520}}},
        {0, "c", t50 + "t", 540, 90, {{58, 440, 78, 520}}},
        {MSGBOX_QUESTION, "c", "a\rb\rc", 400, 110, {{78, 200, 98, 280}, {78, 300, 98, 380}}},
    };
    for (const Row &row : rows) {
        Seen seen;
        Show(row.text, row.caption, row.flags, &seen);
        EXPECT_EQ(Width(seen), row.width);
        EXPECT_EQ(Height(seen), row.height);
        ASSERT_EQ(seen.items.size(), row.buttons.size());
        for (size_t i = 0; i < row.buttons.size(); ++i) {
            const Rect &r = seen.items[i].rect, &e = row.buttons[i];
            EXPECT_EQ(std::vector<int>({r.top, r.left, r.bottom, r.right}),
                      std::vector<int>({e.top, e.left, e.bottom, e.right}));
            EXPECT_EQ(seen.items[i].control, vitrail_control_push);
        }
    }
}

TEST(MessageBox, IconFollowsTheFlags) {
    constexpr uint32_t kNone = 0xECECECFF, kCaution = 0xFACC15FF, kStop = 0xE5483FFF,
                       kNote = 0x3B82F6FF;
    struct Row {
        uint32_t flags, pixel;
    } rows[] = {
        {0x00, kNone},    {0x01, kNote},    {0x04, kStop}, {0x05, kStop},
        {0x06, kCaution}, {0x02, kCaution}, {0x08, kNone}, {0x10, kNone},
        {0x18, kCaution}, {0x12, kCaution}, {0x11, kNone}, {0x14, kNone},
    };
    for (const Row &row : rows) {
        Seen seen;
        Show("Texte", "Icône", row.flags, &seen);
        EXPECT_EQ(seen.iconPixel, row.pixel) << "flags " << row.flags;
    }
}

TEST(MessageBox, ReturnEscapeAndTheDefaultButton) {
    struct Row {
        uint32_t flags;
        int32_t key, result, defaultItem;
    } rows[] = {
        {0x00, vitrail_key_return, MSGBOX_OK, 1},  {0x00, vitrail_key_escape, MSGBOX_OK, 1},
        {0x10, vitrail_key_return, MSGBOX_OUI, 1}, {0x50, vitrail_key_return, MSGBOX_NON, 2},
        {0x70, vitrail_key_return, MSGBOX_OUI, 1}, {0x10, vitrail_key_escape, MSGBOX_NON, 1},
        {0x10, vitrail_key_enter, MSGBOX_OUI, 1},
    };
    for (const Row &row : rows) {
        Seen seen;
        // Escape does nothing to a note box: a second step answers it.
        ScriptedAgent agent({[&](WindowRef w) {
                                 seen = Look(w);
                                 vitrail_press_key(w, row.key);
                             },
                             [](WindowRef w) { vitrail_click_item(w, 1); }});
        EXPECT_EQ(MessageBox(nullptr, "Texte", "Défaut", row.flags), row.result);
        for (size_t i = 0; i < seen.items.size(); ++i)
            EXPECT_EQ(seen.items[i].is_default, int32_t(i + 1) == row.defaultItem);
    }
    Seen seen;
    ScriptedAgent agent({[&](WindowRef w) { vitrail_click_item(w, 2); }});
    EXPECT_EQ(MessageBox(nullptr, "Texte", "Clic", MSGBOX_QUESTION), MSGBOX_NON);
}

TEST(MessageBox, OverLongTextsShowTheFallback) {
    for (auto [text, caption] : {std::pair{std::string(4096, 't'), std::string("c")},
                                 std::pair{std::string("t"), std::string(256, 'c')}}) {
        Seen seen;
        EXPECT_EQ(Show(text, caption, 0, &seen), MSGBOX_OK);
        EXPECT_EQ(seen.title, "Erreur interne");
        EXPECT_EQ(seen.lines, std::vector<std::string>{"MessageBox impossible"});
        EXPECT_EQ(Height(seen), 14 * 2 + 62);
    }
    Seen seen;
    Show(std::string(4095, 't'), std::string(255, 'c'), 0, &seen);
    EXPECT_EQ(seen.title, std::string(255, 'c'));
    Show("t", "", 0, &seen);
    EXPECT_EQ(seen.title, "Dialogue utilisateur");
    Show("t", "Ordonnance r\xE9nale", 0, &seen);
    EXPECT_EQ(seen.title, "Ordonnance r\xE9nale");
}

struct HostRecord {
    void *fields[10];
};
std::vector<EventRecord> handled;
void HostHandler(EventRecord *event) {
    handled.push_back(*event);
}

TEST(MessageBox, CentresAndCallsTheHostRecordOnUpdates) {
    Seen seen;
    Show("t", "Écran", 0, &seen); // no window at all: centred on the screen
    EXPECT_EQ(seen.bounds.left, (1280 - 400) / 2);
    EXPECT_EQ(seen.bounds.top, (800 - 90) / 2);

    WindowRef host = vitrail_window_new("Hôte", 100, 100, 500, 400);
    HostRecord record{};
    record.fields[9] = reinterpret_cast<void *>(&HostHandler);
    vitrail_window_set_refcon(host, &record);
    handled.clear();
    ScriptedAgent agent({[&](WindowRef w) {
                             seen = Look(w);
                             vitrail_window_invalidate(host);
                         },
                         [](WindowRef w) { vitrail_press_key(w, vitrail_key_return); }});
    EXPECT_EQ(MessageBox(nullptr, "t", "Parent", 0), MSGBOX_OK);
    EXPECT_EQ(seen.bounds.left, 100);
    EXPECT_EQ(seen.bounds.top, (100 + 400 - 90) / 2);
    bool update = false;
    for (const EventRecord &e : handled) {
        EXPECT_EQ(e.message, reinterpret_cast<uintptr_t>(host));
        update |= e.what == updateEvt;
    }
    EXPECT_TRUE(update);
    EXPECT_EQ(vitrail_port_current(), vitrail_window_port(host));
    vitrail_window_dispose(host);
}

TEST(MessageBox, HeadlessWithoutAgentAnswersAndSaysSo) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageBox(nullptr, "Supprimer ?", "Question", 0x50), MSGBOX_NON);
    EXPECT_EQ(MessageBox(nullptr, "Fait.", "Note", 0), MSGBOX_OK);
    std::string err = testing::internal::GetCapturedStderr();
    EXPECT_NE(err.find("\"Question\" answered with \"Non\" (Return)"), std::string::npos) << err;
    EXPECT_NE(err.find("\"Note\" answered with \"OK\" (Return)"), std::string::npos) << err;
}

TEST(MessageBox, FinalHookMessageIsRecordedAndShown) {
    EXPECT_EQ(DlgBoxFinal_MessageBox(nullptr, "Date de fin avant le début", "Erreur", 0), 0);
    EXPECT_STREQ(DlgBoxFinal_Erreur(), "Date de fin avant le début");
    WindowRef host = vitrail_window_new("Hôte", 0, 0, 300, 200);
    Seen seen;
    ScriptedAgent agent({[&](WindowRef w) {
        seen = Look(w);
        vitrail_press_key(w, vitrail_key_return);
    }});
    std::string message;
    for (int i = 0; i < 60; ++i) message += "mot" + std::to_string(i % 10) + " ";
    message.pop_back(); // 299 bytes
    EXPECT_EQ(DlgBoxFinal_MessageBox(host, message.c_str(), "Erreur", 0x10), 2);
    EXPECT_EQ(std::string(DlgBoxFinal_Erreur()), message.substr(0, 255));
    std::string shown;
    for (const std::string &line : seen.lines) shown += line + " ";
    EXPECT_EQ(shown, message + " "); // the whole message, in lines
    vitrail_window_dispose(host);
}

TEST(MessageBox, ScreensOfTheBoxes) {
    std::filesystem::create_directories(VITRAIL_SCREENS_DIR);
    struct Row {
        const char *file;
        uint32_t flags;
        const char *caption, *text;
    } rows[] = {
        {"msgbox_note.png", MSGBOX_ICON_NOTE, "Ordonnance",
         "L'ordonnance a \xE9t\xE9 enregistr\xE9"
         "e dans le dossier du patient."},
        {"msgbox_question_plain.png", MSGBOX_QUESTION, "Question", "Imprimer l'ordonnance ?"},
        {"msgbox_question_caution.png",
         MSGBOX_QUESTION | MSGBOX_QUESTION_CAUTION | MSGBOX_DEFAULT_NON, "Confirmation",
         "Le patient est allergique \xE0 la p\xE9nicilline : voulez-vous vraiment prescrire "
         "cette mol\xE9"
         "cule malgr\xE9 tout ?"},
        {"msgbox_note_stop.png", MSGBOX_ICON_STOP, "Erreur",
         "Impossible d'ouvrir le fichier des prescripteurs.\nV\xE9rifiez le chemin."},
        {"msgbox_note_caution.png", MSGBOX_ICON_CAUTION, "Attention",
         "La date de fin pr\xE9"
         "c\xE8"
         "de la date de d\xE9"
         "but."},
    };
    for (const Row &row : rows) {
        std::string path = std::string(VITRAIL_SCREENS_DIR) + "/" + row.file;
        ScriptedAgent agent({[&](WindowRef w) {
            EXPECT_EQ(vitrail_window_write_png(w, path.c_str()), 0);
            vitrail_press_key(w, vitrail_key_return);
        }});
        MessageBox(nullptr, row.text, row.caption, row.flags);
        EXPECT_TRUE(std::filesystem::file_size(path) > 0);
    }
}

} // namespace
