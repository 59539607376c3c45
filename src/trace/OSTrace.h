#pragma once
// The trace engine has the trace service decode as far as somebody wants to see, remembers how far
// that is, has every view drawn anew after it, and finds events by their times. Events themselves
// stay with the service and are read where they are needed.
//
// Every operation asks the source for the service anew; without one it does nothing and answers its
// neutral value. Times are counts of the trace clock.

#include <span>

#include "platform/base/Mutex.h"
#include "trace/TraceSource.h"

namespace kvx {
class AnalysisDialog;
class SharedAnalysis;
}  // namespace kvx
class IQOSTraceService;
class CContextMng;
class COSMarker;

class COSTrace {
  public:
    // Borrows the source.
    explicit COSTrace(kvx::ITraceSource& source) : source_(source) {}
    // The other shared objects of the component; borrowed, set once by their owner.
    struct Shared {
        CContextMng* contexts = nullptr;
        std::span<kvx::SharedAnalysis* const> analyses;
        COSMarker* markers = nullptr;
        CMutex* lock = nullptr;
    };
    void SetShared(const Shared& shared) { shared_ = shared; }

    // Empties the tables, markers and analyses under the lock; resetService 1 also discards the
    // service's decoded data.
    void Clear(IViewSender* sender, int resetService);
    // As Clear with reset, but the context table and the markers stay.
    void Discard(IViewSender* sender);
    // Opens the trace and decodes its first 300 records. 1: the trace is open.
    int Open(IViewSender* sender);
    // Decodes until target is covered. 0: stopped by the user. *advanced: 1 when records were
    // decoded, after which tables and analyses are to be made anew.
    int AnalyzeUpTo(IViewSender* view, double target, int* advanced);
    // Decodes all that is left, then searches forwards; 1 when records were decoded.
    int AnalyzeRestAndSearch(IViewSender* view, int* found, std::uint32_t* result);

    int IsValid() const { return valid_; }
    // 0, and the outputs untouched, while no trace is open.
    int GetTimes(double* first, double* end, double* analysed) const;
    // Range condition: 5 Full (also without a service), 6 Free.
    int GetStatus();
    // "h:m:s.ms.us[.ns]" or the bare count, as the service's capabilities say. The text is left as
    // it is when the service cannot tell.
    void FormatTime(double t, CString& text) const;
    CString TimeText(double t) const {
        CString text;
        FormatTime(t, text);
        return text;
    }

    // An event at most 100 before the first at or after t.
    std::uint32_t FindEventNear(double t) const;
    // The dispatch at or before t; 0 when there is none.
    std::uint32_t FindDispatchBefore(double t) const;
    // Numbers of the line's state events from the one before t to the last.
    void GetContextEventRange(double t, int line, std::uint32_t* first, std::uint32_t* last) const;

  private:
    int CloseAfterFailure(IViewSender* sender);
    void EmptyAnalyses();
    bool Decode(IQOSTraceService& service, double target, kvx::AnalysisDialog& dialog,
                int* advanced);
    bool DecodeBlock(IQOSTraceService& service, std::int32_t to, double target,
                     kvx::AnalysisDialog& dialog);
    std::uint32_t SearchStart(IQOSTraceService& service) const;

    kvx::ITraceSource& source_;
    int valid_ = 0;
    std::int32_t lastAnalysed_ = 0;
    double analysedUpTo_ = 0.0;
    std::int32_t firstRecord_ = 0;
    double firstEventTime_ = 0.0;
    std::int32_t lastRecord_ = 0;
    double traceEnd_ = 0.0;
    std::int32_t rangeCondition_ = 0;
    double covered_ = 0.0;
    Shared shared_;
};
