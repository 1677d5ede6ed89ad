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
 * Describing a dialog: call the *_param of each family used (it enables the
 * family, stores its count and base ID and resets the rows below the count),
 * then the per-field setters, the dialog-wide setters and the hooks, then a
 * dialog entry point (dialog.h). Afterwards read the values with the retrieve
 * functions or straight from the arrays.
 *
 * Families stay enabled until a dialog ends (OK or Cancel) or QarDlgBox_end
 * is called; only then are the enable flags (and HDB) set back to 0 and the
 * default hooks put back. A family described for an earlier dialog that was
 * never shown is therefore still enabled: it is built into the next dialog
 * and its fields take part in the next validation, where an empty mandatory
 * field left over makes QarDlgBox_valid answer 0. Call QarDlgBox_end (or set
 * the enable flags to 0) before describing a new dialog when in doubt. Ending
 * a dialog keeps counts, values, texts and validator tables, so the values
 * stay readable until the family's next *_param.
 *
 * Field IDs and ranks. A field's ID is its family's base ID plus its index; a
 * date takes three consecutive IDs, DDB_ID_DATE + 3 * index for its day box.
 * Hooks and refresh lists name fields by ID, so keep the families' ID ranges
 * disjoint. Any base ID is stored; in a dialog loaded from a resource the IDs
 * are the item numbers, which lie in 3..127 (1 and 2 are OK and Cancel). A
 * rank of -1 (set by *_param) leaves a field out of a dynamically built
 * dialog; ranks 0..127 place it, in increasing rank order, which is also the
 * Tab order: give each placed field a rank of its own (of fields sharing a
 * rank only the last created can be found by it). A dialog holds at most 127
 * items, OK and Cancel included. Geometry is in dialog units (see Dlg_Coef*).
 *
 * Validity, for the text, integer, number and date fields: bOK (the value is
 * acceptable), bInit (the field holds a value) and bMand (it must be filled
 * in); *_param makes every field valid, empty (bInit 0) and mandatory. A field
 * never given a value is empty: QarDlgBox_valid counts it invalid when it is
 * mandatory and valid when optional. When a dialog opens, an empty mandatory
 * integer, number or date field starts invalid (OK inactive), while an empty
 * text field keeps the validity it was described with until it is edited.
 * Check boxes and push buttons have no validity and never block OK.
 *
 * Counts and indexes: a *_param count is clamped to 0..capacity and the
 * clamped value is stored in *_N; a per-field call with a negative index, or
 * one at or beyond the smaller of *_N and the capacity, does nothing (the
 * retrieve functions leave the destination untouched, *_get_valid answers 0)
 * and still returns 0. Every configuration and retrieve function returns 0;
 * the exceptions (*_get_valid, QarDlgBox_valid, the validators, the
 * DlgBoxFinal_Erreur* pair) say so.
 *
 * Texts are zero-terminated 8-bit strings in the Windows character set (the
 * dialog converts them for display). Setters copy at most the destination
 * size minus one characters and always terminate, never past the end of the
 * store a slice belongs to; retrieve functions copy only a text that fits. A
 * null text is taken as empty; a null destination receives nothing.
 */
#ifndef VITRAIL_FORM_H
#define VITRAIL_FORM_H

#include <vitrail/types.h>

VITRAIL_BEGIN_DECLS

/* ---- Callback types ------------------------------------------------------ */

/* Field validator: parses the zero-terminated text (Windows-1252, as the
 * field holds it; it may trim it in place); when the text is acceptable
 * stores the value through `value` and returns 0, else returns a non-zero
 * code. Only 0 versus non-zero is used. */
typedef int32_t (*DlgBoxIntValidProc)(char *text, int32_t *value);
typedef int32_t (*DlgBoxNumValidProc)(char *text, double *value);

/* Push-button action, called with the dialog's window when the button is
 * clicked; the dialog stays open and the result is not used. */
typedef int32_t (*DlgBoxPushProc)(WindowRef window);

/* Global hook: called with the ID of a field that changed (and is valid),
 * then for each of the text, check-box, integer, number and date families
 * its enable flag, base ID, value array (texts in Windows-1252) and count
 * (a disabled family is to be treated as absent), then a refresh list and
 * its capacity. It may change values in the tables, writes at most
 * `capacity` field IDs into `refresh` (n: show field n's value again; -n:
 * clear field n on screen, which makes it invalid if mandatory, valid if
 * optional) and returns how many it wrote; a negative result means none.
 * With capacity 0 it must write nothing. */
