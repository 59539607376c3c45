#pragma once
// The system's own header, in a namespace: it has names that the platform layer has too, for other
// types. Ours come first; what the system defines as macros over them is taken away again.

#include <x86intrin.h>
#include <cctype>
#include <cstdarg>
#include <cstring>
#include <string>

#include "platform/Backend.h"
#include "platform/base/Keys.h"
#include "platform/base/Resources.h"
#include "platform/base/SystemInfo.h"
#include "platform/dialogs/MessageBox.h"
#include "platform/windows/DropTarget.h"
#include "platform/windows/Menu.h"
#include "platform/windows/WindowMap.h"
#include "platform/windows/Wnd.h"

#define MICROSOFT_WINDOWS_WINBASE_H_DEFINE_INTERLOCKED_CPLUSPLUS_OVERLOADS 0
#include <_mingw.h>
#undef __CRT_UUID_DECL
#define __CRT_UUID_DECL(...)

namespace win {
#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <ole2.h>
#include <shellapi.h>
#include <shellscalingapi.h>
#include <shlobj.h>
}  // namespace win

#undef AppendMenu
#undef DefWindowProc
#undef DispatchMessage
#undef DragQueryFile
#undef FindWindow
#undef GetMessage
#undef GetRValue
#undef GetGValue
#undef GetBValue
#undef HIWORD
#undef LoadCursor
#undef LOWORD
#undef MessageBox
#undef PostMessage
#undef RegisterWindowMessage
#undef RGB
#undef SendMessage
#undef interface
