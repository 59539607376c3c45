#pragma once
// Follows the stepping of the target program. The four hooks do nothing here: windows are refreshed
// by the events that come when the target stops.

#include "host/Component.h"
#include "host/NoRefCount.h"

class CSteppingClient : public kvx::host::NoRefCount<IQSteppingClient> {
  public:
    HRESULT KVX_CALL StepBegin(std::uint32_t count, std::int32_t reason) override;
    HRESULT KVX_CALL StepDone() override;
    HRESULT KVX_CALL StepEnd() override;

  protected:
    ~CSteppingClient() = default;
    virtual void OnStep() {}
    virtual void OnStop() {}
    virtual void OnSteppingFinished() {}
    virtual void OnCompleted() {}

  private:
    bool pending_ = false;
    std::uint32_t count_ = 0;
    bool reason7_ = false;
};
