#include "component/SteppingClient.h"

#include "platform/base/Guarded.h"

using kvx::Guarded;

namespace {

constexpr std::int32_t kReasonWithoutStep = 7;

}  // namespace

HRESULT CSteppingClient::StepBegin(std::uint32_t count, std::int32_t reason) {
    return Guarded([&] {
        count_ = count;
        if (reason == kReasonWithoutStep) reason7_ = true;
        if (count == 0) {
            OnSteppingFinished();
        } else {
            pending_ = true;
        }
        return S_OK;
    });
}

HRESULT CSteppingClient::StepDone() {
    return Guarded([&] {
        if (!reason7_) OnStep();
        OnCompleted();
        return S_OK;
    });
}

HRESULT CSteppingClient::StepEnd() {
    return Guarded([&] {
        count_ > 0 ? OnStep() : OnStop();
        pending_ = false;
        count_ = 0;
        reason7_ = false;
        return S_OK;
    });
}
