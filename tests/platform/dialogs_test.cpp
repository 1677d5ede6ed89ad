// The dialog toolkit driven through the automation interface: a dialog with
// one control of every kind, the editing keys, focus order, popup and list
// choices, default and cancel keys, the headless answer and bad input.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <vitrail/automation.h>
#include <vitrail/platform.h>

#include "platform/dialogs/dialogs.h"
#include "platform/toolbox/bundles.h"
#include "support/agent.h"

using namespace platform;
using vitrail_test::Item;
using vitrail_test::ScriptedAgent;

namespace {

Str255 *P(const std::string &s, Str255 &out) {
    out[0] = uint8_t(s.size());
    std::copy(s.begin(), s.end(), out + 1);
    return &out;
}

enum : int16_t {
    kOK = 1,
    kCancel,
    kName,
    kNameLabel,
    kFirst,
    kCheck,
    kPopup,
    kList,
    kGroup,
    kInactive
};

// Builds the dialog with one control of every kind; `withDefault` declares
// OK the default item.
DialogRef AllControls(bool withDefault = true) {
    Str255 t;
    Rect bounds{100, 100, 400, 520};
    DialogRef d = NewColorDialog(nullptr, &bounds, *P("Tous les contr\x99les", t), true,
                                 kMovableModalDialogProc, FrontOfAll(), false, nullptr, nullptr);
    WindowRef w = GetDialogWindow(d);
    auto add = [&](int16_t kind, void *handle, Rect r) {
        InsertDialogItem(d, CountDITL(d), kind, handle, &r);
    };
    auto button = [&](const char *label, Rect r, int16_t proc = pushButProc) {
        add(ctrlItem + proc, NewControl(w, &r, *P(label, t), true, 0, 0, 1, proc, nullptr), r);
    };
    button("OK", {262, 320, 282, 400});
    button("Annuler", {262, 220, 282, 300});
    add(editText, TENew(nullptr, nullptr), {40, 20, 62, 200});
    ControlRef label = nullptr;
    add(statText, label, {20, 20, 36, 200});
    GetDialogItem(d, kNameLabel, nullptr, &label, nullptr);
    SetDialogItemText(label, *P("Nom et pr\x8Enom :", t));
    add(editText, nullptr, {40, 220, 62, 400});
    button("Renouvelable", {76, 20, 94, 200}, checkBoxProc);
    MenuRef menu;
    CreateNewMenu(UniqueID(kMenuResType), 0, &menu);
    InsertMenu(menu, -1);
    for (const char *item : {"Comprim\x8E", "G\x8Elule", "Sirop"}) AppendMenu(menu, *P(item, t));
    Rect r{74, 220, 94, 400};
    ControlRef popup;
    CreatePopupButtonControl(w, &r, nullptr, menu->id, false, -1, 0, 0, &popup);
    SetControlMaximum(popup, 3);
    add(ctrlItem + resCtrl, popup, r);
    r = {110, 20, 230, 200};
    ControlRef list;
    CreateListBoxControl(w, &r, true, 0, 1, false, true, 14, 165, false, nullptr, &list);
    for (int i = 0; i < 12; ++i) {
        std::string row = "Voie " + std::to_string(i + 1);
        LAddRow(1, int16_t(i), list->list);
        LSetCell(row.data(), int16_t(row.size()), Cell{int16_t(i), 0}, list->list);
    }
    add(ctrlItem, list, r);
    r = {110, 220, 230, 400};
    CFStringRef title = CFStringCreateWithCString(nullptr, "Options", 0);
    ControlRef group;
    CreateGroupBoxControl(w, &r, title, true, &group);
    CFRelease(title);
    add(ctrlItem, group, r);
    button("Inactif", {190, 240, 210, 380});
    HiliteControl(GetDialogFromWindow(w)->items[kInactive - 1].view, kControlInactivePart);
    r = {134, 240, 166, 272};
    ControlButtonContentInfo icon{kControlContentCIconRes, kCautionIcon};
    CreateIconControl(w, &r, &icon, true, nullptr);
    if (withDefault) SetDialogDefaultItem(d, kOK);
    return d;
}

// Runs the front dialog until OK or Cancel, toggling the check box as its
// owner would; returns every item hit.
std::vector<int16_t> RunDialog(DialogRef d) {
    std::vector<int16_t> hits;
    DialogItemIndex hit = 0;
    do {
        ModalDialog(nullptr, &hit);
        hits.push_back(hit);
        ControlRef check = d->items[kCheck - 1].view;
        if (hit == kCheck) SetControlValue(check, int16_t(!GetControlValue(check)));
    } while (hit != kOK && hit != kCancel && hits.size() < 1000);
    DisposeDialog(d);
    return hits;
}

bool Hit(const std::vector<int16_t> &hits, int16_t item) {
    return std::find(hits.begin(), hits.end(), item) != hits.end();
}

TEST(Dialogs, EveryControlKindReadsBackAndIsPictured) {
    struct Row {
        int16_t item;
        int32_t kind, control, count, selected;
        const char *text;
    } rows[] = {
        {kOK, 4, vitrail_control_push, 0, -1, "OK"},
        {kCancel, 4, vitrail_control_push, 0, -1, "Annuler"},
        {kName, 16, vitrail_control_none, 0, -1, ""},
        {kNameLabel, 8, vitrail_control_none, 0, -1, "Nom et pr\xE9nom :"},
        {kCheck, 5, vitrail_control_check, 0, -1, "Renouvelable"},
        {kPopup, 7, vitrail_control_popup, 3, -1, ""},
        {kList, 4, vitrail_control_list, 12, -1, ""},
        {kGroup, 4, vitrail_control_group, 0, -1, "Options"},
        {kInactive, 4, vitrail_control_push, 0, -1, "Inactif"},
    };
    std::filesystem::create_directories(VITRAIL_SCREENS_DIR);
    std::string shot = std::string(VITRAIL_SCREENS_DIR) + "/controls.png";
    ScriptedAgent agent({[&](WindowRef w) {
                             EXPECT_EQ(vitrail_dialog_item_count(w), kInactive);
                             for (const Row &row : rows) {
                                 vitrail_item_info info = Item(w, row.item);
                                 EXPECT_EQ(info.kind, row.kind) << row.item;
                                 EXPECT_EQ(info.control, row.control) << row.item;
                                 EXPECT_EQ(info.count, row.count) << row.item;
                                 EXPECT_EQ(info.selected, row.selected) << row.item;
                                 EXPECT_STREQ(info.text, row.text) << row.item;
                                 EXPECT_EQ(info.is_default, row.item == kOK) << row.item;
                                 EXPECT_EQ(info.focused, row.item == kName) << row.item;
                                 EXPECT_EQ(info.hilite, row.item == kInactive ? 255 : 0);
                             }
                             char row[16];
                             EXPECT_EQ(vitrail_dialog_item_row(w, kPopup, 2, row, sizeof row), 6);
                             EXPECT_STREQ(row, "G\xE9lule");
                             EXPECT_EQ(vitrail_dialog_item_row(w, kList, 11, row, 5), 7);
                             EXPECT_STREQ(row, "Voie");
                             vitrail_type_text(w, "Dupont");
                             vitrail_click_item(w, kCheck);
                             vitrail_choose_row(w, kPopup, 2, 1);
                             vitrail_choose_row(w, kList, 3, 1);
                         },
                         [&](WindowRef w) {
                             EXPECT_EQ(vitrail_window_write_png(w, shot.c_str()), 0);
                             vitrail_click_item(w, kPopup);
                         },
                         [&](WindowRef w) {
                             std::string open =
                                 std::string(VITRAIL_SCREENS_DIR) + "/controls_popup.png";
                             EXPECT_EQ(vitrail_window_write_png(w, open.c_str()), 0);
                             vitrail_press_key(w, vitrail_key_escape); // closes the menu only
                         },
                         [](WindowRef w) {
                             EXPECT_EQ(Item(w, kPopup).value, 2);
                             vitrail_press_key(w, vitrail_key_escape);
                         }});
    std::vector<int16_t> hits = RunDialog(AllControls());
    EXPECT_EQ(hits.back(), kCancel);
    for (int16_t item : {kName, kCheck, kPopup, kList}) EXPECT_TRUE(Hit(hits, item)) << item;
    EXPECT_EQ(agent.done(), 4u);
}

TEST(Dialogs, EditingKeysAndFocusOrder) {
    struct Row {
        std::vector<int32_t> keys; // after typing "abc" into the first box
        const char *first, *second;
    } rows[] = {
        {{}, "abc", ""},
        {{vitrail_key_backspace}, "ab", ""},
        {{vitrail_key_left, vitrail_key_backspace}, "ac", ""},
        {{vitrail_key_home, vitrail_key_delete}, "bc", ""},
        {{vitrail_key_home, vitrail_key_right, 'X'}, "aXbc", ""},
        {{vitrail_key_left, vitrail_key_left | vitrail_key_shift, 'Z'}, "aZc", ""},
        {{'a' | vitrail_key_command, 'Q'}, "Q", ""},
        {{vitrail_key_home, vitrail_key_end, vitrail_key_delete, '!'}, "abc!", ""},
        {{vitrail_key_tab, 'd'}, "abc", "d"},
        {{vitrail_key_tab, 'd', vitrail_key_tab, 'e'}, "e", "d"}, // Tab selects all
        {{vitrail_key_tab, vitrail_key_tab | vitrail_key_shift, 'f'}, "f", ""},
    };
    for (const Row &row : rows) {
        std::string first, second;
        ScriptedAgent agent({[&](WindowRef w) {
                                 vitrail_type_text(w, "abc");
                                 for (int32_t key : row.keys) vitrail_press_key(w, key);
                             },
                             [&](WindowRef w) {
                                 first = Item(w, kName).text, second = Item(w, kFirst).text;
                                 vitrail_press_key(w, vitrail_key_escape);
                             }});
        RunDialog(AllControls());
        EXPECT_EQ(first, row.first);
        EXPECT_EQ(second, row.second);
    }
}

TEST(Dialogs, EditBoxHoldsAtMost255Bytes) {
    std::string typed;
    ScriptedAgent agent({[](WindowRef w) { vitrail_type_text(w, std::string(300, 'x').c_str()); },
                         [&](WindowRef w) {
                             typed = Item(w, kName).text;
                             vitrail_press_key(w, vitrail_key_escape);
                         }});
    RunDialog(AllControls());
    EXPECT_EQ(typed, std::string(255, 'x'));
}

TEST(Dialogs, ListDoubleClickAndPopupChoice) {
    DialogRef d = AllControls();
    ControlRef list = d->items[kList - 1].view;
    std::vector<std::pair<bool, int16_t>> clicks; // dblc and LLastClick row after each list hit
    ScriptedAgent agent({[](WindowRef w) {
                             vitrail_choose_row(w, kList, 10, 2); // scrolled into view first
                             vitrail_choose_row(w, kList, 1, 1);
                             vitrail_choose_row(w, kPopup, 3, 1);
                         },
                         [](WindowRef w) {
                             EXPECT_EQ(Item(w, kPopup).value, 3);
                             EXPECT_STREQ(Item(w, kPopup).text, "Sirop");
                             EXPECT_EQ(Item(w, kList).selected, 1);
                             vitrail_press_key(w, vitrail_key_escape);
                         }});
    DialogItemIndex hit = 0;
    std::vector<int16_t> hits;
    do {
        ModalDialog(nullptr, &hit);
        hits.push_back(hit);
        if (hit == kList) {
            Boolean dbl = 0;
            ListHandle lh = nullptr;
            GetControlData(list, 0, kControlListBoxDoubleClickTag, 1, &dbl, nullptr);
            GetControlData(list, 0, kControlListBoxListHandleTag, sizeof lh, &lh, nullptr);
            clicks.push_back({dbl != 0, LLastClick(lh).v});
        }
    } while (hit != kCancel);
    DisposeDialog(d);
    EXPECT_EQ(clicks, (std::vector<std::pair<bool, int16_t>>{{false, 10}, {true, 10}, {false, 1}}));
    EXPECT_TRUE(Hit(hits, kPopup));
}

TEST(Dialogs, ReturnEscapeAndInactiveButtons) {
    struct Row {
        bool declared; // OK declared as the default item
        bool okActive;
        std::vector<int32_t> keys;
        int16_t end;
    } rows[] = {
        {true, true, {vitrail_key_return}, kOK},
        {true, true, {vitrail_key_enter}, kOK},
        {false, true, {vitrail_key_return}, kOK}, // item 1 without a declaration
        {true, false, {vitrail_key_return, vitrail_key_escape}, kCancel},
        {true, true, {'.' | vitrail_key_command}, kCancel},
    };
    for (const Row &row : rows) {
        DialogRef d = AllControls(row.declared);
        if (!row.okActive) HiliteControl(d->items[kOK - 1].view, kControlInactivePart);
        ScriptedAgent agent({[&](WindowRef w) {
            vitrail_click_item(w, kInactive);
            if (!row.okActive) vitrail_click_item(w, kOK);
            for (int32_t key : row.keys) vitrail_press_key(w, key);
        }});
        std::vector<int16_t> hits = RunDialog(d);
        EXPECT_EQ(hits.back(), row.end);
        EXPECT_FALSE(Hit(hits, kInactive));
        EXPECT_EQ(std::count(hits.begin(), hits.end(), kOK), row.end == kOK);
    }
}

TEST(Dialogs, HeadlessAnswersWithoutAgentAndNeverHangs) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunDialog(AllControls()).back(), kOK);
    DialogRef d = AllControls();
    HiliteControl(d->items[kOK - 1].view, kControlInactivePart);
    EXPECT_EQ(RunDialog(d).back(), kCancel);
    std::string err = testing::internal::GetCapturedStderr();
    EXPECT_NE(err.find("answered with \"OK\" (Return)"), std::string::npos) << err;
    EXPECT_NE(err.find("answered with \"Annuler\" (Escape)"), std::string::npos) << err;

    // A filter that swallows every event still lets the dialog end.
    d = AllControls();
    testing::internal::CaptureStderr();
    DialogItemIndex hit = 0;
    int calls = 0;
    ModalFilterUPP swallow = [](DialogRef, EventRecord *, DialogItemIndex *) -> Boolean {
        return true;
    };
    do ModalDialog(swallow, &hit);
    while (hit != kOK && hit != kCancel && ++calls < 100);
    testing::internal::GetCapturedStderr();
    EXPECT_LT(calls, 100);
    DisposeDialog(d);
}

