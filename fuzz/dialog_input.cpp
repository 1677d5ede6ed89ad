// A person's input to a form dialog, from fuzz bytes: clicks, typing, keys
// and choices on a form of every family. Model: one action changes at most
// the value of the field it acts on (the clicked item's, or the focused edit
// box's when typing); every text stays terminated inside its slice.
//
//   Item  3 text (password)  4 text (5 characters)  5 popup  6 list box
//         7 check box  8 integer (password)  9 integer  10 number
//         11-13 date  14 push button (no action)
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

#include <vitrail/automation.h>
#include <vitrail/dialog.h>

namespace {

constexpr int kField[15] = {-1, -1, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 8, 8, 9};
constexpr int kKeys[] = {vitrail_key_tab,          vitrail_key_tab | vitrail_key_shift,
                         vitrail_key_backspace,    vitrail_key_delete,
                         vitrail_key_left,         vitrail_key_home,
                         'a' | vitrail_key_command};

struct Values {
    std::string text[4];
    int32_t flag, ints[2], date;
    double num;
};

Values Read() {
    Values v{};
    for (int i = 0; i < 4; ++i) v.text[i] = TDB_pszBuffer[i];
    v.flag = BDB_bFlags[0], v.ints[0] = IDB_iInts[0], v.ints[1] = IDB_iInts[1];
    v.date = DDB_lDates[0], v.num = NDB_dNums[0];
    return v;
}

// The fields (0..9, as kField) whose values differ.
unsigned Changed(const Values &a, const Values &b) {
    unsigned m = 0;
    for (int i = 0; i < 4; ++i) m |= (a.text[i] != b.text[i]) << i;
    m |= (a.flag != b.flag) << 4 | (a.ints[0] != b.ints[0]) << 5 | (a.ints[1] != b.ints[1]) << 6;
    bool same_num = a.num == b.num || (std::isnan(a.num) && std::isnan(b.num));
    return m | !same_num << 7 | (a.date != b.date) << 8;
}

struct Run {
    const uint8_t *at, *end;
    Values before;
    int target = -1; // field of the last action, -1 for none

    void Check() {
        unsigned changed = Changed(before, Read());
        if (changed & ~(target >= 0 ? 1u << target : 0u)) std::abort();
        for (int i = 0; i < 4; ++i)
            if (!std::memchr(TDB_pszBuffer[i], 0, size_t(TDB_BUFFERSIZE))) std::abort();
    }

    void Act(WindowRef w) {
        Check();
        before = Read();
        if (end - at < 2) return (void)vitrail_press_key(w, vitrail_key_escape);
        uint8_t op = at[0] % 5, arg = at[1];
        at += 2;
        if (op == 0 && 3 + arg % 12 == 5) op = 3; // a click would leave the popup's menu open
        int focus = 0;
        vitrail_item_info info;
        for (int n = 3; n <= 14; ++n)
            if (vitrail_dialog_item(w, n, &info) == 0 && info.focused) focus = n;
        int item = op == 0 ? 3 + arg % 12 : op >= 3 ? 5 + arg % 2 : focus;
        target = item ? kField[item] : -1;
        if (op == 0) vitrail_click_item(w, item);
        if (op == 1)
            vitrail_type_text(
                w, std::string(size_t(at[-2] / 5) * 5 + 1, char(arg ? arg : ' ')).c_str());
        if (op == 2) vitrail_press_key(w, kKeys[arg % std::size(kKeys)]);
        if (op >= 3)
            vitrail_choose_row(w, item, item == 5 ? 1 + arg % 4 : arg % 4, op == 4 ? 2 : 1);
    }
};

void Describe() {
    TailleDlgBox_set(200, 150);
    TexteDlgBox_param(4, 10);
    const char *texts[] = {"secret", "abcde", "Non", "B"};
    for (int i = 0; i < 4; ++i) {
        TexteDlgBox_set(i, texts[i]);
        TexteDlgBox_set_geo(i, 5, 5 + 10 * i, 80, 8, i);
    }
    TexteDlgBox_password(0, 1);
    TexteDlgBox_set_ncarac(1, 5);
    TexteDlgBox_set_liste(2, "Oui+Non,Peut-\xEAtre+");
    TexteDlgBox_set_liste(3, "A$B$$D");
    TexteDlgBox_change_liste(3);
    BoolDlgBox_param(1, 20);
    BoolDlgBox_set_geo(0, "Oui", 100, 5, 40, 8, 4);
    IntDlgBox_param(2, 30);
    IntDlgBox_set(0, 1234, 0), IntDlgBox_password(0, 1), IntDlgBox_set(1, -5, 0);
    IntDlgBox_set_geo(0, 100, 15, 30, 8, 5), IntDlgBox_set_geo(1, 100, 25, 30, 8, 6);
    NumDlgBox_param(1, 40);
    NumDlgBox_set(0, 2.5, 0), NumDlgBox_set_geo(0, 100, 35, 30, 8, 7);
    DateDlgBox_param(1, 50);
    DateDlgBox_set(0, 20240229, 1), DateDlgBox_set_geo(0, 5, 50, 0, 8, 8);
    PushDlgBox_param(1, 60);
    PushDlgBox_set_geo(0, "Go", 100, 50, 30, 8, 9);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static bool headless = setenv("VITRAIL_BACKEND", "headless", 1) == 0;
    (void)headless;
    Describe();
    Run run{data, data + std::min<size_t>(size, 128)};
    run.before = Read();
    vitrail_set_agent([](WindowRef w, void *self) { static_cast<Run *>(self)->Act(w); }, &run);
    QarDlgBoxEx("Fuzz", nullptr);
    vitrail_set_agent(nullptr, nullptr);
    run.Check();
    return 0;
}
