#pragma once
// The view of the OS Trace window: a table of the contexts and, beside it, the time chart.
//
// What it shows lies in the shared objects of the component (Connect); what it keeps itself is the
// part of the trace that is displayed, the column widths, the selection, and what the user is
// dragging.

#include <memory>
#include <optional>

#include "framework/CoreView.h"
#include "framework/GestureRun.h"
#include "framework/HeaderCellPainter.h"
#include "host/OSTraceRange.h"
#include "host/OSTraceService.h"
#include "platform/Cursor.h"
#include "trace/Progress.h"
#include "traceview/LineSelection.h"
#include "traceview/Tip.h"
#include "traceview/TraceColumns.h"
#include "traceview/model/ChartGeometry.h"
#include "traceview/model/KeyBindings.h"

struct COSTraceData;
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

    std::unique_ptr<IProgress> CreateProgress(const CString& caption) override;
    void InvalidateView() override { Invalidate(true); }

    // Shows the frame's status bar with the texts while a trace is open, else hides it.
    void RefreshStatus();
    // Shows exactly start..end, decoding what that needs; see kvx::host::IQOSTraceRange.
    HRESULT SetDisplayRange(double start, double end);
    // Where it stands, and going back there; see the same.
    HRESULT GetPosition(kvx::host::OSTracePosition& position) const;
    HRESULT SetPosition(const kvx::host::OSTracePosition& position);
    // Moves the display by so many counts; answers how far it went.
    double ScrollBy(double delta);
    // Moves the top line up by n lines (down when negative); answers how far it went.
    int ScrollLines(int n);

    ChartGeometry Geometry() const;

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
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnCaptureChanged();

    void OnStartMarker();
    void OnUpdateStartMarker(CCmdUI& ui);
    void OnEndMarker();
    void OnUpdateEndMarker(CCmdUI& ui);
    void OnIndicator();
    void OnUpdateTraceOpen(CCmdUI& ui);
    void OnAdjust();
    void OnUpdateAdjust(CCmdUI& ui);
    void OnExpand();
    void OnReduce();
    void OnUpdateReduce(CCmdUI& ui);
    void OnRangeFull();
    void OnUpdateRangeFull(CCmdUI& ui);
    void OnRangeFree();
    void OnUpdateRangeFree(CCmdUI& ui);
    void OnTraceStop();
    void OnUpdateTraceStop(CCmdUI& ui);
    void OnTraceRestart();
    void OnUpdateTraceRestart(CCmdUI& ui);
    void OnSearch();
    void OnSearchNext();
    void OnSearchPrevious();
    void OnUpdateSearchAgain(CCmdUI& ui);
    void OnValue();
    void OnUpdateValue(CCmdUI& ui);
    void OnColor();
    void OnUpdateColor(CCmdUI& ui);
    void OnDefaultOrder();
    void OnUpdateDefaultOrder(CCmdUI& ui);
    void OnShowLine();
    void OnHideLine();
    void OnUpdateSelectedLines(CCmdUI& ui);

  private:
    friend class CLineDrag;

    // The trace service, or null while no debugger is connected.
    IQOSTraceService* Service() const;
    bool IsOpen() const;
    // The trace is open, and everything is placed for its first look.
    void OpenTrace();
    void CloseTrace(int resetService);
    bool IsRange(double start, double end) const {
        return start < end && start >= traceStart_ && end <= traceEnd_;
    }
    void ShowRange(double start, double end, double gridTime);
    void PlaceMarkers();
    void SetMarkers(double start, double end, double indicator);
    void CenterIndicator();

    void LayOutColumns();
    void SizeTo(int cx, int cy);
    void UpdateHorizontalBar();
    void UpdateVerticalBar();
    // Tables and analyses follow records that were decoded.
    void ReloadAfterDecoding();
    // Decodes up to the time; false when the user stopped it.
    bool DecodeUpTo(double time);
    void ZoomTo(double scale, double anchor);
    double TraceSpan() const { return traceEnd_ - traceStart_; }
    void ScrollHorizontally(UINT code, int position);
    void ScrollVertically(UINT code, int position);
    void ReloadLines(bool keepSort);
    void ShowSelectedLines(bool show);
    void SetRangeCondition(int condition);
    void UpdateRangeCommand(CCmdUI& ui, int condition);
    // Measuring can be stopped and restarted: a target runs, and its debugger allows it.
    bool IsMeasuring() const;
    // Decodes all that is left and searches it; reports when nothing is found.
    std::optional<std::uint32_t> SearchUndecoded();
    void MoveIndicatorTo(std::uint32_t event);

    void UpdateStatusTexts();
    CStatusFrameWnd* StatusFrame() const;
    void SettingsChanged();

    std::unique_ptr<IGesture> GestureAt(CPoint point);
    std::optional<int> MarkerAt(CPoint point) const;
    HCURSOR CursorAt(CPoint point) const;
    void Perform(kvx::KeyAction action);

    bool attached_ = false;
    CFont* font_ = nullptr;  // the frame's
    int charWidth_ = 0;
    int lineHeight_ = 0;
    int clientWidth_ = 0;
    int clientHeight_ = 0;
    int visibleLines_ = 0;
    HCURSOR arrow_;
    HCURSOR sizeWE_;
    HCURSOR lineDrag_;
    COSTraceData* data_ = nullptr;
    CKvxDebugInstanceDataCtrl* instance_ = nullptr;
    TraceColumns columns_;
    CHeaderCellPainter painter_;
    int firstLine_ = 0;
    double scale_ = 0.0;
    double gridTime_ = 0.0;
    double traceStart_ = 0.0;
    double traceEnd_ = 0.0;
    double displayStart_ = 0.0;
    double displayEnd_ = 0.0;
    double expandRate_ = 1.5;
    double reduceRate_ = 1.5;
    int dropLine_ = -1;
    LineSelection selection_;
    CGestureRun gesture_{*this};
};