TEST(Dialogs, BadWindowsItemsAndKeys) {
    WindowRef host = vitrail_window_new("H\xF4te", 10, 10, 210, 110);
    WindowRef gone = vitrail_window_new("Parti", 0, 0, 10, 10);
    vitrail_window_dispose(gone);
    vitrail_item_info info;
    char buf[8];
    Rect r;
    for (WindowRef w : {WindowRef(nullptr), gone}) {
        EXPECT_EQ(vitrail_dialog_item_count(w), -1);
        EXPECT_EQ(vitrail_window_title(w, buf, sizeof buf), -1);
        EXPECT_EQ(vitrail_window_bounds(w, &r), -1);
        EXPECT_EQ(vitrail_click_item(w, 1), -1);
        EXPECT_EQ(vitrail_type_text(w, "x"), -1);
        EXPECT_EQ(vitrail_press_key(w, vitrail_key_return), -1);
        EXPECT_EQ(vitrail_window_write_png(w, "/tmp/x.png"), -1);
        EXPECT_EQ(vitrail_window_port(w), nullptr);
    }
    EXPECT_EQ(vitrail_dialog_item_count(host), 0);
    vitrail_port_dispose(vitrail_window_port(host)); // the window's own: ignored
    EXPECT_EQ(vitrail_port_pixel(vitrail_window_port(host), 0, 0), 0xFFFFFFFFu);
    EXPECT_EQ(vitrail_dialog_item(host, 1, &info), -1);
    EXPECT_EQ(vitrail_window_title(host, buf, 3), 4);
    EXPECT_STREQ(buf, "H\xF4");
    EXPECT_EQ(vitrail_press_key(host, 0x4000), -1);
    EXPECT_EQ(vitrail_click_at(host, 200, 5, 1), -1);
    EXPECT_EQ(vitrail_type_text(host, nullptr), -1);

    ScriptedAgent agent({[&](WindowRef w) {
        for (int32_t item : {0, -1, kInactive + 1}) {
            EXPECT_EQ(vitrail_dialog_item(w, item, &info), -1);
            EXPECT_EQ(vitrail_click_item(w, item), -1);
        }
        EXPECT_EQ(vitrail_dialog_item(w, kOK, nullptr), -1);
        EXPECT_EQ(vitrail_choose_row(w, kList, 12, 1), -1);
        EXPECT_EQ(vitrail_choose_row(w, kPopup, 0, 1), -1);
        EXPECT_EQ(vitrail_choose_row(w, kPopup, 4, 1), -1);
        EXPECT_EQ(vitrail_choose_row(w, kOK, 1, 1), -1);
        EXPECT_EQ(vitrail_dialog_item_row(w, kName, 0, buf, sizeof buf), -1);
        vitrail_press_key(w, vitrail_key_escape);
    }});
    RunDialog(AllControls());
    vitrail_window_dispose(host);
}

} // namespace
