#include "workbench/target/SimulatedTarget.h"

#include "host/OSTraceService.h"
#include "workbench/simulation/FileOutput.h"
#include "workbench/simulation/Generate.h"
#include "workbench/simulation/LogWriter.h"
#include "workbench/simulation/ResourceWriter.h"

namespace kvx::target {
namespace {

// Any seed does; always the same one, so that a user can compare two runs.
constexpr std::uint64_t kSeed = 12100;

}  // namespace

SimulatedTarget::SimulatedTarget(std::size_t capacity)
    : buffer_(std::make_unique<RecordBuffer>(capacity)) {}

void SimulatedTarget::Go() {
    buffer_->Clear();
    buffer_->Start();
    running_ = true;
    // It starts here, and not before, so that the recording sees its first steps.
    if (!program_) program_ = std::make_unique<simulation::DriveController>(*buffer_, kSeed);
}

void SimulatedTarget::Halt() {
    running_ = false;
    buffer_->Stop();
}

void SimulatedTarget::ResetProgram() {
    Halt();
    program_.reset();
    until_ = 0;
    auto fresh = std::make_unique<RecordBuffer>(buffer_->Capacity());
    fresh->SetCondition(buffer_->Condition());
    buffer_ = std::move(fresh);
}

void SimulatedTarget::Advance(simulation::Time microseconds) {
    if (!running_) return;
    until_ += microseconds;
    while (program_->Now() < until_) program_->Step();
}

std::string SimulatedTarget::WriteRecording(const std::string& path) const {
    if (!program_) return path + ": nothing has run that could be written";
    const std::string text = simulation::ResourceText(program_->GetKernel(), buffer_->Beginning());
    std::string failure = simulation::WriteFile(simulation::ResourcePath(path), text);
    if (!failure.empty()) return failure;
    simulation::FileOutput file(path);
    simulation::LogWriter log(file, buffer_->Count());
    buffer_->ForEach([&](const simulation::TraceRecord& record) { log.Write(record); });
    return log.Flush() && file.Close() ? "" : file.Failure();
}

HRESULT SimulatedTarget::Stop() {
    buffer_->Stop();
    return S_OK;
}

HRESULT SimulatedTarget::Reset() {
    buffer_->Clear();
    return S_OK;
}

// Nothing happens that could be recorded while the program halts.
HRESULT SimulatedTarget::Start() {
    if (!running_) return S_FALSE;
    buffer_->Start();
    return S_OK;
}

HRESULT SimulatedTarget::SetRangeCondition(std::int32_t condition) {
    buffer_->SetCondition(condition == kRangeFree ? RangeCondition::Free : RangeCondition::Full);
    return S_OK;
}

std::int32_t SimulatedTarget::GetRangeCondition() const {
    return buffer_->Condition() == RangeCondition::Free ? kRangeFree : kRangeFull;
}

}  // namespace kvx::target
