/*
 * vitrail — form model: the description tables of the one modal form dialog
 * and the functions that configure, read back and validate them.
 *
 * The tables are a structure of arrays, one exported array per attribute and
 * family, indexed by the field's number within its family:
 *
 *   Family        Enable  Count   Capacity  Base ID        Value
 *   text          TDB     TDB_N   20        TDB_ID_TEXTE   TDB_pszBuffer
 *   check box     BDB     BDB_N   64        BDB_ID_FLAG    BDB_bFlags
 *   integer       IDB     IDB_N   128       IDB_ID_INT     IDB_iInts
 *   number        NDB     NDB_N   128       NDB_ID_NUM     NDB_dNums
 *   date          DDB     DDB_N   20        DDB_ID_DATE    DDB_lDates (YYYYMMDD)
 *   push button   PDB     PDB_N   10        PDB_ID_PUSH    (action in vp)
 *   static item   SDB     SDB_N   128       (none)         (none)
 *
 * A field's ID is its family's base ID plus its index (a date field takes
 * three: DDB_ID_DATE + 3 * index). Geometry is in dialog units; a rank of -1
 * leaves the field out of a dynamically built dialog.
 *
 * Counts and indexes: a *_param count is clamped to 0..capacity and the
 * clamped value is stored in *_N; a per-field call with a negative index, or
 * one at or beyond the smaller of *_N and the capacity, does nothing (the
 * retrieve functions leave the destination untouched, *_get_valid answers 0)
 * and still returns 0.
 *
 * Texts are bounded: setters copy at most the destination size minus one
 * characters and always terminate; retrieve functions copy only a text that
 * fits. A null text is taken as empty; a null destination receives nothing.
 */
#ifndef VITRAIL_FORM_H
#define VITRAIL_FORM_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* ---- Callback types ------------------------------------------------------ */

/* Field validators: parse the text (which they may trim in place); on an
 * acceptable text store the value and return 0, else return a non-zero code. */
typedef int32_t (*DlgBoxIntValidProc)(char *text, int32_t *value);
typedef int32_t (*DlgBoxNumValidProc)(char *text, double *value);
/* Push-button action, called with the dialog's window; result not used. */
typedef int32_t (*DlgBoxPushProc)(WindowRef window);

/* Global hook: told the field ID of a changed field and given every value
 * table; writes at most `capacity` field IDs into `refresh` (n: show the
 * value of field n again; -n: clear field n) and returns how many. */
typedef int32_t (*DlgBoxGlobalProc)(int32_t field_id, int32_t tdb, int32_t tdb_id, char **texts,
                                    int32_t tdb_n, int32_t bdb, int32_t bdb_id, int32_t *flags,
                                    int32_t bdb_n, int32_t idb, int32_t idb_id, int32_t *ints,
                                    int32_t idb_n, int32_t ndb, int32_t ndb_id, double *nums,
                                    int32_t ndb_n, int32_t ddb, int32_t ddb_id, int32_t *dates,
                                    int32_t ddb_n, int32_t *refresh, int32_t capacity);

/* Final hook: asked when the user confirms; 0 keeps the dialog open. */
typedef int32_t (*DlgBoxFinalProc)(WindowRef window, int32_t tdb, char **texts, int32_t tdb_n,
                                   int32_t bdb, int32_t *flags, int32_t bdb_n, int32_t idb,
                                   int32_t *ints, int32_t idb_n, int32_t ndb, double *nums,
                                   int32_t ndb_n, int32_t ddb, int32_t *dates, int32_t ddb_n);

/* ---- Text fields (20) ---------------------------------------------------- */

