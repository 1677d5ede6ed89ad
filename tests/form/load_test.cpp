// Values of the form tables when the library is loaded, before any call.
#include <gtest/gtest.h>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

TEST(FormLoad, GlobalsHoldTheirInitialValues) {
    EXPECT_STREQ(OK_sz1, "OK");
    EXPECT_STREQ(OK_sz2, "Annuler");
    EXPECT_STREQ(OK_sz1_bak, "OK");
    EXPECT_STREQ(OK_sz2_bak, "Annuler");
    EXPECT_EQ(OK_def, 1);
    EXPECT_EQ(DlgBoxGlobal_fonct, &DlgBoxGlobal_nul);
    EXPECT_EQ(DlgBoxFinal_fonct, &DlgBoxFinal_nul);
    EXPECT_EQ(vi, vi_tab);
    EXPECT_EQ(vf, vf_tab);
    EXPECT_EQ(vd, vd_tab);
    EXPECT_EQ(vp, vp_tab);
    EXPECT_EQ(vi_tab[127], &intcod_i);
    EXPECT_EQ(vf_tab[0], &realcod_d);
    EXPECT_EQ(vd_tab[19], &intcod_l);
    EXPECT_EQ(vp_tab[9], nullptr);
    EXPECT_EQ(DlgBox_hDlg, nullptr);
    EXPECT_STREQ(HDB_szHeader, "");
    EXPECT_STREQ(DlgBoxFinal_szErr, "");
    EXPECT_EQ(FDB_bkgcol.red | FDB_bkgcol.green | FDB_bkgcol.blue, 0);
    for (int32_t flag : {TDB, BDB, IDB, NDB, DDB, PDB, SDB, HDB, LDB, FDB}) EXPECT_EQ(flag, 0);
    for (int32_t count : {TDB_N, BDB_N, IDB_N, NDB_N, DDB_N, PDB_N, SDB_N}) EXPECT_EQ(count, 0);
}

TEST(FormLoad, EverySlicePointerHasStorageBeforeTheFirstParam) {
    EXPECT_EQ(TDB_pszBuffer[19], TDB_szBuffer + 19 * TDB_BUFFERSIZE);
    EXPECT_EQ(TDB_PSZLBUFFER[0], TDB_SZLBUFFER);
    EXPECT_EQ(TDB_PITABSTOPS[4], TDB_ITABSTOPS[4]);
    EXPECT_NE(TDB_PITABSTOPS[19], nullptr);
    EXPECT_EQ(BDB_pszBuffer[63], BDB_szBuffer + 63 * 48);
    EXPECT_EQ(PDB_pszBuffer[9], PDB_szBuffer + 9 * 16);
    EXPECT_EQ(SDB_pszBuffer[127], SDB_szBuffer + 127 * 512);
}