typedef int32_t (*DlgBoxGlobalProc)(int32_t field_id, int32_t tdb, int32_t tdb_id, char **texts,
                                    int32_t tdb_n, int32_t bdb, int32_t bdb_id, int32_t *flags,
                                    int32_t bdb_n, int32_t idb, int32_t idb_id, int32_t *ints,
                                    int32_t idb_n, int32_t ndb, int32_t ndb_id, double *nums,
                                    int32_t ndb_n, int32_t ddb, int32_t ddb_id, int32_t *dates,
                                    int32_t ddb_n, int32_t *refresh, int32_t capacity);

/* Final hook: asked when the user clicks OK (or double-clicks a list-box
 * row, or the host calls QarDlgBox_end), with the dialog's window and each
 * family's enable flag, value array (texts in Windows-1252) and count. 0
 * keeps the dialog open (the hook tells the user why, typically with
 * DlgBoxFinal_MessageBox); any other value accepts. Cancel never asks it. */
typedef int32_t (*DlgBoxFinalProc)(WindowRef window, int32_t tdb, char **texts, int32_t tdb_n,
                                   int32_t bdb, int32_t *flags, int32_t bdb_n, int32_t idb,
                                   int32_t *ints, int32_t idb_n, int32_t ndb, double *nums,
                                   int32_t ndb_n, int32_t ddb, int32_t *dates, int32_t ddb_n);

/* ---- Text fields (20) ---------------------------------------------------- */

/* Enable flag, count and base ID. */
VITRAIL_API extern int32_t TDB, TDB_N, TDB_ID_TEXTE;
/* Size of one field's slice in each text store: 8192 / TDB_N. */
VITRAIL_API extern int32_t TDB_BUFFERSIZE;
/* Geometry (dialog units) and rank. */
VITRAIL_API extern int16_t TDB_x[20], TDB_y[20], TDB_cx[20], TDB_cy[20], TDB_rk[20];
/* Validity flags, and masked entry (one "*" shown per character). */
VITRAIL_API extern int32_t TDB_bOK[20], TDB_bInit[20], TDB_bMand[20], TDB_bPassw[20];
/* Longest valid text: a longer one is kept but makes the field invalid. */
VITRAIL_API extern int32_t TDB_iCarac[20];
/* The field's text: slice i of TDB_szBuffer. */
VITRAIL_API extern char *TDB_pszBuffer[20];
/* Shown as a pop-up menu (TDBC) or a list box (TDBL) of the field's list. */
VITRAIL_API extern int32_t TDBC[20], TDBL[20];
/* The field's list: slice i of TDB_SZLBUFFER, or a host buffer. */
VITRAIL_API extern char *TDB_PSZLBUFFER[20];
/* The field's tab-stop list (kept for the host; the dialogs do not use it). */
VITRAIL_API extern int32_t *TDB_PITABSTOPS[20];
/* Text and list stores, cut into TDB_N slices of TDB_BUFFERSIZE bytes. */
VITRAIL_API extern char TDB_szBuffer[8192];
VITRAIL_API extern char TDB_SZLBUFFER[8192];
/* Tab-stop lists of fields 0..4: up to 127 stops closed by 0. */
VITRAIL_API extern int32_t TDB_ITABSTOPS[5][128];

/* ---- Check boxes (64) ---------------------------------------------------- */

/* Enable flag, count, base ID and label slice size (48). */
VITRAIL_API extern int32_t BDB, BDB_N, BDB_ID_FLAG, BDB_BUFFERSIZE;
VITRAIL_API extern int16_t BDB_x[64], BDB_y[64], BDB_cx[64], BDB_cy[64], BDB_rk[64];
/* State: 0 unchecked, 1 checked. */
VITRAIL_API extern int32_t BDB_bFlags[64];
/* Label: slice i of BDB_szBuffer, at most 47 characters. */
VITRAIL_API extern char *BDB_pszBuffer[64];
VITRAIL_API extern char BDB_szBuffer[3072];

/* ---- Integer fields (128) ------------------------------------------------ */

VITRAIL_API extern int32_t IDB, IDB_N, IDB_ID_INT;
VITRAIL_API extern int16_t IDB_x[128], IDB_y[128], IDB_cx[128], IDB_cy[128], IDB_rk[128];
VITRAIL_API extern int32_t IDB_bOK[128], IDB_bInit[128], IDB_bMand[128];
VITRAIL_API extern int32_t IDB_iInts[128];
/* Masked entry, and the length of the masked text last shown (dialog's own). */
VITRAIL_API extern int32_t IDB_bPassw[128];
VITRAIL_API extern int16_t IDB_lPassw[128];

