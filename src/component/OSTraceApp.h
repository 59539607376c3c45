#pragma once
// The module's application object: the component objects by their instance keys.

#include <memory>
#include <unordered_map>

#include "component/OSTraceDataCtrl.h"
#include "platform/base/WinApp.h"

class CKvxOSTraceApp : public CWinApp {
  public:
    // A second instance of a key replaces the first, which is deleted.
    void AddInstance(std::uintptr_t key);
    CKvxOSTraceDataCtrl* FindInstance(std::uintptr_t key) const;
    void RemoveInstance(std::uintptr_t key);

  private:
    std::unordered_map<std::uintptr_t, std::unique_ptr<CKvxOSTraceDataCtrl>> instances_;
    bool hasBackend_ = false;
};

CKvxOSTraceApp& GetOSTraceApp();
