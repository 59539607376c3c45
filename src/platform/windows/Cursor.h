#pragma once
// Mouse cursors. A handle stays valid until the program ends.

#include "platform/base/Types.h"

using HCURSOR = const struct CursorData*;

enum class StandardCursor { Arrow, IBeam, Wait, Cross, SizeNS, SizeWE, SizeAll, No, Hand };
inline constexpr StandardCursor IDC_ARROW = StandardCursor::Arrow;
inline constexpr StandardCursor IDC_IBEAM = StandardCursor::IBeam;
inline constexpr StandardCursor IDC_WAIT = StandardCursor::Wait;
inline constexpr StandardCursor IDC_CROSS = StandardCursor::Cross;
inline constexpr StandardCursor IDC_SIZENS = StandardCursor::SizeNS;
inline constexpr StandardCursor IDC_SIZEWE = StandardCursor::SizeWE;
inline constexpr StandardCursor IDC_SIZEALL = StandardCursor::SizeAll;
inline constexpr StandardCursor IDC_NO = StandardCursor::No;

struct CursorResource;
struct CursorData {
    StandardCursor standard = StandardCursor::Arrow;
    const CursorResource* image = nullptr;  // wins over standard
};

HCURSOR LoadStandardCursor(StandardCursor cursor);
// Cursor of the current resources; null when there is none of that id.
HCURSOR LoadCursor(UINT id);
// Shown over the window that has the mouse until that window's WM_SETCURSOR sets another. Answers
// the previous one.
HCURSOR SetCursor(HCURSOR cursor);
