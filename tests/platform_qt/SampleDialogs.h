#pragma once
// Dialog templates for tests.

#include "platform/base/Resources.h"

namespace kvx::test {

inline constexpr ControlResource kStopControls[] = {
    {ControlClass::ProgressBar, 9008, "", 7, 7, 143, 14, WS_BORDER},
    {ControlClass::Button, IDCANCEL, "STOP", 51, 25, 50, 15, WS_TABSTOP | BS_PUSHBUTTON},
};

inline constexpr ControlResource kValueControls[] = {
    {ControlClass::Button, 9006, "Grid Time", 7, 7, 180, 34, BS_GROUPBOX},
    {ControlClass::Static, 9000, "&Hours && more", 14, 20, 50, 8, 0},
    {ControlClass::Edit, 4068, "", 66, 18, 40, 12, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL},
    {ControlClass::Static, 4082, "", 112, 19, 18, 9, SS_BLACKFRAME},
    {ControlClass::Button, 1047, "Match &Case", 7, 46, 60, 10, BS_AUTOCHECKBOX | WS_TABSTOP},
    {ControlClass::Button, 1050, "&Up", 75, 46, 30, 10, BS_AUTORADIOBUTTON | WS_GROUP | WS_TABSTOP},
    {ControlClass::Button, 1025, "&Down", 110, 46, 30, 10, BS_AUTORADIOBUTTON},
    {ControlClass::Button, 1060, "Full", 145, 46, 30, 10, BS_AUTORADIOBUTTON | WS_GROUP},
    {ControlClass::ComboBox, 1037, "", 7, 62, 80, 60, CBS_DROPDOWN | WS_TABSTOP},
    {ControlClass::ListBox, 1038, "", 95, 62, 92, 36, LBS_NOTIFY | LBS_CHECKBOXES | WS_TABSTOP},
    {ControlClass::Button, IDOK, "OK", 80, 104, 50, 14, BS_DEFPUSHBUTTON | WS_TABSTOP},
    {ControlClass::Button, IDCANCEL, "Cancel", 137, 104, 50, 14, WS_TABSTOP},
};

inline constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;

inline constexpr DialogResource kSampleDialogs[] = {
    {9014, "Running...", 157, 47, "MS Sans Serif", 8, WS_POPUP | WS_CAPTION | WS_VISIBLE,
     kStopControls, 2},
    {9005, "Value...", 194, 125, "MS Sans Serif", 8, kDialogStyle, kValueControls, 12},
};

inline const ResourceTable& SampleTable() {
    static const ResourceTable kTable = [] {
        ResourceTable table;
        table.dialogs = kSampleDialogs;
        table.dialogCount = 2;
        return table;
    }();
    return kTable;
}

}  // namespace kvx::test
