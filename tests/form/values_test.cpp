// Integer, number and date fields: the ready-made validators, validator
// selection by mode, and the setters particular to these families.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <tuple>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

// Each validator parses first, storing the value even when its rule then
// refuses it; a parser failure returns the parser's code, stores nothing.
TEST(FormValidators, RulesAfterTheParser) {
    const std::tuple<DlgBoxIntValidProc, const char *, int32_t, int32_t> ints[] = {
        {intcod_i_sup0, "0", 0, 0},
        {intcod_i_sup0, "-4", 1, -4},
        {intcod_i_sup0, "40000", 4, -9},
        {intcod_i_ssup0, "0", 1, 0},
        {intcod_i_ssup0, " 7 ", 0, 7},
        {intcod_i_ssup0, "x", 3, -9},
        {intcod_l_sup0, "-40000", 1, -40000},
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
        {intcod_l_date, "1020240101", 0, 1020240101}, // its last eight digits are a date
    };
    for (const auto &[f, text, result, stored] : ints) {
        std::string work = text;
        int32_t value = -9; // -9: nothing stored
        int32_t answer = f(work.data(), &value);
        EXPECT_EQ(std::make_tuple(answer, value), std::make_tuple(result, stored)) << text;
    }
    const std::tuple<DlgBoxNumValidProc, const char *, int32_t, double> reals[] = {
        {realcod_d_sup0, "-0,5", 1, -0.5},
        {realcod_d_sup0, "0", 0, 0.0},
        {realcod_d_ssup0, "0", 1, 0.0},
        {realcod_d_ssup0, "1e-3", 0, 0.001},
        {realcod_d_ssup0, "1.2.3", 4, -9}};
    for (const auto &[f, text, result, stored] : reals) {
        std::string work = text;
        double value = -9;
        int32_t answer = f(work.data(), &value);
        EXPECT_EQ(std::make_tuple(answer, value), std::make_tuple(result, stored)) << text;
    }
    char five[] = "5";
    EXPECT_EQ(intcod_i_ssup0(five, nullptr) * 10 + intcod_l_date(nullptr, nullptr), 1);
}

// *_param puts back the parser and an empty value; *_set stores the value,
// marks the field filled and selects a validator by mode (any other mode
// keeps the one in place). Retrieving outside the count leaves the
// destination as it was.
TEST(FormFields, SetModesSelectTheValidator) {
    constexpr int32_t kParam = INT32_MIN; // the row of *_param alone
    const std::tuple<int32_t, DlgBoxIntValidProc, DlgBoxNumValidProc, DlgBoxIntValidProc> rows[] = {
        {kParam, intcod_i, realcod_d, intcod_l},
        {1, intcod_i_sup0, realcod_d_sup0, intcod_l_date},
        {0, intcod_i, realcod_d, intcod_l_sup0},
        {2, intcod_i_ssup0, realcod_d_ssup0, intcod_l_sup0}, // date mode 2 keeps it
        {7, intcod_i_ssup0, realcod_d_ssup0, intcod_l_sup0},
        {-1, intcod_i_ssup0, realcod_d_ssup0, intcod_l_sup0},
    };
    for (const auto &[mode, vint, vnum, vdate] : rows) {
        bool set = mode != kParam;
        if (set) {
            IntDlgBox_set(0, 12, mode), NumDlgBox_set(0, 1.5, mode);
            DateDlgBox_set(0, 20240101, mode);
        } else {
            IntDlgBox_param(1, 0), NumDlgBox_param(1, 0), DateDlgBox_param(1, 0);
        }
        int32_t iv = -1, dv = -1;
        double nv = -1;
        IntDlgBox_retrieve(0, &iv), NumDlgBox_retrieve(0, &nv), DateDlgBox_retrieve(0, &dv);
        EXPECT_EQ(std::make_tuple(vi[0], vf[0], vd[0], IDB_bInit[0] + NDB_bInit[0] + DDB_bInit[0]),
                  std::make_tuple(vint, vnum, vdate, set ? 3 : 0))
            << mode;
        EXPECT_EQ(std::make_tuple(iv, nv, dv),
                  set ? std::make_tuple(12, 1.5, 20240101) : std::make_tuple(0, 0.0, 0));
    }
    int32_t state = 42, kept = 42;
    double dkept = 42;
    BoolDlgBox_param(1, 0), BoolDlgBox_set(0, 5), BoolDlgBox_param(1, 0); // unchecks
    BoolDlgBox_retrieve(0, &state), BoolDlgBox_retrieve(1, &kept), IntDlgBox_retrieve(-1, &kept);
    DateDlgBox_retrieve(1, &kept), NumDlgBox_retrieve(1, &dkept);
    EXPECT_EQ(std::make_tuple(state, kept, dkept), std::make_tuple(0, 42, 42.0));
}

// Validators and actions are written through vi and vp, wherever they
// point; a host's null pointer is not written through.
TEST(FormFields, RedirectedTables) {
    DlgBoxIntValidProc own[6] = {}, saved = vi_tab[0];
    vi_tab[0] = intcod_i_ssup0;
    vi = own;
    IntDlgBox_param(4, 0), IntDlgBox_set(1, 5, 1), IntDlgBox_set_fvalid(2, intcod_l_date);
    vi = nullptr;
    IntDlgBox_param(1, 0), IntDlgBox_set(0, 5, 1), IntDlgBox_set_fvalid(0, intcod_l_date);
    vi = vi_tab;
    const DlgBoxIntValidProc expected[6] = {intcod_i, intcod_i_sup0, intcod_l_date, intcod_i};
    EXPECT_TRUE(std::equal(own, own + 6, expected));
    EXPECT_EQ(vi_tab[0], &intcod_i_ssup0); // the library's table is left alone
    vi_tab[0] = saved;

    DlgBoxPushProc action = [](WindowRef) -> int32_t { return 0; };
    DlgBoxPushProc actions[3] = {action, action, nullptr};
    vp = actions;
    PushDlgBox_param(2, 0), PushDlgBox_set_fvalid(1, action), PushDlgBox_set_fvalid(2, action);
    vp = nullptr;
    PushDlgBox_param(1, 0), PushDlgBox_set_fvalid(0, action);
    vp = vp_tab;
    EXPECT_TRUE(!actions[0] && actions[1] == action && !actions[2]);
}

TEST(FormFields, DecimalsAndMasking) {
    NumDlgBox_param(1, 0);
    EXPECT_EQ(NDB_iChiff[0], 5);
    NumDlgBox_set_nchiff(0, -3);
    EXPECT_EQ(NDB_iChiff[0], 0);
    NumDlgBox_set_nchiff(0, 40); // no upper bound
    EXPECT_EQ(NDB_iChiff[0], 40);

    IntDlgBox_param(1, 0), IntDlgBox_password(0, 9);
    IDB_lPassw[0] = 7;
    EXPECT_EQ(IDB_bPassw[0], 1);
    IntDlgBox_param(1, 0); // unlike a text field's, the masking is cleared
    EXPECT_EQ(IDB_bPassw[0] + IDB_lPassw[0], 0);
}
