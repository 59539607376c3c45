#include "analyze/model/CsvWriter.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <memory>

#include "analyze/model/HistoryText.h"
#include "analyze/model/RdyToRun.h"
#include "analyze/model/RunTime.h"
#include "analyze/model/SysCallList.h"
#include "host/ModuleHost.h"
#include "platform/Text.h"
#include "trace/ContextMng.h"

namespace {

// A time text is never cut.
constexpr std::size_t kWhole = static_cast<std::size_t>(-1);

struct Field {
    CString text;
    std::size_t width = kWhole;  // in characters
};

// Fields without their leading white space, cut to their widths. A line break within a field breaks
// the line, as a text file does.
CString Line(std::initializer_list<Field> fields) {
    CString line;
    for (const Field& field : fields) {
        if (&field != fields.begin()) line += ',';
        for (const char c : kvx::Utf8Prefix(kvx::TrimLeft(field.text), field.width)) {
            if (c == '\n') line += '\r';
            line += c;
        }
    }
    return line += "\r\n";
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

int CCsvWriter::Write(EAnalysis table, const CString& path, Failure* failure) const {
    const auto fail = [failure](bool opened) {
        if (failure) *failure = {opened, std::strerror(errno)};
        return 0;
    };
    std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "wb"));
    if (!file) return fail(false);
    const bool written = WriteLines(table, [&](std::string_view line) {
        return std::fwrite(line.data(), 1, line.size(), file.get()) == line.size();
    });
    if (!written) return fail(true);
    return std::fclose(file.release()) == 0 ? 1 : fail(true);
}

bool CCsvWriter::WriteLines(EAnalysis table, const Sink& sink) const {
    switch (table) {
        case EAnalysis::RunTime:
            return WriteRunTime(sink);
        case EAnalysis::RdyToRun:
            return WriteRdyToRun(sink);
        case EAnalysis::SysCall:
            return WriteSysCalls(sink);
    }
    return false;
}

CString CCsvWriter::TimeText(double t) const {
    CString text;
    engine_.FormatTime(t, text);
    return text;
}

bool CCsvWriter::WriteRunTime(const Sink& sink) const {
    if (!sink("VEC,table,ID,(name),Num,Max,Min,Avg,Total,Ratio %\r\n")) return false;
    const CRunTime none;
    for (int k = 0; k < runTime_.RowCount(); ++k) {
        const int line = runTime_.Row(k);
        const bool known = line < contexts_.GetCount();
        const ContextTexts cells = known ? contexts_.GetTexts(line) : ContextTexts();
        const CRunTime* const found = runTime_.Find(static_cast<std::uint32_t>(line));
        const CRunTime& record = found ? *found : none;
        const CString row = Line({{cells.vector, 5},
                                  {cells.table, 8},
                                  {cells.id, 5},
                                  {cells.name, 255},
                                  {kvx::FormatText("%5d", record.Num), 7},
                                  {TimeText(record.Max)},
                                  {TimeText(record.Min)},
                                  {TimeText(record.Avg)},
                                  {TimeText(record.Total)},
                                  {kvx::FormatText("%6.2f", record.Ratio * 100.0), 5}});
        if (!sink(row)) return false;
    }
    return true;
}

bool CCsvWriter::WriteRdyToRun(const Sink& sink) const {
    if (!sink("Id,(name),Num,Max,Min,Avg\r\n")) return false;
    for (int k = 0; k < rdyToRun_.RowCount(); ++k) {
        const CRdyToRun* const record = rdyToRun_.Record(rdyToRun_.Row(k));
        if (!record) continue;
        const int line = static_cast<int>(record->context);
        const bool known = line < contexts_.GetCount();
        const ContextTexts cells = known ? contexts_.GetTexts(line) : ContextTexts();
        const CString row = Line({{cells.id, 5},
                                  {cells.name, 255},
                                  {kvx::FormatText(" %5d", record->Num), 8},
                                  {TimeText(record->Max)},
                                  {TimeText(record->Min)},
                                  {TimeText(record->Avg)}});
        if (!sink(row)) return false;
    }
    return true;
}

bool CCsvWriter::WriteSysCalls(const Sink& sink) const {
    if (!sink("No,System Call,Parameter,Return Parameter,TIME\r\n")) return false;
    IQOSTraceService* const service = kvx::host::TraceService();
    for (int k = 0; service && k < sysCalls_.RowCount(); ++k) {
        const std::uint32_t history = sysCalls_.RowHistoryIndex(k);
        std::int32_t number = 0;
        std::int64_t time = 0;
        service->GetHistoryNumber(history, &number);
        service->GetHistoryTime(history, &time);
        const CString row = Line(
            {{kvx::FormatText("%d", number), 7},
             {kvx::HistoryText(*service, &IQOSTraceService::GetHistoryName, history), 255},
             {kvx::HistoryText(*service, &IQOSTraceService::GetHistoryParameter, history), 255},
             {kvx::HistoryText(*service, &IQOSTraceService::GetHistoryReturnParameter, history),
              255},
             {TimeText(static_cast<double>(time))}});
        if (!sink(row)) return false;
    }
    return true;
}
