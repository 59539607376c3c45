#pragma once
// State of one command, filled by its update handler and read by whoever shows the command.

#include "platform/base/Types.h"

class CCmdUI {
  public:
    explicit CCmdUI(UINT id) : m_nID(id) {}
    CCmdUI(const CCmdUI&) = delete;
    CCmdUI& operator=(const CCmdUI&) = delete;

    void Enable(bool on = true) { enabled_ = on; }
    void SetCheck(int check = 1) { check_ = check; }
    void SetRadio(bool on = true) { check_ = on ? 1 : 0; }
    void SetText(const CString& text) { text_ = text; }

    bool IsEnabled() const { return enabled_; }
    int Check() const { return check_; }
    // Empty: the menu's own text stays.
    const CString& Text() const { return text_; }

    const UINT m_nID;

  private:
    bool enabled_ = true;
    int check_ = 0;
    CString text_;
};
