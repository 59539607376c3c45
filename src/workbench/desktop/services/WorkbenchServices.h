#pragma once
// The host's smaller services with the stores of the Workbench.

#include "hosting/HostServices.h"
#include "workbench/desktop/services/PropertyStore.h"
#include "workbench/desktop/services/TextsStore.h"

namespace kvx::desktop {

class WorkbenchServices : public hosting::HostServices {
  public:
    // host and settings must outlive the services. directory: where the debugger library stands.
    WorkbenchServices(hosting::HostObject& host, Settings& settings, const CString& directory);

    TextsStore& Workspace() { return workspace_; }

  private:
    PropertyStore properties_;
    TextsStore workspace_;
};

}  // namespace kvx::desktop
