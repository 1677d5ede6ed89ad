// Validation chain: the validity of every field recomputed from the stored
// values, the global and final hooks with their do-nothing defaults, the
// calls of the global hook for one field, and the final hook's message.
//
//   Data                  Meaning
//   *_bOK/_bInit/_bMand   validity of text, integer, number and date fields
//   DlgBoxGlobal_fonct    global hook, 23 arguments (DlgBoxGlobal_nul at load)
//   DlgBoxFinal_fonct     final hook, 16 arguments (DlgBoxFinal_nul at load)
//   DlgBoxFinal_szErr     last message of the final hook, at most 255 characters
#include <cstring>
#include <iterator>

#include <vitrail/form.h>
#include <vitrail/msgbox.h>

#include "form/internal.h"
#include "form/value_family.h"

namespace {

using form::kTexts;

// Text field i: valid unless mandatory and empty (or never filled), or longer
// than TDB_iCarac[i]. A null text pointer counts as empty.
void check_text(int32_t i) {
    const char *text = TDB_pszBuffer[i] ? TDB_pszBuffer[i] : "";
    size_t length = std::strlen(text);
    TDB_bOK[i] = 1;
    if (TDB_bInit[i]) {
        bool too_long = TDB_iCarac[i] < 0 || length > static_cast<size_t>(TDB_iCarac[i]);
        if ((TDB_bMand[i] && length == 0) || too_long) TDB_bOK[i] = 0;
    } else if (TDB_bMand[i]) {
        TDB_bOK[i] = 0;
    }
}

// Applies check to every usable row of an enabled family; answers whether
// all of them are valid (1 for a disabled family).
template <class Check>
int32_t check_family(const form::Family &family, const int32_t *ok, Check check) {
    if (*family.enable != 1) return 1;
    int32_t n = form::family_rows(*family.count, family.capacity), all = 1;
    for (int32_t i = 0; i < n; ++i) check(i);
    for (int32_t i = 0; i < n; ++i) all &= ok[i] ? 1 : 0;
    return all;
}

template <class F>
int32_t check_values(const F &f) {
    return check_family(f.family, f.validity.ok, [&f](int32_t i) { f.check(i); });
}

// Calls hook for one field with every table and an empty refresh list. The
// list points at scratch room so that a hook writing despite capacity 0
// harms nothing.
void call_global(DlgBoxGlobalProc hook, int32_t field_id) {
    int32_t scratch[32] = {};
    form::call_global_hook(hook, field_id, scratch, 0);
}

} // namespace

namespace form {

int32_t call_global_hook(DlgBoxGlobalProc hook, int32_t field_id, int32_t *refresh,
                         int32_t capacity) {
    if (!hook) return 0;
    return hook(field_id, TDB, TDB_ID_TEXTE, TDB_pszBuffer, TDB_N, BDB, BDB_ID_FLAG, BDB_bFlags,
                BDB_N, IDB, IDB_ID_INT, IDB_iInts, IDB_N, NDB, NDB_ID_NUM, NDB_dNums, NDB_N, DDB,
                DDB_ID_DATE, DDB_lDates, DDB_N, refresh, capacity);
}

} // namespace form

extern "C" {

// Recomputes the validity of every field of the enabled text, integer,
// number and date families (in that order) from the stored values; the
// validators write back what they parse, so numbers come back rounded to
// their decimals. Returns 1 when every such field is valid, else 0.
VITRAIL_API int32_t QarDlgBox_valid(void) {
    int32_t all = check_family(kTexts, TDB_bOK, check_text);
    all &= check_values(form::kInts);
    all &= check_values(form::kNums);
    all &= check_values(form::kDates);
    return all;
}

// Installs the global hook; null stands for DlgBoxGlobal_nul.
VITRAIL_API int32_t DlgBoxGlobal_set(DlgBoxGlobalProc hook) {
    DlgBoxGlobal_fonct = hook ? hook : DlgBoxGlobal_nul;
    return 0;
}

VITRAIL_API int32_t DlgBoxGlobal_nul(int32_t, int32_t, int32_t, char **, int32_t, int32_t, int32_t,
                                     int32_t *, int32_t, int32_t, int32_t, int32_t *, int32_t,
                                     int32_t, int32_t, double *, int32_t, int32_t, int32_t,
                                     int32_t *, int32_t, int32_t *, int32_t) {
    return 0;
}

// Installs the final hook; null stands for DlgBoxFinal_nul.
VITRAIL_API int32_t DlgBoxFinal_set(DlgBoxFinalProc hook) {
    DlgBoxFinal_fonct = hook ? hook : DlgBoxFinal_nul;
    return 0;
}

VITRAIL_API int32_t DlgBoxFinal_nul(WindowRef, int32_t, char **, int32_t, int32_t, int32_t *,
                                    int32_t, int32_t, int32_t *, int32_t, int32_t, double *,
                                    int32_t, int32_t, int32_t *, int32_t) {
    return 1;
}

// Each *_global calls the global hook for field i of its family when i is a
// field of it; the hook's result is ignored.
VITRAIL_API int32_t TexteDlgBox_global(int32_t i) {
    return TexteDlgBox_global_ex(i, nullptr);
}

// As TexteDlgBox_global with the given hook (null: DlgBoxGlobal_fonct).
VITRAIL_API int32_t TexteDlgBox_global_ex(int32_t i, DlgBoxGlobalProc hook) {
    if (kTexts.has(i)) call_global(hook ? hook : DlgBoxGlobal_fonct, TDB_ID_TEXTE + i);
    return 0;
}

VITRAIL_API int32_t BoolDlgBox_global(int32_t i) {
    if (form::kBools.has(i)) call_global(DlgBoxGlobal_fonct, BDB_ID_FLAG + i);
    return 0;
}

VITRAIL_API int32_t IntDlgBox_global(int32_t i) {
    if (form::kInts.family.has(i)) call_global(DlgBoxGlobal_fonct, IDB_ID_INT + i);
    return 0;
}

VITRAIL_API int32_t NumDlgBox_global(int32_t i) {
    if (form::kNums.family.has(i)) call_global(DlgBoxGlobal_fonct, NDB_ID_NUM + i);
    return 0;
}

VITRAIL_API int32_t DateDlgBox_global(int32_t i) {
    if (form::kDates.family.has(i)) call_global(DlgBoxGlobal_fonct, DDB_ID_DATE + 3 * i);
    return 0;
}

// Records at most 255 characters of message (null: empty) as the final
// hook's message; returns DlgBoxFinal_szErr.
VITRAIL_API char *DlgBoxFinal_Erreur_set(const char *message) {
    form::copy_text(DlgBoxFinal_szErr, sizeof DlgBoxFinal_szErr, message);
    return DlgBoxFinal_szErr;
}

VITRAIL_API char *DlgBoxFinal_Erreur(void) {
    return DlgBoxFinal_szErr;
}

VITRAIL_API int32_t DlgBoxFinal_MessageBox(WindowRef window, const char *message,
                                           const char *caption, uint32_t flags) {
    DlgBoxFinal_Erreur_set(message);
    return window ? MessageBox(window, message, caption, flags) : 0;
}

} // extern "C"
