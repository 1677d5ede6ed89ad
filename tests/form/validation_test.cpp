// The validation chain: QarDlgBox_valid over every family, the rounding it
// writes back, the hooks and the calls of the global hook for one field.
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

namespace {

// Leaves every family disabled, as after a dialog has ended.
void end_of_dialog() {
    TDB = BDB = IDB = NDB = DDB = PDB = SDB = HDB = 0;
    DlgBoxGlobal_set(nullptr);
    DlgBoxFinal_set(nullptr);
}

// What the recording hook was last called with.
struct Call {
    int32_t id, tdb, tdb_id, tdb_n, bdb_n, idb_n, ndb_n, ddb_n, capacity;
    char **texts;
    int32_t *flags, *ints, *dates;
    double *nums;
};
std::vector<Call> calls;

int32_t record(int32_t id, int32_t tdb, int32_t tdb_id, char **texts, int32_t tdb_n, int32_t,
               int32_t, int32_t *flags, int32_t bdb_n, int32_t, int32_t, int32_t *ints,
               int32_t idb_n, int32_t, int32_t, double *nums, int32_t ndb_n, int32_t, int32_t,
               int32_t *dates, int32_t ddb_n, int32_t *, int32_t capacity) {
    calls.push_back({id, tdb, tdb_id, tdb_n, bdb_n, idb_n, ndb_n, ddb_n, capacity, texts, flags,
                     ints, dates, nums});
    return 5; // ignored by the *_global functions
}

} // namespace

TEST(FormValid, NoFamilyEnabledIsValidAndCheckBoxesNeverBlock) {
    end_of_dialog();
    EXPECT_EQ(QarDlgBox_valid(), 1);
    BoolDlgBox_param(3, 0);
    PushDlgBox_param(2, 0);
    StaticDlgBox_param(2);
    EXPECT_EQ(QarDlgBox_valid(), 1);
    IntDlgBox_param(1, 0); // a mandatory empty field
    IDB = 0;               // disabled families are not judged
    EXPECT_EQ(QarDlgBox_valid(), 1);
    EXPECT_EQ(IDB_bOK[0], 1);
}

TEST(FormValid, TextRule) {
    end_of_dialog();
    TexteDlgBox_param(1, 0);
    EXPECT_EQ(QarDlgBox_valid(), 0); // mandatory and never filled
    EXPECT_EQ(TDB_bOK[0], 0);
    TexteDlgBox_mandatory(0, 0);
    EXPECT_EQ(QarDlgBox_valid(), 1);

    const struct {
        const char *text;
        int32_t mand, carac, ok;
    } rows[] = {
        {"abcdef", 1, 5, 0}, {"abcdef", 1, 6, 1}, {"abcdef", 0, 5, 0}, {"", 1, 6, 0},
        {"", 0, 6, 1},       {"", 0, 0, 1},       {"a", 0, 0, 0},
    };
    for (const auto &r : rows) {
        TexteDlgBox_param(1, 0);
        TexteDlgBox_set(0, r.text);
        TexteDlgBox_mandatory(0, r.mand);
        TexteDlgBox_set_ncarac(0, r.carac);
        EXPECT_EQ(QarDlgBox_valid(), r.ok) << r.text << " " << r.mand << " " << r.carac;
        EXPECT_EQ(TexteDlgBox_get_valid(0), r.ok);
    }
}

TEST(FormValid, NumericRulesRunTheFieldValidatorOnTheStoredValue) {
    const struct {
        const char *what;
        int32_t value, mode, init, mand, ok;
    } ints[] = {
        {"zero, intcod_i", 0, 0, 1, 1, 1},      {"zero, ssup0", 0, 2, 1, 1, 0},
        {"40000, intcod_i", 40000, 0, 1, 1, 0}, {"-5, sup0", -5, 1, 1, 0, 0},
        {"empty mandatory", 0, 7, 0, 1, 0},     {"empty optional", 0, 7, 0, 0, 1},
    };
    for (const auto &r : ints) {
        SCOPED_TRACE(r.what);
        end_of_dialog();
        IntDlgBox_param(2, 0);
        IntDlgBox_set(1, 3, 0); // a valid neighbour
        if (r.init) IntDlgBox_set(0, r.value, r.mode);
        IntDlgBox_mandatory(0, r.mand);
        EXPECT_EQ(QarDlgBox_valid(), r.ok);
        EXPECT_EQ(IDB_bOK[0], r.ok);
        EXPECT_EQ(IDB_bOK[1], 1);
        if (r.init) {
            EXPECT_EQ(IDB_iInts[0], r.value); // written back unchanged
        }
    }

    end_of_dialog();
    DateDlgBox_param(2, 0);
    DateDlgBox_set(0, 20240229, 1);
    DateDlgBox_set(1, 20230229, 0); // intcod_l_sup0 does not check the calendar
    EXPECT_EQ(QarDlgBox_valid(), 1);
    DateDlgBox_set(1, 20230229, 1);
    EXPECT_EQ(QarDlgBox_valid(), 0);
    EXPECT_EQ(std::make_pair(DDB_bOK[0], DDB_bOK[1]), std::make_pair(1, 0));
    EXPECT_EQ(DDB_lDates[1], 20230229);

    // A validator refusing through a redirected table, and a null validator.
    end_of_dialog();
    DlgBoxIntValidProc own[2];
    vi = own;
    IntDlgBox_param(2, 0);
    IntDlgBox_set(0, 9, 0);
    IntDlgBox_set(1, -9, 0);
    IntDlgBox_set_fvalid(0, [](char *, int32_t *) -> int32_t { return 6; });
    IntDlgBox_set_fvalid(1, nullptr);
    EXPECT_EQ(QarDlgBox_valid(), 0);
    vi = vi_tab;
    EXPECT_EQ(std::make_pair(IDB_bOK[0], IDB_bOK[1]), std::make_pair(0, 1));
    EXPECT_EQ(IDB_iInts[1], -9);
}

