#pragma once
// What the user is dragging in a view: begun by the press that made the object, then moved, and
// ended by the release or by a cancellation that leaves everything as it was. What lies under the
// pointer is looked up anew every time, for the view may scroll, zoom or change its size meanwhile.

#include "platform/base/Types.h"
#include "platform/windows/Cursor.h"

class CDC;

class IGesture {
  public:
    virtual ~IGesture() = default;
    virtual void Move(CPoint point) = 0;
    virtual void Release(CPoint point) = 0;
    virtual void Cancel() = 0;
    // Draws its feedback over a paint that has just been finished.
    virtual void Draw(CDC&) {}
    // Shown while the gesture lasts; null: as it is.
    virtual HCURSOR Cursor() const = 0;
};
