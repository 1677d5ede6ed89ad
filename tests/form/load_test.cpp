// Values of the form tables when the library is loaded, before any call.
#include <gtest/gtest.h>

#include <string>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

TEST(FormLoad, GlobalsHoldTheirInitialValues) {
    EXPECT_EQ(std::string(OK_sz1) + OK_sz2 + OK_sz1_bak + OK_sz2_bak, "OKAnnulerOKAnnuler");
    EXPECT_TRUE(OK_def == 1 && DlgBoxGlobal_fonct == DlgBoxGlobal_nul &&
                DlgBoxFinal_fonct == DlgBoxFinal_nul);
    EXPECT_TRUE(vi == vi_tab && vf == vf_tab && vd == vd_tab && vp == vp_tab);
    EXPECT_TRUE(vi_tab[127] == intcod_i && vf_tab[0] == realcod_d && vd_tab[19] == intcod_l);
    for (int32_t v : {TDB, BDB, IDB, NDB, DDB, PDB, SDB, HDB, TDB_N, BDB_N, IDB_N, SDB_N})
        EXPECT_EQ(v, 0);
    // Every slice pointer has storage before the first *_param.
    EXPECT_TRUE(TDB_pszBuffer[19] == TDB_szBuffer + 19 * TDB_BUFFERSIZE &&
                TDB_PSZLBUFFER[0] == TDB_SZLBUFFER && TDB_PITABSTOPS[4] == TDB_ITABSTOPS[4] &&
                TDB_PITABSTOPS[19] != nullptr && BDB_pszBuffer[63] == BDB_szBuffer + 63 * 48 &&
                PDB_pszBuffer[9] == PDB_szBuffer + 9 * 16 &&
                SDB_pszBuffer[127] == SDB_szBuffer + 127 * 512);
}
