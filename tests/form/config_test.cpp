// Describing a form: the *_param lifecycle, the count and index rules shared
// by every family, the bounded copies, and the setters of each family.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <tuple>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

namespace {

std::string repeat(char c, size_t n) {
    return std::string(n, c);
}

} // namespace

TEST(FormParam, TextParamResetsOnlyRowsBelowTheCountAndKeepsPasswords) {
    TexteDlgBox_param(4, 100);
    TexteDlgBox_password(1, 1);
    TexteDlgBox_set(3, "kept");
    TexteDlgBox_set_geo(3, 1, 2, 3, 4, 5);

    TexteDlgBox_param(3, 200);
    EXPECT_EQ(TDB, 1);
    EXPECT_EQ(TDB_N, 3);
    EXPECT_EQ(TDB_ID_TEXTE, 200);
    EXPECT_EQ(TDB_BUFFERSIZE, 2730);
    EXPECT_EQ(TDB_pszBuffer[1], TDB_szBuffer + 2730);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(std::make_tuple(TDB_iCarac[i], TDB_pszBuffer[i][0], TDB_bOK[i], TDB_bInit[i],
                                  TDB_bMand[i], TDB_rk[i], TDB_PITABSTOPS[i][0]),
                  std::make_tuple(2729, '\0', 1, 0, 1, -1, 0))
            << i;
    }
    EXPECT_EQ(TDB_bPassw[1], 1); // only TexteDlgBox_password changes it
    EXPECT_EQ(TDB_rk[3], 5);     // row 3 is beyond the count: untouched
    EXPECT_EQ(TDB_bInit[3], 1);

    TexteDlgBox_param(20, 0);
    EXPECT_EQ(TDB_BUFFERSIZE, 409);
}

TEST(FormParam, IntParamClearsMaskingAndRedirectedTablesReceiveTheParser) {
    IntDlgBox_param(2, 0);
    IntDlgBox_password(0, 1);
    IDB_lPassw[0] = 7;
    IntDlgBox_param(2, 0);
    EXPECT_EQ(IDB_bPassw[0], 0);
    EXPECT_EQ(IDB_lPassw[0], 0);

    DlgBoxIntValidProc own[6] = {};
    DlgBoxIntValidProc saved = vi_tab[0];
    vi_tab[0] = intcod_i_ssup0;
    vi = own;
    IntDlgBox_param(4, 0);
    IntDlgBox_set(1, 5, 1);
    IntDlgBox_set_fvalid(2, intcod_l_date);
    vi = vi_tab;
    const DlgBoxIntValidProc expected[6] = {intcod_i, intcod_i_sup0, intcod_l_date, intcod_i};
    EXPECT_TRUE(std::equal(own, own + 6, expected));
    EXPECT_EQ(vi_tab[0], &intcod_i_ssup0); // the library's table is left alone
    vi_tab[0] = saved;
}

