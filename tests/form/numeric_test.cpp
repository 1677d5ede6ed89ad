// Integer, number and date fields: validator selection by mode, the
// ready-made validators, and the per-field setters.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

TEST(FormValidators, IntegerAndDateRulesAfterTheParser) {
    // A date of more than eight digits is judged by its last eight.
    const struct {
        DlgBoxIntValidProc f;
        const char *text;
        int32_t result, stored; // stored is checked when the parser succeeded
    } rows[] = {{intcod_i_sup0, "0", 0, 0},
                {intcod_i_sup0, "-4", 1, -4},
                {intcod_i_sup0, "12", 0, 12},
                {intcod_i_sup0, "40000", 4, 0},
                {intcod_i_sup0, "", 1, 0},
                {intcod_i_ssup0, "0", 1, 0},
                {intcod_i_ssup0, " 7 ", 0, 7},
                {intcod_i_ssup0, "-1", 1, -1},
                {intcod_i_ssup0, "x", 3, 0},
                {intcod_l_sup0, "40000", 0, 40000},
                {intcod_l_sup0, "-40000", 1, -40000},
                {intcod_l_sup0, "-", 2, 0},
                {intcod_l_date, "20240229", 0, 20240229},
                {intcod_l_date, "20230229", 2, 20230229},
                {intcod_l_date, "17991231", 2, 17991231},
                {intcod_l_date, "18000101", 0, 18000101},
                {intcod_l_date, "21001231", 0, 21001231},
                {intcod_l_date, "21010101", 2, 21010101},
                {intcod_l_date, "20241300", 2, 20241300},
                {intcod_l_date, "20240100", 2, 20240100},
                {intcod_l_date, "20240431", 2, 20240431},
                {intcod_l_date, "-1", 1, -1},
                {intcod_l_date, "1020240101", 0, 1020240101},
                {intcod_l_date, "abc", 3, 0}};
    for (const auto &r : rows) {
        std::string text = r.text;
        int32_t value = -999;
        EXPECT_EQ(r.f(text.data(), &value), r.result) << r.text;
        if (r.result == 0 || r.stored != 0) {
            EXPECT_EQ(value, r.stored) << r.text;
        }
    }
    char text[] = "5";
    EXPECT_EQ(intcod_i_ssup0(text, nullptr), 0); // no place to store: still judged
    EXPECT_EQ(intcod_l_date(nullptr, nullptr), 1);
}

TEST(FormValidators, RealRulesAfterTheParser) {
    const struct {
        DlgBoxNumValidProc f;
        const char *text;
        int32_t result;
        double stored;
    } rows[] = {
        {realcod_d_sup0, "-0,5", 1, -0.5},   {realcod_d_sup0, "0", 0, 0.0},
        {realcod_d_sup0, "2.5", 0, 2.5},     {realcod_d_ssup0, "0", 1, 0.0},
        {realcod_d_ssup0, "1e-3", 0, 0.001}, {realcod_d_ssup0, "-2", 1, -2.0},
        {realcod_d_ssup0, "1.2.3", 4, -1.0},
    };
    for (const auto &r : rows) {
        std::string text = r.text;
        double value = -1.0;
        EXPECT_EQ(r.f(text.data(), &value), r.result) << r.text;
        EXPECT_DOUBLE_EQ(value, r.stored) << r.text;
    }
}

// *_set stores the value, marks the field filled, and selects a validator by
// mode; any other mode keeps the one in place.
TEST(FormFields, SetModesSelectTheValidator) {
    IntDlgBox_param(1, 0);
    NumDlgBox_param(1, 0);
    DateDlgBox_param(1, 0);
    EXPECT_EQ(std::make_tuple(vi[0], vf[0], vd[0]),
              std::make_tuple(&intcod_i, &realcod_d, &intcod_l));

    const struct {
        int32_t mode;
        DlgBoxIntValidProc i;
        DlgBoxNumValidProc n;
        DlgBoxIntValidProc d;
    } rows[] = {
        {1, intcod_i_sup0, realcod_d_sup0, intcod_l_date},
        {0, intcod_i, realcod_d, intcod_l_sup0},
        {2, intcod_i_ssup0, realcod_d_ssup0, intcod_l_sup0}, // date mode 2 keeps it
        {7, intcod_i_ssup0, realcod_d_ssup0, intcod_l_sup0},
        {-1, intcod_i_ssup0, realcod_d_ssup0, intcod_l_sup0},
    };
    for (const auto &r : rows) {
        SCOPED_TRACE(r.mode);
        IntDlgBox_set(0, 12 + r.mode, r.mode);
        NumDlgBox_set(0, 1.5 + r.mode, r.mode);
        DateDlgBox_set(0, 20240101 + r.mode, r.mode);
        EXPECT_EQ(std::make_tuple(vi[0], vf[0], vd[0]), std::make_tuple(r.i, r.n, r.d));
        int32_t iv = 0, dv = 0;
        double nv = 0;
        IntDlgBox_retrieve(0, &iv);
        NumDlgBox_retrieve(0, &nv);
        DateDlgBox_retrieve(0, &dv);
        EXPECT_EQ(std::make_tuple(iv, nv, dv),
                  std::make_tuple(12 + r.mode, 1.5 + r.mode, 20240101 + r.mode));
        EXPECT_EQ(IDB_bInit[0] + NDB_bInit[0] + DDB_bInit[0], 3);
    }
    IntDlgBox_set(0, 40000, 0);
    EXPECT_EQ(IDB_iInts[0], 40000); // kept, though intcod_i will refuse it
}

TEST(FormFields, NumericDecimalsAndMandatory) {
    IntDlgBox_param(3, 1000);
    NumDlgBox_param(3, 2000);
    DateDlgBox_param(3, 3000);
    EXPECT_EQ(NDB_iChiff[2], 5);
    NumDlgBox_set_nchiff(0, -3);
    EXPECT_EQ(NDB_iChiff[0], 0);
    NumDlgBox_set_nchiff(0, 40);
    EXPECT_EQ(NDB_iChiff[0], 40);

    IDB_bOK[1] = NDB_bOK[1] = DDB_bOK[1] = 0;
    IntDlgBox_mandatory(1, 0);
    NumDlgBox_mandatory(1, 0);
    DateDlgBox_mandatory(1, 0);
    EXPECT_EQ(IntDlgBox_get_valid(1) + NumDlgBox_get_valid(1) + DateDlgBox_get_valid(1), 3);
    EXPECT_EQ(IDB_bMand[1] + NDB_bMand[1] + DDB_bMand[1], 0);
}
