#pragma once
// Progress bars.

#include "platform/windows/Wnd.h"

class CProgressCtrl : public CWnd {
  public:
    void SetRange(int lower, int upper);
    void GetRange(int& lower, int& upper) const;
    // Held inside the range. Answers the previous one.
    int SetPos(int position);
    int GetPos() const { return position_; }

  protected:
    kvx::WindowKind Kind(DWORD style) const override;

  private:
    int lower_ = 0;
    int upper_ = 100;
    int position_ = 0;
};
