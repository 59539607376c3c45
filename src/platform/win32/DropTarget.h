#pragma once
// Drags of the system over a window made here.

#include "platform/win32/System.h"

namespace kvx::win32 {

// Registered with the system for the object's life.
class DropTarget {
  public:
    explicit DropTarget(win::HWND window);
    ~DropTarget();
    DropTarget(const DropTarget&) = delete;
    DropTarget& operator=(const DropTarget&) = delete;

  private:
    win::HWND window_;
};

}  // namespace kvx::win32