VITRAIL_API extern int32_t TDB, TDB_N, TDB_ID_TEXTE;
/* Size of one field's slice in each text store: 8192 / TDB_N. */
VITRAIL_API extern int32_t TDB_BUFFERSIZE;
VITRAIL_API extern int16_t TDB_x[20], TDB_y[20], TDB_cx[20], TDB_cy[20], TDB_rk[20];
VITRAIL_API extern int32_t TDB_bOK[20], TDB_bInit[20], TDB_bMand[20], TDB_bPassw[20];
VITRAIL_API extern int32_t TDB_iCarac[20];
VITRAIL_API extern char *TDB_pszBuffer[20];
VITRAIL_API extern int32_t TDBC[20], TDBL[20];
VITRAIL_API extern char *TDB_PSZLBUFFER[20];
VITRAIL_API extern int32_t *TDB_PITABSTOPS[20];
VITRAIL_API extern char TDB_szBuffer[8192];
VITRAIL_API extern char TDB_SZLBUFFER[8192];
/* Five tab-stop lists of up to 127 stops closed by 0. */
VITRAIL_API extern int32_t TDB_ITABSTOPS[5][128];

/* ---- Check boxes (64) ---------------------------------------------------- */

VITRAIL_API extern int32_t BDB, BDB_N, BDB_ID_FLAG, BDB_BUFFERSIZE;
VITRAIL_API extern int16_t BDB_x[64], BDB_y[64], BDB_cx[64], BDB_cy[64], BDB_rk[64];
VITRAIL_API extern int32_t BDB_bFlags[64];
VITRAIL_API extern char *BDB_pszBuffer[64];
VITRAIL_API extern char BDB_szBuffer[3072];

/* ---- Integer fields (128) ------------------------------------------------ */

VITRAIL_API extern int32_t IDB, IDB_N, IDB_ID_INT;
VITRAIL_API extern int16_t IDB_x[128], IDB_y[128], IDB_cx[128], IDB_cy[128], IDB_rk[128];
VITRAIL_API extern int32_t IDB_bOK[128], IDB_bInit[128], IDB_bMand[128];
VITRAIL_API extern int32_t IDB_iInts[128];
VITRAIL_API extern int32_t IDB_bPassw[128];
VITRAIL_API extern int16_t IDB_lPassw[128];

/* ---- Number fields (128) ------------------------------------------------- */

VITRAIL_API extern int32_t NDB, NDB_N, NDB_ID_NUM;
VITRAIL_API extern int16_t NDB_x[128], NDB_y[128], NDB_cx[128], NDB_cy[128], NDB_rk[128];
VITRAIL_API extern int32_t NDB_bOK[128], NDB_bInit[128], NDB_bMand[128];
VITRAIL_API extern double NDB_dNums[128];
VITRAIL_API extern int32_t NDB_iChiff[128];

/* ---- Date fields (20) ---------------------------------------------------- */

VITRAIL_API extern int32_t DDB, DDB_N, DDB_ID_DATE;
VITRAIL_API extern int16_t DDB_x[20], DDB_y[20], DDB_cx[20], DDB_cy[20], DDB_rk[20];
VITRAIL_API extern int32_t DDB_bOK[20], DDB_bInit[20], DDB_bMand[20];
VITRAIL_API extern int32_t DDB_lDates[20];

/* ---- Push buttons (10) --------------------------------------------------- */

VITRAIL_API extern int32_t PDB, PDB_N, PDB_ID_PUSH, PDB_BUFFERSIZE;
VITRAIL_API extern int16_t PDB_x[10], PDB_y[10], PDB_cx[10], PDB_cy[10], PDB_rk[10];
VITRAIL_API extern char *PDB_pszBuffer[10];
VITRAIL_API extern char PDB_szBuffer[160];

/* ---- Static items (128) -------------------------------------------------- */

VITRAIL_API extern int32_t SDB, SDB_N, SDB_BUFFERSIZE;
/* SDB_type: < 0 group box titled by the text, 0 text block, > 0 icon. */
VITRAIL_API extern int16_t SDB_x[128], SDB_y[128], SDB_cx[128], SDB_cy[128], SDB_type[128];
VITRAIL_API extern char *SDB_pszBuffer[128];
VITRAIL_API extern char SDB_szBuffer[65536];

/* ---- Validator and action tables ----------------------------------------- */

/* vi, vf, vd, vp point at vi_tab, vf_tab, vd_tab, vp_tab at load; a host may
 * point them at arrays of its own before the family's *_param. */