TEST(FormValid, NumbersComeBackRoundedToTheirDecimals) {
    end_of_dialog();
    NumDlgBox_param(4, 0);
    const struct {
        double value;
        int32_t decimals;
        double rounded;
    } rows[] = {{1.23456789, 2, 1.23}, {2.5, 0, 3.0}, {-2.5, 0, -3.0}, {0.125, 5, 0.125}};
    for (int i = 0; i < 4; ++i) {
        NumDlgBox_set(i, rows[i].value, 0);
        NumDlgBox_set_nchiff(i, rows[i].decimals);
    }
    EXPECT_EQ(QarDlgBox_valid(), 1);
    for (int i = 0; i < 4; ++i) EXPECT_DOUBLE_EQ(NDB_dNums[i], rows[i].rounded) << i;

    NumDlgBox_set(0, -0.001, 2); // rounds to -0.00, which ssup0 refuses
    EXPECT_EQ(QarDlgBox_valid(), 0);
    EXPECT_EQ(NumDlgBox_get_valid(0), 0);
    NumDlgBox_set(0, 1.0, 0);
    NumDlgBox_set_nchiff(0, 400); // too wide to write: refused, value kept
    EXPECT_EQ(QarDlgBox_valid(), 0);
    EXPECT_EQ(NDB_dNums[0], 1.0);
}

// The default hooks accept everything; a null hook puts the default back.
TEST(FormHooks, DefaultsAndNullSetters) {
    int32_t refresh[4];
    EXPECT_EQ(DlgBoxGlobal_nul(1, 0, 0, nullptr, 0, 0, 0, nullptr, 0, 0, 0, nullptr, 0, 0, 0,
                               nullptr, 0, 0, 0, nullptr, 0, refresh, 4),
              0);
    EXPECT_EQ(DlgBoxFinal_nul(nullptr, 0, nullptr, 0, 0, nullptr, 0, 0, nullptr, 0, 0, nullptr, 0,
                              0, nullptr, 0),
              1);
    DlgBoxGlobal_set(record);
    DlgBoxFinal_set([](WindowRef, int32_t, char **, int32_t, int32_t, int32_t *, int32_t, int32_t,
                       int32_t *, int32_t, int32_t, double *, int32_t, int32_t, int32_t *,
                       int32_t) -> int32_t { return 0; });
    end_of_dialog();
    EXPECT_EQ(DlgBoxGlobal_fonct, &DlgBoxGlobal_nul);
    EXPECT_EQ(DlgBoxFinal_fonct, &DlgBoxFinal_nul);
}

TEST(FormHooks, GlobalCallsNameTheFieldAndPassTheTables) {
    end_of_dialog();
    TexteDlgBox_param(2, 100);
    BoolDlgBox_param(3, 200);
    IntDlgBox_param(4, 300);
    NumDlgBox_param(5, 400);
    DateDlgBox_param(6, 500);
    DlgBoxGlobal_set(record);
    calls.clear();

    const struct {
        int32_t (*call)(int32_t);
        int32_t index, id; // id -1: no call expected
    } rows[] = {
        {TexteDlgBox_global, 1, 101}, {TexteDlgBox_global, 2, -1}, {BoolDlgBox_global, 2, 202},
        {BoolDlgBox_global, -1, -1},  {IntDlgBox_global, 3, 303},  {IntDlgBox_global, 4, -1},
        {NumDlgBox_global, 0, 400},   {NumDlgBox_global, 5, -1},   {DateDlgBox_global, 2, 506},
        {DateDlgBox_global, 6, -1},
    };
    for (const auto &r : rows) {
        calls.clear();
        EXPECT_EQ(r.call(r.index), 0);
        if (r.id < 0) {
            EXPECT_TRUE(calls.empty()) << r.index;
            continue;
        }
        ASSERT_EQ(calls.size(), 1u) << r.id;
        const Call &c = calls[0];
        EXPECT_EQ(std::make_tuple(c.id, c.tdb, c.tdb_id, c.tdb_n, c.bdb_n, c.idb_n, c.ndb_n,
                                  c.ddb_n, c.capacity),
                  std::make_tuple(r.id, 1, 100, 2, 3, 4, 5, 6, 0));
        EXPECT_EQ(std::make_tuple(c.texts, c.flags, c.ints, c.nums, c.dates),
                  std::make_tuple(TDB_pszBuffer, BDB_bFlags, IDB_iInts, NDB_dNums, DDB_lDates));
    }

    calls.clear();
    TexteDlgBox_global_ex(0, nullptr); // null: the installed hook
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].id, 100);
    DlgBoxGlobal_set(nullptr);
    calls.clear();
    TexteDlgBox_global_ex(1, record); // the given hook, not the installed one
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].id, 101);
    TDB = 0; // a disabled family is still named; the hook sees its flag
    calls.clear();
    TexteDlgBox_global_ex(0, record);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].tdb, 0);
    end_of_dialog();
}
