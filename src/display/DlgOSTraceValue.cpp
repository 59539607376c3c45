#include "display/DlgOSTraceValue.h"

#include <charconv>
#include <climits>
#include <string_view>

#include "host/CommandIds.h"
#include "host/OSTraceService.h"
#include "platform/base/Text.h"
#include "platform/controls/Edit.h"
#include "utils/ErrorMessage.h"

namespace {

using Dialog = CDlgOSTraceValue;

// One field of the grid time.
struct TimeField {
    int Dialog::*value;
    UINT edit;
    UINT label;
    int characters;  // text limit
    int most;        // largest value; hours are checked with the whole
    int firstMode;   // mode from which on the field is offered
};
constexpr TimeField kFields[] = {
    {&Dialog::hours, 4068, 9000, 4, INT_MAX, kTimeMilliseconds},
    {&Dialog::minutes, 4158, 9001, 2, 59, kTimeMilliseconds},
    {&Dialog::seconds, 4036, 9002, 2, 59, kTimeMilliseconds},
    {&Dialog::milliseconds, 4165, 9003, 3, 999, kTimeMilliseconds},
    {&Dialog::microseconds, 4169, 9004, 3, 999, kTimeMicroseconds},
    {&Dialog::nanoseconds, 4170, 9005, 3, 999, kTimeNanoseconds},
};
constexpr UINT kFirstField = 4068;
constexpr UINT kCycleLabel = 9007;
constexpr UINT kExpandRate = 4116;
constexpr UINT kReduceRate = 4118;

constexpr int kLongCharacters = 15;
constexpr int kMostHours = 999;
constexpr std::size_t kMostRead = 255;

CString FieldText(const CWnd& dialog, UINT id) {
    return CString(kvx::Utf8Prefix(dialog.GetDlgItemText(id), kMostRead));
}

// The whole text as a decimal number of digits alone.
template <class Number>
bool ParseWhole(std::string_view text, Number& value) {
    if (text.find_first_not_of("0123456789") != std::string_view::npos) return false;
    return std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc();
}

bool ParseRate(const CString& text, float& value) {
    if (text.find_first_not_of("0123456789.") != CString::npos) return false;
    if (text.find('.') != text.rfind('.')) return false;
    const auto number = kvx::ParseDecimal(text);
    if (number) value = *number;
    return number.has_value();
}

void LimitText(CWnd& dialog, UINT id, int characters) {
    if (auto* edit = static_cast<CEdit*>(dialog.GetDlgItem(id))) edit->SetLimitText(characters);
}

void ShowItem(CWnd& dialog, UINT id, bool show) {
    if (CWnd* item = dialog.GetDlgItem(id)) item->ShowWindow(show ? SW_SHOW : SW_HIDE);
}

void EnableItem(CWnd& dialog, UINT id, bool enable) {
    if (CWnd* item = dialog.GetDlgItem(id)) item->EnableWindow(enable);
}

}  // namespace

CDlgOSTraceValue::CDlgOSTraceValue(CWnd* parent) : CDialog(kvx::ids::kDialogValue, parent) {}

bool CDlgOSTraceValue::OnInitDialog() {
    CDialog::OnInitDialog();
    const bool known = mode >= kTimeMilliseconds && mode <= kTimeCycles;
    ShowItem(*this, kCycleLabel, mode == kTimeCycles);
    for (const TimeField& field : kFields) {
        LimitText(*this, field.edit, field.characters);
        const bool offered = mode >= field.firstMode;
        if (!known) continue;
        if (mode == kTimeCycles) {
            ShowItem(*this, field.label, false);
            if (field.edit != kFirstField) ShowItem(*this, field.edit, false);
        } else if (offered) {
            SetDlgItemText(field.edit, std::to_string(this->*field.value));
        } else {
            EnableItem(*this, field.edit, false);
            EnableItem(*this, field.label, false);
        }
    }
    if (mode == kTimeCycles) {
        LimitText(*this, kFirstField, kLongCharacters);
        SetDlgItemText(kFirstField, kvx::FormatText("%.0lf", cycles));
    }
    SetDlgItemText(kExpandRate, kvx::FormatText("%f", expandRate));
    SetDlgItemText(kReduceRate, kvx::FormatText("%f", reduceRate));
    LimitText(*this, kExpandRate, kLongCharacters);
    LimitText(*this, kReduceRate, kLongCharacters);
    if (auto* first = static_cast<CEdit*>(GetDlgItem(kFirstField))) first->SetSel(0, -1);
    return true;
}

void CDlgOSTraceValue::OnOK() {
    if (!ReadGridTime() || !ReadRate(kExpandRate, expandRate) ||
        !ReadRate(kReduceRate, reduceRate)) {
        return;
    }
    EndDialog(IDOK);
}

bool CDlgOSTraceValue::ReadGridTime() {
    for (const TimeField& field : kFields) this->*field.value = 0;
    return mode == kTimeCycles ? ReadCycles() : ReadParts();
}

bool CDlgOSTraceValue::ReadParts() {
    for (const TimeField& field : kFields) {
        const bool always = field.firstMode == kTimeMilliseconds;
        if (!always && mode < field.firstMode) continue;
        if (!ReadNumber(field.edit, field.most, this->*field.value)) return false;
    }
    const bool nothing = hours == 0 && minutes == 0 && seconds == 0 && milliseconds == 0;
    if (hours <= kMostHours && !(nothing && microseconds == 0)) return true;
    ShowErrorMessage(kvx::ids::kStringGridOutOfRange);
    return false;
}

bool CDlgOSTraceValue::ReadCycles() {
    std::int64_t count = 0;
    if (!ParseWhole(FieldText(*this, kFirstField), count)) return Refuse(kFirstField);
    cycles = static_cast<double>(count);
    return true;
}

bool CDlgOSTraceValue::ReadNumber(UINT id, int most, int& value) {
    int number = 0;
    if (!ParseWhole(FieldText(*this, id), number) || number > most) return Refuse(id);
    value = number;
    return true;
}

bool CDlgOSTraceValue::ReadRate(UINT id, double& rate) {
    float number = 0.0f;
    if (!ParseRate(FieldText(*this, id), number)) return Refuse(id);
    rate = number < 1.0f ? 1.0 : static_cast<double>(number);
    return true;
}

bool CDlgOSTraceValue::Refuse(UINT id) {
    if (auto* edit = static_cast<CEdit*>(GetDlgItem(id))) {
        edit->SetSel(0, -1);
        edit->SetFocus();
    }
    return false;
}