/* ---- Number fields (128) ------------------------------------------------- */

VITRAIL_API extern int32_t NDB, NDB_N, NDB_ID_NUM;
VITRAIL_API extern int16_t NDB_x[128], NDB_y[128], NDB_cx[128], NDB_cy[128], NDB_rk[128];
VITRAIL_API extern int32_t NDB_bOK[128], NDB_bInit[128], NDB_bMand[128];
VITRAIL_API extern double NDB_dNums[128];
/* Decimals shown (5 after NumDlgBox_param). */
VITRAIL_API extern int32_t NDB_iChiff[128];

/* ---- Date fields (20) ---------------------------------------------------- */

VITRAIL_API extern int32_t DDB, DDB_N, DDB_ID_DATE;
VITRAIL_API extern int16_t DDB_x[20], DDB_y[20], DDB_cx[20], DDB_cy[20], DDB_rk[20];
VITRAIL_API extern int32_t DDB_bOK[20], DDB_bInit[20], DDB_bMand[20];
/* Dates as the decimal number YYYYMMDD. */
VITRAIL_API extern int32_t DDB_lDates[20];

/* ---- Push buttons (10) --------------------------------------------------- */

/* Enable flag, count, base ID and label slice size (16). */
VITRAIL_API extern int32_t PDB, PDB_N, PDB_ID_PUSH, PDB_BUFFERSIZE;
VITRAIL_API extern int16_t PDB_x[10], PDB_y[10], PDB_cx[10], PDB_cy[10], PDB_rk[10];
/* Label: slice i of PDB_szBuffer, at most 15 characters. */
VITRAIL_API extern char *PDB_pszBuffer[10];
VITRAIL_API extern char PDB_szBuffer[160];

/* ---- Static items (128) -------------------------------------------------- */

/* Enable flag, count and text slice size (512). */
VITRAIL_API extern int32_t SDB, SDB_N, SDB_BUFFERSIZE;
/* SDB_type: < 0 group box titled by the text, 0 text block, > 0 icon. */
VITRAIL_API extern int16_t SDB_x[128], SDB_y[128], SDB_cx[128], SDB_cy[128], SDB_type[128];
/* Text: slice i of SDB_szBuffer, at most 511 characters. */
VITRAIL_API extern char *SDB_pszBuffer[128];
VITRAIL_API extern char SDB_szBuffer[65536];

/* ---- Validator and action tables ----------------------------------------- */

/* vi, vf, vd, vp point at vi_tab, vf_tab, vd_tab, vp_tab at load. A host may
 * point them at arrays of its own (at least as long as the family's count)
 * before the family's *_param: *_param, *_set and *_set_fvalid write through
 * whatever they point at, and nothing points them back. A null pointer is
 * never written through; a field whose validator is null (or whose table
 * pointer is null) accepts any value. */
VITRAIL_API extern DlgBoxIntValidProc vi_tab[128];
VITRAIL_API extern DlgBoxNumValidProc vf_tab[128];
VITRAIL_API extern DlgBoxIntValidProc vd_tab[20];
VITRAIL_API extern DlgBoxPushProc vp_tab[10];
VITRAIL_API extern DlgBoxIntValidProc *vi;
VITRAIL_API extern DlgBoxNumValidProc *vf;
VITRAIL_API extern DlgBoxIntValidProc *vd;
VITRAIL_API extern DlgBoxPushProc *vp;

/* ---- Dialog-wide globals ------------------------------------------------- */

/* A title was given (set back to 0 when a dialog ends), and the title. */
VITRAIL_API extern int32_t HDB;
VITRAIL_API extern char HDB_szHeader[128];
/* A size was given, and the size in dialog units (pixels once shown). */
VITRAIL_API extern int32_t LDB, LDB_cx, LDB_cy;
/* Background colour and button settings recorded for the host; the dialogs
 * read only OK_sz1 and OK_sz2, the OK and Cancel texts. */
