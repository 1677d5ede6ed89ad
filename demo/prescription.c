/*
 * The prescription form: its description in the tables, its hooks and the
 * reading of its values (prescription.h).
 *
 *   Row (dialog units)  Label x 10        Field x 70
 *   y 9                 Medicament :      drug popup, 110 wide
 *   y 23                Voie :            route list box, 110 x 36
 *   y 53                Prises par jour : integer, 20 wide
 *   y 69                Dose (mg) :       number, 40 wide
 *   y 85, 101           Debut :, Fin :    dates, "/" between the boxes
 *   y 117               -                 "Renouvelable", "Interactions"
 */
#include "prescription.h"

#include <stdio.h>
#include <string.h>

#include <vitrail/msgbox.h>

#define FIELD_X 70
#define LABEL_X 10
#define LABEL_CX 58
#define BOX_CY 16

static const char kDrugs[] = "Amoxicilline+Parac\xE9tamol+Ibuprof\xE8ne+L\xE9vothyroxine";
static const double kUsualDoses[] = {500.0, 1000.0, 400.0, 0.05};
static const char kRoutes[] = "Orale$Intraveineuse$Intramusculaire$Sous-cutan\xE9" "e$Cutan\xE9" "e";

/* Labels sit 2 units lower than the 20-pixel boxes they name, so that the
 * texts share a baseline; the popup and the list box take their label level. */
struct Label {
    const char *text;
    int x, y, cx;
};
static const struct Label kLabels[] = {
    {"M\xE9" "dicament :", LABEL_X, 9, LABEL_CX}, {"Voie :", LABEL_X, 23, LABEL_CX},
    {"Prises par jour :", LABEL_X, 55, LABEL_CX}, {"Dose (mg) :", LABEL_X, 71, LABEL_CX},
    {"D\xE9" "but :", LABEL_X, 87, LABEL_CX},      {"Fin :", LABEL_X, 103, LABEL_CX},
    {"/", FIELD_X + 11, 87, 4},                    {"/", FIELD_X + 26, 87, 4},
    {"/", FIELD_X + 11, 103, 4},                   {"/", FIELD_X + 26, 103, 4},
};

double prescription_usual_dose(const char *drug) {
    size_t k = 0;
    const char *at = kDrugs;
    size_t n = drug ? strlen(drug) : 0;
    while (drug && *at) {
        size_t len = strcspn(at, "+");
        if (len == n && strncmp(at, drug, n) == 0) return kUsualDoses[k];
        at += len + (at[len] ? 1 : 0);
        ++k;
    }
    return 0.0;
}

void prescription_describe(const Prescription *initial) {
    size_t k;
    TailleDlgBox_set(190, 157);
    TitreDlgBox_set("Ligne de prescription");
    StaticDlgBox_param((int32_t)(sizeof kLabels / sizeof kLabels[0]));
    for (k = 0; k < sizeof kLabels / sizeof kLabels[0]; ++k) {
        StaticDlgBox_set((int32_t)k, kLabels[k].text);
        StaticDlgBox_set_geo((int32_t)k, kLabels[k].x, kLabels[k].y, kLabels[k].cx, 8);
    }

    TexteDlgBox_param(2, RX_TEXT_ID);
    TexteDlgBox_set_liste(0, kDrugs);
    TexteDlgBox_set(0, initial->drug);
    TexteDlgBox_set_geo(0, FIELD_X, 9, 110, BOX_CY, 0);
    TexteDlgBox_set_liste(1, kRoutes);
    TexteDlgBox_change_liste(1);
    TexteDlgBox_set(1, initial->route);
    TexteDlgBox_set_geo(1, FIELD_X, 23, 110, 36, 1); /* three rows of 14 pixels */

    IntDlgBox_param(1, RX_INT_ID);
    if (initial->daily) IntDlgBox_set(0, initial->daily, 2);
    else IntDlgBox_set_fvalid(0, intcod_i_ssup0);
    IntDlgBox_set_geo(0, FIELD_X, 53, 20, BOX_CY, 2);

    NumDlgBox_param(1, RX_NUM_ID);
    NumDlgBox_set_nchiff(0, 2);
    if (initial->dose > 0) NumDlgBox_set(0, initial->dose, 2);
    else NumDlgBox_set_fvalid(0, realcod_d_ssup0);
    NumDlgBox_set_geo(0, FIELD_X, 69, 40, BOX_CY, 3);

    DateDlgBox_param(2, RX_DATE_ID);
    for (k = 0; k < 2; ++k) {
        int32_t date = k == 0 ? initial->start : initial->end;
        if (date) DateDlgBox_set((int32_t)k, date, 1);
        else DateDlgBox_set_fvalid((int32_t)k, intcod_l_date);
        DateDlgBox_set_geo((int32_t)k, FIELD_X, k == 0 ? 85 : 101, 50, BOX_CY, 4 + (int32_t)k);
    }

    BoolDlgBox_param(1, RX_CHECK_ID);
    BoolDlgBox_set(0, initial->renewable);
    BoolDlgBox_set_geo(0, "Renouvelable", FIELD_X, 117, 55, BOX_CY, 6);

    PushDlgBox_param(1, RX_PUSH_ID);
    PushDlgBox_set_geo(0, "Interactions", 128, 117, 52, BOX_CY, 7);
    PushDlgBox_set_fvalid(0, prescription_interactions);

    DlgBoxGlobal_set(prescription_global);
    DlgBoxFinal_set(prescription_final);
}

