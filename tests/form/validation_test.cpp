// The validation chain: QarDlgBox_valid over every family and what it writes
// back, the hooks, and the calls of the global hook for one field.
#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <tuple>
#include <utility>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

namespace {

// Leaves every family disabled and the default hooks, as after a dialog.
void end_of_dialog() {
    TDB = BDB = IDB = NDB = DDB = PDB = SDB = HDB = 0;
    DlgBoxGlobal_set(nullptr), DlgBoxFinal_set(nullptr);
}

// The global hook's last call: the field ID, the refresh capacity, and
// whether every other argument was the table or count in force.
int32_t calls, last_id, last_capacity;
bool last_tables;

int32_t record(int32_t id, int32_t tdb, int32_t tdb_id, char **texts, int32_t tdb_n, int32_t bdb,
               int32_t bdb_id, int32_t *flags, int32_t bdb_n, int32_t idb, int32_t idb_id,
               int32_t *ints, int32_t idb_n, int32_t ndb, int32_t ndb_id, double *nums,
               int32_t ndb_n, int32_t ddb, int32_t ddb_id, int32_t *dates, int32_t ddb_n,
               int32_t *refresh, int32_t capacity) {
    ++calls, last_id = id, last_capacity = capacity;
    last_tables =
        std::make_tuple(tdb, tdb_id, texts, tdb_n, bdb, bdb_id, flags, bdb_n) ==
            std::make_tuple(TDB, TDB_ID_TEXTE, TDB_pszBuffer, TDB_N, BDB, BDB_ID_FLAG, BDB_bFlags,
                            BDB_N) &&
        std::make_tuple(idb, idb_id, ints, idb_n, ndb, ndb_id, nums, ndb_n) ==
            std::make_tuple(IDB, IDB_ID_INT, IDB_iInts, IDB_N, NDB, NDB_ID_NUM, NDB_dNums, NDB_N) &&
        std::make_tuple(ddb, ddb_id, dates, ddb_n, refresh != nullptr) ==
            std::make_tuple(DDB, DDB_ID_DATE, DDB_lDates, DDB_N, true);
    return 5; // ignored by the *_global functions
}

} // namespace

// Every field of the enabled text, integer, number and date families must be
// acceptable. Each row changes a form whose four fields are empty and
// optional; an integer, number or date field is judged by its validator
// reading the stored value written as text.
TEST(FormValid, FieldRules) {
    const std::pair<void (*)(), int32_t> rows[] = {
        {[] {}, 1},
        {[] { TexteDlgBox_mandatory(0, 1); }, 0}, // never set, mandatory
        {[] { TexteDlgBox_set(0, ""), TexteDlgBox_mandatory(0, 1); }, 0},
        {[] { TexteDlgBox_set(0, "abcdef"), TexteDlgBox_set_ncarac(0, 5); }, 0},
        {[] { TexteDlgBox_set(0, "abcdef"), TexteDlgBox_set_ncarac(0, 6); }, 1},
        {[] { TexteDlgBox_set(0, "a"), TexteDlgBox_set_ncarac(0, 0); }, 0},
        {[] { IntDlgBox_set(0, 0, 0); }, 1},
        {[] { IntDlgBox_set(0, 0, 2); }, 0},     // ssup0
        {[] { IntDlgBox_set(0, 40000, 0); }, 0}, // beyond intcod_i's range
        {[] { IntDlgBox_mandatory(0, 1); }, 0},
        {[] { IntDlgBox_mandatory(0, 1), IDB = 0; }, 1}, // a disabled family is not judged
        {[] { BoolDlgBox_param(3, 0), PushDlgBox_param(2, 0), StaticDlgBox_param(2); }, 1},
        {[] { DateDlgBox_set(0, 20230229, 0); }, 1},
        {[] { DateDlgBox_set(0, 20230229, 1); }, 0},                          // not a date
        {[] { NumDlgBox_set(0, -0.001, 2), NumDlgBox_set_nchiff(0, 2); }, 0}, // -0.00
        {[] { NumDlgBox_set(0, -1, 2), NumDlgBox_set_fvalid(0, nullptr); }, 1},
        {[] {
             NumDlgBox_set_fvalid(0, [](char *, double *) { return 6; }), NumDlgBox_set(0, 1, 7);
         },
         0},
    };
    for (size_t row = 0; row < std::size(rows); ++row) {
        auto [setup, ok] = rows[row];
        end_of_dialog();
        for (auto param : {TexteDlgBox_param, IntDlgBox_param, NumDlgBox_param, DateDlgBox_param})
            param(1, 0);
        TexteDlgBox_mandatory(0, 0), IntDlgBox_mandatory(0, 0), NumDlgBox_mandatory(0, 0);
        DateDlgBox_mandatory(0, 0), setup();
        int32_t all = QarDlgBox_valid();
        EXPECT_EQ(std::make_tuple(all, TDB_bOK[0] & IDB_bOK[0] & NDB_bOK[0] & DDB_bOK[0]),
                  std::make_tuple(ok, ok))
            << row;
    }
}

