#include "host/DebugInterfaces.h"

#include "host/Identifiers.h"

using kvx::host::Service;

void CDebugInterfaces::Fill(IQHost* host) {
    runState_ = Service<IQRunState>(host, kvx::host::kRunState);
    debugB_ = Service<IQUnknown>(host, kvx::host::kDebugB);
    debugC_ = Service<IQUnknown>(host, kvx::host::kDebugC);
    debugG_ = Service<IQUnknown>(host, kvx::host::kDebugG);
    debugH_ = Service<IQUnknown>(host, kvx::host::kDebugH);
    debugD_ = Service<IQUnknown>(host, kvx::host::kDebugD);
    debugE_ = Service<IQUnknown>(host, kvx::host::kDebugE);
    debugF_ = Service<IQUnknown>(host, kvx::host::kDebugF);
}

void CDebugInterfaces::ClearInterfaces() {
    runState_ = nullptr;
    debugB_ = debugC_ = debugD_ = debugE_ = debugF_ = debugG_ = debugH_ = nullptr;
}

bool CDebugInterfaces::IsRunning() const {
    return runState_ && Succeeded(runState_->IsRunning());
}
