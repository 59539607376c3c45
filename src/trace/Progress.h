#pragma once
// What the window-free core needs of a view: a progress dialog that can be stopped, and a redraw.

#include <memory>

#include "platform/base/Types.h"

// A modeless dialog with a progress bar and a STOP button, polled by the one who works.
class IProgress {
  public:
    virtual ~IProgress() = default;
    // Remembered; nothing is shown before UpdateProgress.
    virtual void SetProgress(int range, int position) = 0;
    // 0: there is no dialog; the work goes on without one.
    virtual int Create() = 0;
    virtual void UpdateProgress() = 0;
    // Handles the messages that wait for the dialog; 1 once STOP was pressed.
    virtual int Check_QXTraceStop() = 0;
    virtual int DestroyWindow() = 0;
};

// The view that asked for something. It is the datum of the display-changed event that follows
// (null: 0), so that the view which sent it is not told of its own change.
class IViewSender {
  public:
    // Null when the view has no dialog to show.
    virtual std::unique_ptr<IProgress> CreateProgress(const CString& caption) = 0;
    virtual void InvalidateView() = 0;

  protected:
    ~IViewSender() = default;
};
