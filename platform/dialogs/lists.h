// Lists of one column of cells (bytes, at most 255 each), the content of a
// list box control: rows, the selected row, the last click and the scroll.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <vitrail/types.h>

namespace platform {

using Cell = Point; // v: row, h: column

constexpr int32_t kMaxListRows = 32767;

struct ListRec {
    std::vector<std::string> rows;
    int16_t cellHeight = 14;
    int32_t selected = -1; // selected row, -1 for none
    Cell lastClick{-1, -1};
    bool lastDouble = false; // the last click was a double click
    int32_t top = 0;         // first row shown
    ControlRef owner = nullptr;
};
using ListHandle = ListRec *;

// Inserts `count` empty rows before row `rowNum` (clamped to 0..rows) and
// returns the number of the first; -1 and nothing added for a count below 1
// or beyond 32767 rows in all.
int16_t LAddRow(int16_t count, int16_t rowNum, ListHandle list);
// Deletes `count` rows from `rowNum` (count 0: every row); out of range
// rows are ignored.
void LDelRow(int16_t count, int16_t rowNum, ListHandle list);
// Sets cell (row, column 0) to at most 255 bytes; other cells are ignored.
void LSetCell(const void *data, int16_t length, Cell cell, ListHandle list);
// Copies at most *length bytes of the cell into data and sets *length to
// the count copied; a missing cell gives length 0.
void LGetCell(void *data, int16_t *length, Cell cell, ListHandle list);
// The cell of the last click, (-1, -1) before any.
Cell LLastClick(ListHandle list);
// Rows and columns in use: top 0, left 0, bottom rows, right 1.
Rect *GetListDataBounds(ListHandle list, Rect *bounds);
// Selects (or deselects) the cell's row.
void LSetSelect(Boolean select, Cell cell, ListHandle list);
// The first selected cell at or after *cell (next true) or exactly *cell.
Boolean LGetSelect(Boolean next, Cell *cell, ListHandle list);

} // namespace platform
