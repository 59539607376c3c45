#include "analyze/model/CsvWriter.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>

#include "analyze/model/RdyToRun.h"
#include "analyze/model/RunTime.h"
#include "analyze/model/SysCallList.h"
#include "platform/Text.h"

namespace {

// Longest texts of each field in characters; a time text is never cut.
constexpr std::size_t kWhole = static_cast<std::size_t>(-1);
constexpr std::size_t kRunTimeWidths[] = {5, 8, 5, 255, 7, kWhole, kWhole, kWhole, kWhole, 5};
constexpr std::size_t kRdyToRunWidths[] = {5, 255, 8, kWhole, kWhole, kWhole};
constexpr std::size_t kSysCallWidths[] = {7, 255, 255, 255, kWhole};

// Fields without their leading white space, cut to their widths. A line break within a field breaks
// the line, as a text file does.
CString Line(const std::vector<CString>& fields, std::span<const std::size_t> widths) {
    CString line;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) line += ',';
        for (const char c : kvx::Utf8Prefix(kvx::TrimLeft(fields[i]), widths[i])) {
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

bool CCsvWriter::WriteRunTime(const Sink& sink) const {
    if (!sink("VEC,table,ID,(name),Num,Max,Min,Avg,Total,Ratio %\r\n")) return false;
    const CRunTime none;
    for (int k = 0; k < runTime_.RowCount(); ++k) {
        const int line = runTime_.Row(k);
        const CRunTime* const record = runTime_.Find(static_cast<std::uint32_t>(line));
        if (!sink(Line(texts_.RunTime(line, record ? record : &none), kRunTimeWidths)))
            return false;
    }
    return true;
}

bool CCsvWriter::WriteRdyToRun(const Sink& sink) const {
    if (!sink("Id,(name),Num,Max,Min,Avg\r\n")) return false;
    for (int k = 0; k < rdyToRun_.RowCount(); ++k) {
        const CRdyToRun* const record = rdyToRun_.Record(rdyToRun_.Row(k));
        if (record && !sink(Line(texts_.RdyToRun(*record), kRdyToRunWidths))) return false;
    }
    return true;
}

bool CCsvWriter::WriteSysCalls(const Sink& sink) const {
    if (!sink("No,System Call,Parameter,Return Parameter,TIME\r\n")) return false;
    IQOSTraceService* const service = source_.Service();
    for (int k = 0; service && k < sysCalls_.RowCount(); ++k) {
        const std::uint32_t history = sysCalls_.RowHistoryIndex(k);
        if (!sink(Line(texts_.SysCall(*service, history), kSysCallWidths))) return false;
    }
    return true;
}
