#pragma once
// The component object: what CreateInstance makes and the host connects.

#include "component/SteppingClient.h"
#include "framework/DataCtrl.h"
#include "toolbar/MenuDockingManager.h"
#include "utils/DllResource.h"

class CKvxOSTraceDataCommandSink;

class CKvxOSTraceDataCtrl : public CKvxDebugDataCtrl, public CSteppingClient {
  public:
    ~CKvxOSTraceDataCtrl() override;

    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override;
    // Hands events to the windows as update hints, then to the framework. Answers 0 whatever
    // becomes of the event.
    HRESULT KVX_CALL Notify(const EventRecord* record) override;
    // Resource library, stepping client, command sink. E_FAIL
    // after a message when the library cannot be used. An object that is connected already is
    // terminated first; without a host it answers E_FAIL and stays connected.
    HRESULT KVX_CALL Initialize(IQHost* host, std::int16_t flag) override;
    HRESULT KVX_CALL Terminate(std::int16_t flag) override;

  protected:
    bool CreateCommandSink() override;
    void DestroyCommandSink() override;

  private:
    bool LoadResources();
    static bool CanShowWindows();

    std::unique_ptr<CDllResource> resources_;
    std::unique_ptr<CDockingManager> docking_;  // from the first connection on
    IQHost* steppingHost_ = nullptr;            // where the stepping client is advised
    CKvxOSTraceDataCommandSink* traceSink_ = nullptr;
};
