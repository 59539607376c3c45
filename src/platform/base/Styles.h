#pragma once
// Window, control and dialog styles. Values only; no toolkit, no allocation.

#include "platform/base/Types.h"

// Windows.
inline constexpr DWORD WS_OVERLAPPED = 0x00000000;
inline constexpr DWORD WS_TABSTOP = 0x00010000;      // controls: reached by Tab
inline constexpr DWORD WS_MAXIMIZEBOX = 0x00010000;  // top-level windows
inline constexpr DWORD WS_GROUP = 0x00020000;        // controls: first of a group of radio buttons
inline constexpr DWORD WS_MINIMIZEBOX = 0x00020000;  // top-level windows
inline constexpr DWORD WS_THICKFRAME = 0x00040000;
inline constexpr DWORD WS_SYSMENU = 0x00080000;
inline constexpr DWORD WS_HSCROLL = 0x00100000;
inline constexpr DWORD WS_VSCROLL = 0x00200000;
inline constexpr DWORD WS_DLGFRAME = 0x00400000;
inline constexpr DWORD WS_BORDER = 0x00800000;
inline constexpr DWORD WS_CAPTION = 0x00C00000;
inline constexpr DWORD WS_CLIPCHILDREN = 0x02000000;
inline constexpr DWORD WS_CLIPSIBLINGS = 0x04000000;
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr DWORD WS_VISIBLE = 0x10000000;
inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_POPUP = 0x80000000;

inline constexpr DWORD WS_EX_DLGMODALFRAME = 0x00000001;
inline constexpr DWORD WS_EX_ACCEPTFILES = 0x00000010;
inline constexpr DWORD WS_EX_CLIENTEDGE = 0x00000200;

// Dialogs.
inline constexpr DWORD DS_SETFONT = 0x00000040;
inline constexpr DWORD DS_MODALFRAME = 0x00000080;
inline constexpr DWORD DS_CENTER = 0x00000800;

// Buttons: the low four bits are the kind.
inline constexpr DWORD BS_PUSHBUTTON = 0x0;
inline constexpr DWORD BS_DEFPUSHBUTTON = 0x1;
inline constexpr DWORD BS_CHECKBOX = 0x2;
inline constexpr DWORD BS_AUTOCHECKBOX = 0x3;
inline constexpr DWORD BS_RADIOBUTTON = 0x4;
inline constexpr DWORD BS_GROUPBOX = 0x7;
inline constexpr DWORD BS_AUTORADIOBUTTON = 0x9;
inline constexpr DWORD BS_TYPEMASK = 0xF;

// Statics: the low five bits are the kind.
inline constexpr DWORD SS_LEFT = 0x00;
inline constexpr DWORD SS_CENTER = 0x01;
inline constexpr DWORD SS_RIGHT = 0x02;
inline constexpr DWORD SS_BLACKFRAME = 0x07;
inline constexpr DWORD SS_LEFTNOWORDWRAP = 0x0C;
inline constexpr DWORD SS_TYPEMASK = 0x1F;
inline constexpr DWORD SS_NOPREFIX = 0x0080;  // "&" is shown as it stands
inline constexpr DWORD SS_NOTIFY = 0x0100;    // the static receives mouse messages

// Edits.
inline constexpr DWORD ES_LEFT = 0x0000;
inline constexpr DWORD ES_MULTILINE = 0x0004;
inline constexpr DWORD ES_AUTOHSCROLL = 0x0080;
inline constexpr DWORD ES_READONLY = 0x0800;
inline constexpr DWORD ES_NUMBER = 0x2000;

// Combo boxes.
inline constexpr DWORD CBS_DROPDOWN = 0x0002;      // with an edit field
inline constexpr DWORD CBS_DROPDOWNLIST = 0x0003;  // choice only
inline constexpr DWORD CBS_AUTOHSCROLL = 0x0040;
inline constexpr DWORD CBS_SORT = 0x0100;

// List boxes.
inline constexpr DWORD LBS_NOTIFY = 0x0001;
inline constexpr DWORD LBS_SORT = 0x0002;
inline constexpr DWORD LBS_MULTIPLESEL = 0x0008;
inline constexpr DWORD LBS_EXTENDEDSEL = 0x0800;
inline constexpr DWORD LBS_CHECKBOXES = 0x8000;  // ours: every item has a check box

// Progress bars.
inline constexpr DWORD PBS_SMOOTH = 0x01;

// Status bars.
inline constexpr DWORD SBARS_SIZEGRIP = 0x0100;

// Standard ids of controls and commands.
inline constexpr UINT IDOK = 1;
inline constexpr UINT IDCANCEL = 2;
inline constexpr UINT IDABORT = 3;
inline constexpr UINT IDRETRY = 4;
inline constexpr UINT IDIGNORE = 5;
inline constexpr UINT IDYES = 6;
inline constexpr UINT IDNO = 7;
inline constexpr UINT IDCLOSE = 8;
inline constexpr UINT IDC_STATIC = 0xFFFFFFFFu;  // controls that nobody looks up
