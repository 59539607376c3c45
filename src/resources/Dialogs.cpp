#include <array>
#include <iterator>

#include "host/CommandIds.h"
#include "resources/Tables.h"

namespace kvx::resources {
namespace {

constexpr DWORD kVisible = WS_CHILD | WS_VISIBLE;
constexpr DWORD kModal = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT;
constexpr DWORD kModeless = WS_POPUP | WS_VISIBLE | WS_CAPTION | DS_SETFONT;
constexpr const char* kFace = "MS Sans Serif";

constexpr ControlResource Button(UINT id, const char* text, int x, int y, int w, int h,
                                 DWORD kind = BS_PUSHBUTTON) {
    return {ControlClass::Button,
            id,
            text,
            static_cast<std::int16_t>(x),
            static_cast<std::int16_t>(y),
            static_cast<std::int16_t>(w),
            static_cast<std::int16_t>(h),
            kVisible | WS_TABSTOP | kind};
}

constexpr ControlResource Group(UINT id, const char* text, int x, int y, int w, int h) {
    ControlResource group = Button(id, text, x, y, w, h, BS_GROUPBOX);
    group.style &= ~WS_TABSTOP;
    return group;
}

constexpr ControlResource Label(UINT id, const char* text, int x, int y, int w) {
    ControlResource label = Button(id, text, x, y, w, 8);
    label.kind = ControlClass::Static;
    label.style = kVisible | SS_LEFT;
    return label;
}

constexpr ControlResource Edit(UINT id, int x, int y, int w) {
    ControlResource edit = Button(id, "", x, y, w, 13);
    edit.kind = ControlClass::Edit;
    edit.style = kVisible | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL;
    return edit;
}

constexpr ControlResource kProgress[] = {
    {ControlClass::ProgressBar, 9008, "", 7, 7, 143, 14, kVisible | WS_BORDER},
    Button(IDCANCEL, "STOP", 51, 25, 50, 15),
};

constexpr ControlResource kStop[] = {Button(IDCANCEL, "STOP", 7, 7, 50, 14)};

constexpr ControlResource kValue[] = {
    Group(9006, "Grid Time", 7, 5, 250, 32),
    Edit(4068, 13, 17, 28),
    Label(9000, "h", 43, 19, 8),
    Label(9007, "Cycle", 43, 19, 22),
    Edit(4158, 56, 17, 22),
    Label(9001, "m", 80, 19, 9),
    Edit(4036, 94, 17, 22),
    Label(9002, "s", 118, 19, 8),
    Edit(4165, 131, 17, 24),
    Label(9003, "ms", 157, 19, 12),
    Edit(4169, 173, 17, 24),
    Label(9004, "us", 199, 19, 11),
    Edit(4170, 214, 17, 24),
    Label(9005, "ns", 240, 19, 11),
    Group(IDC_STATIC, "Rate", 7, 40, 250, 32),
    Label(IDC_STATIC, "Expand:", 13, 54, 28),
    Edit(4116, 43, 52, 64),
    Label(IDC_STATIC, "Reduce:", 133, 54, 28),
    Edit(4118, 163, 52, 64),
    Button(IDOK, "OK", 153, 77, 50, 14, BS_DEFPUSHBUTTON),
    Button(IDCANCEL, "Cancel", 207, 77, 50, 14),
};

constexpr int kKeyLines = 29;  // of the view and of the OS Trace menu
constexpr int kKeyHeight = kKeyLines * 8 + 4;

constexpr ControlResource kKeys[] = {
    {ControlClass::Static, ids::kKeysColumn, "", 10, 8, 52, kKeyHeight,
     kVisible | SS_LEFTNOWORDWRAP | SS_NOPREFIX},
    {ControlClass::Static, ids::kMeaningsColumn, "", 64, 8, 150, kKeyHeight,
     kVisible | SS_LEFTNOWORDWRAP | SS_NOPREFIX},
    Button(IDOK, "OK", 85, kKeyHeight + 14, 50, 14, BS_DEFPUSHBUTTON),
};

constexpr ControlResource kUserInput[] = {
    Label(ids::kUserInputLabel, "", 7, 8, 200),
    Edit(ids::kUserInputEdit, 7, 20, 200),
    Button(IDOK, "OK", 103, 41, 50, 14, BS_DEFPUSHBUTTON),
    Button(IDCANCEL, "Cancel", 157, 41, 50, 14),
};

constexpr ControlResource kFind[] = {
    Group(IDC_STATIC, "Find Condition", 7, 5, 190, 72),
    Label(IDC_STATIC, "Find What:", 14, 19, 40),
    {ControlClass::ComboBox, ids::kFindText, "", 56, 17, 134, 80,
     kVisible | WS_TABSTOP | CBS_DROPDOWN | CBS_AUTOHSCROLL},
    Button(ids::kFindMatchCase, "Match &Case", 14, 38, 70, 10, BS_AUTOCHECKBOX),
    Button(ids::kFindWildCard, "Wild Card", 14, 54, 70, 10, BS_AUTOCHECKBOX),
    Label(IDC_STATIC, "Direction:", 100, 39, 36),
    Button(ids::kFindUp, "&Up", 140, 38, 50, 10, BS_AUTORADIOBUTTON | WS_GROUP),
    Button(ids::kFindDown, "&Down", 140, 54, 50, 10, BS_AUTORADIOBUTTON),
    Button(ids::kFindNext, "&Find Next", 203, 8, 50, 14, BS_DEFPUSHBUTTON | WS_GROUP),
    Button(IDCLOSE, "Close", 203, 26, 50, 14),
};

constexpr ControlResource kPickUp[] = {
    Label(IDC_STATIC, "The history shows only the system calls that are ticked.", 7, 7, 200),
    {ControlClass::ListBox, ids::kPickUpList, "", 7, 19, 150, 160,
     kVisible | WS_TABSTOP | WS_BORDER | WS_VSCROLL | LBS_CHECKBOXES},
    Button(ids::kPickUpAll, "&All", 163, 19, 50, 14),
    Button(ids::kPickUpNone, "&None", 163, 36, 50, 14),
    Button(IDOK, "&Pick Up", 163, 148, 50, 14, BS_DEFPUSHBUTTON),
    Button(IDCANCEL, "Cancel", 163, 165, 50, 14),
};

// One colour of the colour dialog: a push button, its label and its swatch.
struct ColourRow {
    const char* label;
    UINT button;
    UINT swatch;
    int column;  // left edge
    int row;     // top edge
    int labelWidth = 78;
    UINT labelId = IDC_STATIC;
};

constexpr int kLeft = 13;
constexpr int kRight = 122;
constexpr int kStates = 21;
constexpr int kCalls = 147;
constexpr int kOthers = 260;
constexpr int kPitch = 12;
constexpr int Row(int base, int n) {
    return base + n * kPitch;
}

constexpr ColourRow kColourRows[] = {
    {"RUN", 4061, 4082, kLeft, Row(kStates, 0)},
    {"RDY", 4062, 4083, kLeft, Row(kStates, 1)},
    {"DMT", 4072, 4084, kLeft, Row(kStates, 2)},
    {"WAI (SLP)", 4063, 4085, kLeft, Row(kStates, 3)},
    {"WAI (DLY)", 4064, 4086, kLeft, Row(kStates, 4)},
    {"WAI (FLG)", 4065, 4087, kLeft, Row(kStates, 5)},
    {"WAI (SEM)", 4066, 4088, kLeft, Row(kStates, 6)},
    {"WAI (MBX)", 4067, 4089, kLeft, Row(kStates, 7)},
    {"WAI (MBF)", 4185, 4187, kRight, Row(kStates, 0)},
    {"WAI (MTX)", 4193, 4195, kRight, Row(kStates, 1)},
    {"WAI (DTQ)", 4178, 4109, kRight, Row(kStates, 2)},
    {"WAI (VSDTQ,VRDTQ)", 4128, 4131, kRight, Row(kStates, 3)},
    {"WAI (MPF)", 4155, 4157, kRight, Row(kStates, 4)},
    {"WAI (MPL)", 4156, 4158, kRight, Row(kStates, 5), 78, 9007},
    {"PAUSE", 4181, 4182, kRight, Row(kStates, 6)},
    {"SUS", 4069, 4090, kRight, Row(kStates, 7)},
    {"Task management", 4091, 4100, kLeft, Row(kCalls, 0)},
    {"Task synchronization", 4092, 4101, kLeft, Row(kCalls, 1)},
    {"Event flags", 4093, 4102, kLeft, Row(kCalls, 2)},
    {"Semaphores", 4094, 4103, kLeft, Row(kCalls, 3)},
    {"Mailboxes", 4095, 4104, kLeft, Row(kCalls, 4)},
    {"Data Queues", 4164, 4166, kLeft, Row(kCalls, 5)},
    {"Message Buffers", 4197, 4198, kLeft, Row(kCalls, 6)},
    {"Mutexes", 4199, 4200, kLeft, Row(kCalls, 7)},
    {"Memory management", 4096, 4105, kRight, Row(kCalls, 0)},
    {"Interrupt management", 4097, 4106, kRight, Row(kCalls, 1)},
    {"Timer management", 4098, 4107, kRight, Row(kCalls, 2)},
    {"System management", 4099, 4108, kRight, Row(kCalls, 3)},
    {"Unknown", 1143, 4110, kRight, Row(kCalls, 4)},
    {"Back Color (System Call Process)", 4074, 4117, kLeft, Row(kOthers, 3), 120},
    {"Marker S", 4070, 4111, kLeft, Row(kOthers, 0)},
    {"Marker E", 4071, 4112, kLeft, Row(kOthers, 1)},
    {"Indicator", 4073, 4115, kLeft, Row(kOthers, 2)},
    {"Tip Window (MCU Exe)", 4075, 4120, kRight, Row(kOthers, 0)},
    {"Tip Window (Task Stat)", 4076, 4123, kRight, Row(kOthers, 1)},
    {"Tip Window (System Call)", 4077, 4126, kRight, Row(kOthers, 2)},
};

// Three frames, three controls a colour, three Reset buttons, Reset All, OK and Cancel.
constexpr auto MakeColourControls() {
    std::array<ControlResource, 3 + 3 * std::size(kColourRows) + 6> controls{};
    std::size_t n = 0;
    controls[n++] = Group(IDC_STATIC, "Task Status", 7, 5, 228, 126);
    controls[n++] = Group(IDC_STATIC, "System Call", 7, 132, 228, 110);
    controls[n++] = Group(IDC_STATIC, "Others", 7, 244, 228, 64);
    for (const ColourRow& row : kColourRows) {
        controls[n++] = Button(row.button, "", row.column, row.row + 1, 7, 6);
        controls[n++] = Label(row.labelId, row.label, row.column + 10, row.row, row.labelWidth);
        ControlResource swatch =
            Label(row.swatch, "", row.column + 11 + row.labelWidth, row.row, 18);
        swatch.height = 9;
        swatch.style = kVisible | SS_BLACKFRAME;
        controls[n++] = swatch;
    }
    controls[n++] = Button(4114, "Reset", 188, 114, 42, 13);
    controls[n++] = Button(4113, "Reset", 188, 225, 42, 13);
    controls[n++] = Button(4119, "Reset", 188, 295, 42, 12);
    controls[n++] = Button(ids::kResetAllColors, "Reset All", 7, 313, 50, 14);
    controls[n++] = Button(IDOK, "OK", 131, 313, 50, 14, BS_DEFPUSHBUTTON);
    controls[n++] = Button(IDCANCEL, "Cancel", 185, 313, 50, 14);
    return controls;
}

constexpr auto kColour = MakeColourControls();

constexpr DialogResource kDialogs[] = {
    {ids::kDialogFind, "Find", 260, 84, kFace, 8, kModal, kFind, std::size(kFind)},
    {ids::kDialogColor, "Color...", 242, 332, kFace, 8, kModal, kColour.data(), kColour.size()},
    {ids::kDialogKeys, "Keys of the OS Trace window", 220, kKeyHeight + 36, kFace, 8, kModal, kKeys,
     std::size(kKeys)},
    {ids::kDialogValue, "Value...", 264, 96, kFace, 8, kModal, kValue, std::size(kValue)},
    {ids::kDialogProgress, "Running...", 157, 47, kFace, 8, kModeless, kProgress,
     std::size(kProgress)},
    {ids::kDialogStop, "Running...", 64, 28, kFace, 8, kModeless, kStop, std::size(kStop)},
    {ids::kDialogUserInput, "Value of a placeholder", 214, 62, kFace, 8, kModal, kUserInput,
     std::size(kUserInput)},
    {ids::kDialogPickUp, "Pick Up System Call", 220, 186, kFace, 8, kModal, kPickUp,
     std::size(kPickUp)},
};

}  // namespace

std::span<const DialogResource> Dialogs() {
    return kDialogs;
}

}  // namespace kvx::resources
