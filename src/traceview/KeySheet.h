#pragma once
// The sheet of all keys of the OS Trace window, closed by any of its buttons, Enter or Esc.

#include "platform/dialogs/Dialog.h"

class CKeySheet : public CDialog {
  public:
    explicit CKeySheet(CWnd* parent);
    bool OnInitDialog() override;
};
