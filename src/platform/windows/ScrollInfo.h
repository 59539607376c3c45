#pragma once
// Scroll bars of a window.

#include "platform/base/Types.h"

inline constexpr int SB_HORZ = 0;
inline constexpr int SB_VERT = 1;
inline constexpr int SB_BOTH = 3;

inline constexpr UINT SIF_RANGE = 0x01;
inline constexpr UINT SIF_PAGE = 0x02;
inline constexpr UINT SIF_POS = 0x04;
inline constexpr UINT SIF_DISABLENOSCROLL = 0x08;  // nothing to scroll: disabled, not hidden
inline constexpr UINT SIF_TRACKPOS = 0x10;
inline constexpr UINT SIF_ALL = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

inline constexpr UINT ESB_ENABLE_BOTH = 0;
inline constexpr UINT ESB_DISABLE_BOTH = 3;

// The position runs from nMin to nMax - max(nPage - 1, 0).
struct SCROLLINFO {
    UINT fMask = SIF_ALL;  // which members are meant
    int nMin = 0;
    int nMax = 0;
    UINT nPage = 0;
    int nPos = 0;
    int nTrackPos = 0;  // read only: where the user holds the thumb
};
