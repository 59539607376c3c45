#include "viewer/LossTexts.h"

namespace kvx::viewer {
namespace {

using service::Loss;

CString Counted(std::uint64_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

CString LossSummary(const service::TraceService& trace) {
    const service::LossCounters losses = trace.Losses();
    if (const std::uint64_t lost = losses.TotalLosses()) return Counted(lost, "loss", "losses");
    std::uint64_t notes = trace.GetRecording() ? trace.GetRecording()->Warnings().size() : 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(Loss::Count); ++i)
        notes += losses.Get(static_cast<Loss>(i));  // there are no losses among them
    return notes > 0 ? Counted(notes, "note", "notes") : CString();
}

CString LossDetails(const service::TraceService& trace) {
    CString text;
    if (!trace.GetRecording()) return text;
    for (const std::string& warning : trace.GetRecording()->Warnings()) text += warning + "\n";
    const service::LossCounters losses = trace.Losses();
    for (std::size_t i = 0; i < static_cast<std::size_t>(Loss::Count); ++i) {
        const auto loss = static_cast<Loss>(i);
        if (losses.Get(loss) == 0) continue;
        const service::LossInfo& info = service::GetLossInfo(loss);
        text += std::to_string(losses.Get(loss)) + " " + CString(info.name) + ": " +
                CString(info.help) + "\n";
    }
    return text;
}

}  // namespace kvx::viewer
