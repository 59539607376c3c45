#include "utils/PlaceholderExpander.h"

#include <ctime>
#include <filesystem>

#include "host/Identifiers.h"
#include "host/Services.h"
#include "platform/os/Environment.h"
#include "utils/UserInputDialog.h"

using kvx::Bstr;
using kvx::Placeholder;

namespace {

constexpr std::size_t kShortest = 4;  // characters of "$(A)"
constexpr int kMostPlaceholders = 9999;

struct Range {
    std::size_t begin;  // of the "$"
    std::size_t end;    // behind the ")"
};

// The first placeholder that begins at from or behind it.
std::optional<Range> FindPlaceholder(std::string_view text, std::size_t from) {
    auto at = text.find("$(", from);
    while (at != std::string_view::npos && text.substr(0, at).ends_with('$')) {
        at = text.find("$(", at + 1);
    }
    if (at == std::string_view::npos || text.size() - at < kShortest) return std::nullopt;
    const auto close = text.find(')', at + 2);
    if (close == std::string_view::npos) return std::nullopt;
    return Range{at, close + 1};
}

// Of the current local time.
CString LocalTimeText(const char* format) {
    const std::tm local = kvx::os::LocalTime(std::time(nullptr));
    char text[64];
    return {text, std::strftime(text, sizeof text, format, &local)};
}

std::optional<CString> FileValue(Placeholder which, const std::filesystem::path& file) {
    if (file.empty()) return std::nullopt;
    switch (which) {
        case Placeholder::kFileName:
            return file.filename().string();
        case Placeholder::kFileLeaf:
            return file.stem().string();
        case Placeholder::kFileDir:
            return file.parent_path().string();
        case Placeholder::kExtension: {
            const CString withDot = file.extension().string();
            return withDot.empty() ? withDot : withDot.substr(1);
        }
        default:
            return file.string();
    }
}

// The text that the operation of a service hands out; empty when it fails or there is no service.
template <class Service, class... Parameters, class... In>
CString Ask(Service* service, HRESULT (KVX_CALL Service::*operation)(Parameters...), In... in) {
    Bstr text;
    const bool told = service && Succeeded((service->*operation)(in..., text.Receive()));
    return told ? text.Utf8() : CString();
}

}  // namespace

CPlaceholderExpander::CPlaceholderExpander(IQHost* host)
    : project_(kvx::host::Service<IQProjectInformation>(host, kvx::host::kProjectInformation)),
      custom_(kvx::host::Service<IQCustomPlaceholders>(host, kvx::host::kCustomPlaceholders)) {}

CString CPlaceholderExpander::Expand(CString text, const CString& filePath) const {
    std::size_t position = 0;
    for (int count = 0; count < kMostPlaceholders; ++count) {
        const auto found = FindPlaceholder(text, position);
        if (!found) break;
        const CString name = text.substr(found->begin + 2, found->end - found->begin - 3);
        const CString value = Resolve(name, filePath);
        text.replace(found->begin, found->end - found->begin, value);
        position = found->begin + value.size();
    }
    return text;
}

CString CPlaceholderExpander::Resolve(std::string_view name, const CString& filePath) const {
    const auto builtIn = kvx::FindPlaceholderName(name);
    if (!builtIn) return Ask(custom_, &IQCustomPlaceholders::GetValue, Bstr(name).Get());
    return Value(*builtIn, name, filePath).value_or(kvx::PlaceholderText(*builtIn));
}

std::optional<CString> CPlaceholderExpander::Value(Placeholder which, std::string_view name,
                                                   const CString& filePath) const {
    switch (which) {
        case Placeholder::kError:
            return CString();
        case Placeholder::kFullFile:
        case Placeholder::kFileName:
        case Placeholder::kFileLeaf:
        case Placeholder::kFileDir:
        case Placeholder::kExtension:
            return FileValue(which, filePath);
        case Placeholder::kWindowsDir:
            return kvx::os::SystemFolder();
        case Placeholder::kSystemDir:
            return kvx::os::SystemLibraryFolder();
        case Placeholder::kTime:
            return LocalTimeText("%H:%M:%S");
        case Placeholder::kDateText:
            return LocalTimeText("%B %d, %Y");
        case Placeholder::kDateDmy:
            return LocalTimeText("%d/%m/%Y");
        case Placeholder::kDateMdy:
            return LocalTimeText("%m/%d/%Y");
        case Placeholder::kDateYmd:
            return LocalTimeText("%Y/%m/%d");
        case Placeholder::kUser:
            return kvx::os::UserName();
        case Placeholder::kUserInput:
            return AskUserInput(name);
        case Placeholder::kHomeDir:
            return Ask(project_, &IQProjectInformation::GetHomeDirectory);
        case Placeholder::kTemporaryDir:
            return Ask(project_, &IQProjectInformation::GetTemporaryDirectory);
        case Placeholder::kWorkspaceDir:
        case Placeholder::kWorkspaceName:
        case Placeholder::kProjectDir:
        case Placeholder::kProjectName:
        case Placeholder::kConfigName:
        case Placeholder::kConfigDir:
            return ProjectValue(which);
        default:
            return std::nullopt;
    }
}

// Of the current workspace, project and configuration; nothing without the names that it needs.
std::optional<CString> CPlaceholderExpander::ProjectValue(Placeholder which) const {
    const CString workspace = Ask(project_, &IQProjectInformation::GetWorkspaceName);
    const CString project = Ask(project_, &IQProjectInformation::GetProjectName);
    const CString configuration = Ask(project_, &IQProjectInformation::GetConfigurationName);
    const auto known = [](const CString& name) {
        return name.empty() ? std::nullopt : std::optional(name);
    };
    const Bstr w(workspace);
    const Bstr p(project);
    const Bstr c(configuration);
    switch (which) {
        case Placeholder::kWorkspaceName:
            return known(workspace);
        case Placeholder::kProjectName:
            return known(project);
        case Placeholder::kConfigName:
            return known(configuration);
        case Placeholder::kWorkspaceDir:
            if (workspace.empty()) return std::nullopt;
            return Ask(project_, &IQProjectInformation::GetWorkspaceDirectory, w.Get());
        case Placeholder::kProjectDir:
            if (workspace.empty() || project.empty()) return std::nullopt;
            return Ask(project_, &IQProjectInformation::GetProjectDirectory, w.Get(), p.Get());
        default:
            if (workspace.empty() || project.empty() || configuration.empty()) return std::nullopt;
            return Ask(project_, &IQProjectInformation::GetConfigurationDirectory, w.Get(), p.Get(),
                       c.Get());
    }
}
