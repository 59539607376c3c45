#pragma once
// What the user is dragging in a view: begun by the press that made the object, then moved, and
// ended by the release or by a cancellation that leaves everything as it was.

#include "platform/Cursor.h"
#include "platform/Types.h"

class IGesture {
  public:
    virtual ~IGesture() = default;
    virtual void Move(CPoint point) = 0;
    virtual void Release(CPoint point) = 0;
    virtual void Cancel() = 0;
    // Shown while the gesture lasts; null: as it is.
    virtual HCURSOR Cursor() const = 0;
};
