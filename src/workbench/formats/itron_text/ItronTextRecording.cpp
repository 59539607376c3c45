#include "workbench/formats/itron_text/ItronTextRecording.h"

#include <set>

#include "workbench/formats/Registry.h"
#include "workbench/formats/itron_text/Message.h"
#include "workbench/formats/text/LogProbe.h"
#include "workbench/kernels/KnownKernels.h"
#include "workbench/kernels/itron/Itron.h"

namespace kvx::formats::itron_text {

namespace {

// A log that was exported says whose calls it has.
const service::Kernel& KernelOf(const ResourceFile& resources) {
    const auto* const named = kernels::FindKernelNamed(resources.kernel);
    return named ? *named : kernels::itron::Kernel();
}

}  // namespace

ItronTextRecording::ItronTextRecording(OpenedLog log)
    : TextLog(std::move(log), KernelOf(log.resources)), isOurs_(!log_.resources.kernel.empty()) {
    processors_ = log_.index.processors;
    if (processors_.empty()) TakeOneProcessor();
    losses_.Add(service::Loss::TimeStepsBack, log_.index.stepsBack);
    LookThrough("\"dispatch to task\", \"task N becomes\", \"enter to\"");
}

// The lines name no processor: it is the one that the resource file names, or has no number.
void ItronTextRecording::TakeOneProcessor() {
    std::set<std::uint32_t> named;
    for (const auto& context : log_.resources.contexts)
        if (context.processor != service::kAnyProcessor) named.insert(context.processor);
    processors_.push_back(named.size() == 1 ? *named.begin() : 0);
    for (auto& context : log_.resources.contexts) context.processor = processors_.front();
}

void ItronTextRecording::ParseMessage(std::uint32_t /*number*/, std::string_view message,
                                      service::Record& record) const {
    itron_text::ParseMessage(message, record, isOurs_);
}

std::string ItronTextRecording::ParseDetail(std::string_view message) const {
    return itron_text::ParseDetail(message, isOurs_);
}

bool ItronTextRecording::IsComplete(std::string_view message) const {
    return itron_text::IsComplete(message);
}

}  // namespace kvx::formats::itron_text

namespace kvx::formats {

const Format kItronText = {
    "ITRON kernel text log",
    10,
    [](const Candidate& candidate) {
        return LooksLikeLog(candidate.Text(), [](std::string_view message) {
            service::Record record;
            itron_text::ParseMessage(message, record);
            return record.kind != service::RecordKind::Unreadable;
        });
    },
    [](Candidate& candidate, const OpenOptions& options,
       IOpenProgress* progress) -> Result<std::unique_ptr<Recording>> {
        auto log = OpenLog(candidate.path, std::move(*candidate.file), options,
                           itron_text::ReturnStaysBehindCall, progress);
        if (!log) return log.GetError();
        return std::unique_ptr<Recording>(
            std::make_unique<itron_text::ItronTextRecording>(std::move(*log)));
    },
    false,
    {"*.log, with *.res", "ITRON kernels", "waits, objects, priorities, calls, handlers"}};

}  // namespace kvx::formats
