#include "framework/GestureRun.h"

#include <utility>

#include "platform/windows/Wnd.h"
#include "utils/ScopedFlag.h"

void CGestureRun::Begin(std::unique_ptr<IGesture> gesture, CPoint point) {
    if (!gesture) return;
    view_.SetCapture();
    gesture_ = std::move(gesture);
    last_ = point;
    if (const HCURSOR cursor = gesture_->Cursor()) SetCursor(cursor);
}

// A gesture that scrolls the view by a move is not moved again by that.
void CGestureRun::Move(CPoint point) {
    last_ = point;
    if (!gesture_ || moving_) return;
    const kvx::ScopedFlag guard(moving_);
    gesture_->Move(point);
}

void CGestureRun::Follow() {
    Move(last_);
}

void CGestureRun::Draw(CDC& dc) {
    if (gesture_) gesture_->Draw(dc);
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