VITRAIL_API extern DlgBoxIntValidProc vi_tab[128];
VITRAIL_API extern DlgBoxNumValidProc vf_tab[128];
VITRAIL_API extern DlgBoxIntValidProc vd_tab[20];
VITRAIL_API extern DlgBoxPushProc vp_tab[10];
VITRAIL_API extern DlgBoxIntValidProc *vi;
VITRAIL_API extern DlgBoxNumValidProc *vf;
VITRAIL_API extern DlgBoxIntValidProc *vd;
VITRAIL_API extern DlgBoxPushProc *vp;

/* ---- Dialog-wide globals ------------------------------------------------- */

VITRAIL_API extern int32_t HDB;
VITRAIL_API extern char HDB_szHeader[128];
VITRAIL_API extern int32_t LDB, LDB_cx, LDB_cy;
VITRAIL_API extern int32_t FDB;
VITRAIL_API extern RGBColor FDB_bkgcol;
VITRAIL_API extern int32_t FDB_hbrbkg;
VITRAIL_API extern char OK_sz1[16], OK_sz2[16], OK_sz1_bak[16], OK_sz2_bak[16];
VITRAIL_API extern int32_t OK_def, OK_x, OK_y, OK_xt, OK_yt;
VITRAIL_API extern int32_t OK_shadow, OK_shadow_dx, OK_shadow_dy;
VITRAIL_API extern RGBColor OK_shadow_c;
VITRAIL_API extern DlgBoxGlobalProc DlgBoxGlobal_fonct;
VITRAIL_API extern DlgBoxFinalProc DlgBoxFinal_fonct;
VITRAIL_API extern char DlgBoxFinal_szErr[256];
/* Item n belongs to field n - Dlg_itemOffset[n]; the field of rank r is
 * item r - Dlg_rkOffset[r]. */
VITRAIL_API extern int32_t Dlg_itemOffset[128];
VITRAIL_API extern int32_t Dlg_rkOffset[128];
VITRAIL_API extern DialogRef DlgBox_hDlg;

/* ---- Dialog frame and OK/Cancel buttons ---------------------------------- */

VITRAIL_API int32_t TitreDlgBox_set(const char *title);
VITRAIL_API int32_t TitreDlgBox_retrieve(char *dst, uint32_t size);
VITRAIL_API int32_t TailleDlgBox_set(int32_t cx, int32_t cy);
VITRAIL_API int32_t ColorDlgBox_bkg(RGBColor color);
VITRAIL_API int32_t BOKDlgBox_set_geo(int32_t x, int32_t y);
VITRAIL_API int32_t BOKDlgBox_pos(int32_t xt, int32_t yt);
VITRAIL_API int32_t BOKDlgBox_textes(const char *ok, const char *cancel);
VITRAIL_API void BOKDlgBox_textes_reset(void);
VITRAIL_API int32_t BOKDlgBox_def(int32_t button);
VITRAIL_API int32_t BOKDlgBox_def_reset(void);
VITRAIL_API int32_t BOKDlgBox_shadow(int32_t dx, int32_t dy, RGBColor color);
VITRAIL_API int32_t Dlg_CoefX(int32_t x);
VITRAIL_API int32_t Dlg_CoefCX(int32_t cx);
VITRAIL_API int32_t Dlg_CoefY(int32_t y);
VITRAIL_API int32_t Dlg_CoefCY(int32_t cy);

/* ---- Static items -------------------------------------------------------- */

VITRAIL_API int32_t StaticDlgBox_param(int32_t count);
VITRAIL_API int32_t StaticDlgBox_set(int32_t i, const char *text);
VITRAIL_API int32_t StaticDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy);
VITRAIL_API int32_t StaticDlgBox_set_type(int32_t i, int32_t type);

/* ---- Text fields --------------------------------------------------------- */

/* Starts the text fields. TDB_BUFFERSIZE = 8192 / count, or 8192 for a count
 * of 0 (which describes no field). TDB_bPassw is kept from dialog to dialog. */
