#pragma once
// Identifiers that the resource library and the code share: commands, strings, menus, toolbars,
// dialog templates and cursors.

#include "platform/base/Types.h"

namespace kvx::ids {

// Commands of the OS Trace window.
inline constexpr UINT kStartMarker = 47100;
inline constexpr UINT kEndMarker = 47101;
inline constexpr UINT kIndicator = 47102;
inline constexpr UINT kAdjust = 47103;
inline constexpr UINT kExpand = 47104;
inline constexpr UINT kReduce = 47105;
inline constexpr UINT kRangeFullCommand = 47106;
inline constexpr UINT kRangeFreeCommand = 47107;
inline constexpr UINT kValue = 47110;
inline constexpr UINT kColor = 47111;
inline constexpr UINT kSearch = 47400;
inline constexpr UINT kDefaultOrder = 47401;
inline constexpr UINT kTraceStop = 47402;
inline constexpr UINT kTraceRestart = 47403;
inline constexpr UINT kShowLine = 32793;
inline constexpr UINT kHideLine = 32794;
inline constexpr UINT kSearchNext = 32795;
inline constexpr UINT kSearchPrevious = 32796;
inline constexpr UINT kHostSearchNext = 39512;
inline constexpr UINT kHostSearchPrevious = 39513;

// Commands of the OS Analyze window.
inline constexpr UINT kRunTime = 47200;
inline constexpr UINT kRdyToRun = 47500;
inline constexpr UINT kSystemCall = 47501;
inline constexpr UINT kPickUp = 47502;
inline constexpr UINT kSave = 32778;

// Commands of both windows and of the host's View menu.
inline constexpr UINT kAllowDocking = 32768;
inline constexpr UINT kHide = 32769;
inline constexpr UINT kOpenOSTrace = 32770;
inline constexpr UINT kToolbarDisplay = 32771;
inline constexpr UINT kCustomizeToolbar = 32772;
inline constexpr UINT kOpenOSAnalyze = 32773;

// Strings.
inline constexpr UINT kStringDataName = 100;
inline constexpr UINT kStringOSTrace = 101;
inline constexpr UINT kStringRtos = 102;
inline constexpr UINT kStringOSAnalyze = 103;
inline constexpr UINT kStringFormatName = 104;
inline constexpr UINT kStringNotFound = 20200;
inline constexpr UINT kStringSaveTitle = 47503;
inline constexpr UINT kStringSaveFilter = 47504;
inline constexpr UINT kStringCannotOpenFile = 47505;
inline constexpr UINT kStringGridOutOfRange = 47507;
inline constexpr UINT kStringAnalyzing = 47510;
inline constexpr UINT kStringStatusMark = 47511;
inline constexpr UINT kStringStatusIndicator = 47512;
inline constexpr UINT kStringStatusScale = 47513;
inline constexpr UINT kStringStatusGrid = 47514;
inline constexpr UINT kStringStatusArea = 47515;
inline constexpr UINT kStringCannotWriteFile = 47516;
inline constexpr UINT kStringUserInput = 47517;
inline constexpr UINT kStringIdle = 47518;
inline constexpr UINT kStringUnknown = 47519;
inline constexpr UINT kStringSorting = 47520;

// Menus.
inline constexpr UINT kMenuHostOSTrace = 201;
inline constexpr UINT kMenuOSTrace = 202;
inline constexpr UINT kMenuHostOSAnalyze = 9006;
inline constexpr UINT kMenuOSAnalyze = 9007;

// Toolbars.
inline constexpr UINT kToolbarHostOSTrace = 203;
inline constexpr UINT kToolbarOSTrace = 204;
inline constexpr UINT kToolbarHostOSAnalyze = 9008;
inline constexpr UINT kToolbarOSAnalyze = 9010;

// Dialog templates.
inline constexpr UINT kDialogFind = 163;
inline constexpr UINT kDialogColor = 9000;
inline constexpr UINT kResetAllColors = 4129;
inline constexpr UINT kDialogValue = 9005;
inline constexpr UINT kDialogKeys = 9013;
inline constexpr UINT kKeysColumn = 9016;
inline constexpr UINT kMeaningsColumn = 9017;
inline constexpr UINT kDialogProgress = 9014;
inline constexpr UINT kDialogStop = 9015;
inline constexpr UINT kDialogUserInput = 9018;
inline constexpr UINT kUserInputLabel = 9019;
inline constexpr UINT kUserInputEdit = 9020;
inline constexpr UINT kDialogPickUp = 9021;
inline constexpr UINT kPickUpList = 9022;
inline constexpr UINT kPickUpAll = 9023;
inline constexpr UINT kPickUpNone = 9024;

// Controls of the Find dialog.
inline constexpr UINT kFindNext = 201;
inline constexpr UINT kFindDown = 1025;
inline constexpr UINT kFindText = 1037;
inline constexpr UINT kFindWildCard = 1046;
inline constexpr UINT kFindMatchCase = 1047;
inline constexpr UINT kFindUp = 1050;

inline constexpr UINT kCursorLineDrag = 9012;

}  // namespace kvx::ids