TEST(FormValid, NumbersComeBackRoundedToTheirDecimals) {
    end_of_dialog();
    const std::tuple<double, int32_t, double, int32_t> rows[] = {
        {1.23456789, 2, 1.23, 1},
        {2.5, 0, 3.0, 1},
        {-2.5, 0, -3.0, 1},
        {1.0, 400, 1.0, 0}}; // too wide to write: refused, left as is
    NumDlgBox_param(4, 0);
    for (int i = 0; i < 4; ++i) NumDlgBox_set(i, std::get<0>(rows[i]), 0);
    for (int i = 0; i < 4; ++i) NumDlgBox_set_nchiff(i, std::get<1>(rows[i]));
    EXPECT_EQ(QarDlgBox_valid(), 0);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(std::make_tuple(NDB_dNums[i], NumDlgBox_get_valid(i)),
                  std::make_tuple(std::get<2>(rows[i]), std::get<3>(rows[i])));
}

// A null hook stands for the default, which the end of a dialog puts back;
// the default final hook accepts.
TEST(FormHooks, NullSettersInstallTheDefaults) {
    EXPECT_EQ(DlgBoxFinal_nul(nullptr, 0, nullptr, 0, 0, nullptr, 0, 0, nullptr, 0, 0, nullptr, 0,
                              0, nullptr, 0),
              1);
    DlgBoxGlobal_set(record);
    EXPECT_EQ(DlgBoxGlobal_fonct, &record);
    end_of_dialog();
    EXPECT_TRUE(DlgBoxGlobal_fonct == DlgBoxGlobal_nul && DlgBoxFinal_fonct == DlgBoxFinal_nul);
}

// Each *_global calls the hook once for a field of its family (by count,
// whatever the enable flag) with a refresh list of capacity 0, else never.
TEST(FormHooks, GlobalCallsNameTheFieldAndPassTheTables) {
    end_of_dialog();
    TexteDlgBox_param(2, 100), BoolDlgBox_param(3, 200), IntDlgBox_param(4, 300);
    NumDlgBox_param(5, 400), DateDlgBox_param(6, 500), DlgBoxGlobal_set(record);
    auto expect_call = [](const std::function<int32_t()> &call, int32_t id) { // id -1: no call
        calls = 0, last_id = last_capacity = -1, last_tables = false;
        EXPECT_EQ(call(), 0);
        EXPECT_EQ(std::make_tuple(calls, last_id, last_capacity, last_tables),
                  id < 0 ? std::make_tuple(0, -1, -1, false) : std::make_tuple(1, id, 0, true))
            << id;
    };
    const std::tuple<int32_t (*)(int32_t), int32_t, int32_t> rows[] = {
        {TexteDlgBox_global, 1, 101}, {TexteDlgBox_global, 2, -1}, {BoolDlgBox_global, 2, 202},
        {BoolDlgBox_global, -1, -1},  {IntDlgBox_global, 3, 303},  {IntDlgBox_global, 4, -1},
        {NumDlgBox_global, 0, 400},   {NumDlgBox_global, 5, -1},   {DateDlgBox_global, 2, 506},
        {DateDlgBox_global, 6, -1}};
    for (const auto &[global, index, id] : rows) {
        auto f = global;
        auto i = index;
        expect_call([f, i] { return f(i); }, id);
    }
    expect_call([] { return TexteDlgBox_global_ex(0, nullptr); }, 100); // the installed hook
    DlgBoxGlobal_set(nullptr), TDB = 0;
    expect_call([] { return TexteDlgBox_global_ex(1, record); }, 101); // the given one
}
