/*
 * A prescription form: one drug line of a prescription, described in the
 * form tables and shown with QarDlgBoxEx.
 *
 *   Field             Family, index  ID        Presentation
 *   drug              text 0         10        popup of the usual drugs
 *   route             text 1         11        list box
 *   intakes a day     integer 0      30        above 0
 *   dose (mg)         number 0       40        2 decimals, above 0
 *   start, end        date 0, 1      50, 53    day, month, year boxes
 *   renewable         check box 0    20
 *   "Interactions"    push button 0  60        shows a message box
 *
 * Choosing a drug proposes its usual dose (the global hook); OK is refused
 * with a message while the end date is before the start (the final hook).
 * Texts are in the Windows character set.
 */
#ifndef VITRAIL_DEMO_PRESCRIPTION_H
#define VITRAIL_DEMO_PRESCRIPTION_H

#include <vitrail/dialog.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    RX_TEXT_ID = 10,
    RX_CHECK_ID = 20,
    RX_INT_ID = 30,
    RX_NUM_ID = 40,
    RX_DATE_ID = 50,
    RX_PUSH_ID = 60
};

typedef struct Prescription {
    char drug[64];     /* "" for none chosen yet */
    char route[64];
    int32_t daily;     /* intakes a day; 0 leaves the field empty */
    double dose;       /* mg an intake; 0 leaves the field empty */
    int32_t start;     /* YYYYMMDD; 0 leaves the date empty */
    int32_t end;
    int32_t renewable; /* 0 or 1 */
} Prescription;

/* Describes the form in the tables with `initial` as its values, and
 * installs its hooks; then the host calls QarDlgBoxEx. */
void prescription_describe(const Prescription *initial);

/* The values of the form after QarDlgBoxEx. */
void prescription_read(Prescription *out);

/* Usual dose of a drug offered by the popup, in mg; 0 for another text. */
double prescription_usual_dose(const char *drug);

/* The hooks, installed by prescription_describe. */
int32_t prescription_global(int32_t field_id, int32_t tdb, int32_t tdb_id, char **texts,
                            int32_t tdb_n, int32_t bdb, int32_t bdb_id, int32_t *flags,
                            int32_t bdb_n, int32_t idb, int32_t idb_id, int32_t *ints,
                            int32_t idb_n, int32_t ndb, int32_t ndb_id, double *nums,
                            int32_t ndb_n, int32_t ddb, int32_t ddb_id, int32_t *dates,
                            int32_t ddb_n, int32_t *refresh, int32_t capacity);
int32_t prescription_final(WindowRef window, int32_t tdb, char **texts, int32_t tdb_n, int32_t bdb,
                           int32_t *flags, int32_t bdb_n, int32_t idb, int32_t *ints,
                           int32_t idb_n, int32_t ndb, double *nums, int32_t ndb_n, int32_t ddb,
                           int32_t *dates, int32_t ddb_n);
int32_t prescription_interactions(WindowRef window);

#ifdef __cplusplus
}
#endif

#endif
