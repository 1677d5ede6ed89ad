// Text-edit records and the editing keys.
#include "platform/dialogs/textedit.h"

#include <algorithm>
#include <new>

#include "platform/dialogs/events.h"
#include "platform/dialogs/look.h"
#include "platform/quickdraw/port.h"

namespace platform {
namespace {

int16_t Clamp(TEHandle te, int32_t offset) {
    return int16_t(std::clamp<int32_t>(offset, 0, int32_t(te->text.size())));
}

void Collapse(TEHandle te, int32_t at) {
    te->selStart = te->selEnd = te->anchor = Clamp(te, at);
}

// Moves the caret to `at`, or extends the selection from the anchor.
void MoveTo(TEHandle te, int32_t at, bool extend) {
    if (!extend) return Collapse(te, at);
    int16_t to = Clamp(te, at);
    te->selStart = std::min(te->anchor, to);
    te->selEnd = std::max(te->anchor, to);
}

void Replace(TEHandle te, size_t from, size_t to, std::string_view with) {
    te->text.replace(from, to - from, with);
    Collapse(te, int32_t(from + with.size()));
}

} // namespace

TEHandle TENew(const Rect *destRect, const Rect *viewRect) {
    TEHandle te = new (std::nothrow) TERec;
    if (!te) return nullptr;
    if (destRect) te->destRect = *destRect;
    if (viewRect) te->viewRect = *viewRect;
    return te;
}

void TEDispose(TEHandle te) {
    delete te;
}

void TESetText(const void *text, int32_t length, TEHandle te) {
    if (!te) return;
    size_t n = text ? size_t(std::clamp<int32_t>(length, 0, int32_t(kMaxEditText))) : 0;
    te->text.assign(static_cast<const char *>(text), n);
    Collapse(te, int32_t(n));
    te->scroll = 0;
}

void TESetSelect(int32_t start, int32_t end, TEHandle te) {
    if (!te) return;
    te->anchor = te->selStart = Clamp(te, std::min(start, end));
    te->selEnd = Clamp(te, std::max(start, end));
}

bool TEKey(uint8_t key, uint16_t modifiers, TEHandle te) {
    if (!te) return false;
    bool extend = modifiers & shiftKey;
    size_t s = size_t(te->selStart), e = size_t(te->selEnd);
    if (modifiers & cmdKey) {
        if (key != 'a' && key != 'A') return false;
        TESetSelect(0, int32_t(te->text.size()), te);
        return true;
    }
    switch (key) {
    case kBackspaceChar:
        if (s < e)
            Replace(te, s, e, {});
        else if (s > 0)
            Replace(te, s - 1, s, {});
        return true;
    case kDeleteChar:
        if (s < e)
            Replace(te, s, e, {});
        else if (e < te->text.size())
            Replace(te, s, s + 1, {});
        return true;
    case kLeftArrowChar: {
        int32_t caret = te->anchor == te->selStart ? te->selEnd : te->selStart;
        if (!extend && s < e)
            Collapse(te, int32_t(s));
        else
            MoveTo(te, caret - 1, extend);
        return true;
    }
    case kRightArrowChar: {
        int32_t caret = te->anchor == te->selStart ? te->selEnd : te->selStart;
        if (!extend && s < e)
            Collapse(te, int32_t(e));
        else
            MoveTo(te, caret + 1, extend);
        return true;
    }
    case kHomeChar:
        MoveTo(te, 0, extend);
        return true;
    case kEndChar:
        MoveTo(te, int32_t(te->text.size()), extend);
        return true;
    default:
        if (key < 0x20 || key == kDeleteChar) return false;
        if (te->text.size() - (e - s) + 1 <= kMaxEditText)
            Replace(te, s, e, std::string(1, char(key)));
        return true;
    }
}

void TETextBox(const void *text, int32_t length, const Rect *box, int16_t just) {
    Port *p = CurrentPort();
    if (!p || !box) return;
    size_t n = text ? size_t(std::max(length, 0)) : 0;
    look::DrawTextBox(*p, std::string_view(static_cast<const char *>(text), n), *box, just);
}

} // namespace platform
