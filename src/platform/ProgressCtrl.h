#pragma once
// Progress bars.

#include "platform/Wnd.h"

class CProgressCtrl : public CWnd {
  public:
    void SetRange(int lower, int upper);
    void GetRange(int& lower, int& upper) const;
    int SetPos(int position);  // answers the previous one
    int GetPos() const;

  protected:
    kvx::WindowKind Kind() const override;
};
