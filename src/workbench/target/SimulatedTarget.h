#pragma once
// A target without hardware: the simulated drive controller, its trace memory, and what a debugger
// does with them. Its time passes only in Advance.

#include <memory>
#include <string>

#include "workbench/service/Measurement.h"
#include "workbench/simulation/DriveController.h"
#include "workbench/target/RecordBuffer.h"

namespace kvx::target {

class SimulatedTarget final : public service::IMeasurement {
  public:
    // capacity: records of the trace memory, at least 1.
    explicit SimulatedTarget(std::size_t capacity);

    // The program goes on, and a new recording begins.
    void Go();
    // The program halts, and with it the recording.
    void Halt();
    // The program halts and will begin at time 0 again; the trace memory is empty.
    void ResetProgram();
    bool IsRunning() const { return running_; }
    // Lets a running program go on for that long; does nothing while it halts.
    void Advance(simulation::Time microseconds);

    RecordBuffer& Buffer() { return *buffer_; }
    const RecordBuffer& Buffer() const { return *buffer_; }

    // Writes what is recorded as an ITRON text log, and its resource file beside it. An empty text,
    // or a message that names the file and says why it failed.
    std::string WriteRecording(const std::string& path) const;

    // IMeasurement: the recording, apart from the program.
    HRESULT Stop() override;
    HRESULT Reset() override;
    HRESULT Start() override;
    HRESULT SetRangeCondition(std::int32_t condition) override;
    std::int32_t GetRangeCondition() const override;

  private:
    std::unique_ptr<RecordBuffer> buffer_;
    std::unique_ptr<simulation::DriveController> program_;
    simulation::Time until_ = 0;  // how far it may go
    bool running_ = false;
};

}  // namespace kvx::target
