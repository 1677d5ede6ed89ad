// Text fields: free text, optionally limited, masked, or chosen from a list
// shown as a pop-up menu or a list box.
//
//   Data                                 Per field (20)
//   TDB, TDB_N, TDB_ID_TEXTE             -
//   TDB_BUFFERSIZE                       8192 / TDB_N: size of one slice of each store
//   TDB_x, _y, _cx, _cy, TDB_rk          int16 geometry and rank
//   TDB_bOK, _bInit, _bMand, _bPassw     flags
//   TDB_iCarac                           longest valid text (only ever lowered)
//   TDB_pszBuffer -> TDB_szBuffer        the text, in slice i
//   TDBC, TDBL                           pop-up menu / list box presentation
//   TDB_PSZLBUFFER -> TDB_SZLBUFFER      the list text, slice i or a host buffer
//   TDB_PITABSTOPS -> tab-stop list i    up to 127 stops closed by 0
#include <cstring>
#include <iterator>

#include <vitrail/form.h>

#include "form/internal.h"

namespace form {

const Family kTexts{&TDB, &TDB_N, std::size(TDB_rk)};

} // namespace form

namespace {

using form::kTexts;
const form::Geometry kGeometry{TDB_x, TDB_y, TDB_cx, TDB_cy, TDB_rk};
const form::Validity kValidity{TDB_bOK, TDB_bInit, TDB_bMand};

constexpr int32_t kStoreSize = sizeof TDB_szBuffer;
constexpr int32_t kTabStops = 127;

// Tab-stop lists of fields 5..19, which the exported storage does not cover.
int32_t extra_tabstops[std::size(TDB_rk) - std::size(TDB_ITABSTOPS)][kTabStops + 1];

// Row i back to its defaults, with its text, list and tab stops emptied.
void reset_field(int32_t i) {
    kValidity.reset(i);
    kGeometry.clear(i);
    TDB_pszBuffer[i] = TDB_szBuffer + TDB_BUFFERSIZE * i;
    TDB_pszBuffer[i][0] = 0;
    TDB_iCarac[i] = TDB_BUFFERSIZE - 1;
    TDBC[i] = TDBL[i] = 0;
    TDB_PSZLBUFFER[i] = TDB_SZLBUFFER + TDB_BUFFERSIZE * i;
    TDB_PSZLBUFFER[i][0] = 0;
    TDB_PITABSTOPS[i] = form::tabstop_list(i);
    TDB_PITABSTOPS[i][0] = 0;
}

} // namespace

namespace form {

int32_t *tabstop_list(int32_t i) {
    constexpr int32_t kExported = std::size(TDB_ITABSTOPS);
    if (i < 0 || i >= kExported + static_cast<int32_t>(std::size(extra_tabstops))) return nullptr;
    return i < kExported ? TDB_ITABSTOPS[i] : extra_tabstops[i - kExported];
}

} // namespace form

extern "C" {

// Starts the text fields: TDB = 1, TDB_N = count clamped to 0..20, the stores
// cut into slices of 8192 / TDB_N bytes (8192 for a count of 0: no division
// by zero), and fields below the count reset. TDB_bPassw is kept.
VITRAIL_API int32_t TexteDlgBox_param(int32_t count, int32_t base_id) {
    int32_t n = kTexts.start(count);
    TDB_BUFFERSIZE = kStoreSize / (n > 0 ? n : 1);
    TDB_ID_TEXTE = base_id;
    for (int32_t i = 0; i < n; ++i) reset_field(i);
    return 0;
}

// Marks field i as holding a value and copies at most TDB_BUFFERSIZE - 1
// characters of text into it.
VITRAIL_API int32_t TexteDlgBox_set(int32_t i, const char *text) {
    if (!kTexts.has(i)) return 0;
    TDB_bInit[i] = 1;
    form::copy_to_slice(TDB_pszBuffer[i], TDB_BUFFERSIZE, text, TDB_szBuffer, kStoreSize);
    return 0;
}

VITRAIL_API int32_t TexteDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                        int32_t rk) {
    if (kTexts.has(i)) kGeometry.store(i, x, y, cx, cy, rk);
    return 0;
}

