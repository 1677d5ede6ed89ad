// Describing a form: the rules every family shares (count, index, row
// defaults, geometry, validity flags), the bounded copies, and the setters
// particular to the frame and to the text fields.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include <vitrail/form.h>

namespace {

// One family seen through its *_param, geometry and validity calls.
struct Family {
    const char *name;
    void (*param)(int32_t count);
    int32_t *count, capacity;
    void (*place)(int32_t i, int32_t v);                     // every geometry argument (and rank) v
    int16_t *x, *rk;                                         // rk null: no rank
    int32_t *ok = nullptr, *init = nullptr, *mand = nullptr; // null: no validity
    int32_t (*mandatory)(int32_t, int32_t) = nullptr;
    int32_t (*get_valid)(int32_t) = nullptr;
};

const Family kFamilies[] = {
    {"text", [](int32_t n) { TexteDlgBox_param(n, 0); }, &TDB_N, 20,
     [](int32_t i, int32_t v) { TexteDlgBox_set_geo(i, v, v, v, v, v); }, TDB_x, TDB_rk, TDB_bOK,
     TDB_bInit, TDB_bMand, TexteDlgBox_mandatory, TexteDlgBox_get_valid},
    {"int", [](int32_t n) { IntDlgBox_param(n, 0); }, &IDB_N, 128,
     [](int32_t i, int32_t v) { IntDlgBox_set_geo(i, v, v, v, v, v); }, IDB_x, IDB_rk, IDB_bOK,
     IDB_bInit, IDB_bMand, IntDlgBox_mandatory, IntDlgBox_get_valid},
    {"num", [](int32_t n) { NumDlgBox_param(n, 0); }, &NDB_N, 128,
     [](int32_t i, int32_t v) { NumDlgBox_set_geo(i, v, v, v, v, v); }, NDB_x, NDB_rk, NDB_bOK,
     NDB_bInit, NDB_bMand, NumDlgBox_mandatory, NumDlgBox_get_valid},
    {"date", [](int32_t n) { DateDlgBox_param(n, 0); }, &DDB_N, 20,
     [](int32_t i, int32_t v) { DateDlgBox_set_geo(i, v, v, v, v, v); }, DDB_x, DDB_rk, DDB_bOK,
     DDB_bInit, DDB_bMand, DateDlgBox_mandatory, DateDlgBox_get_valid},
    {"bool", [](int32_t n) { BoolDlgBox_param(n, 0); }, &BDB_N, 64,
     [](int32_t i, int32_t v) { BoolDlgBox_set_geo(i, "", v, v, v, v, v); }, BDB_x, BDB_rk},
    {"push", [](int32_t n) { PushDlgBox_param(n, 0); }, &PDB_N, 10,
     [](int32_t i, int32_t v) { PushDlgBox_set_geo(i, "", v, v, v, v, v); }, PDB_x, PDB_rk},
    {"static", [](int32_t n) { StaticDlgBox_param(n); }, &SDB_N, 128,
     [](int32_t i, int32_t v) { StaticDlgBox_set_geo(i, v, v, v, v); }, SDB_x, nullptr},
};

} // namespace

TEST(FormFamilies, CountsRowsGeometryAndValidity) {
    for (const Family &f : kFamilies) {
        SCOPED_TRACE(f.name);
        f.param(f.capacity + 50);
        EXPECT_EQ(*f.count, f.capacity);
        f.param(-3);
        EXPECT_EQ(*f.count, 0);
        f.param(3);
        f.place(2, 77);
        f.param(2);                              // rows at or beyond the count keep what they held
        for (int32_t i : {2, -1}) f.place(i, 9); // outside the count: ignored
        f.place(0, 0x10005);                     // stored as the low 16 bits
        EXPECT_EQ(std::make_tuple(f.x[2], f.x[0], f.rk ? f.rk[0] : 5), std::make_tuple(77, 5, 5));
        f.param(2);
        EXPECT_EQ(std::make_tuple(f.x[0], f.rk ? f.rk[0] : -1), std::make_tuple(0, -1));
        *f.count = 1000; // a count the host wrote itself cannot reach past the arrays
        f.place(f.capacity, 1);
        *f.count = 2;
        if (!f.ok) continue;
        EXPECT_EQ(std::make_tuple(f.ok[1], f.init[1], f.mand[1]), std::make_tuple(1, 0, 1));
        f.ok[1] = 0;
        f.mandatory(1, 0); // optional: valid at once
        EXPECT_EQ(std::make_tuple(f.get_valid(1), f.mand[1]), std::make_tuple(1, 0));
        f.mandatory(1, 9);
        EXPECT_EQ(f.mand[1], 1);
        EXPECT_EQ(f.get_valid(2) + f.get_valid(-1) + f.get_valid(f.capacity), 0);
    }
}

