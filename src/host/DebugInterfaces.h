#pragma once
// The debugger-side services that every framework object keeps, and the question they answer most:
// does the target program run?

#include "host/Services.h"

class CDebugInterfaces {
  public:
    CDebugInterfaces() = default;
    explicit CDebugInterfaces(IQHost* host) { Fill(host); }
    virtual ~CDebugInterfaces() = default;

    // Fetches the eight services; those that the host does not deliver stay null. Nothing is
    // released later: the host owns its services.
    void Fill(IQHost* host);
    void ClearInterfaces();

    bool IsRunning() const;

  private:
    IQRunState* runState_ = nullptr;
    IQUnknown* debugB_ = nullptr;
    IQUnknown* debugC_ = nullptr;
    IQUnknown* debugD_ = nullptr;
    IQUnknown* debugE_ = nullptr;
    IQUnknown* debugF_ = nullptr;
    IQUnknown* debugG_ = nullptr;
    IQUnknown* debugH_ = nullptr;
};