VITRAIL_API int32_t TexteDlgBox_param(int32_t count, int32_t base_id);
VITRAIL_API int32_t TexteDlgBox_set(int32_t i, const char *text);
VITRAIL_API int32_t TexteDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                        int32_t rk);
VITRAIL_API int32_t TexteDlgBox_set_ncarac(int32_t i, int32_t max_length);
VITRAIL_API int32_t TexteDlgBox_set_liste(int32_t i, const char *list);
VITRAIL_API int32_t TexteDlgBox_change_liste(int32_t i);
VITRAIL_API int32_t TexteDlgBox_set_liste_buffer(int32_t i, char *buffer);
VITRAIL_API int32_t TexteDlgBox_retrieve(int32_t i, char *dst, uint32_t size);
VITRAIL_API int32_t TexteDlgBox_retrieve_liste(int32_t i, char *dst);
VITRAIL_API int32_t TexteDlgBox_mandatory(int32_t i, int32_t flag);
VITRAIL_API int32_t TexteDlgBox_password(int32_t i, int32_t flag);
/* Copies up to 127 stops (to the first 0) and a closing 0 into the field's
 * list. Fields 0..4 use TDB_ITABSTOPS; fields 5..19 have lists of their own
 * in the library, so every field keeps its stops. Null stops: no change. */
VITRAIL_API int32_t TexteDlgBox_set_tabstops(int32_t i, const int32_t *stops);
VITRAIL_API int32_t TexteDlgBox_get_valid(int32_t i);

/* ---- Check boxes --------------------------------------------------------- */

VITRAIL_API int32_t BoolDlgBox_param(int32_t count, int32_t base_id);
VITRAIL_API int32_t BoolDlgBox_set(int32_t i, int32_t state);
VITRAIL_API int32_t BoolDlgBox_set_geo(int32_t i, const char *label, int32_t x, int32_t y,
                                       int32_t cx, int32_t cy, int32_t rk);
VITRAIL_API int32_t BoolDlgBox_retrieve(int32_t i, int32_t *dst);

/* ---- Integer, number and date fields ------------------------------------- */

VITRAIL_API int32_t IntDlgBox_param(int32_t count, int32_t base_id);
VITRAIL_API int32_t IntDlgBox_set(int32_t i, int32_t value, int32_t mode);
VITRAIL_API int32_t IntDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                      int32_t rk);
VITRAIL_API int32_t IntDlgBox_set_fvalid(int32_t i, DlgBoxIntValidProc validator);
VITRAIL_API int32_t IntDlgBox_retrieve(int32_t i, int32_t *dst);
VITRAIL_API int32_t IntDlgBox_mandatory(int32_t i, int32_t flag);
VITRAIL_API int32_t IntDlgBox_password(int32_t i, int32_t flag);
VITRAIL_API int32_t IntDlgBox_get_valid(int32_t i);

VITRAIL_API int32_t NumDlgBox_param(int32_t count, int32_t base_id);
VITRAIL_API int32_t NumDlgBox_set(int32_t i, double value, int32_t mode);
VITRAIL_API int32_t NumDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                      int32_t rk);
VITRAIL_API int32_t NumDlgBox_set_nchiff(int32_t i, int32_t decimals);
VITRAIL_API int32_t NumDlgBox_set_fvalid(int32_t i, DlgBoxNumValidProc validator);
VITRAIL_API int32_t NumDlgBox_retrieve(int32_t i, double *dst);
VITRAIL_API int32_t NumDlgBox_mandatory(int32_t i, int32_t flag);
VITRAIL_API int32_t NumDlgBox_get_valid(int32_t i);

VITRAIL_API int32_t DateDlgBox_param(int32_t count, int32_t base_id);
VITRAIL_API int32_t DateDlgBox_set(int32_t i, int32_t value, int32_t mode);
VITRAIL_API int32_t DateDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                       int32_t rk);
VITRAIL_API int32_t DateDlgBox_set_fvalid(int32_t i, DlgBoxIntValidProc validator);
VITRAIL_API int32_t DateDlgBox_retrieve(int32_t i, int32_t *dst);
VITRAIL_API int32_t DateDlgBox_mandatory(int32_t i, int32_t flag);
VITRAIL_API int32_t DateDlgBox_get_valid(int32_t i);