// Each bounded copy keeps at most size - 1 characters and terminates; a null
// text is taken as empty.
TEST(FormCopies, EveryTextSetterCutsAtItsLimit) {
    TexteDlgBox_param(2, 100), BoolDlgBox_param(1, 0), PushDlgBox_param(1, 0);
    StaticDlgBox_param(1);
    const std::tuple<void (*)(const char *), const char *, size_t> rows[] = {
        {[](const char *s) { TitreDlgBox_set(s); }, HDB_szHeader, 127},
        {[](const char *s) { BOKDlgBox_textes(s, "b"); }, OK_sz1, 15},
        {[](const char *s) { BOKDlgBox_textes("a", s); }, OK_sz2, 15},
        {[](const char *s) { TexteDlgBox_set(0, s); }, TDB_szBuffer, 4095},
        {[](const char *s) { TexteDlgBox_set_liste(0, s); }, TDB_SZLBUFFER, 4095},
        {[](const char *s) { BoolDlgBox_set_geo(0, s, 0, 0, 0, 0, 0); }, BDB_szBuffer, 47},
        {[](const char *s) { PushDlgBox_set_geo(0, s, 0, 0, 0, 0, 0); }, PDB_szBuffer, 15},
        {[](const char *s) { StaticDlgBox_set(0, s); }, SDB_szBuffer, 511},
        {[](const char *s) { DlgBoxFinal_Erreur_set(s); }, DlgBoxFinal_szErr, 255},
    };
    for (const auto &[set, stored, limit] : rows) {
        for (size_t n : {limit, limit + 1, size_t{9000}}) {
            set(std::string(n, 'a').c_str());
            EXPECT_EQ(std::string(stored), std::string(limit, 'a')) << n;
        }
        set(nullptr);
        EXPECT_STREQ(stored, "");
    }
    EXPECT_EQ(TDB_szBuffer[4096] * 10 + TDB_bInit[0], 1); // field 1 untouched; field 0 filled
    EXPECT_EQ(DlgBoxFinal_Erreur_set("why"), DlgBoxFinal_Erreur());
}

// A count or slice size that the host changed since the *_param still cannot
// carry a copy past the end of its store.
TEST(FormCopies, SliceCopiesStayInsideTheirStore) {
    TexteDlgBox_param(20, 0), TexteDlgBox_param(3, 0); // field 19 at 7771, slices of 2730
    TDB_N = 20, BDB_N = 64, PDB_N = 10, SDB_N = 128;
    BDB_BUFFERSIZE = PDB_BUFFERSIZE = SDB_BUFFERSIZE = 1 << 20;
    const std::string long_text(9000, 'x');
    const char *text = long_text.c_str();
    TexteDlgBox_set(19, text), TexteDlgBox_set_liste(19, text), StaticDlgBox_set(127, text);
    BoolDlgBox_set_geo(63, text, 0, 0, 0, 0, 0), PushDlgBox_set_geo(9, text, 0, 0, 0, 0, 0);
    using std::strlen;
    EXPECT_EQ(std::make_tuple(strlen(TDB_pszBuffer[19]), strlen(TDB_PSZLBUFFER[19]),
                              strlen(BDB_pszBuffer[63]), strlen(PDB_pszBuffer[9]),
                              strlen(SDB_pszBuffer[127])),
              std::make_tuple(420u, 420u, 47u, 15u, 511u));
}

// The retrieve functions answer 0 whether they copied or not: a text that
// does not fit leaves the destination untouched.
TEST(FormCopies, RetrieveCopiesOnlyATextThatFits) {
    TitreDlgBox_set("Patient"), TexteDlgBox_param(1, 0), TexteDlgBox_set(0, "Patient");
    for (auto retrieve : {+[](char *d, uint32_t n) { return TitreDlgBox_retrieve(d, n); },
                          +[](char *d, uint32_t n) { return TexteDlgBox_retrieve(0, d, n); }}) {
        char dst[16] = "untouched";
        EXPECT_EQ(retrieve(dst, 7) + retrieve(dst, 0) + retrieve(nullptr, 16), 0);
        EXPECT_STREQ(dst, "untouched");
        retrieve(dst, 8);
        EXPECT_STREQ(dst, "Patient");
    }
}

