#include "workbench/cli/AnalysisTables.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "analyze/model/HistoryText.h"
#include "analyze/model/RowTexts.h"
#include "platform/Text.h"
#include "trace/TimeCount.h"

namespace kvx::cli {
namespace {

// In the order of the analyses' own columns.
const std::vector<AnalysisTable::Column> kRunTimeColumns = {
    {"vec", "VEC", true},      {"table", "table", false}, {"id", "ID", true},
    {"name", "(name)", false}, {"num", "Num", true},      {"max", "Max", true},
    {"min", "Min", true},      {"avg", "Avg", true},      {"total", "Total", true},
    {"ratio", "Ratio%", true}};
const std::vector<AnalysisTable::Column> kRdyToRunColumns = {
    {"id", "ID", true},   {"name", "(name)", false}, {"num", "Num", true},
    {"max", "Max", true}, {"min", "Min", true},      {"avg", "Avg", true}};
const std::vector<AnalysisTable::Column> kSysCallColumns = {{"no", "No", true},
                                                            {"name", "System Call", false},
                                                            {"parameters", "Parameter", false},
                                                            {"return", "Return Parameter", false},
                                                            {"time", "TIME", true}};

}  // namespace

const char* AnalysisTable::Title() const {
    switch (which_) {
        case EAnalysis::RunTime:
            return "Run Time";
        case EAnalysis::RdyToRun:
            return "Rdy->Run";
        default:
            return "System Call";
    }
}

const char* AnalysisTable::Key() const {
    switch (which_) {
        case EAnalysis::RunTime:
            return "run_time";
        case EAnalysis::RdyToRun:
            return "rdy_run";
        default:
            return "system_calls";
    }
}

const std::vector<AnalysisTable::Column>& AnalysisTable::Columns() const {
    switch (which_) {
        case EAnalysis::RunTime:
            return kRunTimeColumns;
        case EAnalysis::RdyToRun:
            return kRdyToRunColumns;
        default:
            return kSysCallColumns;
    }
}

bool AnalysisTable::Sort(std::string_view column, bool descending) {
    const auto& columns = Columns();
    const auto at = std::find_if(columns.begin(), columns.end(),
                                 [column](const Column& c) { return c.name == column; });
    if (at == columns.end()) return false;
    const int number = static_cast<int>(at - columns.begin());
    // A second click turns the direction round.
    for (int click = 0; click <= (descending ? 1 : 0); ++click) {
        if (which_ == EAnalysis::RunTime) data_.runTime.Sort(number, 0);
        if (which_ == EAnalysis::RdyToRun) data_.rdyToRun.Sort(number, 0);
        if (which_ == EAnalysis::SysCall) data_.sysCalls.Sort(number, 0);
    }
    return true;
}

int AnalysisTable::RowCount() const {
    switch (which_) {
        case EAnalysis::RunTime:
            return data_.runTime.RowCount();
        case EAnalysis::RdyToRun:
            return data_.rdyToRun.RowCount();
        default:
            return data_.sysCalls.RowCount();
    }
}

std::vector<std::string> AnalysisTable::Texts(int row) const {
    std::vector<std::string> texts = ShownTexts(row);
    for (std::string& text : texts) text = TrimLeft(text);
    return texts;
}

std::vector<std::string> AnalysisTable::ShownTexts(int row) const {
    const RowTexts texts(data_.engine, data_.contexts);
    if (which_ == EAnalysis::RunTime) {
        const int line = data_.runTime.Row(row);
        return texts.RunTime(line, data_.runTime.Find(static_cast<std::uint32_t>(line)));
    }
    if (which_ == EAnalysis::RdyToRun)
        return texts.RdyToRun(*data_.rdyToRun.Record(data_.rdyToRun.Row(row)));
    IQOSTraceService* const service = data_.source.Service();
    if (!service) return std::vector<std::string>(Columns().size());
    return texts.SysCall(*service, data_.sysCalls.RowHistoryIndex(row));
}

nlohmann::ordered_json AnalysisTable::Json(int row) const {
    switch (which_) {
        case EAnalysis::RunTime:
            return RunTimeJson(row);
        case EAnalysis::RdyToRun:
            return RdyToRunJson(row);
        default:
            return SysCallJson(row);
    }
}

nlohmann::ordered_json AnalysisTable::RunTimeJson(int row) const {
    const int line = data_.runTime.Row(row);
    const CRunTime& record = *data_.runTime.Find(static_cast<std::uint32_t>(line));
    return {{"type", data_.contexts.GetType(line)},
            {"number", data_.contexts.GetNumber(line)},
            {"name", data_.contexts.GetShownName(line)},
            {"num", record.Num},
            {"max", ToCount(record.Max)},
            {"min", ToCount(record.Min)},
            {"avg", record.Avg},
            {"total", ToCount(record.Total)},
            {"ratio", record.Ratio}};
}

nlohmann::ordered_json AnalysisTable::RdyToRunJson(int row) const {
    const CRdyToRun& record = *data_.rdyToRun.Record(data_.rdyToRun.Row(row));
    const int line = static_cast<int>(record.context);
    return {{"number", data_.contexts.GetNumber(line)},
            {"name", data_.contexts.GetShownName(line)},
            {"num", record.Num},
            {"measured", record.measured},
            {"max", ToCount(record.Max)},
            {"min", ToCount(record.Min)},
            {"avg", record.Avg},
            {"total", ToCount(record.Total)}};
}

nlohmann::ordered_json AnalysisTable::SysCallJson(int row) const {
    const std::uint32_t history = data_.sysCalls.RowHistoryIndex(row);
    IQOSTraceService* const service = data_.source.Service();
    if (!service) return nlohmann::ordered_json::object();
    std::int32_t number = 0;
    std::int64_t time = 0;
    service->GetHistoryNumber(history, &number);
    service->GetHistoryTime(history, &time);
    const auto text = [&](HistoryGetter get) { return HistoryText(*service, get, history); };
    return {{"no", number},
            {"name", text(&IQOSTraceService::GetHistoryName)},
            {"parameters", text(&IQOSTraceService::GetHistoryParameter)},
            {"return", text(&IQOSTraceService::GetHistoryReturnParameter)},
            {"time", time}};
}

}  // namespace kvx::cli
