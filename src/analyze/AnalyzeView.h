#pragma once
// The view of the OS Analyze window: a table of what start and end marker enclose.
//
// Every row is read from the shared analyses (Connect) when it is painted; what the view keeps
// itself is its layout.

#include <array>
#include "analyze/AnalyzeColumns.h"
#include "analyze/RowWindow.h"
#include "framework/CoreView.h"
#include "framework/GestureRun.h"
#include "trace/Progress.h"

struct COSTraceData;
class CKvxDebugInstanceDataCtrl;
class CStatusFrameWnd;
class IQOSTraceService;

class COSAnalyzeView : public CCoreView, public IViewSender {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }

    // Borrows the shared objects and the window instance, and shows what they hold.
    void Connect(COSTraceData& data, CKvxDebugInstanceDataCtrl& instance);

    void OnInitialUpdate() override;
    // hint: only that of changed analyses or markers is answered.
    void OnUpdate(CWnd* sender, LPARAM hint, CObject* object) override;
    void OnDraw(CDC* dc) override;
    int SaveSettings(IWorkspaceStore& store, const CString& prefix) override;
    int LoadSettings(IWorkspaceStore& store, const CString& prefix) override;
    void SetViewFont(CFont* font) override;

    // Asks for a file and writes the table that is shown. defaultName: offered until a file was
    // written.
    void Save(const CString& defaultName);
    // Shows the frame's status bar with the marked range while a trace is open, else hides it.
    void RefreshStatus();

    std::unique_ptr<IProgress> CreateProgress(const CString&) override { return nullptr; }
    void InvalidateView() override { Invalidate(true); }

  protected:
    const MessageMap& GetMessageMap() const override;
    void OnDestroy();
    void OnSize(UINT type, int cx, int cy);
    void OnHScroll(UINT code, int position);
    void OnVScroll(UINT code, int position);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    void OnMouseMove(UINT flags, CPoint point);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnCaptureChanged();
    void OnCancelMode();
    LRESULT OnSortOn(WPARAM, LPARAM);

    void OnRunTime() { SetMode(EAnalysis::RunTime); }
    void OnUpdateRunTime(CCmdUI& ui);
    void OnRdyToRun() { SetMode(EAnalysis::RdyToRun); }
    void OnUpdateRdyToRun(CCmdUI& ui);
    void OnSystemCall() { SetMode(EAnalysis::SysCall); }
    void OnUpdateSystemCall(CCmdUI& ui);
    void OnPickUp();
    void OnUpdatePickUp(CCmdUI& ui);
    void OnUpdateSave(CCmdUI& ui);

  private:
    // The trace service, or null while no debugger is connected.
    IQOSTraceService* Service() const;
    bool IsOpen() const;
    // The table of the mode; a mode that is none, as settings may hold, shows the first table.
    EAnalysis Table() const;
    CColumnTable& Columns() { return columns_[Table()]; }
    kvx::RowWindow& Rows() { return rows_[static_cast<std::size_t>(Table())]; }
    kvx::SharedAnalysis& Analysis() const;
    int RowCount() const { return Analysis().RowCount(); }

    void SetMode(EAnalysis mode);
    void UpdateModeCommand(CCmdUI& ui, EAnalysis mode) const;
    // The table as it is now, within its rows.
    void ApplyMode();
    void FollowIndicator();

    void LayOutColumns();
    void SizeTo(int cx, int cy);
    void UpdateHorizontalBar();
    void UpdateVerticalBar();
    // Pixels that the table is moved to the left.
    int Shift() const { return horizontal_ * charWidth_; }

    std::unique_ptr<IGesture> ResizeAt(CPoint point);
    void PressTitle(CPoint point);
    void PressRow(CPoint point);

    // The rows of the table are in their order; sorts a little while, else goes on from the
    // message loop.
    bool IsSorted();
    void UpdateStatusText();
    CStatusFrameWnd* StatusFrame() const;
    void SettingsChanged();

    CFont* font_ = nullptr;  // the frame's
    int charWidth_ = 0;
    int rowHeight_ = 0;
    int clientWidth_ = 0;
    int clientHeight_ = 0;
    int visibleRows_ = 0;
    COSTraceData* data_ = nullptr;
    CKvxDebugInstanceDataCtrl* instance_ = nullptr;
    int mode_ = 0;  // an EAnalysis, or what the settings held
    AnalyzeColumns columns_;
    CHeaderCellPainter painter_;
    std::array<kvx::RowWindow, 3> rows_;  // of each table
    CString lastPath_;                    // written successfully
    int horizontal_ = 0;                  // in characters
    int horizontalMaximum_ = 0;
    CGestureRun gesture_{*this};
    bool sorting_ = false;  // a message that goes on with it is on its way
};
