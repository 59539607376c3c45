// Operations of the toolkit's controls: edits, lists, progress bars.

#include <algorithm>
#include <utility>

#include "platform/Backend.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Edit.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/ProgressCtrl.h"

using kvx::WindowKind;

namespace {

kvx::IControls& Controls() {
    return kvx::Backend().Controls();
}

}  // namespace

WindowKind CEdit::Kind(DWORD style) const {
    return style & ES_MULTILINE ? WindowKind::TextEdit : WindowKind::Edit;
}

void CEdit::SetLimitText(int characters) {
    if (m_hWnd) Controls().SetTextLimit(m_hWnd, characters);
}

void CEdit::SetSel(int start, int end) {
    if (m_hWnd) Controls().SetSelection(m_hWnd, start, end);
}

void CEdit::GetSel(int& start, int& end) const {
    start = end = 0;
    if (m_hWnd) Controls().Selection(m_hWnd, start, end);
}

void CEdit::SetReadOnly(bool readOnly) {
    if (m_hWnd) Controls().SetReadOnly(m_hWnd, readOnly);
}

WindowKind CComboBox::Kind(DWORD) const {
    return WindowKind::ComboBox;
}

int CComboBox::AddString(const CString& text) {
    return m_hWnd ? Controls().AddItem(m_hWnd, text) : -1;
}

void CComboBox::ResetContent() {
    if (m_hWnd) Controls().ClearItems(m_hWnd);
}

int CComboBox::GetCount() const {
    return m_hWnd ? Controls().ItemCount(m_hWnd) : 0;
}

int CComboBox::GetCurSel() const {
    return m_hWnd ? Controls().CurrentItem(m_hWnd) : -1;
}

void CComboBox::SetCurSel(int index) {
    if (m_hWnd) Controls().SetCurrentItem(m_hWnd, index);
}

CString CComboBox::GetLBText(int index) const {
    return m_hWnd ? Controls().ItemText(m_hWnd, index) : CString();
}

int CComboBox::FindStringExact(const CString& text) const {
    for (int i = 0; i < GetCount(); ++i)
        if (GetLBText(i) == text) return i;
    return -1;
}

WindowKind CListBox::Kind(DWORD) const {
    return WindowKind::ListBox;
}

int CListBox::AddString(const CString& text) {
    return m_hWnd ? Controls().AddItem(m_hWnd, text) : -1;
}

void CListBox::DeleteString(int index) {
    if (m_hWnd) Controls().RemoveItem(m_hWnd, index);
}

void CListBox::ResetContent() {
    if (m_hWnd) Controls().ClearItems(m_hWnd);
}

int CListBox::GetCount() const {
    return m_hWnd ? Controls().ItemCount(m_hWnd) : 0;
}

CString CListBox::GetText(int index) const {
    return m_hWnd ? Controls().ItemText(m_hWnd, index) : CString();
}

int CListBox::GetCurSel() const {
    return m_hWnd ? Controls().CurrentItem(m_hWnd) : -1;
}

void CListBox::SetCurSel(int index) {
    if (m_hWnd) Controls().SetCurrentItem(m_hWnd, index);
}

bool CListBox::GetSel(int index) const {
    return m_hWnd && Controls().ItemSelected(m_hWnd, index);
}

void CListBox::SetSel(int index, bool selected) {
    if (m_hWnd) Controls().SelectItem(m_hWnd, index, selected);
}

void CCheckListBox::SetCheck(int index, int check) {
    if (m_hWnd) Controls().CheckItem(m_hWnd, index, check != 0);
}

int CCheckListBox::GetCheck(int index) const {
    return m_hWnd && Controls().ItemChecked(m_hWnd, index) ? 1 : 0;
}

WindowKind CProgressCtrl::Kind(DWORD) const {
    return WindowKind::ProgressBar;
}

void CProgressCtrl::SetRange(int lower, int upper) {
    lower_ = lower;
    upper_ = std::max(lower, upper);
    SetPos(position_);
}

void CProgressCtrl::GetRange(int& lower, int& upper) const {
    lower = lower_;
    upper = upper_;
}

int CProgressCtrl::SetPos(int position) {
    const int before = std::exchange(position_, std::clamp(position, lower_, upper_));
    if (m_hWnd) Controls().SetProgress(m_hWnd, lower_, upper_, position_);
    return before;
}
