// Lists: rows of one cell each, kept in a vector.
#include "platform/dialogs/lists.h"

#include <algorithm>
#include <cstring>

#include "platform/dialogs/controls.h"

namespace platform {
namespace {

bool HasRow(ListHandle list, int32_t row) {
    return list && row >= 0 && size_t(row) < list->rows.size();
}

void Changed(ListHandle list) {
    if (list->owner) InvalControl(list->owner);
}

} // namespace

int16_t LAddRow(int16_t count, int16_t rowNum, ListHandle list) {
    if (!list || count < 1 || int32_t(list->rows.size()) + count > kMaxListRows) return -1;
    int32_t at = std::clamp<int32_t>(rowNum, 0, int32_t(list->rows.size()));
    try {
        list->rows.insert(list->rows.begin() + at, size_t(count), std::string());
    } catch (...) {
        return -1;
    }
    if (list->selected >= at) list->selected += count;
    Changed(list);
    return int16_t(at);
}

void LDelRow(int16_t count, int16_t rowNum, ListHandle list) {
    if (!list || count < 0) return;
    int32_t size = int32_t(list->rows.size());
    int32_t from = count == 0 ? 0 : std::clamp<int32_t>(rowNum, 0, size);
    int32_t to = count == 0 ? size : std::min<int32_t>(from + count, size);
    if (from >= to) return;
    list->rows.erase(list->rows.begin() + from, list->rows.begin() + to);
    if (list->selected >= to)
        list->selected -= to - from;
    else if (list->selected >= from)
        list->selected = -1;
    if (list->lastClick.v >= from) list->lastClick = Cell{-1, -1};
    list->top =
        std::clamp<int32_t>(list->top, 0, std::max<int32_t>(int32_t(list->rows.size()) - 1, 0));
    Changed(list);
}

void LSetCell(const void *data, int16_t length, Cell cell, ListHandle list) {
    if (!HasRow(list, cell.v) || cell.h != 0) return;
    size_t n = data ? size_t(std::clamp<int16_t>(length, 0, 255)) : 0;
    list->rows[size_t(cell.v)].assign(static_cast<const char *>(data), n);
    Changed(list);
}

void LGetCell(void *data, int16_t *length, Cell cell, ListHandle list) {
    if (!length) return;
    if (!data || !HasRow(list, cell.v) || cell.h != 0 || *length < 0) {
        *length = 0;
        return;
    }
    const std::string &text = list->rows[size_t(cell.v)];
    size_t n = std::min(text.size(), size_t(*length));
    std::memcpy(data, text.data(), n);
    *length = int16_t(n);
}

Cell LLastClick(ListHandle list) {
    return list ? list->lastClick : Cell{-1, -1};
}

Rect *GetListDataBounds(ListHandle list, Rect *bounds) {
    if (bounds) *bounds = Rect{0, 0, int16_t(list ? list->rows.size() : 0), int16_t(list ? 1 : 0)};
    return bounds;
}

void LSetSelect(Boolean select, Cell cell, ListHandle list) {
    if (!HasRow(list, cell.v) || cell.h != 0) return;
    if (select)
        list->selected = cell.v;
    else if (list->selected == cell.v)
        list->selected = -1;
    Changed(list);
}

Boolean LGetSelect(Boolean next, Cell *cell, ListHandle list) {
    if (!list || !cell || list->selected < 0) return false;
    if (next ? list->selected < cell->v : list->selected != cell->v) return false;
    *cell = Cell{int16_t(list->selected), 0};
    return true;
}

} // namespace platform
