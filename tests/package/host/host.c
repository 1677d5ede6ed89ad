/* A host of vitrail that sees its public headers only: none of the
 * library's own definitions, no folder of its sources. */
#include <stdio.h>
#include <string.h>

#include <vitrail/form.h>
#include <vitrail/numdate.h>

#ifdef VITRAIL_BUILD
#error "the library's own compile definitions reach the host"
#endif
#if defined(__has_include)
#if __has_include("form/internal.h")
#error "the library's source folder is on the host's include path"
#endif
#endif

int main(void) {
    char text[16] = "";
    TexteDlgBox_param(1, 10);
    TexteDlgBox_set(0, "Dupont");
    TexteDlgBox_retrieve(0, text, sizeof text);
    if (strcmp(text, "Dupont") != 0 || strcmp(OK_sz2, "Annuler") != 0) return 1;
    if (intdco_l(-42, text, sizeof text) != 0 || strcmp(text, "-42") != 0) return 1;
    puts("host: ok");
    return 0;
}
