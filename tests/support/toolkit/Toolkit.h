#pragma once
// The user's hands on the toolkit itself, and what others show with it: the same for the tests of
// every back-end, each with its own source file beside this one.

#include <functional>

#include "platform/base/Types.h"
#include "platform/drawing/Surface.h"

namespace kvx::test {

// The left button and the mouse, as the toolkit brings them to the window. Client coordinates.
void PressMouse(HWND window, POINT at);
void MoveMouse(HWND window, POINT at);
void ReleaseMouse(HWND window, POINT at);
inline void ClickMouse(HWND window, POINT at) {
    PressMouse(window, at);
    ReleaseMouse(window, at);
}

// A key goes down, or up again, while Alt is held.
void PressAltKey(HWND window, UINT key);
void ReleaseAlt(HWND window);

// A key is struck; it goes to what has the focus. Letters and digits type their characters.
void TypeKey(UINT key);

// Answers the message box that is open. id: IDYES, IDCANCEL or the like.
void AnswerBox(UINT id);
// Chooses from the popup menu that is open, with the keyboard. index: of the items that can be
// chosen.
void ChooseInMenu(int index);

// Runs in the middle of whatever loop of the toolkit comes next.
void Soon(std::function<void()> action);

// Dispatches what waits, and what that causes.
void Settle();

// The client area as the screen shows it, with all that lies in it.
Surface ScreenOf(HWND window);

// Runs the function while a dialog (or menu) of somebody who knows the toolkit alone stands before
// the window.
void WhileBehind(HWND window, bool menu, const std::function<void()>& look);

// Whether this back-end's desktop can be made dark; then it is, until it is made light again.
bool SetDarkDesktop(bool dark);

}  // namespace kvx::test
