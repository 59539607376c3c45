#pragma once
// Which object stands for which toolkit window, for the whole process.

#include "platform/base/Types.h"

class CWnd;

namespace kvx {

void AddWindow(HWND handle, CWnd* window);
void RemoveWindow(HWND handle);
// Null when the window was not made here.
CWnd* FindWindow(HWND handle);
// A wrapper of a window that was not made here, kept until that window is gone. Null when it is.
CWnd* WrapWindow(HWND handle);
// Drops the wrappers.
void ForgetWrappers();

}  // namespace kvx
