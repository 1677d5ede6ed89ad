// Dialog templates: parsing the text format and making dialogs from it.
//
//   Line                                           Meaning
//   # ...  or blank                                ignored
//   dialog <id> <width> <height> [title]           first line: ID, size in pixels
//   <n> <kind> <left> <top> <right> <bottom> [text] item n, in increasing order
#include "platform/dialogs/templates.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/toolbox/mac_roman.h"
#include "platform/toolbox/textutils.h"

namespace platform {
namespace {

constexpr size_t kMaxTemplateFile = 64 * 1024;
constexpr size_t kMaxText = 255;

struct KindWord {
    std::string_view word;
    int16_t kind;
};
constexpr std::array<KindWord, 9> kKinds = {{
    {"button", ctrlItem + btnCtrl},
    {"check", ctrlItem + chkCtrl},
    {"popup", ctrlItem + resCtrl},
    {"list", ctrlItem + btnCtrl},
    {"edit", editText},
    {"static", statText + itemDisable},
    {"icon", iconItem + itemDisable},
    {"picture", picItem + itemDisable},
    {"user", userItem + itemDisable},
}};

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

std::string_view Trim(std::string_view s) {
    while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
    return s;
}

// Takes the next blank-separated word off the front of s.
std::string_view Word(std::string_view &s) {
    s = Trim(s);
    size_t end = 0;
    while (end < s.size() && !IsBlank(s[end])) ++end;
    std::string_view w = s.substr(0, end);
    s.remove_prefix(end);
    return w;
}

// Reads the next word as an integer in lo..hi.
bool Number(std::string_view &s, int32_t lo, int32_t hi, int16_t *out) {
    std::string_view w = Word(s);
    int32_t v = 0;
    auto [end, ec] = std::from_chars(w.data(), w.data() + w.size(), v);
    if (w.empty() || ec != std::errc() || end != w.data() + w.size() || v < lo || v > hi)
        return false;
    *out = int16_t(v);
    return true;
}

std::string Text(std::string_view rest) {
    std::string mac = Utf8ToMacRoman(Trim(rest));
    if (mac.size() > kMaxText) mac.resize(kMaxText);
    return mac;
}

bool ParseItem(std::string_view line, int16_t after, TemplateItem *item) {
    int16_t r[4];
    if (!Number(line, after + 1, kMaxTemplateItem, &item->number)) return false;
    item->word = std::string(Word(line));
    auto kind = std::find_if(kKinds.begin(), kKinds.end(),
                             [&](const KindWord &k) { return k.word == item->word; });
    if (kind == kKinds.end()) return false;
    for (int16_t &v : r)
        if (!Number(line, INT16_MIN, INT16_MAX, &v)) return false;
    item->kind = kind->kind;
    item->rect = Rect{r[1], r[0], r[3], r[2]};
    item->text = Text(line);
    return true;
}

ControlRef MakeControl(WindowRef w, const TemplateItem &it) {
    Str255 title;
    c2pstrcpy(title, it.text.c_str());
    ControlRef c = nullptr;
    if (it.word == "button" || it.word == "check") {
        return NewControl(w, &it.rect, title, true, 0, 0, 1,
                          it.word == "button" ? pushButProc : checkBoxProc, nullptr);
    } else if (it.word == "popup") {
        int16_t id = UniqueID(kMenuResType);
        MenuRef menu = nullptr;
        if (CreateNewMenu(id, 0, &menu) == 0) InsertMenu(menu, -1);
        CreatePopupButtonControl(w, &it.rect, nullptr, id, false, -1, 0, 0, &c);
    } else if (it.word == "list") {
        ListDefSpec def{1};
        CreateListBoxControl(w, &it.rect, true, 0, 1, true, true, 14,
                             int16_t(it.rect.right - it.rect.left - 15), true, &def, &c);
    } else if (it.word == "icon") {
        int16_t id = 0;
        std::string_view text = it.text;
        ControlButtonContentInfo content{
            kControlContentCIconRes, Number(text, INT16_MIN, INT16_MAX, &id) ? id : int16_t(-1)};
        CreateIconControl(w, &it.rect, &content, true, &c);
    }
    return c;
}

// Appends item `it`, or an empty user item in its place when it cannot be
// made, so that the numbers that follow stay right.
void AddItem(DialogRef d, const TemplateItem &it) {
    WindowRef w = GetDialogWindow(d);
    void *handle = it.kind == editText ? static_cast<void *>(TENew(&it.rect, &it.rect))
                                       : static_cast<void *>(MakeControl(w, it));
    if (InsertDialogItem(d, CountDITL(d), it.kind, handle, &it.rect) != 0) {
        Rect none{0, 0, 0, 0};
        InsertDialogItem(d, CountDITL(d), userItem + itemDisable, nullptr, &none);
        return;
    }
    ControlRef view = nullptr;
    GetDialogItem(d, CountDITL(d), nullptr, &view, nullptr);
    if (it.word == "edit" || it.word == "static" || it.word == "picture") {
        Str255 s;
        c2pstrcpy(s, it.text.c_str());
        SetDialogItemText(view, s);
    }
}

DialogRef Make(const DialogTemplate &t, WindowRef behind) {
    Rect screen = ScreenBounds();
    int16_t left = int16_t(std::max((screen.left + screen.right - t.width) / 2, 0));
    int16_t top = int16_t(std::max((screen.top + screen.bottom - t.height) / 2, 0));
    Rect bounds{top, left, int16_t(top + t.height), int16_t(left + t.width)};
    Str255 title;
    c2pstrcpy(title, t.title.c_str());
    DialogRef d = NewColorDialog(nullptr, &bounds, title, false, kMovableModalDialogProc,
                                 behind ? behind : FrontOfAll(), false, nullptr, nullptr);
    if (!d) return nullptr;
    for (const TemplateItem &it : t.items) {
        Rect none{0, 0, 0, 0};
        while (CountDITL(d) + 1 < it.number)
            InsertDialogItem(d, CountDITL(d), userItem + itemDisable, nullptr, &none);
        AddItem(d, it);
    }
    return d;
}

std::optional<DialogTemplate> ReadTemplate(const std::filesystem::path &path) {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec) ||
        std::filesystem::file_size(path, ec) > kMaxTemplateFile || ec)
        return std::nullopt;
    std::ifstream in(path, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(in)), {});
    return ParseTemplate(text);
}

} // namespace

