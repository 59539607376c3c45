#include "host/DebuggerFunctions.h"

#include <map>
#include <optional>
#include <utility>

#include "host/Identifiers.h"
#include "host/ModuleHost.h"
#include "platform/base/Module.h"

namespace kvx::host {
namespace {

using DirectEntries = std::array<DebuggerFunction, kDirectFunctionNames.size()>;

// What is known of one host's debugger.
struct DebuggerRecord {
    IQDebuggerCalls* calls = nullptr;
    bool direct = false;  // whether the latest call went to the library itself
    DirectEntries entries{};
};

std::map<IQHost*, DebuggerRecord>& Records() {
    static std::map<IQHost*, DebuggerRecord> records;
    return records;
}

std::array<DebuggerFunction, kDebuggerFunctionNames.size()> g_table{};

// Position of a table entry among the direct functions.
constexpr std::optional<std::size_t> DirectIndex(std::size_t index) {
    for (std::size_t i = 0; i < kDirectFunctionNames.size(); ++i) {
        if (std::string_view(kDirectFunctionNames[i]) == kDebuggerFunctionNames[index]) return i;
    }
    return std::nullopt;
}

template <std::size_t Index>
std::intptr_t Dispatch(std::uintptr_t a, std::uintptr_t b, std::uintptr_t c, std::uintptr_t d,
                       std::uintptr_t e, std::uintptr_t f) {
    const auto found = Records().find(ModuleHost());
    if (found == Records().end()) return 0;
    DebuggerRecord& record = found->second;
    record.direct = false;
    if constexpr (constexpr auto kDirect = DirectIndex(Index); kDirect.has_value()) {
        if (const DebuggerFunction entry = record.entries[*kDirect]) {
            record.direct = true;
            return entry(a, b, c, d, e, f);
        }
    }
    if (!record.calls) return 0;
    const DebuggerArguments arguments = {a, b, c, d, e, f};
    return record.calls->Call(kDebuggerFunctionNames[Index], arguments.data(),
                              static_cast<std::uint32_t>(arguments.size()));
}

template <std::size_t... Index>
void FillTable(std::index_sequence<Index...>) {
    g_table = {&Dispatch<Index>...};
}

// The library's handle, asked anew; null when service or library is missing.
void* LibraryOf(IQHost* host) {
    auto* service = Service<IQDebuggerLibrary>(host, kDebuggerLibrary);
    void* library = nullptr;
    if (!service || Failed(service->GetModule(&library))) return nullptr;
    return library;
}

CString TextOf(IQHost* host, HRESULT (KVX_CALL IQDebuggerLibrary::*query)(BSTR*)) {
    auto* service = Service<IQDebuggerLibrary>(host, kDebuggerLibrary);
    Bstr text;
    if (!service || Failed((service->*query)(text.Receive()))) return {};
    return text.Utf8();
}

}  // namespace

void ResolveDebuggerFunctions(IQHost* host, const std::function<void(const char*)>& missing) {
    ClearDebuggerFunctions(host);
    SetModuleHost(host);
    DebuggerRecord& record = Records()[host];
    record.calls = Service<IQDebuggerCalls>(host, kDebuggerCalls);
    DirectEntries found{};
    for (std::size_t i = 0; i < found.size(); ++i) {
        void* library = LibraryOf(host);
        if (!library) continue;
        found[i] = reinterpret_cast<DebuggerFunction>(
            GetProcAddress(static_cast<HMODULE>(library), kDirectFunctionNames[i]));
        if (!found[i]) return missing(kDirectFunctionNames[i]);
    }
    record.entries = found;
    FillTable(std::make_index_sequence<kDebuggerFunctionNames.size()>{});
}

void ClearDebuggerFunctions(IQHost* host) {
    if (host) {
        Records().erase(host);
    } else {
        Records().clear();
    }
    if (Records().empty()) return g_table.fill(nullptr);
    // Another host's debugger is still there: it is the one that is meant from now on.
    if (!Records().contains(ModuleHost())) SetModuleHost(Records().begin()->first);
}

DebuggerFunction GetDebuggerFunction(std::size_t index) {
    return g_table.at(index);
}

bool IsDebuggerLoaded() {
    return g_table[DebuggerIndex("IN1_Get_mcu_info")] != nullptr;
}

CString GetDebuggerDirectory(IQHost* host) {
    return TextOf(host, &IQDebuggerLibrary::GetDirectory);
}

CString GetDebuggerBaseName(IQHost* host) {
    return TextOf(host, &IQDebuggerLibrary::GetBaseName);
}

}  // namespace kvx::host