// Every family clamps its count to 0..capacity and ignores a negative index
// or one at or beyond the count, including a count the host wrote itself.
TEST(FormParam, CountsAreClampedAndOutOfRangeIndexesIgnored) {
    struct Row {
        const char *family;
        int32_t (*param)(int32_t);
        const int32_t *count;
        int32_t capacity;
    };
    const Row rows[] = {
        {"text", [](int32_t n) { return TexteDlgBox_param(n, 0); }, &TDB_N, 20},
        {"bool", [](int32_t n) { return BoolDlgBox_param(n, 0); }, &BDB_N, 64},
        {"int", [](int32_t n) { return IntDlgBox_param(n, 0); }, &IDB_N, 128},
        {"num", [](int32_t n) { return NumDlgBox_param(n, 0); }, &NDB_N, 128},
        {"date", [](int32_t n) { return DateDlgBox_param(n, 0); }, &DDB_N, 20},
        {"push", [](int32_t n) { return PushDlgBox_param(n, 0); }, &PDB_N, 10},
        {"static", StaticDlgBox_param, &SDB_N, 128},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(r.family);
        EXPECT_EQ(r.param(r.capacity + 50), 0);
        EXPECT_EQ(*r.count, r.capacity);
        EXPECT_EQ(r.param(-3), 0);
        EXPECT_EQ(*r.count, 0);
    }

    TexteDlgBox_param(0, 0); // no division by zero
    EXPECT_EQ(TDB_BUFFERSIZE, 8192);

    TexteDlgBox_param(2, 0);
    TexteDlgBox_set(-1, "x");
    TexteDlgBox_set(2, "x");
    EXPECT_EQ(TDB_bInit[0] + TDB_bInit[1], 0);
    TDB_N = 1000; // a host writing past the capacity still cannot reach past the arrays
    EXPECT_EQ(TexteDlgBox_set(20, "x"), 0);
    EXPECT_EQ(TexteDlgBox_get_valid(20), 0);
    EXPECT_EQ(TexteDlgBox_get_valid(-1), 0);
    TDB_N = 2;

    StaticDlgBox_param(3);
    SDB_pszBuffer[2][0] = 0;
    StaticDlgBox_set(3, "x");
    StaticDlgBox_set(2, "y");
    EXPECT_STREQ(SDB_szBuffer + 3 * 512, "");
    EXPECT_STREQ(SDB_pszBuffer[2], "y");

    BoolDlgBox_param(1, 0);
    int32_t v = 42;
    BoolDlgBox_retrieve(1, &v);
    IntDlgBox_param(1, 0);
    IntDlgBox_retrieve(-1, &v);
    EXPECT_EQ(v, 42);
    EXPECT_EQ(IntDlgBox_get_valid(IDB_N), 0);
    EXPECT_EQ(NumDlgBox_get_valid(-1), 0);
    EXPECT_EQ(DateDlgBox_get_valid(0), 0); // date family has count 0 now
}

// Each bounded copy keeps at most size - 1 characters and terminates.
TEST(FormCopies, EveryTextSetterCutsAtItsLimit) {
    TexteDlgBox_param(2, 100);
    BoolDlgBox_param(1, 0);
    PushDlgBox_param(1, 0);
    StaticDlgBox_param(1);
    struct Row {
        const char *what;
        void (*set)(const char *);
        const char *stored;
        size_t limit;
    };
    const Row rows[] = {
        {"title", [](const char *s) { TitreDlgBox_set(s); }, HDB_szHeader, 127},
        {"ok", [](const char *s) { BOKDlgBox_textes(s, "b"); }, OK_sz1, 15},
        {"cancel", [](const char *s) { BOKDlgBox_textes("a", s); }, OK_sz2, 15},
        {"text", [](const char *s) { TexteDlgBox_set(0, s); }, TDB_szBuffer, 4095},
        {"list", [](const char *s) { TexteDlgBox_set_liste(0, s); }, TDB_SZLBUFFER, 4095},
        {"label", [](const char *s) { BoolDlgBox_set_geo(0, s, 0, 0, 0, 0, 0); }, BDB_szBuffer, 47},
        {"push", [](const char *s) { PushDlgBox_set_geo(0, s, 0, 0, 0, 0, 0); }, PDB_szBuffer, 15},
        {"static", [](const char *s) { StaticDlgBox_set(0, s); }, SDB_szBuffer, 511},
        {"error", [](const char *s) { DlgBoxFinal_Erreur_set(s); }, DlgBoxFinal_szErr, 255},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(r.what);
        std::string exact = repeat('a', r.limit), longer = repeat('b', r.limit + 1);
        r.set(exact.c_str());
        EXPECT_EQ(std::string(r.stored), exact);
        r.set(longer.c_str());
        EXPECT_EQ(std::string(r.stored), repeat('b', r.limit));
        r.set(repeat('c', 9000).c_str());
        EXPECT_EQ(std::strlen(r.stored), r.limit);
        r.set(nullptr);
        EXPECT_STREQ(r.stored, "");
    }
    EXPECT_EQ(TDB_szBuffer[4096], 0); // field 1 untouched by field 0's long text
    EXPECT_EQ(TDB_bInit[0], 1);
    EXPECT_EQ(DlgBoxFinal_Erreur_set("why"), DlgBoxFinal_szErr);
    EXPECT_EQ(DlgBoxFinal_Erreur(), DlgBoxFinal_szErr);
}

