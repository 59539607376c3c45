#include "host/CommandIds.h"
#include "resources/Tables.h"

namespace kvx::resources {
namespace {

// A command's string is "status text\ntool tip".
constexpr StringResource kStrings[] = {
    {ids::kStringDataName, "KvxOSTraceData"},
    {ids::kStringOSTrace, "OS Trace"},
    {ids::kStringRtos, "RTOS"},
    {ids::kStringOSAnalyze, "OS Analyze"},
    {ids::kStringFormatName, "OS Trace, OS Analyze"},

    {ids::kOpenOSTrace, "Open OS Trace window\nOS Trace"},
    {ids::kOpenOSAnalyze, "Open OS Analyze window\nOS Analyze"},
    {ids::kToolbarDisplay, "Show or hide the toolbar of the window\nToolbar Display"},
    {ids::kCustomizeToolbar, "Choose the buttons of the toolbar\nCustomize Toolbar"},
    {ids::kAllowDocking, "Let the window dock at the sides of the main window\nAllow Docking"},
    {ids::kHide, "Hide the window\nHide"},

    {ids::kStartMarker, "Move the start marker into the display area\nStart Marker"},
    {ids::kEndMarker, "Move the end marker into the display area\nEnd Marker"},
    {ids::kIndicator, "Move the indicator into the display area\nIndicator"},
    {ids::kAdjust, "Adjust range of start and end marker to full width of display area\nAdjust"},
    {ids::kExpand, "Expand the time scale\nExpand"},
    {ids::kReduce, "Reduce the time scale\nReduce"},
    {ids::kRangeFullCommand, "Set measurement range condition to Full\nFull"},
    {ids::kRangeFreeCommand, "Set measurement range condition to Free\nFree"},
    {ids::kTraceStop, "Stop measuring\nStop"},
    {ids::kTraceRestart, "Restart measuring\nRestart"},
    {ids::kSearch, "Search for history of system call\nSearch"},
    {ids::kSearchNext, "Search the next history of system call that matches\nSearch Next"},
    {ids::kSearchPrevious,
     "Search the previous history of system call that matches\nSearch Previous"},
    {ids::kValue, "Set value\nSet"},
    {ids::kColor, "Change display color\nColor"},
    {ids::kDefaultOrder, "Default the task order on the display\nDefault Order"},
    {ids::kShowLine, "Show the selected line\nShow Line"},
    {ids::kHideLine, "Hide the selected line\nHide Line"},

    {ids::kRunTime, "CPU occupancy status display mode\nRun Time"},
    {ids::kRdyToRun, "Ready state duration display mode\nReady->Run"},
    {ids::kSystemCall, "System call history display mode\nSystem Call"},
    {ids::kPickUp, "Extract specified system calls display mode\nPick Up"},
    {ids::kSave, "Save analysis data to file\nSave"},

    {ids::kStringNotFound,
     "History of the system call issue that conforms to the search condition cannot be found."},
    {ids::kStringSaveTitle, "Save Analysis Data"},
    {ids::kStringSaveFilter, "CSV(Comma separeted values)*.csv|*.csv|All Files(*.*)|*.*||"},
    {ids::kStringCannotOpenFile, "Can not open file(%s)."},
    {ids::kStringCannotWriteFile, "Can not write file(%s). The disk may be full."},
    {ids::kStringUserInput, "Value of %s:"},
    {ids::kStringGridOutOfRange, "Grid time is out of range."},

    {ids::kStringAnalyzing, "Analyzing..."},
    {ids::kStringSorting, "Sorting..."},
    {ids::kStringIdle, "Idle"},
    {ids::kStringUnknown, "Unknown"},
    {ids::kStringStatusMark, "Mark: %s - %s = %s"},
    {ids::kStringStatusIndicator, "Indicator: %s"},
    {ids::kStringStatusScale, "Scale: * %s"},
    {ids::kStringStatusGrid, "Grid: %s"},
    {ids::kStringStatusArea, "Area: %s"},
};

}  // namespace

std::span<const StringResource> Strings() {
    return kStrings;
}

}  // namespace kvx::resources
