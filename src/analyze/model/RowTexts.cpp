#include "analyze/model/RowTexts.h"

#include "analyze/model/HistoryText.h"
#include "analyze/model/RdyToRun.h"
#include "analyze/model/RunTime.h"
#include "platform/Text.h"
#include "trace/ContextMng.h"
#include "trace/OSTrace.h"

namespace kvx {

std::vector<CString> RowTexts::RunTime(int line, const CRunTime* record) const {
    std::vector<CString> texts(CRunTimeAnalysis::Bar);
    if (line < contexts_.GetCount()) {
        const ContextTexts context = contexts_.GetTexts(line);
        texts[CRunTimeAnalysis::Vec] = context.vector;
        texts[CRunTimeAnalysis::Table] = context.table;
        if (!context.id.empty())
            texts[CRunTimeAnalysis::Id] = FormatText("%3d", contexts_.GetNumber(line));
        texts[CRunTimeAnalysis::Name] = context.name;
    }
    if (!record) return texts;
    texts[CRunTimeAnalysis::Num] = FormatText("%5d", record->Num);
    texts[CRunTimeAnalysis::Max] = engine_.TimeText(record->Max);
    texts[CRunTimeAnalysis::Min] = engine_.TimeText(record->Min);
    texts[CRunTimeAnalysis::Avg] = engine_.TimeText(record->Avg);
    texts[CRunTimeAnalysis::Total] = engine_.TimeText(record->Total);
    texts[CRunTimeAnalysis::Ratio] = FormatText("%6.2f", record->Ratio * 100.0);
    return texts;
}

std::vector<CString> RowTexts::RdyToRun(const CRdyToRun& record) const {
    const int line = static_cast<int>(record.context);
    const bool known = line < contexts_.GetCount();
    return {known ? FormatText("%3d", contexts_.GetNumber(line)) : CString(),
            known ? contexts_.GetShownName(line) : CString(),
            FormatText(" %5d", record.Num),
            engine_.TimeText(record.Max),
            engine_.TimeText(record.Min),
            engine_.TimeText(record.Avg)};
}

std::vector<CString> RowTexts::SysCall(IQOSTraceService& service, std::uint32_t history) const {
    std::int32_t number = 0;
    std::int64_t time = 0;
    service.GetHistoryNumber(history, &number);
    service.GetHistoryTime(history, &time);
    return {FormatText("%d", number),
            HistoryText(service, &IQOSTraceService::GetHistoryName, history),
            HistoryText(service, &IQOSTraceService::GetHistoryParameter, history),
            HistoryText(service, &IQOSTraceService::GetHistoryReturnParameter, history),
            engine_.TimeText(static_cast<double>(time))};
}

}  // namespace kvx
