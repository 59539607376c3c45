#include "workbench/formats/ftrace/TextReader.h"

#include <algorithm>

#include "platform/base/Text.h"
#include "workbench/formats/text/LineCursor.h"
#include "workbench/formats/text/TimedLine.h"

namespace kvx::formats::ftrace {

using service::Loss;
using service::TimeUnit;

bool TextReader::Add(std::string_view text, bool atEnd) {
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const bool last = end >= text.size();
        auto line = text.substr(0, end);
        text.remove_prefix(last ? end : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        // In a script of an old HTML page every line is part of a text in quotes.
        if (line.ends_with("\\n\\"))
            line.remove_suffix(3);
        else if (line.ends_with('\\'))
            line.remove_suffix(1);
        if (!AddLine(line, last && atEnd)) return false;
    }
    return true;
}

bool TextReader::AddLine(std::string_view text, bool mayBeCut) {
    if (!text.starts_with('#'))
        if (const auto line = ParseLine(text)) return AddEvent(*line, mayBeCut);
    AddOtherLine(text, mayBeCut);
    return true;
}

bool TextReader::AddEvent(const Line& line, bool mayBeCut) {
    if (!begun_ && !line.hasUnit) trace_.unit = TimeUnit::Counts;
    const bool fits =
        line.hasUnit == (trace_.unit == TimeUnit::Nanoseconds) && line.cpu < processors_;
    const auto event = SplitEvent(line.event);
    if (!event || !fits) {
        const bool function = fits && Contains(line.event, "<-");
        if (function)
            ++functions_;
        else
            CountUnreadable(mayBeCut);
        return true;
    }
    const Kind& kind = KindOf(*event);
    const auto fields = kind.event.fields.size();
    values_.assign(fields + 1, {});
    bool readable =
        ParseFields(kind.event, event->fields, std::span(values_).first(fields), buffer_);
    if (kind.event.layout == Layout::Switch && readable) {
        // It stands near the end.
        const bool has = event->fields.ends_with(']') ||
                         event->fields.rfind("next_prio=") != std::string_view::npos;
        if (mayBeCut && has != hasPriorities_) readable = false;
        hasPriorities_ = has;
    }
    if (!readable) {
        CountUnreadable(mayBeCut);
        return true;
    }
    begun_ = true;
    takesMore_ = kind.event.layout == Layout::Nothing;
    values_.back().number = line.cpu;
    return loader_.OnEvent(kind.number, line.time, values_);
}

void TextReader::AddOtherLine(std::string_view text, bool mayBeCut) {
    if (const auto lost = ParseLoss(text)) {
        loader_.OnDiscarded(Discarded::Events, lost->count);
        if (begun_) loader_.AddGap(static_cast<std::uint16_t>(lost->cpu));
        return;
    }
    if (text.starts_with('#') || !begun_) return LookAtHeader(text);
    if (IsBlank(text)) return;
    if (Contains(text, "|") && Contains(text, "us ")) {
        ++functions_;
        return;
    }
    if (takesMore_ && !mayBeCut) return;
    CountUnreadable(mayBeCut);
}

// "# entries-in-buffer/entries-written: 1498/2000   #P:8" or "cpus=6".
void TextReader::LookAtHeader(std::string_view text) {
    const auto number = [&](std::string_view behind) -> std::optional<std::uint64_t> {
        const auto at = text.find(behind);
        if (at == std::string_view::npos) return std::nullopt;
        return LineCursor(text.substr(at + behind.size())).AcceptNumber();
    };
    if (const auto kept = number("entries-written: ")) {
        const auto slash = text.find('/', text.find("entries-written: "));
        const auto written = slash == std::string_view::npos
                                 ? std::nullopt
                                 : LineCursor(text.substr(slash + 1)).AcceptNumber();
        if (written && *written > *kept) overwritten_ += *written - *kept;
    }
    for (const auto* const key : {"#P:", "cpus="})
        if (const auto count = number(key); count && *count > 0 && *count < kMostProcessors)
            processors_ = static_cast<std::uint32_t>(*count);
}

const TextReader::Kind& TextReader::KindOf(const EventText& event) {
    auto& kinds = kinds_[static_cast<std::size_t>(event.form)];
    if (const auto at = kinds.find(event.name); at != kinds.end()) return at->second;
    Kind& kind = kinds[std::string(event.name)];
    kind = {kindCount_++, ftrace::KindOf(event)};
    auto shape = kind.event.Shape();
    shape.fields.push_back({"cpu_id", kernels::EventField::Form::Unsigned, false});
    loader_.OnKind(shape, {});
    return kind;
}

void TextReader::CountUnreadable(bool isCut) {
    trace_.losses.Add(isCut ? Loss::CutRecord : Loss::UnreadableRecords);
}

std::vector<std::string> TextReader::Warnings(const std::string& path) const {
    std::vector<std::string> warnings;
    const auto tell = [&](const char* what, std::uint64_t count) {
        if (count > 0)
            warnings.push_back(path + ": " +
                               FormatText(what, static_cast<unsigned long long>(count)));
    };
    tell("%llu older events had been overwritten when the recording was saved", overwritten_);
    tell("%llu lines of the function tracers are not shown", functions_);
    if (trace_.unit == TimeUnit::Counts)
        warnings.push_back(path + ": the trace's clock has no unit; times are counts");
    return warnings;
}

}  // namespace kvx::formats::ftrace
