#pragma once
// Message boxes.

#include "platform/base/Styles.h"
#include "platform/base/Types.h"

inline constexpr UINT MB_OK = 0x00;
inline constexpr UINT MB_OKCANCEL = 0x01;
inline constexpr UINT MB_ABORTRETRYIGNORE = 0x02;
inline constexpr UINT MB_YESNOCANCEL = 0x03;
inline constexpr UINT MB_YESNO = 0x04;
inline constexpr UINT MB_RETRYCANCEL = 0x05;
inline constexpr UINT MB_TYPEMASK = 0x0F;
inline constexpr UINT MB_ICONERROR = 0x10;
inline constexpr UINT MB_ICONSTOP = 0x10;
inline constexpr UINT MB_ICONQUESTION = 0x20;
inline constexpr UINT MB_ICONEXCLAMATION = 0x30;
inline constexpr UINT MB_ICONWARNING = 0x30;
inline constexpr UINT MB_ICONINFORMATION = 0x40;
inline constexpr UINT MB_ICONMASK = 0xF0;
inline constexpr UINT MB_DEFBUTTON2 = 0x100;

// Modal. Answers IDOK, IDCANCEL, IDYES, ... owner null: the application's main window.
int MessageBox(HWND owner, const CString& text, const CString& caption, UINT type);
// With the application's name as caption; without an icon in type, the exclamation mark.
int AfxMessageBox(const CString& text, UINT type = MB_OK);