VITRAIL_API extern int32_t FDB;
VITRAIL_API extern RGBColor FDB_bkgcol;
VITRAIL_API extern int32_t FDB_hbrbkg;
VITRAIL_API extern char OK_sz1[16], OK_sz2[16], OK_sz1_bak[16], OK_sz2_bak[16];
VITRAIL_API extern int32_t OK_def, OK_x, OK_y, OK_xt, OK_yt;
VITRAIL_API extern int32_t OK_shadow, OK_shadow_dx, OK_shadow_dy;
VITRAIL_API extern RGBColor OK_shadow_c;
/* The hooks in force (DlgBoxGlobal_nul and DlgBoxFinal_nul at load and after
 * every dialog) and the final hook's last message. */
VITRAIL_API extern DlgBoxGlobalProc DlgBoxGlobal_fonct;
VITRAIL_API extern DlgBoxFinalProc DlgBoxFinal_fonct;
VITRAIL_API extern char DlgBoxFinal_szErr[256];
/* Written by the dialog entry points: item n belongs to field ID
 * n - Dlg_itemOffset[n]; the field of rank r is item r - Dlg_rkOffset[r]. */
VITRAIL_API extern int32_t Dlg_itemOffset[128];
VITRAIL_API extern int32_t Dlg_rkOffset[128];
/* The dialog being shown, or null. */
VITRAIL_API extern DialogRef DlgBox_hDlg;

/* ---- Dialog frame and OK/Cancel buttons ---------------------------------- */

/* HDB = 1 and the title (Windows-1252), cut to 127 characters. Returns 0. */
VITRAIL_API int32_t TitreDlgBox_set(const char *title);
/* Copies the title (Windows-1252) into dst only when its length is below
 * size (terminator included), else leaves dst untouched. Returns 0 either
 * way. */
VITRAIL_API int32_t TitreDlgBox_retrieve(char *dst, uint32_t size);
/* LDB = 1 and the dialog size in dialog units. The dialog converts LDB_cx and
 * LDB_cy to pixels in place, so call it again before each dialog. Returns 0. */
VITRAIL_API int32_t TailleDlgBox_set(int32_t cx, int32_t cy);
/* FDB = 1 and FDB_bkgcol = color, recorded for the host. Returns 0. */
VITRAIL_API int32_t ColorDlgBox_bkg(RGBColor color);
/* OK_x, OK_y = x, y, recorded for the host. Returns 0. */
VITRAIL_API int32_t BOKDlgBox_set_geo(int32_t x, int32_t y);
/* OK_xt, OK_yt = xt, yt, recorded for the host. Returns 0. */
VITRAIL_API int32_t BOKDlgBox_pos(int32_t xt, int32_t yt);
/* Saves the present texts in OK_sz1_bak, OK_sz2_bak, then sets the OK and
 * Cancel texts (Windows-1252), each cut to 15 characters; an empty (or null)
 * text shows as "OK" or "Annuler". Returns 0. */
VITRAIL_API int32_t BOKDlgBox_textes(const char *ok, const char *cancel);
/* Puts back the texts saved by the last BOKDlgBox_textes (after two calls,
 * the first call's texts, not "OK" and "Annuler"). */
VITRAIL_API void BOKDlgBox_textes_reset(void);
/* OK_def = button when it is 1 (OK) or 2 (Cancel); any other value leaves
 * it. Recorded for the host. Returns 0. */
VITRAIL_API int32_t BOKDlgBox_def(int32_t button);
/* OK_def = 1. Returns 0. */
VITRAIL_API int32_t BOKDlgBox_def_reset(void);
/* OK_shadow = 1 and the shadow's offset and colour, recorded for the host.
 * Returns 0. */
VITRAIL_API int32_t BOKDlgBox_shadow(int32_t dx, int32_t dy, RGBColor color);
/* Dialog units to pixels, as the dialogs place fields: 2x for x and widths,
 * 7y/4 for y and the dialog height, 5cy/4 for field heights, truncating
 * toward zero (Dlg_CoefY(-3) is -5). Products do not overflow; a result
 * beyond 32 bits wraps. */
VITRAIL_API int32_t Dlg_CoefX(int32_t x);
VITRAIL_API int32_t Dlg_CoefCX(int32_t cx);
VITRAIL_API int32_t Dlg_CoefY(int32_t y);
VITRAIL_API int32_t Dlg_CoefCY(int32_t cy);

/* ---- Static items -------------------------------------------------------- */

/* Starts the static items: SDB = 1, SDB_N = count (0..128), every item below
 * it at geometry and type 0 with an empty text in its own slice. Returns 0. */
