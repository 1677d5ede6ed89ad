/* The demo host: a C program that uses the library as a host module would,
 * through the public headers and the shared object only. */
#include <stdio.h>

#include <vitrail/numdate.h>

int main(void) {
    printf("vitrail demo host\n");
    printf("  two-digit years widen around %d\n", (int)a_org);
    return 0;
}
