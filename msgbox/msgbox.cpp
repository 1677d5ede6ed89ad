// Message boxes: MessageBox prepares the text (line breaks, character set)
// and picks the note or the question box, both built at run time and run
// with MessageBoxFilter.
//
//   Work copy   Size    Holds
//   caption     256     at most 255 characters, then converted to Mac OS Roman
//   text        4096    at most 4095 characters, broken into lines, converted
#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include <vitrail/draw.h>
#include <vitrail/msgbox.h>
#include <vitrail/strings.h>

#include "platform/dialogs/dialogs.h"
#include "platform/quickdraw/pen.h"
#include "platform/quickdraw/text.h"

using namespace platform;

namespace {

constexpr size_t kMaxCaption = 255;
constexpr size_t kMaxText = 4095;
constexpr size_t kBreakColumn = 50;
constexpr int32_t kMaxLines = 400; // keeps the box within a port's 8192 pixels
constexpr uint8_t kCR = 13, kLF = 10;

enum class Box { Note, Question };

// Ends a line at every CR and LF (turned into CR) and at the first space
// past column 50 that is not before ":" or ","; returns the line count.
int32_t BreakLines(std::string &text) {
    int32_t lines = 1;
    size_t column = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        char &c = text[i];
        if (c == kCR || c == kLF) {
            c = kCR;
            ++lines, column = 0;
        }
        char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (c == ' ' && next != ':' && next != ',' && column > kBreakColumn) {
            c = kCR;
            ++lines, column = 1;
        } else {
            ++column;
        }
    }
    return std::max(lines, 2);
}

Str255 *ToStr255(std::string_view s, Str255 &out) {
    out[0] = uint8_t(std::min<size_t>(s.size(), 255));
    std::memcpy(out + 1, s.data(), out[0]);
    return &out;
}

ControlRef AddButton(DialogRef d, const char *label, Rect r) {
    Str255 title;
    ToStr255(label, title);
    ControlRef c = NewControl(GetDialogWindow(d), &r, title, true, 0, 0, 1, pushButProc, nullptr);
    if (c) InsertDialogItem(d, CountDITL(d), ctrlItem + btnCtrl, c, &r);
    return c;
}

int16_t IconFor(Box box, uint32_t flags) {
    if (flags & MSGBOX_ICON_CAUTION) return kCautionIcon;
    if (box == Box::Question) return flags & MSGBOX_QUESTION_CAUTION ? kCautionIcon : -1;
    if (flags & MSGBOX_ICON_STOP) return kStopIcon;
    return flags & MSGBOX_ICON_NOTE ? kNoteIcon : -1;
}

