// The form description tables: every exported global of the form model with
// its value at load. The slice pointers are laid out at load for a full
// family (20 text fields, 64 check boxes, 10 buttons, 128 static items) so
// that no pointer is null before the first *_param.
//
//   Global                         Element        Load value
//   TDB/BDB/IDB/NDB/DDB/PDB/SDB    int32          0 (count, enable, base ID)
//   *_x, *_y, *_cx, *_cy           int16          0
//   *_rk                           int16          0 (the *_param sets -1)
//   *_bOK, *_bInit, *_bMand        int32          0 (the *_param sets 1, 0, 1)
//   TDB_BUFFERSIZE                 int32          409 (8192 / 20)
//   BDB/PDB/SDB_BUFFERSIZE         int32          48, 16, 512
//   *_pszBuffer, TDB_PSZLBUFFER    char *         slice i of the family store
//   TDB_PITABSTOPS                 int32 *        tab-stop list i
//   vi_tab, vf_tab, vd_tab         validators     intcod_i, realcod_d, intcod_l
//   vp_tab                         actions        null
//   OK_sz1/OK_sz2 (and _bak)       char[16]       "OK", "Annuler"
//   OK_def                         int32          1
//   DlgBoxGlobal_fonct/Final       hooks          DlgBoxGlobal_nul, DlgBoxFinal_nul
#include <vitrail/form.h>
#include <vitrail/numdate.h>

#include "form/internal.h"

