#include "analyze/model/CsvWriter.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "platform/base/Text.h"

namespace {

// A field without its leading white space, cut to its width. A line break within a field breaks the
// line, as a text file does.
void AppendField(CString& line, const CString& text, std::size_t width) {
    for (const char c : kvx::Utf8Prefix(kvx::TrimLeft(text), width)) {
        if (c == '\n') line += '\r';
        line += c;
    }
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

int CCsvWriter::Write(const CString& path, Failure* failure) const {
    const auto fail = [failure](bool opened) {
        if (failure) *failure = {opened, std::strerror(errno)};
        return 0;
    };
    std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "wb"));
    if (!file) return fail(false);
    const bool written = WriteLines([&](std::string_view line) {
        return std::fwrite(line.data(), 1, line.size(), file.get()) == line.size();
    });
    if (!written) return fail(true);
    return std::fclose(file.release()) == 0 ? 1 : fail(true);
}

bool CCsvWriter::WriteLines(const Sink& sink) const {
    const auto columns = table_.Form().columns;
    const auto write = [&](auto fieldOf, auto widthOf) {
        CString line;
        const char* between = "";
        for (std::size_t c = 0; c < columns.size(); ++c) {
            if (columns[c].kind == kvx::ValueKind::Bar) continue;
            line += std::exchange(between, ",");
            AppendField(line, fieldOf(c), widthOf(c));
        }
        return sink(line += "\r\n");
    };
    const bool titled = write(
        [&](std::size_t c) -> CString {
            return columns[c].csvTitle ? columns[c].csvTitle : columns[c].title;
        },
        [](std::size_t) { return kvx::kWholeText; });
    const int rows = titled && table_.IsReadable() ? table_.RowCount() : 0;
    for (int k = 0; k < rows; ++k) {
        const int row = rowAt_(k);
        const bool written =
            write([&](std::size_t c) { return table_.Cell(row, static_cast<int>(c)); },
                  [&](std::size_t c) { return columns[c].csvWidth; });
        if (!written) return false;
    }
    return titled;
}