TEST(FormCopies, RetrieveCopiesOnlyATextThatFits) {
    TitreDlgBox_set("Patient");
    TexteDlgBox_param(1, 0);
    TexteDlgBox_set(0, "Dupont");
    struct Row {
        const char *what;
        int32_t (*retrieve)(char *, uint32_t);
        const char *text;
    };
    const Row rows[] = {
        {"title", TitreDlgBox_retrieve, "Patient"},
        {"text", [](char *d, uint32_t n) { return TexteDlgBox_retrieve(0, d, n); }, "Dupont"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(r.what);
        uint32_t len = std::strlen(r.text);
        char dst[16] = "untouched";
        EXPECT_EQ(r.retrieve(dst, len), 0);
        EXPECT_STREQ(dst, "untouched");
        EXPECT_EQ(r.retrieve(dst, 0), 0);
        EXPECT_STREQ(dst, "untouched");
        EXPECT_EQ(r.retrieve(nullptr, 16), 0);
        EXPECT_EQ(r.retrieve(dst, len + 1), 0);
        EXPECT_STREQ(dst, r.text);
    }
    char list[64] = "zz";
    char own[] = "A$B$C";
    TexteDlgBox_set_liste_buffer(0, own);
    TexteDlgBox_retrieve_liste(0, list);
    EXPECT_STREQ(list, "A$B$C");
    TexteDlgBox_set_liste_buffer(0, nullptr);
    TexteDlgBox_set_liste(0, "X+Y"); // nowhere to copy: ignored, no crash
    TexteDlgBox_retrieve_liste(0, list);
    EXPECT_STREQ(list, "A$B$C");
}

TEST(FormFrame, DefaultButtonAndSavedTexts) {
    BOKDlgBox_def_reset();
    for (int32_t b : {3, 0, -1}) BOKDlgBox_def(b);
    EXPECT_EQ(OK_def, 1);
    BOKDlgBox_def(2);
    EXPECT_EQ(OK_def, 2);
    BOKDlgBox_def_reset();
    EXPECT_EQ(OK_def, 1);

    BOKDlgBox_textes("Un", "Deux");
    BOKDlgBox_textes("Trois", "Quatre");
    BOKDlgBox_textes_reset(); // back to the texts before the last call
    EXPECT_STREQ(OK_sz1, "Un");
    EXPECT_STREQ(OK_sz2, "Deux");
    BOKDlgBox_textes("OK", "Annuler");
}

TEST(FormFrame, DialogUnitsTruncateTowardZero) {
    const struct {
        int32_t (*f)(int32_t);
        int32_t in, out;
    } rows[] = {
        {Dlg_CoefX, 7, 14}, {Dlg_CoefCX, -7, -14},
        {Dlg_CoefY, 4, 7},  {Dlg_CoefY, -3, -5},
        {Dlg_CoefY, 3, 5},  {Dlg_CoefCY, -3, -3},
        {Dlg_CoefCY, 4, 5}, {Dlg_CoefCY, 7, 8},
        {Dlg_CoefY, 0, 0},  {Dlg_CoefY, 400000000, 700000000},
    };
    for (const auto &r : rows) EXPECT_EQ(r.f(r.in), r.out) << r.in;
}

TEST(FormFields, TextSettersFlagsListsAndTabStops) {
    TexteDlgBox_param(20, 10);
    TexteDlgBox_set_geo(0, 1, 2, 3, 4, 0x10005); // low 16 bits
    EXPECT_EQ(TDB_rk[0], 5);
    TexteDlgBox_set_geo(0, -1, 70000, 3, 4, -1);
    EXPECT_EQ(TDB_y[0], static_cast<int16_t>(70000 - 65536));

    TexteDlgBox_set_ncarac(0, 10);
    TexteDlgBox_set_ncarac(0, 50);
    EXPECT_EQ(TDB_iCarac[0], 10);
    TexteDlgBox_set_ncarac(0, -4);
    EXPECT_EQ(TDB_iCarac[0], 0);

    TexteDlgBox_change_liste(1); // no list: nothing changes
    EXPECT_EQ(TDBC[1] + TDBL[1], 0);
    TexteDlgBox_set_liste(1, "A+B+C");
    EXPECT_EQ(TDBC[1], 1);
    TexteDlgBox_change_liste(1);
    EXPECT_EQ(std::make_pair(TDBC[1], TDBL[1]), std::make_pair(0, 1));
    TexteDlgBox_change_liste(1);
    EXPECT_EQ(std::make_pair(TDBC[1], TDBL[1]), std::make_pair(1, 0));

    char own[32];
    TexteDlgBox_set_liste_buffer(2, own);
    TexteDlgBox_set_liste(2, "x$y");
    EXPECT_STREQ(own, "x$y");
    TexteDlgBox_param(20, 10); // points the list back at the library's slice
    EXPECT_EQ(TDB_PSZLBUFFER[2], TDB_SZLBUFFER + 2 * 409);

    TDB_bOK[0] = 0;
    TexteDlgBox_mandatory(0, 0);
    EXPECT_EQ(TDB_bOK[0], 1);
    EXPECT_EQ(TDB_bMand[0], 0);
    TexteDlgBox_mandatory(0, 9);
    EXPECT_EQ(TDB_bMand[0], 1);
    TexteDlgBox_password(0, 9);
    EXPECT_EQ(TDB_bPassw[0], 1);
    TexteDlgBox_password(0, 0);

    const int32_t stops[] = {40, 80, 0, 99};
    TexteDlgBox_set_tabstops(0, stops);
    EXPECT_EQ(TDB_ITABSTOPS[0][2], 0);
    int32_t many[200];
    for (int k = 0; k < 200; ++k) many[k] = k + 1;
    for (int field : {4, 5, 19}) { // fields beyond the fifth have lists of their own
        TexteDlgBox_set_tabstops(field, many);
        EXPECT_EQ(TDB_PITABSTOPS[field][126], 127);
        EXPECT_EQ(TDB_PITABSTOPS[field][127], 0);
    }
    EXPECT_NE(TDB_PITABSTOPS[5], TDB_PITABSTOPS[19]);
    EXPECT_EQ(TDB_ITABSTOPS[0][0], 40); // other lists untouched
    TexteDlgBox_set_tabstops(0, nullptr);
    EXPECT_EQ(TDB_ITABSTOPS[0][0], 40);
}

TEST(FormFields, CheckBoxesPushButtonsAndStaticItems) {
    BoolDlgBox_param(2, 300);
    BoolDlgBox_set(0, 5);
    int32_t v = 0;
    BoolDlgBox_retrieve(0, &v);
    EXPECT_EQ(v, 5); // stored as given
    BoolDlgBox_set_geo(1, "Allergie", 1, 2, 3, 4, 6);
    BoolDlgBox_param(2, 300);
    EXPECT_EQ(BDB_bFlags[0], 0);
    EXPECT_EQ(BDB_rk[1], -1);
    EXPECT_STREQ(BDB_pszBuffer[1], "");

    DlgBoxPushProc own[3] = {};
    vp = own;
    PushDlgBox_param(2, 400);
    auto action = [](WindowRef) -> int32_t { return 0; };
    PushDlgBox_set_fvalid(1, action);
    PushDlgBox_set_fvalid(2, action); // beyond the count
    vp = nullptr; // a host that cleared the table pointer is not written through
    EXPECT_EQ(PushDlgBox_param(1, 0), 0);
    EXPECT_EQ(PushDlgBox_set_fvalid(0, action), 0);
    vp = vp_tab;
    const DlgBoxPushProc expected[3] = {nullptr, action, nullptr};
    EXPECT_TRUE(std::equal(own, own + 3, expected));

    StaticDlgBox_param(2);
    StaticDlgBox_set_geo(1, 10, 20, 30, 0x12345);
    EXPECT_EQ(SDB_cy[1], 0x2345);
}
