#pragma once
// Which object of this module stands for which toolkit window.

#include "platform/base/Types.h"

class CWnd;

namespace kvx {

void AddWindow(HWND handle, CWnd* window);
void RemoveWindow(HWND handle);
// Null when the window is not this module's.
CWnd* FindWindow(HWND handle);
// A wrapper of a window of another module, kept until that window is gone. Null when it is.
CWnd* WrapWindow(HWND handle);
// Drops the wrappers.
void ForgetWrappers();

}  // namespace kvx
