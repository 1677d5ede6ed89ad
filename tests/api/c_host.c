/* A C99 host of the shared object: reads exported data and calls exported
 * functions through the public headers only. Prints one line per failed
 * check and exits non-zero if any failed. */
#include <stdio.h>
#include <string.h>

#include <vitrail/files.h>
#include <vitrail/numdate.h>
#include <vitrail/platform.h>
#include <vitrail/strings.h>

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

int c_host_checks(void) {
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