void prescription_read(Prescription *out) {
    TexteDlgBox_retrieve(0, out->drug, sizeof out->drug);
    TexteDlgBox_retrieve(1, out->route, sizeof out->route);
    IntDlgBox_retrieve(0, &out->daily);
    NumDlgBox_retrieve(0, &out->dose);
    DateDlgBox_retrieve(0, &out->start);
    DateDlgBox_retrieve(1, &out->end);
    BoolDlgBox_retrieve(0, &out->renewable);
}

/* Choosing a drug proposes its usual dose: the dose field is shown again. */
int32_t prescription_global(int32_t field_id, int32_t tdb, int32_t tdb_id, char **texts,
                            int32_t tdb_n, int32_t bdb, int32_t bdb_id, int32_t *flags,
                            int32_t bdb_n, int32_t idb, int32_t idb_id, int32_t *ints,
                            int32_t idb_n, int32_t ndb, int32_t ndb_id, double *nums,
                            int32_t ndb_n, int32_t ddb, int32_t ddb_id, int32_t *dates,
                            int32_t ddb_n, int32_t *refresh, int32_t capacity) {
    double usual;
    (void)bdb, (void)bdb_id, (void)flags, (void)bdb_n, (void)idb, (void)idb_id, (void)ints;
    (void)idb_n, (void)ddb, (void)ddb_id, (void)dates, (void)ddb_n;
    if (field_id != tdb_id || !tdb || tdb_n < 1 || !ndb || ndb_n < 1 || capacity < 1) return 0;
    usual = prescription_usual_dose(texts[0]);
    if (usual <= 0) return 0;
    nums[0] = usual;
    refresh[0] = ndb_id;
    return 1;
}

/* A treatment ends on or after the day it starts. */
int32_t prescription_final(WindowRef window, int32_t tdb, char **texts, int32_t tdb_n, int32_t bdb,
                           int32_t *flags, int32_t bdb_n, int32_t idb, int32_t *ints,
                           int32_t idb_n, int32_t ndb, double *nums, int32_t ndb_n, int32_t ddb,
                           int32_t *dates, int32_t ddb_n) {
    (void)tdb, (void)texts, (void)tdb_n, (void)bdb, (void)flags, (void)bdb_n, (void)idb;
    (void)ints, (void)idb_n, (void)ndb, (void)nums, (void)ndb_n;
    if (ddb && ddb_n >= 2 && dates[1] < dates[0]) {
        DlgBoxFinal_MessageBox(window, "La date de fin pr\xE9" "c\xE8" "de la date de d\xE9" "but.",
                               "Ordonnance", MSGBOX_ICON_STOP);
        return 0;
    }
    return 1;
}

int32_t prescription_interactions(WindowRef window) {
    char drug[64] = "";
    char text[128];
    TexteDlgBox_retrieve(0, drug, sizeof drug);
    if (drug[0])
        snprintf(text, sizeof text, "Aucune interaction connue pour %s.", drug);
    else
        snprintf(text, sizeof text, "Choisissez d'abord un m\xE9" "dicament.");
    MessageBox(window, text, "Interactions", MSGBOX_ICON_NOTE);
    return 0;
}
