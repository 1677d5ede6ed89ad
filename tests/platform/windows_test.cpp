// Windows: resizing a window gives it a new port, which stays current when
// the old one was (a dialog is drawn into just after it is sized).
#include <gtest/gtest.h>

#include "platform/dialogs/windows.h"

TEST(SizeWindow, TheNewPortStaysCurrent) {
    using namespace platform;
    Rect r{10, 10, 60, 110};
    WindowRef w = NewCWindow(&r, nullptr, false, 0, FrontOfAll(), false, nullptr, kDialogBackground);
    ASSERT_TRUE(w);
    SetPort(GetWindowPort(w));
    SizeWindow(w, 200, 120, false);
    EXPECT_EQ(CurrentPort(), GetWindowPort(w));
    EXPECT_EQ(GetWindowPort(w)->width, 200);
    DisposeWindow(w);
}
