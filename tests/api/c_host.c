/* A C99 host of the shared object: reads exported data and calls exported
 * functions through the public headers only. Prints one line per failed
 * check and exits non-zero if any failed. */
#include <stdio.h>
#include <string.h>

#include <vitrail/draw.h>
#include <vitrail/files.h>
#include <vitrail/form.h>
#include <vitrail/numdate.h>
#include <vitrail/platform.h>
#include <vitrail/profile.h>
#include <vitrail/strings.h>
#include <vitrail/unixtools.h>

#include "c_host.h"

static int failures;

#define CHECK(cond)                                                                               \
    do {                                                                                          \
        if (!(cond)) {                                                                            \
            printf("c_host: check failed at line %d: %s\n", __LINE__, #cond);                     \
            ++failures;                                                                           \
        }                                                                                         \
    } while (0)

static void files_checks(void) {
    char buf[4] = {0};
    int32_t h = MFil_Open("", 1, 1);
    CHECK(h >= 0 && DATA_MFIL_TAB[h].lAlloc == 4096);
    CHECK(MFil_Write(h, "abc", 3) == 3 && MFil_Lseek(h, 0) == 0 && MFil_Read(h, buf, 3) == 3);
    CHECK(strcmp(buf, "abc") == 0);
    MFil_Close(h);
    CHECK(DATA_MFIL_ID == -1 && DATA_FILE_ID == -1 && DATA_FILE_TAB[4].iMode == -1);
    CHECK(sizeof DATA_FILE_TAB[0].szName == 144);
    CHECK(File_Is_Existing("No such volume:x") == 0);
    {
        char list[8] = "a+b";
        ChCh_Put_00(list, sizeof list);
        ChCh_Cut(list);
        CHECK(ChCh_Count_Item(list) == 2);
        char table[2][256] = {"b", "a"};
        CHECK(Dir_SortFiles(table, 2) == 1 && strcmp(table[0], "a") == 0);
        CHECK(GetPrivateProfileString("A", "x", "dflt", buf, sizeof buf, "No such volume:a") == 3);
        CHECK(GetPrivateProfileInt("A", "x", 12, "No such volume:a") == 12);
    }
}

static void strings_checks(void) {
    char buf[8] = "  ab  ";
    CHECK(chelibl_f(buf) == 4 && chelibl_d(buf) == 2 && strcmp(buf, "ab") == 0);
    CHECK(chinsch_c(buf, (int32_t)sizeof buf, '1', 0) == 1 && chcher_c('a', buf) == 1);
    CHECK(szcopy_0t(buf, 4, "ABCDEF", 6) == 0 && strcmp(buf, "ABC") == 0);
    CHECK(Teste_liste("1,2-3") == 3 && strcmp(Get_item_liste("A,BC-D", 1), "BC") == 0);
}

/* Off-screen ports: made, read, traced and freed through the C interface. */
static void port_checks(void) {
    GrafPtr port = vitrail_port_new(4, 3);
    vitrail_trace_op op;
    CHECK(port != NULL);
    CHECK(vitrail_port_pixel(port, 3, 2) == 0xFFFFFFFFu);
    CHECK(vitrail_port_trace_count(port) == 0);
    CHECK(vitrail_port_trace_get(port, 0, &op) == -1);
    vitrail_port_dispose(port);
    CHECK(vitrail_port_new(0, 3) == NULL);
}

static void numdate_checks(void) {
    char text[16] = " -42 ";
    int32_t v = 0;
    double d = 0.0;
    CHECK(intcod_l(text, &v) == 0 && v == -42 && intdco_i(v, text, 16) == 0);
    CHECK(strcmp(text, "-42") == 0);
    strcpy(text, "12,5");
    CHECK(realcod_d(text, &d) == 0 && d == 12.5 && realdco_d(d, text, 16, 2) == 1);
    CHECK(strcmp(text, "12.50") == 0);
    CHECK(utdatedm(2024, 2) == 29 && Get_Date_Incr(20231231, 1) == 20240101);
    CHECK(strcmp(Qar_Inv_Date_2("20240229", text), "29/02/24") == 0);
}

/* Form hooks written by a C host against the exact 23- and 16-argument types. */
static int32_t form_hook_id = -1;

static int32_t form_global(int32_t field_id, int32_t tdb, int32_t tdb_id, char **texts,
                           int32_t tdb_n, int32_t bdb, int32_t bdb_id, int32_t *flags,
                           int32_t bdb_n, int32_t idb, int32_t idb_id, int32_t *ints,
                           int32_t idb_n, int32_t ndb, int32_t ndb_id, double *nums,
                           int32_t ndb_n, int32_t ddb, int32_t ddb_id, int32_t *dates,
                           int32_t ddb_n, int32_t *refresh, int32_t capacity) {
    (void)tdb, (void)tdb_id, (void)texts, (void)tdb_n, (void)bdb, (void)bdb_id, (void)flags;
    (void)bdb_n, (void)ndb, (void)ndb_id, (void)nums, (void)ndb_n, (void)ddb, (void)ddb_id;
    (void)dates, (void)ddb_n, (void)refresh, (void)capacity;
    form_hook_id = field_id;
    if (idb && field_id - idb_id >= 0 && field_id - idb_id < idb_n) ints[field_id - idb_id] *= 2;
    return 0;
}

static int32_t form_final(WindowRef window, int32_t tdb, char **texts, int32_t tdb_n,
                          int32_t bdb, int32_t *flags, int32_t bdb_n, int32_t idb, int32_t *ints,
                          int32_t idb_n, int32_t ndb, double *nums, int32_t ndb_n, int32_t ddb,
                          int32_t *dates, int32_t ddb_n) {
    (void)window, (void)tdb, (void)texts, (void)tdb_n, (void)bdb, (void)flags, (void)bdb_n;
    (void)idb, (void)ints, (void)idb_n, (void)ndb, (void)nums, (void)ndb_n, (void)ddb;
    (void)dates, (void)ddb_n;
    return 0;
}

static void form_checks(void) {
    CHECK(DlgBoxGlobal_set(form_global) == 0 && DlgBoxFinal_set(form_final) == 0);
    IntDlgBox_param(2, 50);
    IntDlgBox_set(1, 21, 0);
    CHECK(IntDlgBox_global(1) == 0 && form_hook_id == 51);
    CHECK(IDB_iInts[1] == 42); /* written by the hook through the table it was given */
    CHECK(QarDlgBox_valid() == 0 && IDB_bOK[0] == 0 && IDB_bOK[1] == 1);
    DlgBoxGlobal_set(NULL);
    DlgBoxFinal_set(NULL);
    CHECK(DlgBoxGlobal_fonct == DlgBoxGlobal_nul && DlgBoxFinal_fonct == DlgBoxFinal_nul);
    IDB = 0;
}

/* Text and drawing: palette, rectangles and text reach a port from C. */
static void draw_checks(void) {
    GrafPtr port = vitrail_port_new(40, 20);
    RGBColor red = vga_col(25);
    int32_t w = 0, h = -1;
    CHECK(red.red == 0xFFFF && red.green == 0 && red.blue == 0);
    Rectangle_Ex(port, 2, 2, 6, 6, 9);
    CHECK(vitrail_port_pixel(port, 4, 4) == 0xFF0000FFu);
    CHECK(ch_font_set(port, "Geneva", 0, 255, 10) == 0 && strcmp(ch_font_FontName, "Geneva") == 0);
    vitrail_port_set_current(port);
    CHECK(vitrail_port_current() == port);
    CHECK(char_dy > 1 && GetTextExtent_Ext(port, 0, 0, "ab", 2, &w, &h) == 1 && w > 0 && h == 0);
    CHECK(BMP_affic_dimfond0("no such picture", &w, &h) == 1);
    vitrail_port_dispose(port);
    CHECK(vitrail_port_current() == NULL);
}

/* Shell tools and POSIX files reached from C. */
static int32_t c_host_line(const char *line) {
    return line[0] == 'c' ? 0 : 1;
}

static void unixtools_checks(void) {
    char out[256];
    CFStringRef name = vitrail_cf_string("System.framework");
    CFBundleRef bundle = NULL;
    CHECK(RunningOnCarbonX() == 1);
    CHECK(MACOSVersion() > 0xFFF);
    CHECK(LoadFrameworkBundleSystem(name, &bundle) == 0 && bundle != NULL);
    CHECK(vitrail_bundle_function(bundle, "popen") != NULL);
    vitrail_cf_release(bundle);
    vitrail_cf_release(name);
    CHECK(BSDInvokeTool("printf c_host", out, (int32_t)sizeof out) == 0);
    CHECK(strcmp(out, "c_host") == 0);
    CHECK(BSDInvokeToolPr("printf 'c\\n'", c_host_line) == 0);
    CHECK(BSDtestProcess("") == 0 && BSDtest == 0);
    BSDDir_ProcessFiles_fPtr = NULL;
    CHECK(BSDcr == 0 && BSDnNbFic == 0);
    CHECK(xFile_Open(NULL, 1, 0) == -1);
    MAC2UNIX("Vol:a/b", out);
    CHECK(strstr(out, "/Vol/a:b") != NULL);
}

int c_host_checks(void) {
    unixtools_checks();
    draw_checks();
    form_checks();
    files_checks();
    strings_checks();
    port_checks();
    numdate_checks();
    CHECK(a_org == 1950);
    return failures;
}

int main(void) {
    int n = c_host_checks();
    printf("c_host: %s\n", n ? "FAILED" : "ok");
    return n ? 1 : 0;
}
