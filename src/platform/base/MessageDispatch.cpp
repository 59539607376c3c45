#include "platform/base/MessageDispatch.h"

#include <cstdio>

#include "platform/base/Guarded.h"

namespace kvx {

namespace {
const CurrentMessage* g_innermost = nullptr;
}

const CurrentMessage* InnermostMessage() {
    return g_innermost;
}

MessageScope::MessageScope(const CWnd& window, UINT message, WPARAM wParam, LPARAM lParam)
    : current_{&window, message, wParam, lParam, g_innermost} {
    g_innermost = &current_;
}

MessageScope::~MessageScope() {
    g_innermost = current_.outer;
}

void ReportException(const char* what) noexcept {
    const UINT message = g_innermost ? g_innermost->message : 0;
    std::fprintf(stderr, "kvx: a call failed (message 0x%04X): %s\n", message, what);
}

}  // namespace kvx
