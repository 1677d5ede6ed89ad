// Prescriber selection: a one-field form dialog whose list box holds the
// names kept under [Prescriptions] Prescripteurs= of a profile file.
//
//   Element       Dialog units          Pixels
//   dialog        140 x 100             280 x 175
//   label         x 10, y 6, 120 x 8    20, 10 .. 260, 25
//   list box      x 10, y 20, 120 x 80  20, 35 .. 260, 135 (item 3, rank 1)
//   OK, Cancel    -                     50..130 and 150..230, 141..161
#include <algorithm>
#include <cstring>

#include <vitrail/dialog.h>
#include <vitrail/profile.h>

extern "C" {

VITRAIL_API char PRES_szSelect[128];

VITRAIL_API char *SelectPRES(void *, void *, const char *profile) {
    // The list box reads its rows from here while the dialog runs; kept for
    // the process so that TDB_PSZLBUFFER[0] never points at a freed buffer.
    static char names[4096];
    GetPrivateProfileString("Prescriptions", "Prescripteurs", "", names, sizeof names, profile);
    std::replace(names, names + std::strlen(names), '+', '$');
    TailleDlgBox_set(140, 100);
    StaticDlgBox_param(1);
    StaticDlgBox_set(0, "Liste des prescripteurs enregistr\xE9s :");
    StaticDlgBox_set_geo(0, 10, 6, 120, 8);
    StaticDlgBox_set_type(0, 0);
    TexteDlgBox_param(1, 100);
    TexteDlgBox_set(0, "");
    TexteDlgBox_set_liste(0, "");
    TexteDlgBox_change_liste(0);
    TexteDlgBox_set_liste_buffer(0, names);
    TexteDlgBox_set_geo(0, 10, 20, 120, 80, 1);
    if (QarDlgBoxEx("Annuaire des prescripteurs", nullptr))
        TexteDlgBox_retrieve(0, PRES_szSelect, sizeof PRES_szSelect);
    else
        PRES_szSelect[0] = 0;
    return PRES_szSelect;
}

} // extern "C"