VITRAIL_API int32_t StaticDlgBox_param(int32_t count);
/* Item i's text (Windows-1252), cut to 511 characters. A built dialog
 * converts the texts to Mac OS Roman in place (SDB_pszBuffer then holds Mac
 * OS Roman): set them again for each dialog. Returns 0. */
VITRAIL_API int32_t StaticDlgBox_set(int32_t i, const char *text);
/* Item i's geometry, each value stored as its low 16 bits. Returns 0. */
VITRAIL_API int32_t StaticDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy);
/* Item i's type (< 0 group box, 0 text, > 0 icon), stored as its low 16
 * bits. Returns 0. */
VITRAIL_API int32_t StaticDlgBox_set_type(int32_t i, int32_t type);

/* ---- Text fields --------------------------------------------------------- */

/* Starts the text fields: TDB = 1, TDB_N = count (0..20), TDB_ID_TEXTE =
 * base_id, TDB_BUFFERSIZE = 8192 / count (8192 for a count of 0, which
 * describes no field). Each field below the count becomes valid, empty,
 * mandatory, unplaced (rank -1), a plain edit field with an empty text and
 * list in its own slices, TDB_iCarac = TDB_BUFFERSIZE - 1 and no tab stops.
 * TDB_bPassw is kept: only TexteDlgBox_password changes it. Returns 0. */
VITRAIL_API int32_t TexteDlgBox_param(int32_t count, int32_t base_id);
/* Field i's text (Windows-1252), cut to TDB_BUFFERSIZE - 1 characters; the
 * field now holds a value (bInit 1), so an empty mandatory field given ""
 * keeps OK inactive from the start. Returns 0. */
VITRAIL_API int32_t TexteDlgBox_set(int32_t i, const char *text);
/* Field i's geometry and rank (-1 or 0..127), each stored as its low 16
 * bits. Returns 0. */
VITRAIL_API int32_t TexteDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                        int32_t rk);
/* Lowers field i's longest valid length to max_length (a negative value
 * counts as 0); a value above the present one is ignored. Returns 0. */
VITRAIL_API int32_t TexteDlgBox_set_ncarac(int32_t i, int32_t max_length);
/* Makes field i a pop-up menu (TDBC = 1) of the list (Windows-1252), items
 * separated by "+" or ",", the item equal to the text chosen; the list is cut to
 * TDB_BUFFERSIZE - 1 characters and copied to wherever TDB_PSZLBUFFER[i]
 * points (nowhere when null). Returns 0. */
VITRAIL_API int32_t TexteDlgBox_set_liste(int32_t i, const char *list);
/* Switches field i from pop-up menu to list box (rows separated by "$") and
 * back; a plain field stays plain. Returns 0. */
VITRAIL_API int32_t TexteDlgBox_change_liste(int32_t i);
/* Points field i's list at a host buffer (kept alive while the dialog is
 * described and shown); call it before TexteDlgBox_set_liste. The next
 * TexteDlgBox_param lets it go. Returns 0. */
VITRAIL_API int32_t TexteDlgBox_set_liste_buffer(int32_t i, char *buffer);
/* Copies field i's text (Windows-1252) into dst only when its length is
 * below size
 * (terminator included); otherwise dst is left untouched. Returns 0 whether
 * it copied or not: a host tells the cases apart by the length of
 * TDB_pszBuffer[i] (copied when below size), or never misses a text by giving
 * TDB_BUFFERSIZE bytes. */
VITRAIL_API int32_t TexteDlgBox_retrieve(int32_t i, char *dst, uint32_t size);
/* Copies field i's whole list (Windows-1252) into dst, which must hold it: strlen of
 * TDB_PSZLBUFFER[i] plus one bytes, at most TDB_BUFFERSIZE for a list in the
 * library's store. A null dst or list copies nothing. Returns 0. */
VITRAIL_API int32_t TexteDlgBox_retrieve_liste(int32_t i, char *dst);
/* Non-zero flag: field i is mandatory. Zero: optional, and valid at once
 * (bOK = 1) until the next validation judges its value. Returns 0. */
VITRAIL_API int32_t TexteDlgBox_mandatory(int32_t i, int32_t flag);
/* Masked entry on (non-zero flag) or off; kept across TexteDlgBox_param.
 * Returns 0. */
VITRAIL_API int32_t TexteDlgBox_password(int32_t i, int32_t flag);
/* Copies stops up to their first 0, at most 127 of them, into field i's
 * tab-stop list and closes it with 0; nothing beyond is read. Fields 0..4 use
 * TDB_ITABSTOPS; fields 5..19 have lists of their own in the library. Null
 * stops (or a null list pointer) change nothing. Returns 0. */
