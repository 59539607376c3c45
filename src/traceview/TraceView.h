#pragma once
// The view of the OS Trace window: a table of the contexts and, beside it, the time chart.
//
// What it shows is a TraceDisplay over the shared objects of the component (Connect). The view lays
// it out, paints it, and hands on what the user does: the mouse to a TracePointer, commands to
// TraceCommands.

#include <memory>
#include <optional>

#include "framework/CoreView.h"
#include "framework/FontCell.h"
#include "framework/HeaderCellPainter.h"
#include "traceview/Tip.h"
#include "traceview/TraceColumns.h"
#include "traceview/TraceCommands.h"
#include "traceview/TracePointer.h"
#include "traceview/model/KeyBindings.h"

class CKvxDebugInstanceDataCtrl;
class CStatusFrameWnd;

class COSTraceView : public CCoreView, public COSTip, public IViewSender {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }
    COSTraceView();

    // Borrows the shared objects and the window instance, and opens the trace that is there.
    void Connect(COSTraceData& data, CKvxDebugInstanceDataCtrl& instance);

    void OnInitialUpdate() override;
    // hint: an update hint of the component; see the table in the implementation.
    void OnUpdate(CWnd* sender, LPARAM hint, CObject* object) override;
    void OnDraw(CDC* dc) override;
    int SaveSettings(IWorkspaceStore& store, const CString& prefix) override;
    int LoadSettings(IWorkspaceStore& store, const CString& prefix) override;
    void SetViewFont(CFont* font) override;
    bool OnCmdMsg(UINT id, UINT code, CCmdUI* ui) override;

    std::unique_ptr<IProgress> CreateProgress(const CString& caption) override;
    void InvalidateView() override { Invalidate(true); }

    // Null before the view is connected.
    TraceDisplay* Display() { return display_ ? &*display_ : nullptr; }
    // The trace service, or null while no debugger is connected.
    IQOSTraceService* Service() const;
    bool IsOpen() const { return display_ && display_->IsOpen(); }
    bool IsTargetRunning() const;
    // Which target of the host the window is about; null without an instance.
    IQUnknown* TargetContext() const;

    // Moves the display by so many counts; answers how far it went.
    double ScrollBy(double delta);
    // Moves the top line up by n lines (down when negative); answers how far it went.
    int ScrollLines(int n);
    void GoTo(const ChartViewport::Display& display);
    // Bars and picture follow the display.
    void ShowDisplay();
    void UpdateHorizontalBar();
    void UpdateVerticalBar();
    // resetService 1 also discards the service's decoded data.
    void CloseTrace(int resetService);

    const TraceColumns& Columns() const { return columns_; }
    void SetColumnEdge(std::size_t column, int edge);
    // The tip for the pointer at the point, or none.
    void TrackTip(CPoint point);
    // Shows the frame's status bar with the texts while a trace is open, else hides it.
    void RefreshStatus();
    void UpdateStatusTexts();
    void SettingsChanged();

  protected:
    const MessageMap& GetMessageMap() const override;
    void OnDestroy();
    void OnSize(UINT type, int cx, int cy);
    void OnHScroll(UINT code, int position);
    void OnVScroll(UINT code, int position);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    void OnChar(UINT character, UINT repeat, UINT flags);
    bool OnMouseWheel(UINT flags, short delta, CPoint screen);
    void OnMouseMove(UINT flags, CPoint point);
    LRESULT OnMouseLeave(WPARAM, LPARAM);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnCaptureChanged() { pointer_.CancelGesture(); }
    void OnCancelMode();
    LRESULT OnPainted(WPARAM, LPARAM);

  private:
    void LayOut();
    double DistanceOf(UINT code, int position) const;
    int LinesOf(UINT code, int position) const;
    void Perform(kvx::KeyAction action);
    CStatusFrameWnd* StatusFrame() const;

    bool attached_ = false;
    CFont* font_ = nullptr;  // the frame's
    FontCell cell_;
    SIZE client_;
    CKvxDebugInstanceDataCtrl* instance_ = nullptr;
    std::optional<TraceDisplay> display_;
    TraceColumns columns_;
    CHeaderCellPainter painter_;
    TraceCommands commands_{*this};
    TracePointer pointer_{*this};
};
