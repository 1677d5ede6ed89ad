// The SDL2 backend: the platform's windows on a real display (X11).
//
// Implemented:
//  [x] Every visible window is an SDL window of the same size and title (Mac
//      OS Roman shown as UTF-8) at its global position; a dialog is made
//      modal for the window behind it, so a window manager keeps it on top.
//  [x] The window shows its port pixel for pixel: no scaling, no filtering.
//      A host's drawing into its own window shows at the next wait.
//  [x] Mouse: the left button (down, up), motion and the wheel (three rows a
//      notch) as mouse, moved and wheel events at global points.
//  [x] Keyboard: text input as Mac OS Roman characters (characters the set
//      lacks are dropped); Return, Enter, Escape, Tab, Backspace, Delete,
//      the arrows, Home and End as their character codes; shift, control or
//      the logo key (as command) and alt (as option) as modifiers; control +
//      a printable key as a command key; key repeat as autoKey.
//  [x] Exposure gives an update event; focus in and out give activate events.
//  [x] The close box of a dialog acts as Escape.
//  [x] WaitForInput sleeps in SDL_WaitEventTimeout; it never spins.
// Not implemented:
//  [ ] Windows moved or resized by the window manager keep their platform
//      bounds (the platform decides where its windows are).
//  [ ] The middle and right buttons; the close box of a host's own window.
//  [ ] Input methods composing text (text arrives when it is committed).
//
// Only this backend includes SDL; NewSdlBackend (backends/backend.h) makes it.
#pragma once

#include "platform/backends/backend.h"