/* Ready-made validators: the family's parser, then a rule on the value. The
 * parsed value is stored even when the rule rejects it (result 1, or 2 for a
 * date that is not in the calendar 18000101..21001231). */
VITRAIL_API int32_t intcod_i_sup0(char *text, int32_t *value);
VITRAIL_API int32_t intcod_i_ssup0(char *text, int32_t *value);
VITRAIL_API int32_t realcod_d_sup0(char *text, double *value);
VITRAIL_API int32_t realcod_d_ssup0(char *text, double *value);
VITRAIL_API int32_t intcod_l_sup0(char *text, int32_t *value);
VITRAIL_API int32_t intcod_l_date(char *text, int32_t *value);

/* ---- Push buttons -------------------------------------------------------- */

VITRAIL_API int32_t PushDlgBox_param(int32_t count, int32_t base_id);
VITRAIL_API int32_t PushDlgBox_set_geo(int32_t i, const char *label, int32_t x, int32_t y,
                                       int32_t cx, int32_t cy, int32_t rk);
VITRAIL_API int32_t PushDlgBox_set_fvalid(int32_t i, DlgBoxPushProc action);

/* ---- Validation chain ---------------------------------------------------- */

/* Recomputes every validity flag of the enabled text, integer, number and
 * date families from the stored values, writing back what the validators
 * parse (numbers come back rounded to their decimals); 1 if all are valid.
 * A value too wide for the 256-byte work text is invalid and left as is; a
 * null validator accepts the value. */
VITRAIL_API int32_t QarDlgBox_valid(void);
/* Installs a hook; null installs the do-nothing default. */
VITRAIL_API int32_t DlgBoxGlobal_set(DlgBoxGlobalProc hook);
VITRAIL_API int32_t DlgBoxGlobal_nul(int32_t field_id, int32_t tdb, int32_t tdb_id, char **texts,
                                     int32_t tdb_n, int32_t bdb, int32_t bdb_id, int32_t *flags,
                                     int32_t bdb_n, int32_t idb, int32_t idb_id, int32_t *ints,
                                     int32_t idb_n, int32_t ndb, int32_t ndb_id, double *nums,
                                     int32_t ndb_n, int32_t ddb, int32_t ddb_id, int32_t *dates,
                                     int32_t ddb_n, int32_t *refresh, int32_t capacity);
VITRAIL_API int32_t DlgBoxFinal_set(DlgBoxFinalProc hook);
VITRAIL_API int32_t DlgBoxFinal_nul(WindowRef window, int32_t tdb, char **texts, int32_t tdb_n,
                                    int32_t bdb, int32_t *flags, int32_t bdb_n, int32_t idb,
                                    int32_t *ints, int32_t idb_n, int32_t ndb, double *nums,
                                    int32_t ndb_n, int32_t ddb, int32_t *dates, int32_t ddb_n);
/* Call the global hook for one field (text: TexteDlgBox_global_ex's hook, or
 * DlgBoxGlobal_fonct when it is null) with every table and a refresh list of
 * capacity 0; nothing for an index outside the family. Return 0. */
VITRAIL_API int32_t TexteDlgBox_global(int32_t i);
VITRAIL_API int32_t TexteDlgBox_global_ex(int32_t i, DlgBoxGlobalProc hook);
VITRAIL_API int32_t BoolDlgBox_global(int32_t i);
VITRAIL_API int32_t IntDlgBox_global(int32_t i);
VITRAIL_API int32_t NumDlgBox_global(int32_t i);
VITRAIL_API int32_t DateDlgBox_global(int32_t i);
/* Records at most 255 characters of the final hook's message; both return
 * DlgBoxFinal_szErr. */
VITRAIL_API char *DlgBoxFinal_Erreur_set(const char *message);
VITRAIL_API char *DlgBoxFinal_Erreur(void);

VITRAIL_END_DECLS

#endif
