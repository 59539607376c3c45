#include "workbench/desktop/services/WorkbenchServices.h"

namespace kvx::desktop {

WorkbenchServices::WorkbenchServices(hosting::HostObject& host, Settings& settings,
                                     const CString& directory)
    : HostServices(host, directory), properties_(settings), workspace_(settings) {
    Add(host::kPropertyStore, static_cast<IQPropertyStore*>(&properties_));
    Add(host::kWorkspaceStore, static_cast<IQWorkspaceStoreService*>(&workspace_));
}

}  // namespace kvx::desktop
