#pragma once
// Tells the windows made here when something else comes before them: a modal window of anybody, a
// menu, another program. Whatever a window does with the mouse ends then.

#include "platform/win32/System.h"

namespace kvx::win32 {

class CancelMode {
  public:
    // Holds for the thread as long as the object lives.
    CancelMode();
    ~CancelMode();
    CancelMode(const CancelMode&) = delete;
    CancelMode& operator=(const CancelMode&) = delete;

  private:
    win::HHOOK hook_;
};

}  // namespace kvx::win32
