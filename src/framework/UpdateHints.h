#pragma once
// Update hints that the component's events become for the views.

#include "platform/base/Types.h"

inline constexpr LPARAM kHintTargetConnected = 1010;
inline constexpr LPARAM kHintTraceCleared = 1014;
inline constexpr LPARAM kHintTraceReady = 1015;
inline constexpr LPARAM kHintTargetDisconnected = 1102;
inline constexpr LPARAM kHintDisplayChanged = 1305;