// Lowers the longest valid length of field i; a negative value counts as 0,
// a value above the present one is ignored.
VITRAIL_API int32_t TexteDlgBox_set_ncarac(int32_t i, int32_t max_length) {
    if (!kTexts.has(i)) return 0;
    if (max_length < 0) max_length = 0;
    if (max_length < TDB_iCarac[i]) TDB_iCarac[i] = max_length;
    return 0;
}

// Makes field i a pop-up menu and copies at most TDB_BUFFERSIZE - 1
// characters of list into wherever TDB_PSZLBUFFER[i] points (null: nowhere).
VITRAIL_API int32_t TexteDlgBox_set_liste(int32_t i, const char *list) {
    if (!kTexts.has(i)) return 0;
    TDBC[i] = 1;
    form::copy_to_slice(TDB_PSZLBUFFER[i], TDB_BUFFERSIZE, list, TDB_SZLBUFFER, kStoreSize);
    return 0;
}

// Switches a pop-up menu to a list box and back; a plain field stays plain.
VITRAIL_API int32_t TexteDlgBox_change_liste(int32_t i) {
    if (!kTexts.has(i)) return 0;
    if (TDBC[i] == 1) {
        TDBC[i] = 0;
        TDBL[i] = 1;
    } else if (TDBL[i] != 0) {
        TDBC[i] = 1;
        TDBL[i] = 0;
    }
    return 0;
}

// Points the list of field i at a caller-owned buffer.
VITRAIL_API int32_t TexteDlgBox_set_liste_buffer(int32_t i, char *buffer) {
    if (kTexts.has(i)) TDB_PSZLBUFFER[i] = buffer;
    return 0;
}

// Copies the text of field i into dst only if it fits in size bytes.
VITRAIL_API int32_t TexteDlgBox_retrieve(int32_t i, char *dst, uint32_t size) {
    if (kTexts.has(i)) form::retrieve_text(dst, size, TDB_pszBuffer[i]);
    return 0;
}

// Copies the whole list text of field i into dst, which must hold it; a null
// dst or list copies nothing.
VITRAIL_API int32_t TexteDlgBox_retrieve_liste(int32_t i, char *dst) {
    if (!kTexts.has(i) || !TDB_PSZLBUFFER[i]) return 0;
    size_t n = std::strlen(TDB_PSZLBUFFER[i]);
    form::retrieve_text(dst, static_cast<uint32_t>(n + 1), TDB_PSZLBUFFER[i]);
    return 0;
}

VITRAIL_API int32_t TexteDlgBox_mandatory(int32_t i, int32_t flag) {
    if (kTexts.has(i)) kValidity.mandatory(i, flag);
    return 0;
}

// Masked entry on (non-zero flag) or off; kept across TexteDlgBox_param.
VITRAIL_API int32_t TexteDlgBox_password(int32_t i, int32_t flag) {
    if (kTexts.has(i)) TDB_bPassw[i] = flag ? 1 : 0;
    return 0;
}

// Copies stops up to their 0 entry, at most 127 of them, into the tab-stop
// list of field i (every field has one) and closes it with 0. Null stops, or
// a list pointer the host set to null, copy nothing.
VITRAIL_API int32_t TexteDlgBox_set_tabstops(int32_t i, const int32_t *stops) {
    if (!kTexts.has(i) || !stops || !TDB_PITABSTOPS[i]) return 0;
    int32_t *list = TDB_PITABSTOPS[i];
    int32_t k = 0;
    for (; k < kTabStops && stops[k] != 0; ++k) list[k] = stops[k];
    list[k] = 0;
    return 0;
}

// TDB_bOK[i], or 0 for an index outside the fields.
VITRAIL_API int32_t TexteDlgBox_get_valid(int32_t i) {
    return kTexts.has(i) ? TDB_bOK[i] : 0;
}

} // extern "C"