VITRAIL_API int32_t TexteDlgBox_set_tabstops(int32_t i, const int32_t *stops);
/* TDB_bOK[i] (1 valid, 0 not), or 0 for an index outside the fields. */
VITRAIL_API int32_t TexteDlgBox_get_valid(int32_t i);

/* ---- Check boxes --------------------------------------------------------- */

/* Starts the check boxes: BDB = 1, BDB_N = count (0..64), BDB_ID_FLAG =
 * base_id; each box below the count unchecked, unplaced, with an empty
 * label. Returns 0. */
VITRAIL_API int32_t BoolDlgBox_param(int32_t count, int32_t base_id);
/* Box i's state, stored as given (0 unchecked, 1 checked). Returns 0. */
VITRAIL_API int32_t BoolDlgBox_set(int32_t i, int32_t state);
/* Box i's geometry and rank (low 16 bits each), then its label
 * (Windows-1252, null as empty) cut to 47 characters. Returns 0. */
VITRAIL_API int32_t BoolDlgBox_set_geo(int32_t i, const char *label, int32_t x, int32_t y,
                                       int32_t cx, int32_t cy, int32_t rk);
/* Stores box i's state into *dst (untouched for a null dst or an index
 * outside the boxes). Returns 0. */
VITRAIL_API int32_t BoolDlgBox_retrieve(int32_t i, int32_t *dst);

/* ---- Integer, number and date fields ------------------------------------- */

/* The three families are built alike; the integer functions are described,
 * the number and date ones differ as their comments say.
 *
 *   Family   Parser (installed by *_param)    *_set mode 0   mode 1          mode 2
 *   integer  intcod_i  -32767..32767          intcod_i       intcod_i_sup0   intcod_i_ssup0
 *   number   realcod_d  any decimal number    realcod_d      realcod_d_sup0  realcod_d_ssup0
 *   date     intcod_l  any 32-bit integer     intcod_l_sup0  intcod_l_date   (unchanged)
 *
 * Any other mode leaves the validator. A mode 0..2 (date: 0..1) replaces the
 * field's validator, including one installed by *_set_fvalid: install a
 * validator of the host's own after *_set, or pass a mode such as -1. */

/* Starts the integer fields: IDB = 1, IDB_N = count (0..128), IDB_ID_INT =
 * base_id; each field below the count valid, empty, mandatory, unplaced,
 * value 0, unmasked, validator intcod_i (written through vi). Returns 0. */
VITRAIL_API int32_t IntDlgBox_param(int32_t count, int32_t base_id);
/* Field i holds value (bInit 1); mode selects the validator (see above). A
 * value the validator refuses is kept but the field counts as invalid
 * (40000 under intcod_i). Returns 0. */
VITRAIL_API int32_t IntDlgBox_set(int32_t i, int32_t value, int32_t mode);
/* Field i's geometry and rank, each stored as its low 16 bits. Returns 0. */
VITRAIL_API int32_t IntDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                      int32_t rk);
/* vi[i] = validator: the host's own or a ready-made one; null accepts any
 * value. Returns 0. */
VITRAIL_API int32_t IntDlgBox_set_fvalid(int32_t i, DlgBoxIntValidProc validator);
/* Stores field i's value into *dst (untouched for a null dst or an index
 * outside the fields). Returns 0. */
VITRAIL_API int32_t IntDlgBox_retrieve(int32_t i, int32_t *dst);
/* Non-zero flag: field i is mandatory (empty is invalid). Zero: optional,
 * and valid at once (bOK = 1) until the next validation judges its value.
 * Returns 0. */
VITRAIL_API int32_t IntDlgBox_mandatory(int32_t i, int32_t flag);
/* Masked entry on (non-zero flag) or off; cleared by IntDlgBox_param.
 * Returns 0. */
VITRAIL_API int32_t IntDlgBox_password(int32_t i, int32_t flag);
/* IDB_bOK[i] (1 valid, 0 not), or 0 for an index outside the fields. */
VITRAIL_API int32_t IntDlgBox_get_valid(int32_t i);

/* As IntDlgBox_param for numbers (count 0..128): value 0.0, 5 decimals,
 * validator realcod_d (through vf). */
VITRAIL_API int32_t NumDlgBox_param(int32_t count, int32_t base_id);
/* As IntDlgBox_set; the validation writes the value back rounded to the
 * field's decimals. */
