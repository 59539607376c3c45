#include "framework/GestureRun.h"

#include <utility>

#include "platform/Wnd.h"

void CGestureRun::Begin(std::unique_ptr<IGesture> gesture) {
    if (!gesture) return;
    view_.SetCapture();
    gesture_ = std::move(gesture);
    if (const HCURSOR cursor = gesture_->Cursor()) SetCursor(cursor);
}

void CGestureRun::Move(CPoint point) {
    if (gesture_) gesture_->Move(point);
}

void CGestureRun::Release(CPoint point) {
    if (const auto ended = std::move(gesture_)) {
        ended->Release(point);
        Finish();
    }
}

void CGestureRun::Cancel() {
    if (const auto ended = std::move(gesture_)) {
        ended->Cancel();
        Finish();
    }
}

// The gesture is gone by now, so the loss of the mouse does not cancel it.
void CGestureRun::Finish() {
    if (CWnd::GetCapture() == &view_) ReleaseCapture();
    SetCursor(LoadStandardCursor(IDC_ARROW));
    view_.Invalidate(true);
}
