#include "trace/EventReader.h"

#include "host/Identifiers.h"

namespace kvx {

host::IQOSTraceColumns* QueryColumns(IQOSTraceService& service) {
    void* out = nullptr;
    if (Failed(service.QueryInterface(host::kOSTraceColumns, &out))) return nullptr;
    return static_cast<host::IQOSTraceColumns*>(out);
}

}  // namespace kvx
