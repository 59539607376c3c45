#pragma once
// Metrics and colours of the desktop, tick count, screen, beep.

#include "platform/base/Types.h"

inline constexpr int SM_CXSCREEN = 0;
inline constexpr int SM_CYSCREEN = 1;
inline constexpr int SM_CXVSCROLL = 2;
inline constexpr int SM_CYHSCROLL = 3;
inline constexpr int SM_CYCAPTION = 4;
inline constexpr int SM_CXBORDER = 5;
inline constexpr int SM_CYBORDER = 6;
inline constexpr int SM_CYMENU = 15;
inline constexpr int SM_CXFRAME = 32;
inline constexpr int SM_CYFRAME = 33;
inline constexpr int SM_CXEDGE = 45;
inline constexpr int SM_CYEDGE = 46;

inline constexpr int COLOR_SCROLLBAR = 0;
inline constexpr int COLOR_MENU = 4;
inline constexpr int COLOR_WINDOW = 5;
inline constexpr int COLOR_WINDOWFRAME = 6;
inline constexpr int COLOR_MENUTEXT = 7;
inline constexpr int COLOR_WINDOWTEXT = 8;
inline constexpr int COLOR_HIGHLIGHT = 13;
inline constexpr int COLOR_HIGHLIGHTTEXT = 14;
inline constexpr int COLOR_BTNFACE = 15;
inline constexpr int COLOR_3DFACE = 15;
inline constexpr int COLOR_BTNSHADOW = 16;
inline constexpr int COLOR_3DSHADOW = 16;
inline constexpr int COLOR_GRAYTEXT = 17;
inline constexpr int COLOR_BTNTEXT = 18;
inline constexpr int COLOR_BTNHIGHLIGHT = 20;
inline constexpr int COLOR_3DHIGHLIGHT = 20;
inline constexpr int COLOR_3DDKSHADOW = 21;
inline constexpr int COLOR_3DLIGHT = 22;
inline constexpr int COLOR_INFOTEXT = 23;
inline constexpr int COLOR_INFOBK = 24;

// Pixels; 0 for an index that is not above.
int GetSystemMetrics(int index);
// Of the toolkit's palette, light or dark; the classic light colours where no back-end is
// installed. Black for an index that is not above.
COLORREF GetSysColor(int index);
// For a process that shows drawing made for light windows: while the toolkit's palette is dark,
// GetSysColor answers the classic light colours, and the windows made here keep a light palette.
void RequireLightSysColors();
bool AreSysColorsLight();
// Milliseconds since some moment; wraps.
DWORD GetTickCount();

// kind: an MB_ICON value, or MB_OK (platform/dialogs/MessageBox.h).
void MessageBeep(UINT kind);

// Screen coordinates.
CPoint GetCursorPos();
// Work area of the screen nearest to the point.
RECT GetWorkArea(POINT screen);
