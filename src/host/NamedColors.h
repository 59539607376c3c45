#pragma once
// The twenty named colours that display properties are chosen from. "SYSTEM" and "HIGHLIGHT" stand
// for colours of the desktop.

#include <string_view>

#include "platform/base/Types.h"

inline constexpr int kColorSystem = 17;
inline constexpr int kColorHighlight = 18;

// "UNKNOWN" outside 0 to 19.
const char* NameOfColor(int index);
// Exact; -1 when there is no such name.
int IndexOfColor(std::string_view name);
// False, with the colour of row 0, for the two system colours and outside the table.
bool ColorOfIndex(int index, COLORREF* color);
