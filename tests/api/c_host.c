/* A C99 host of the shared object: reads exported data and calls exported
 * functions through the public headers only. Prints one line per failed
 * check and exits non-zero if any failed. */
#include <stdio.h>
#include <string.h>

#include <vitrail/numdate.h>

#include "c_host.h"

static int failures;

#define CHECK(cond)                                                                               \
    do {                                                                                          \
        if (!(cond)) {                                                                            \
            printf("c_host: check failed at line %d: %s\n", __LINE__, #cond);                     \
            ++failures;                                                                           \
        }                                                                                         \
    } while (0)

int c_host_checks(void) {
    CHECK(a_org == 1950);
    return failures;
}

int main(void) {
    int n = c_host_checks();
    printf("c_host: %s\n", n ? "FAILED" : "ok");
    return n ? 1 : 0;
}
