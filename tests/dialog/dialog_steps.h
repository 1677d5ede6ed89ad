// Steps of an automation agent for form dialogs, and a fresh description
// to start each test from.
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

inline Step Click(int n) {
    return [n](WindowRef w) { vitrail_click_item(w, n); };
}
inline Step Key(int key) {
    return [key](WindowRef w) { vitrail_press_key(w, key); };
}
// Clicks edit box n (the caret goes to the end) and types text.
inline Step Type(int n, std::string text) {
    return [n, text](WindowRef w) {
        vitrail_click_item(w, n);
        vitrail_type_text(w, text.c_str());
    };
}
inline Step Row(int n, int row, int clicks = 1) {
    return [=](WindowRef w) { vitrail_choose_row(w, n, row, clicks); };
}
// Every item of the dialog as it stands, then `then` (a step that queues
// nothing lets the dialog answer for itself).
inline Step Snap(std::vector<vitrail_item_info> *items, Step then = Key(vitrail_key_escape)) {
    return [items, then](WindowRef w) {
        items->assign(size_t(vitrail_dialog_item_count(w)), {});
        for (size_t n = 0; n < items->size(); ++n) vitrail_dialog_item(w, int32_t(n + 1), &(*items)[n]);
        then(w);
    };
}
// Left, top, right, bottom.
inline std::array<int, 4> Box(const vitrail_item_info &i) {
    return {i.rect.left, i.rect.top, i.rect.right, i.rect.bottom};
}

// No family enabled, default hooks, a 200 x 120 dialog with OK and Annuler.
inline void Fresh() {
    std::fill(TDB_bPassw, TDB_bPassw + 20, 0);
    DlgBoxFinal_set(nullptr);
    QarDlgBox_end(nullptr);
    TailleDlgBox_set(200, 120);
    BOKDlgBox_textes("OK", "Annuler");
}

// Shows the described form with the agent's steps; its result.
inline int32_t Show(std::vector<Step> steps) {
    ScriptedAgent agent(std::move(steps));
    return QarDlgBoxEx("Essai", nullptr);
}

} // namespace vitrail_test
