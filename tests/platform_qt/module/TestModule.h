#pragma once
// What the test module exports: it makes windows in other modules' windows, as a component does.

#include "platform/windows/Wnd.h"

struct TestModuleApi {
    // A child window with that id; null on failure.
    HWND (*create)(HWND parent, UINT id);
    void (*destroy)(HWND window);
    // The object that the module finds behind the handle.
    CWnd* (*find)(HWND window);
    // How the module reaches a window of the program: sends WM_USER with 5 and 6, answers the
    // result.
    LRESULT (*ask)(HWND window);
    // The messages WM_USER that the module's window has got: sum of wParam.
    std::uint64_t (*received)();
    HWND (*mainWindow)();
    UINT (*registered)();
    // Takes everything of the module out of the toolkit.
    void (*remove)();
};
using GetTestModuleApi = const TestModuleApi* (*)();