VITRAIL_API int32_t NumDlgBox_set(int32_t i, double value, int32_t mode);
/* As IntDlgBox_set_geo. */
VITRAIL_API int32_t NumDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                      int32_t rk);
/* Decimals shown for field i; a negative count is stored as 0, with no upper
 * bound (a value too wide to write then makes the field invalid). Returns 0. */
VITRAIL_API int32_t NumDlgBox_set_nchiff(int32_t i, int32_t decimals);
/* As IntDlgBox_set_fvalid, _retrieve, _mandatory and _get_valid, on vf and
 * NDB_dNums, NDB_bMand, NDB_bOK. */
VITRAIL_API int32_t NumDlgBox_set_fvalid(int32_t i, DlgBoxNumValidProc validator);
VITRAIL_API int32_t NumDlgBox_retrieve(int32_t i, double *dst);
VITRAIL_API int32_t NumDlgBox_mandatory(int32_t i, int32_t flag);
VITRAIL_API int32_t NumDlgBox_get_valid(int32_t i);

/* As IntDlgBox_param for dates (count 0..20): value 0, validator intcod_l
 * (through vd). Note that mode 0 of DateDlgBox_set selects intcod_l_sup0,
 * not intcod_l. A date field takes three dialog items (day, month, year). */
VITRAIL_API int32_t DateDlgBox_param(int32_t count, int32_t base_id);
/* As IntDlgBox_set with a YYYYMMDD value; mode 2 keeps the validator. */
VITRAIL_API int32_t DateDlgBox_set(int32_t i, int32_t value, int32_t mode);
/* As IntDlgBox_set_geo, _set_fvalid, _retrieve, _mandatory and _get_valid,
 * on vd and DDB_lDates, DDB_bMand, DDB_bOK. */
VITRAIL_API int32_t DateDlgBox_set_geo(int32_t i, int32_t x, int32_t y, int32_t cx, int32_t cy,
                                       int32_t rk);
VITRAIL_API int32_t DateDlgBox_set_fvalid(int32_t i, DlgBoxIntValidProc validator);
VITRAIL_API int32_t DateDlgBox_retrieve(int32_t i, int32_t *dst);
VITRAIL_API int32_t DateDlgBox_mandatory(int32_t i, int32_t flag);
VITRAIL_API int32_t DateDlgBox_get_valid(int32_t i);

/* Ready-made validators: the family's parser (numdate.h: the text is trimmed
 * of blanks in place; digits, one sign, and for numbers "." or "," and an
 * exponent), then a rule on the parsed value. A parser failure returns the
 * parser's code (1 empty, 2 sign only, 3..8 malformed or out of range) and
 * stores nothing; otherwise the value is stored even when the rule refuses
 * it. A null text answers 1; a null value address is judged without storing.
 *
 *   intcod_i_sup0    intcod_i   1 when the value is below 0
 *   intcod_i_ssup0   intcod_i   1 when the value is 0 or below
 *   realcod_d_sup0   realcod_d  1 when the value is below 0.0 (NaN passes)
 *   realcod_d_ssup0  realcod_d  1 when the value is 0.0 or below (NaN passes)
 *   intcod_l_sup0    intcod_l   1 when the value is below 0
 *   intcod_l_date    intcod_l   1 when below 0; 2 when its last eight digits
 *                               are not a calendar date 18000101..21001231
 */
VITRAIL_API int32_t intcod_i_sup0(char *text, int32_t *value);
VITRAIL_API int32_t intcod_i_ssup0(char *text, int32_t *value);
VITRAIL_API int32_t realcod_d_sup0(char *text, double *value);
VITRAIL_API int32_t realcod_d_ssup0(char *text, double *value);
VITRAIL_API int32_t intcod_l_sup0(char *text, int32_t *value);
VITRAIL_API int32_t intcod_l_date(char *text, int32_t *value);

/* ---- Push buttons -------------------------------------------------------- */

/* Starts the push buttons: PDB = 1, PDB_N = count (0..10), PDB_ID_PUSH =
 * base_id; each button below the count unplaced, with an empty label and no
 * action (written through vp). Returns 0. */
VITRAIL_API int32_t PushDlgBox_param(int32_t count, int32_t base_id);
/* Button i's geometry and rank (low 16 bits each), then its label
 * (Windows-1252, null as empty) cut to 15 characters. Returns 0. */
VITRAIL_API int32_t PushDlgBox_set_geo(int32_t i, const char *label, int32_t x, int32_t y,
                                       int32_t cx, int32_t cy, int32_t rk);
