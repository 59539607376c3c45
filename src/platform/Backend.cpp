#include "platform/Backend.h"

#include <cstdio>
#include <cstdlib>

#include "platform/drawing/TextCache.h"

namespace kvx {

namespace {
IBackend* g_backend = nullptr;
}

void SetBackend(IBackend* backend) {
    if (backend != g_backend) ClearTextCache();
    g_backend = backend;
}

IBackend* InstalledBackend() {
    return g_backend;
}

IBackend& Backend() {
    if (g_backend) return *g_backend;
    std::fputs("kvx: a window was used before a platform back-end was installed\n", stderr);
    std::abort();
}

}  // namespace kvx