extern "C" {

VITRAIL_API int32_t TDB, TDB_N, TDB_ID_TEXTE;
VITRAIL_API int32_t TDB_BUFFERSIZE = 8192 / 20;
VITRAIL_API int16_t TDB_x[20], TDB_y[20], TDB_cx[20], TDB_cy[20], TDB_rk[20];
VITRAIL_API int32_t TDB_bOK[20], TDB_bInit[20], TDB_bMand[20], TDB_bPassw[20];
VITRAIL_API int32_t TDB_iCarac[20];
VITRAIL_API char *TDB_pszBuffer[20];
VITRAIL_API int32_t TDBC[20], TDBL[20];
VITRAIL_API char *TDB_PSZLBUFFER[20];
VITRAIL_API int32_t *TDB_PITABSTOPS[20];
VITRAIL_API char TDB_szBuffer[8192];
VITRAIL_API char TDB_SZLBUFFER[8192];
VITRAIL_API int32_t TDB_ITABSTOPS[5][128];

VITRAIL_API int32_t BDB, BDB_N, BDB_ID_FLAG;
VITRAIL_API int32_t BDB_BUFFERSIZE = 48;
VITRAIL_API int16_t BDB_x[64], BDB_y[64], BDB_cx[64], BDB_cy[64], BDB_rk[64];
VITRAIL_API int32_t BDB_bFlags[64];
VITRAIL_API char *BDB_pszBuffer[64];
VITRAIL_API char BDB_szBuffer[3072];

VITRAIL_API int32_t IDB, IDB_N, IDB_ID_INT;
VITRAIL_API int16_t IDB_x[128], IDB_y[128], IDB_cx[128], IDB_cy[128], IDB_rk[128];
VITRAIL_API int32_t IDB_bOK[128], IDB_bInit[128], IDB_bMand[128];
VITRAIL_API int32_t IDB_iInts[128];
VITRAIL_API int32_t IDB_bPassw[128];
VITRAIL_API int16_t IDB_lPassw[128];

VITRAIL_API int32_t NDB, NDB_N, NDB_ID_NUM;
VITRAIL_API int16_t NDB_x[128], NDB_y[128], NDB_cx[128], NDB_cy[128], NDB_rk[128];
VITRAIL_API int32_t NDB_bOK[128], NDB_bInit[128], NDB_bMand[128];
VITRAIL_API double NDB_dNums[128];
VITRAIL_API int32_t NDB_iChiff[128];

VITRAIL_API int32_t DDB, DDB_N, DDB_ID_DATE;
VITRAIL_API int16_t DDB_x[20], DDB_y[20], DDB_cx[20], DDB_cy[20], DDB_rk[20];
VITRAIL_API int32_t DDB_bOK[20], DDB_bInit[20], DDB_bMand[20];
VITRAIL_API int32_t DDB_lDates[20];

VITRAIL_API int32_t PDB, PDB_N, PDB_ID_PUSH;
VITRAIL_API int32_t PDB_BUFFERSIZE = 16;
VITRAIL_API int16_t PDB_x[10], PDB_y[10], PDB_cx[10], PDB_cy[10], PDB_rk[10];
VITRAIL_API char *PDB_pszBuffer[10];
VITRAIL_API char PDB_szBuffer[160];

VITRAIL_API int32_t SDB, SDB_N;
VITRAIL_API int32_t SDB_BUFFERSIZE = 512;
VITRAIL_API int16_t SDB_x[128], SDB_y[128], SDB_cx[128], SDB_cy[128], SDB_type[128];
VITRAIL_API char *SDB_pszBuffer[128];
VITRAIL_API char SDB_szBuffer[65536];

VITRAIL_API DlgBoxIntValidProc vi_tab[128];
VITRAIL_API DlgBoxNumValidProc vf_tab[128];
VITRAIL_API DlgBoxIntValidProc vd_tab[20];
VITRAIL_API DlgBoxPushProc vp_tab[10];
VITRAIL_API DlgBoxIntValidProc *vi = vi_tab;
VITRAIL_API DlgBoxNumValidProc *vf = vf_tab;
VITRAIL_API DlgBoxIntValidProc *vd = vd_tab;
VITRAIL_API DlgBoxPushProc *vp = vp_tab;

VITRAIL_API int32_t HDB;
VITRAIL_API char HDB_szHeader[128];
VITRAIL_API int32_t LDB, LDB_cx, LDB_cy;
VITRAIL_API int32_t FDB;
VITRAIL_API RGBColor FDB_bkgcol;
VITRAIL_API int32_t FDB_hbrbkg;
VITRAIL_API char OK_sz1[16] = "OK", OK_sz2[16] = "Annuler";
VITRAIL_API char OK_sz1_bak[16] = "OK", OK_sz2_bak[16] = "Annuler";
VITRAIL_API int32_t OK_def = 1, OK_x, OK_y, OK_xt, OK_yt;
VITRAIL_API int32_t OK_shadow, OK_shadow_dx, OK_shadow_dy;
VITRAIL_API RGBColor OK_shadow_c;
VITRAIL_API DlgBoxGlobalProc DlgBoxGlobal_fonct = DlgBoxGlobal_nul;
VITRAIL_API DlgBoxFinalProc DlgBoxFinal_fonct = DlgBoxFinal_nul;
VITRAIL_API char DlgBoxFinal_szErr[256];
VITRAIL_API int32_t Dlg_itemOffset[128];
VITRAIL_API int32_t Dlg_rkOffset[128];
VITRAIL_API DialogRef DlgBox_hDlg;

} // extern "C"

namespace {

// Points every slice pointer at its slice and fills the validator tables with
// the families' parsers, before any host call.
struct LoadLayout {
    LoadLayout() {
        for (int i = 0; i < 20; ++i) {
            TDB_pszBuffer[i] = TDB_szBuffer + TDB_BUFFERSIZE * i;
            TDB_PSZLBUFFER[i] = TDB_SZLBUFFER + TDB_BUFFERSIZE * i;
            TDB_PITABSTOPS[i] = form::tabstop_list(i);
        }
        for (int i = 0; i < 64; ++i) BDB_pszBuffer[i] = BDB_szBuffer + 48 * i;
        for (int i = 0; i < 10; ++i) PDB_pszBuffer[i] = PDB_szBuffer + 16 * i;
        for (int i = 0; i < 128; ++i) SDB_pszBuffer[i] = SDB_szBuffer + 512 * i;
        for (auto &v : vi_tab) v = intcod_i;
        for (auto &v : vf_tab) v = realcod_d;
        for (auto &v : vd_tab) v = intcod_l;
    }
};
const LoadLayout load_layout;

} // namespace
