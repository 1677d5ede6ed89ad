// Agent steps for form dialogs, and a fresh description to start from.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <vitrail/automation.h>
#include <vitrail/dialog.h>

#include "support/agent.h"

namespace vitrail_test {

using Step = ScriptedAgent::Step;
using Items = std::vector<vitrail_item_info>;

inline Step Click(int n) {
    return [n](WindowRef w) { vitrail_click_item(w, n); };
}
inline Step Key(int k) {
    return [k](WindowRef w) { vitrail_press_key(w, k); };
}
inline Step Row(int n, int row, int clicks = 1) {
    return [=](WindowRef w) { vitrail_choose_row(w, n, row, clicks); };
}
// Clicks edit box n (the caret goes to its end) and types text.
inline Step Type(int n, std::string text) {
    return [=](WindowRef w) { vitrail_click_item(w, n), vitrail_type_text(w, text.c_str()); };
}
// Reads every item, then acts (a step that acts on nothing lets the dialog
// answer for itself).
inline Step Snap(Items *items, Step then = Key(vitrail_key_escape)) {
    return [=](WindowRef w) {
        items->assign(size_t(vitrail_dialog_item_count(w)), {});
        for (size_t n = 0; n < items->size(); ++n) vitrail_dialog_item(w, int(n + 1), &(*items)[n]);
        then(w);
    };
}
inline std::array<int, 4> Box(const vitrail_item_info &i) {
    return {i.rect.left, i.rect.top, i.rect.right, i.rect.bottom};
}

// No family, default hooks, a 200 x 120 dialog (400 x 210 pixels).
inline void Fresh() {
    std::fill(TDB_bPassw, TDB_bPassw + 20, 0);
    DlgBoxFinal_set(nullptr);
    QarDlgBox_end(nullptr);
    TailleDlgBox_set(200, 120);
    BOKDlgBox_textes("OK", "Annuler");
}

inline int32_t Show(std::vector<Step> steps) {
    ScriptedAgent agent(std::move(steps));
    return QarDlgBoxEx("Essai", nullptr);
}

} // namespace vitrail_test