// Builds, runs and disposes of one box; returns the item that ended it.
int16_t RunBox(Box box, WindowRef parent, const char *caption, const char *text, int32_t lines,
               uint32_t flags) {
    caption = caption ? caption : "";
    text = text ? text : "";
    int32_t n = std::clamp(lines, 1, kMaxLines);
    int32_t w =
        std::strlen(caption) <= kBreakColumn && std::strlen(text) <= kBreakColumn ? 400 : 540;
    int32_t h = box == Box::Question ? 20 * n + 50 : 14 * n + 62;
    Rect around;
    if (GetWindowBounds(parent, kWindowGlobalPortRgn, &around) != 0) around = ScreenBounds();
    int32_t left = std::max((around.left + around.right - w) / 2, 0);
    int32_t top = std::max((around.top + around.bottom - h) / 2, 0);
    Rect bounds{int16_t(top), int16_t(left), int16_t(top + h), int16_t(left + w)};
    Str255 title;
    DialogRef d = NewColorDialog(nullptr, &bounds, *ToStr255("Dialogue utilisateur", title), false,
                                 kMovableModalDialogProc, FrontOfAll(), false, nullptr, nullptr);
    if (!d) return box == Box::Question ? 2 : 1;
    ModalFilterUPP filter = NewModalFilterUPP(MessageBoxFilter);
    WindowRef window = GetDialogWindow(d);
    if (*caption) {
        std::string mac(caption, std::min(std::strlen(caption), kMaxCaption));
        w2mstr(mac.data());
        SetWTitle(window, *ToStr255(mac, title));
    }
    if (box == Box::Question) {
        AddButton(
            d, "Oui",
            Rect{int16_t(20 * n + 18), int16_t(w - 200), int16_t(20 * n + 38), int16_t(w - 120)});
        AddButton(
            d, "Non",
            Rect{int16_t(20 * n + 18), int16_t(w - 100), int16_t(20 * n + 38), int16_t(w - 20)});
    } else {
        AddButton(d, "OK",
                  Rect{int16_t(h - 32), int16_t(w - 100), int16_t(h - 12), int16_t(w - 20)});
    }
    if (int16_t icon = IconFor(box, flags); icon >= 0) {
        Rect r{18, 18, 50, 50};
        ControlButtonContentInfo content{kControlContentCIconRes, icon};
        CreateIconControl(window, &r, &content, true, nullptr);
    }
    ShowWindow(window);
    SetPort(GetWindowPort(window));
    ch_font_set(GetWindowPort(window), "Lucida Grande", 0, 255, 13);
    std::string_view all(text);
    for (int32_t k = 0; !all.empty(); ++k) {
        size_t end = all.find(char(kCR));
        Str255 line;
        MoveTo(80, int16_t(std::min(26 + 14 * k, 32000)));
        DrawString(*ToStr255(all.substr(0, end), line));
        all.remove_prefix(end == all.npos ? all.size() : end + 1);
    }
    bool nonDefault =
        box == Box::Question && (flags & MSGBOX_DEFAULT_NON) && !(flags & MSGBOX_DEFAULT_OUI);
    SetDialogDefaultItem(d, nonDefault ? 2 : 1);
    int16_t last = box == Box::Question ? 2 : 1;
    DialogItemIndex hit = 0;
    do {
        ModalDialog(filter, &hit);
        if (hit == 0 && !window->visible) hit = nonDefault ? 2 : 1; // hidden by a hook
    } while (hit < 1 || hit > last);
    DisposeDialog(d);
    DisposeModalFilterUPP(filter);
    return hit;
}

} // namespace

extern "C" {

VITRAIL_API int32_t MessageBox(WindowRef window, const char *text, const char *caption,
                               uint32_t flags) {
    WindowRef parent = window ? window : FrontWindow();
    text = text ? text : "";
    caption = caption ? caption : "";
    std::string cap = "Erreur interne", body = "MessageBox impossible";
    int32_t lines = 2;
    if (std::strlen(caption) <= kMaxCaption && std::strlen(text) <= kMaxText) {
        cap = caption, body = text;
        w2mstr(cap.data());
        lines = BreakLines(body);
        w2mstr(body.data());
    }
    int32_t result = flags & MSGBOX_QUESTION
                         ? QuestionDialog(parent, cap.c_str(), body.c_str(), lines, flags)
                         : NoteDialog(parent, cap.c_str(), body.c_str(), lines, flags);
    if (parent) SetPort(GetWindowPort(parent));
    return result;
}

VITRAIL_API int32_t QuestionDialog(WindowRef parent, const char *caption, const char *text,
                                   int32_t lines, uint32_t flags) {
    return RunBox(Box::Question, parent, caption, text, lines, flags) == 1 ? MSGBOX_OUI
                                                                           : MSGBOX_NON;
}

VITRAIL_API int32_t NoteDialog(WindowRef parent, const char *caption, const char *text,
                               int32_t lines, uint32_t flags) {
    RunBox(Box::Note, parent, caption, text, lines, flags);
    return MSGBOX_OK;
}

VITRAIL_API Boolean MessageBoxFilter(DialogRef dialog, EventRecord *event,
                                     DialogItemIndex *itemHit) {
    if (!event) return false;
    if (event->what == updateEvt || event->what == activateEvt) {
        if (auto record =
                static_cast<void **>(GetWRefCon(reinterpret_cast<WindowRef>(event->message)))) {
            if (auto handler = reinterpret_cast<MessageBoxHostHandler>(record[9])) handler(event);
            return false;
        }
    }
    ModalFilterUPP standard = nullptr;
    if (GetStdFilterProc(&standard) != 0) return false;
    return InvokeModalFilterUPP(dialog, event, itemHit, standard);
}

} // extern "C"