TEST(FormFrame, SavedButtonTextsAndDialogUnits) {
    BOKDlgBox_textes("Un", "Deux"), BOKDlgBox_textes("Trois", "Quatre");
    BOKDlgBox_textes_reset(); // back to the texts before the last call
    EXPECT_EQ(std::string(OK_sz1) + OK_sz2, "UnDeux");
    // Truncation toward zero, without overflow of the products.
    EXPECT_EQ(std::make_tuple(Dlg_CoefX(-7), Dlg_CoefY(-3), Dlg_CoefCY(-3), Dlg_CoefCY(7)),
              std::make_tuple(-14, -5, -3, 8));
    EXPECT_EQ(Dlg_CoefY(400000000), 700000000);
}

TEST(FormText, ParamCutsTheStoresAndKeepsPasswords) {
    for (auto [count, size] : {std::pair{3, 2730}, {20, 409}, {1, 8192}, {0, 8192}}) {
        TexteDlgBox_param(count, 0);
        EXPECT_EQ(TDB_BUFFERSIZE, size) << count;
    }
    char own[8];
    const int32_t stops[] = {40, 80, 0, 99};
    TexteDlgBox_param(4, 0), TexteDlgBox_password(1, 1), TexteDlgBox_set_liste_buffer(2, own);
    TexteDlgBox_set_liste(2, "x$y"), TexteDlgBox_set_tabstops(0, stops);
    TexteDlgBox_set_tabstops(0, nullptr); // no stops: no change
    EXPECT_STREQ(own, "x$y");
    EXPECT_EQ(std::vector<int32_t>(TDB_ITABSTOPS[0], TDB_ITABSTOPS[0] + 4),
              (std::vector<int32_t>{40, 80, 0, 0}));
    TexteDlgBox_param(3, 0);
    EXPECT_TRUE(TDB_pszBuffer[1] == TDB_szBuffer + 2730 &&
                TDB_PSZLBUFFER[2] == TDB_SZLBUFFER + 5460);
    EXPECT_EQ(std::make_tuple(TDB_iCarac[0], TDB_ITABSTOPS[0][0], TDBC[2], TDB_bPassw[1]),
              std::make_tuple(2729, 0, 0, 1)); // only TexteDlgBox_password changes TDB_bPassw
}

TEST(FormText, LengthListsAndTabStops) {
    TexteDlgBox_param(20, 0);
    TexteDlgBox_set_ncarac(0, 10), TexteDlgBox_set_ncarac(0, 50); // only ever lowered
    EXPECT_EQ(TDB_iCarac[0], 10);
    TexteDlgBox_set_ncarac(0, -4);
    EXPECT_EQ(TDB_iCarac[0], 0);

    TexteDlgBox_change_liste(1); // no list: nothing changes
    EXPECT_EQ(TDBC[1] + TDBL[1], 0);
    TexteDlgBox_set_liste(1, "A+B+C"); // pop-up, then list box, then pop-up again
    for (int32_t expected : {10, 1, 10}) {
        EXPECT_EQ(TDBC[1] * 10 + TDBL[1], expected);
        TexteDlgBox_change_liste(1);
    }
    char list[8] = "zz";
    TexteDlgBox_retrieve_liste(1, list);
    EXPECT_STREQ(list, "A+B+C");
    TexteDlgBox_set_liste_buffer(1, nullptr);
    TexteDlgBox_set_liste(1, "X+Y"), TexteDlgBox_retrieve_liste(1, list); // nowhere: ignored
    EXPECT_STREQ(list, "A+B+C");

    int32_t many[200];
    for (int k = 0; k < 200; ++k) many[k] = k + 1;
    for (int field : {4, 5, 19}) { // fields beyond the fifth have lists of their own
        TexteDlgBox_set_tabstops(field, many);
        EXPECT_EQ(TDB_PITABSTOPS[field][126] * 10 + TDB_PITABSTOPS[field][127], 1270);
    }
    EXPECT_NE(TDB_PITABSTOPS[5], TDB_PITABSTOPS[19]);
}
