#include "component/OSTraceApp.h"

#include <utility>

#include "platform/Backend.h"
#include "platform/base/SystemInfo.h"

CKvxOSTraceApp& GetOSTraceApp() {
    static CKvxOSTraceApp app;
    return app;
}

// The first instance brings the toolkit in, the last one takes it out: a module without instances
// keeps nothing there and may be unloaded.
void CKvxOSTraceApp::AddInstance(std::uintptr_t key) {
    if (!hasBackend_) hasBackend_ = kvx::InstallBackend();
    RequireLightSysColors();  // black run bars, engraved cell texts
    instances_[key] = std::make_unique<CKvxOSTraceDataCtrl>();
}

CKvxOSTraceDataCtrl* CKvxOSTraceApp::FindInstance(std::uintptr_t key) const {
    const auto found = instances_.find(key);
    return found == instances_.end() ? nullptr : found->second.get();
}

void CKvxOSTraceApp::RemoveInstance(std::uintptr_t key) {
    instances_.erase(key);
    if (instances_.empty() && std::exchange(hasBackend_, false)) kvx::RemoveBackend();
}