std::optional<DialogTemplate> ParseTemplate(std::string_view text) {
    DialogTemplate t{};
    bool header = false;
    while (!text.empty()) {
        size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = Trim(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == '#') continue;
        if (!header) {
            if (Word(line) != "dialog" || !Number(line, 1, INT16_MAX, &t.id) ||
                !Number(line, 1, kMaxPortSide, &t.width) ||
                !Number(line, 1, kMaxPortSide, &t.height))
                return std::nullopt;
            t.title = Text(line);
            header = true;
            continue;
        }
        TemplateItem item{};
        if (!ParseItem(line, t.items.empty() ? 0 : t.items.back().number, &item))
            return std::nullopt;
        t.items.push_back(std::move(item));
    }
    if (!header) return std::nullopt;
    return t;
}

void GetResInfo(Handle resource, int16_t *id, uint32_t *type, Str255 name) {
    std::optional<DialogTemplate> t;
    if (resource && resource->type == "DLOG")
        t = ParseTemplate(std::string_view(reinterpret_cast<const char *>(resource->data.data()),
                                           resource->data.size()));
    if (id) *id = t ? t->id : 0;
    if (type) {
        *type = 0;
        for (size_t k = 0; resource && k < 4 && k < resource->type.size(); ++k)
            *type |= uint32_t(uint8_t(resource->type[k])) << (24 - 8 * k);
    }
    if (name) {
        name[0] = resource ? uint8_t(std::min<size_t>(resource->name.size(), 255)) : 0;
        if (resource) std::copy_n(resource->name.begin(), name[0], name + 1);
    }
}

DialogRef GetNewDialog(int16_t dialogID, void *, WindowRef behind) {
    if (ResourcesFolder().empty() || dialogID == 0) return nullptr;
    try {
        std::error_code ec;
        std::vector<std::filesystem::path> files;
        for (const auto &entry :
             std::filesystem::directory_iterator(ResourcesFolder() + "/DLOG", ec))
            files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        for (const auto &path : files)
            if (auto t = ReadTemplate(path); t && t->id == dialogID) return Make(*t, behind);
    } catch (...) {}
    return nullptr;
}

} // namespace platform