/* vp[i] = action (null: none). A click calls the action, then the global
 * hook with the button's field ID; the dialog stays open. Returns 0. */
VITRAIL_API int32_t PushDlgBox_set_fvalid(int32_t i, DlgBoxPushProc action);

/* ---- Validation chain ---------------------------------------------------- */

/* Recomputes every validity flag of the enabled text, integer, number and
 * date families from the stored values and returns 1 when all are valid,
 * else 0 (1 with no such family enabled). A text field is invalid when it is
 * mandatory and empty (or never set), or longer than TDB_iCarac. A filled
 * integer, number or date field is judged by its validator reading the value
 * written as text (numbers with their decimals), and the validator writes
 * back what it parses, so numbers come back rounded to their decimals; a
 * value too wide for the 256-byte work text is invalid and left as is. */
VITRAIL_API int32_t QarDlgBox_valid(void);
/* Installs the global hook for the next dialog (the end of a dialog puts the
 * default back); null installs DlgBoxGlobal_nul. Returns 0. */
VITRAIL_API int32_t DlgBoxGlobal_set(DlgBoxGlobalProc hook);
/* The default global hook: changes nothing, returns 0. */
VITRAIL_API int32_t DlgBoxGlobal_nul(int32_t field_id, int32_t tdb, int32_t tdb_id, char **texts,
                                     int32_t tdb_n, int32_t bdb, int32_t bdb_id, int32_t *flags,
                                     int32_t bdb_n, int32_t idb, int32_t idb_id, int32_t *ints,
                                     int32_t idb_n, int32_t ndb, int32_t ndb_id, double *nums,
                                     int32_t ndb_n, int32_t ddb, int32_t ddb_id, int32_t *dates,
                                     int32_t ddb_n, int32_t *refresh, int32_t capacity);
/* Installs the final hook for the next dialog; null installs
 * DlgBoxFinal_nul. Returns 0. */
VITRAIL_API int32_t DlgBoxFinal_set(DlgBoxFinalProc hook);
/* The default final hook: accepts, returns 1. */
VITRAIL_API int32_t DlgBoxFinal_nul(WindowRef window, int32_t tdb, char **texts, int32_t tdb_n,
                                    int32_t bdb, int32_t *flags, int32_t bdb_n, int32_t idb,
                                    int32_t *ints, int32_t idb_n, int32_t ndb, double *nums,
                                    int32_t ndb_n, int32_t ddb, int32_t *dates, int32_t ddb_n);
/* Call the global hook once for field i of the family (by count, whatever
 * the enable flag), as if the user had changed it: the field's ID (dates:
 * DDB_ID_DATE + 3i), every table, and a refresh list of capacity 0; typically
 * before a dialog so that dependent fields start consistent. Nothing for an
 * index outside the family. The hook's result is ignored; return 0. */
VITRAIL_API int32_t TexteDlgBox_global(int32_t i);
/* As TexteDlgBox_global with the given hook (null: DlgBoxGlobal_fonct). */
VITRAIL_API int32_t TexteDlgBox_global_ex(int32_t i, DlgBoxGlobalProc hook);
/* As TexteDlgBox_global, for check box, integer, number and date i. */
VITRAIL_API int32_t BoolDlgBox_global(int32_t i);
VITRAIL_API int32_t IntDlgBox_global(int32_t i);
VITRAIL_API int32_t NumDlgBox_global(int32_t i);
VITRAIL_API int32_t DateDlgBox_global(int32_t i);
/* Records the final hook's message (Windows-1252), cut to 255 characters
 * (null: empty), in DlgBoxFinal_szErr, which keeps it across dialogs.
 * Returns DlgBoxFinal_szErr. */
VITRAIL_API char *DlgBoxFinal_Erreur_set(const char *message);
/* Returns DlgBoxFinal_szErr, the last message recorded. */
VITRAIL_API char *DlgBoxFinal_Erreur(void);
/* Records the message as DlgBoxFinal_Erreur_set does; then, when window is
 * not null, shows it with MessageBox(window, message, caption, flags) (texts
 * in Windows-1252) and returns its answer (1, the "OK" of a note, unless
 * flags ask a question). A null window shows nothing and returns 0. */
VITRAIL_API int32_t DlgBoxFinal_MessageBox(WindowRef window, const char *message,
                                           const char *caption, uint32_t flags);

VITRAIL_END_DECLS

#endif
