#pragma once
// The commands of the OS Trace window: what each does, and when it is offered.

#include <optional>

#include "platform/windows/CmdUI.h"
#include "traceview/model/TraceDisplay.h"

class COSTraceView;

class TraceCommands {
  public:
    explicit TraceCommands(COSTraceView& view) : view_(view) {}

    // Carries the command out, or with ui fills in its state. False: it is none of this window's.
    bool Handle(UINT id, CCmdUI* ui);

  private:
    struct Command {
        UINT id;
        void (TraceCommands::*run)();
        bool (TraceCommands::*isOffered)() const;
        bool (TraceCommands::*isChecked)() const = nullptr;
    };
    static const Command* Find(UINT id);

    // Only called while the view is connected.
    TraceDisplay& Display() const;
    COSTraceData& Data() const { return Display().data; }
    ChartViewport& Viewport() const { return Display().viewport; }
    // Null while no debugger is connected.
    IQOSTraceService* Service() const;

    bool IsOpen() const;
    bool HasService() const { return Service() != nullptr; }
    // The service tells how it measures time.
    bool HasTimeMode() const;

    void StartMarker();
    bool MayMoveStart() const;
    void EndMarker();
    bool MayMoveEnd() const;
    void Indicator();

    void Adjust();
    bool MayAdjust() const;
    void Expand();
    void Reduce();
    bool MayReduce() const;
    void Value();

    void RangeFull();
    bool IsRangeFull() const;
    void RangeFree();
    bool IsRangeFree() const;
    void SetRange(std::int32_t condition);
    bool MaySetRange() const;
    std::optional<std::int32_t> RangeCondition() const;

    // Measuring can be stopped and restarted: a target runs, and its debugger allows it.
    bool IsMeasuring() const;
    void TraceStop();
    bool MayStop() const { return IsMeasuring() && !IsOpen(); }
    void TraceRestart();
    bool MayRestart() const { return IsMeasuring() && IsOpen(); }

    void Search();
    void SearchNext();
    void SearchPrevious();
    bool MaySearchAgain() const;
    // Decodes all that is left and searches it; reports when nothing is found.
    std::optional<std::uint32_t> SearchUndecoded();
    void MoveIndicatorTo(std::uint32_t event);

    void Color();
    void DefaultOrder();
    bool MayOrder() const { return HasTimeMode() && IsOpen(); }
    void ShowLine() { ShowSelectedLines(true); }
    void HideLine() { ShowSelectedLines(false); }
    bool IsAnySelected() const;
    void ShowSelectedLines(bool show);

    COSTraceView& view_;
};
