#include "utils/DllResource.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/base/Module.h"
#include "platform/base/Text.h"

namespace {

constexpr std::int32_t kTextSize = 1024;
constexpr std::int32_t kLargestText = 1 << 20;

// The libraries of all objects, the current one last. Objects of one library share its module.
std::vector<HMODULE> g_current;

using TwoNumbers = std::int32_t (*)(std::int32_t* major, std::int32_t* minor);
using OneNumber = std::int32_t (*)(std::int32_t* number);
using Text = std::int32_t (*)(char* buffer, std::int32_t size);

// A text probe that needs more room says how much, and is asked once more with that.
std::optional<CString> ProbeText(Text probe) {
    std::vector<char> buffer(kTextSize);
    std::int32_t answer = probe(buffer.data(), kTextSize);
    if (answer > 0 && answer <= kLargestText) {
        buffer.assign(static_cast<std::size_t>(answer), '\0');
        answer = probe(buffer.data(), answer);
    }
    if (answer != 0) return std::nullopt;
    buffer.back() = '\0';
    return CString(buffer.data());
}

CString ProbeFailed(const char* probe) {
    return kvx::FormatText("The resource library does not answer %s.", probe);
}

}  // namespace

std::unique_ptr<CDllResource> CDllResource::Load(const CString& path, CString& message) {
    const HMODULE module = LoadLibrary(path);
    if (!module) {
        message = "Error loading resource DLL " + path;
        return nullptr;
    }
    std::unique_ptr<CDllResource> library(new CDllResource(module));
    message = library->Probe(path);
    if (!message.empty()) return nullptr;
    g_current.push_back(module);
    AfxSetResourceHandle(module);
    return library;
}

CDllResource::~CDllResource() {
    if (const auto at = std::ranges::find(g_current, module_); at != g_current.end()) {
        g_current.erase(at);
        AfxSetResourceHandle(g_current.empty() ? nullptr : g_current.back());
    }
    FreeLibrary(module_);
}

CString CDllResource::Probe(const CString& path) const {
    const auto interfaceVersion = GetProcAddress<TwoNumbers>(module_, "GetDLLInterfaceVersion");
    std::int32_t major = 0;
    std::int32_t minor = 0;
    if (!interfaceVersion || interfaceVersion(&major, &minor) != 0) {
        return ProbeFailed("GetDLLInterfaceVersion");
    }
    const auto productVersion = GetProcAddress<Text>(module_, "GetDLLProductVersion");
    const auto product = productVersion ? ProbeText(productVersion) : std::nullopt;
    if (!product) return ProbeFailed("GetDLLProductVersion");
    const auto ordinalVersion = GetProcAddress<OneNumber>(module_, "GetDLLOrdinalVersion");
    std::int32_t ordinal = 0;
    if (!ordinalVersion || ordinalVersion(&ordinal) != 0) {
        return ProbeFailed("GetDLLOrdinalVersion");
    }
    const auto typeProbe = GetProcAddress<Text>(module_, "GetDLLType");
    const auto type = typeProbe ? ProbeText(typeProbe) : CString();
    if (!type) return ProbeFailed("GetDLLType");
    if (*type != "Resource") return kvx::FormatText("Dll %s is not a resources Dll", path.c_str());
    const bool right = major == 1 && minor == 0 && ordinal == 1 && *product == "1.0";
    return right ? CString() : "Incorrect version of Resources - exiting";
}
