// Message boxes driven through the automation interface: line breaking and
// geometry, the over-long fallback, icons, default buttons and results, a
// picture of each kind in <build>/screens, centring and the host record.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <vitrail/automation.h>
#include <vitrail/form.h>
#include <vitrail/msgbox.h>
#include <vitrail/platform.h>

#include "support/agent.h"

using namespace vitrail_test;

namespace {

// What one box looked like when the agent saw it.
struct Seen {
    std::string title, lines; // texts drawn at x 80, each followed by "|"
    Rect bounds{};
    std::vector<int> buttons; // top, left, bottom, right of each
    int32_t defaultItem = 0;  // the button Return presses
    uint32_t iconPixel = 0;   // inside the icon's body
    bool onBaselines = true;  // 14 pixels apart from 26
};

void Look(WindowRef w, Seen *s) {
    s->title = Title(w);
    vitrail_window_bounds(w, &s->bounds);
    for (int32_t i = 1; i <= vitrail_dialog_item_count(w); ++i) {
        const vitrail_item_info b = Item(w, i);
        s->buttons.insert(s->buttons.end(), {b.rect.top, b.rect.left, b.rect.bottom, b.rect.right});
        if (b.is_default) s->defaultItem = i;
    }
    vitrail_trace_op op;
    for (int32_t i = 0; vitrail_port_trace_get(vitrail_window_port(w), i, &op) == 0; ++i)
        if (op.kind == vitrail_op_text && op.x1 == 80)
            s->lines += op.text + std::string("|"), s->onBaselines &= op.y1 % 14 == 12;
    s->iconPixel = vitrail_port_pixel(vitrail_window_port(w), 26, 42);
}

const ScriptedAgent::Step kReturn = [](WindowRef w) { vitrail_press_key(w, vitrail_key_return); };

// Shows one box, looks at it and runs `then` on it; if the box still
// waits, presses Return.
int32_t Show(const std::string &text, const std::string &caption, uint32_t flags, Seen *seen,
             ScriptedAgent::Step then = nullptr) {
    ScriptedAgent agent({[&](WindowRef w) { Look(w, seen), then ? then(w) : void(); }, kReturn});
    return MessageBox(nullptr, text.c_str(), caption.c_str(), flags);
}

const auto X = [](size_t n, char c = 'x') { return std::string(n, c); };

// Lines end at CR, LF and the first space past column 50 not before ":" or
// ","; the box is 400 wide (540 past 50 characters of caption or text),
// 14 n + 62 high for a note, 20 n + 50 for a question, n at least 2; its
// buttons sit at the bottom right. Texts too long give the fallback box.
// A title of null is the caption; a height of 0 is not checked.
TEST(MessageBox, LinesGeometryAndFallback) {
    // clang-format off
    const struct { uint32_t flags; std::string caption, text; const char *title; std::string lines;
                   int32_t width, height; std::vector<int> buttons = {}; } rows[] = {
        {0, "c", X(60), nullptr, X(60) + "|", 540, 90, {58, 440, 78, 520}},
        {0, "c", X(51) + " abc", nullptr, X(51) + "|abc|", 540, 90},
        {0, X(50), X(50) + " abc", nullptr, X(50) + " abc|", 540, 90},
        {0, "c", X(51) + " : a b", nullptr, X(51) + " :|a b|", 540, 90},
        {0, "c", X(51) + " , a", nullptr, X(51) + " ,|a|", 540, 90},
        {0, "c", "un\r\ndeux", nullptr, "un||deux|", 400, 104},
        {0, "c", "un\ndeux\ntrois", nullptr, "un|deux|trois|", 400, 104, {72, 300, 92, 380}},
        {0, "c", X(51) + " " + X(50) + " z", nullptr, X(51) + "|" + X(50) + "|z|", 540, 104},
        {0, "", "", "Dialogue utilisateur", "", 400, 90},
        {MSGBOX_QUESTION, X(50), X(50), nullptr, X(50) + "|", 400, 90,
         {58, 200, 78, 280, 58, 300, 78, 380}},
        {MSGBOX_QUESTION, X(51), "t", nullptr, "t|", 540, 90, {58, 340, 78, 420, 58, 440, 78, 520}},
        {MSGBOX_QUESTION, "c", "a\rb\rc", nullptr, "a|b|c|", 400, 110,
         {78, 200, 98, 280, 78, 300, 98, 380}},
        {0, "c", X(4096, 't'), "Erreur interne", "MessageBox impossible|", 400, 90},
        {0, X(256), "t", "Erreur interne", "MessageBox impossible|", 400, 90},
        {0, X(255), X(4095, 't'), nullptr, "", 540, 0},
        {0, "Ordonnance r\xE9nale", "t", nullptr, "t|", 400, 90}};
    // clang-format on
    for (const auto &r : rows) {
        Seen seen;
        Show(r.text, r.caption, r.flags, &seen);
        EXPECT_EQ(seen.title, r.title ? r.title : r.caption) << r.text;
        EXPECT_EQ(seen.bounds.right - seen.bounds.left, r.width) << r.text;
        EXPECT_TRUE(r.height == 0 || (seen.lines == r.lines && seen.onBaselines &&
                                      seen.bounds.bottom - seen.bounds.top == r.height))
            << seen.lines;
        EXPECT_TRUE(r.buttons.empty() || seen.buttons == r.buttons) << r.text;
    }
}

// The icon a box shows, the button Return presses and what it answers; some
// boxes are pictured. Other keys and clicks answer as their buttons say.
TEST(MessageBox, IconsDefaultsResultsAndPictures) {
    constexpr uint32_t kNone = 0xECECECFF, kCaution = 0xFACC15FF, kStop = 0xE5483FFF,
                       kNote = 0x3B82F6FF;
    // clang-format off
    const struct { uint32_t flags, pixel; int32_t result;
                   const char *file = nullptr, *caption = nullptr, *text = nullptr; } rows[] = {
        {0x00, kNone, MSGBOX_OK}, {0x05, kStop, MSGBOX_OK}, {0x06, kCaution, MSGBOX_OK},
        {0x08, kNone, MSGBOX_OK}, {0x12, kCaution, MSGBOX_OUI}, {0x11, kNone, MSGBOX_OUI},
        {0x14, kNone, MSGBOX_OUI}, {0x70, kNone, MSGBOX_OUI},
        {0x01, kNote, MSGBOX_OK, "msgbox_note.png", "Ordonnance",
         "L'ordonnance a \xE9t\xE9 enregistr\xE9" "e dans le dossier du patient."},
        {0x04, kStop, MSGBOX_OK, "msgbox_note_stop.png", "Erreur",
         "Impossible d'ouvrir le fichier des prescripteurs.\nV\xE9rifiez le chemin."},
        {0x02, kCaution, MSGBOX_OK, "msgbox_note_caution.png", "Attention",
         "La date de fin pr\xE9" "c\xE8" "de la date de d\xE9" "but."},
        {0x10, kNone, MSGBOX_OUI, "msgbox_question_plain.png", "Question",
         "Imprimer l'ordonnance ?"},
        {0x58, kCaution, MSGBOX_NON, "msgbox_question_caution.png", "Confirmation",
         "Le patient est allergique \xE0 la p\xE9nicilline : voulez-vous vraiment prescrire cette "
         "mol\xE9" "cule malgr\xE9 tout ?"}};
    // clang-format on
    std::filesystem::create_directories(VITRAIL_SCREENS_DIR);
    for (const auto &r : rows) {
        Seen seen;
        const std::string png = std::string(VITRAIL_SCREENS_DIR) + "/" + (r.file ? r.file : "");
        auto picture = [&](WindowRef w) {
            EXPECT_TRUE(!r.file || vitrail_window_write_png(w, png.c_str()) == 0);
        };
        EXPECT_EQ(Show(r.text ? r.text : "Texte", r.caption ? r.caption : "Ic\xF4ne", r.flags,
                       &seen, picture),
                  r.result)
            << r.flags;
        EXPECT_EQ(seen.iconPixel, r.pixel) << r.flags;
        EXPECT_EQ(seen.defaultItem, r.result == MSGBOX_NON ? 2 : 1) << r.flags;
    }
    Seen seen;
    const std::pair<ScriptedAgent::Step, int32_t> answers[] = {
        {[](WindowRef w) { vitrail_press_key(w, vitrail_key_escape); }, MSGBOX_NON},
        {[](WindowRef w) { vitrail_press_key(w, vitrail_key_enter); }, MSGBOX_OUI},
        {[](WindowRef w) { vitrail_click_item(w, 2); }, MSGBOX_NON}};
    for (const auto &[step, result] : answers) EXPECT_EQ(Show("t", "c", 0x10, &seen, step), result);
}

std::vector<EventRecord> handled;
void HostHandler(EventRecord *event) {
    handled.push_back(*event);
}

// Centred on the screen without a window, else on the front window (its
// record's handler, the tenth field, told of its updates meanwhile; its
// port current again after). The final hook's box shows the whole message.
TEST(MessageBox, CentringTheHostRecordAndTheFinalHookMessage) {
    Seen alone, over, hook;
    Show("t", "Ecran", 0, &alone);
    EXPECT_TRUE(alone.bounds.left == (1280 - 400) / 2 && alone.bounds.top == (800 - 90) / 2);
    EXPECT_EQ(DlgBoxFinal_MessageBox(nullptr, "Pas de fen\xEAtre", "Erreur", 0), 0); // no box

    WindowRef host = vitrail_window_new("H\xF4te", 100, 100, 500, 400);
    void *record[10] = {};
    record[9] = reinterpret_cast<void *>(&HostHandler);
    vitrail_window_set_refcon(host, record);
    Show("t", "Parent", 0, &over, [&](WindowRef) { vitrail_window_invalidate(host); });
    EXPECT_TRUE(over.bounds.left == 100 && over.bounds.top == (100 + 400 - 90) / 2);
    EXPECT_TRUE(!handled.empty() && handled[0].what == updateEvt &&
                handled[0].message == reinterpret_cast<uintptr_t>(host));
    EXPECT_EQ(vitrail_port_current(), vitrail_window_port(host));

    std::string message;
    for (int i = 0; i < 60; ++i) message += "mot" + std::to_string(i % 10) + " ";
    message.pop_back(); // 299 bytes
    ScriptedAgent agent({[&](WindowRef w) { Look(w, &hook); }, kReturn});
    EXPECT_EQ(DlgBoxFinal_MessageBox(host, message.c_str(), "Erreur", 0x10), MSGBOX_OUI);
    std::replace(hook.lines.begin(), hook.lines.end(), '|', ' ');
    EXPECT_EQ(hook.lines, message + " ");
    vitrail_window_dispose(host);
}

} // namespace
