// MessageBox with any text, caption and flags: the box must come back with
// a result its kind allows, sized for the line count of a simple model of
// the line breaking, with exactly the model's lines drawn.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <vitrail/automation.h>
#include <vitrail/msgbox.h>
#include <vitrail/platform.h>

namespace {

struct Seen {
    int32_t height = 0;
    std::vector<size_t> lines; // characters of each line drawn at x 80
};

void Look(WindowRef w, void *out) {
    Seen &seen = *static_cast<Seen *>(out);
    Rect r;
    vitrail_window_bounds(w, &r);
    seen.height = r.bottom - r.top;
    vitrail_trace_op op;
    GrafPtr port = vitrail_window_port(w);
    for (int32_t i = 0; vitrail_port_trace_get(port, i, &op) == 0; ++i)
        if (op.kind == vitrail_op_text && op.x1 == 80) {
            size_t chars = 0;
            for (const char *c = op.text; *c; ++c) chars += (*c & 0xC0) != 0x80;
            seen.lines.push_back(chars);
        }
    vitrail_press_key(w, vitrail_key_return);
}

// The model: a line ends at CR, at LF, and at a space past column 50 that
// is not before ':' or ','; the column counts the characters since the
// previous line end, that end included.
std::vector<size_t> Model(const std::string &text) {
    std::vector<size_t> lines{0};
    size_t column = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        char c = text[i], next = i + 1 < text.size() ? text[i + 1] : 0;
        bool breaks = c == '\r' || c == '\n' || (c == ' ' && column > 50 && next != ':' && next != ',');
        if (breaks) {
            lines.push_back(0);
            column = 1;
        } else {
            ++lines.back();
            ++column;
        }
    }
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) return 0;
    static bool quiet = (setenv("VITRAIL_BACKEND", "headless", 1), true);
    (void)quiet;
    uint32_t flags = data[0];
    size_t split = std::min<size_t>(data[1], size - 2);
    std::string caption(reinterpret_cast<const char *>(data + 2), split);
    std::string text(reinterpret_cast<const char *>(data + 2 + split), size - 2 - split);
    caption = caption.c_str(), text = text.c_str(); // up to the first zero byte
    Seen seen;
    vitrail_set_agent(Look, &seen);
    int32_t result = MessageBox(nullptr, text.c_str(), caption.c_str(), flags);
    vitrail_set_agent(nullptr, nullptr);

    bool question = flags & MSGBOX_QUESTION;
    if (question ? (result != MSGBOX_OUI && result != MSGBOX_NON) : result != MSGBOX_OK) std::abort();
    bool fallback = caption.size() > 255 || text.size() > 4095;
    std::vector<size_t> model = fallback ? std::vector<size_t>{21} : Model(text);
    int32_t n = std::max<int32_t>(int32_t(model.size()), 2);
    if (seen.height != (question ? 20 * n + 50 : 14 * n + 62)) std::abort();
    if (model.back() == 0) model.pop_back(); // nothing is drawn after a last line end
    for (size_t &chars : model) chars = std::min<size_t>(chars, 255);
    if (model.size() != seen.lines.size()) std::abort();
    for (size_t k = 0; k < model.size(); ++k)
        if (seen.lines[k] != model[k]) std::abort();
    return 0;
}
