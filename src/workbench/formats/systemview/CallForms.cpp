#include "workbench/formats/systemview/CallForms.h"

#include <filesystem>

#include "platform/base/Text.h"
#include "platform/os/Environment.h"
#include "workbench/formats/systemview/Packet.h"
#include "workbench/formats/text/MappedFile.h"

namespace kvx::formats::systemview {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestFile = std::size_t{16} << 20;

// Empty: nowhere.
fs::path UserDataFolder() {
    const fs::path folder = os::UserDataFolder();
    return folder.empty() ? folder : folder / "kvxostrace";
}

// The first of the folders' files of that name; empty: there is none.
std::string FindFile(std::string_view name, const std::string& path, const OpenOptions& options) {
    for (const auto& folder :
         {fs::path(options.descriptions), fs::absolute(path).parent_path(), UserDataFolder()}) {
        std::error_code error;
        if (!folder.empty() && fs::is_regular_file(folder / name, error))
            return (folder / name).string();
    }
    return {};
}

}  // namespace

CallForms::CallForms(const Survey& survey, const kernels::SystemViewKernel& kernel,
                     const std::string& path, const OpenOptions& options, std::string_view shown)
    : numbering_(options.calls.empty() ? shown : options.calls) {
    if (!kernel.DescriptionFile().empty()) ReadFile(kernel, path, options);
    AddModules(survey);
    names_.resize(std::max(survey.used.size(), survey.ended.size()));
    for (std::uint32_t id = kFirstCall; id < names_.size(); ++id)
        names_[id] = MakeName(survey, kernel, id);
}

// A file whose numbering is another than the recording's would give calls wrong names.
void CallForms::ReadFile(const kernels::SystemViewKernel& kernel, const std::string& path,
                         const OpenOptions& options) {
    const auto name = FindFile(kernel.DescriptionFile(), path, options);
    if (name.empty()) return;
    const auto file = MapFile(name);
    if (!file || file->Text().size() > kLargestFile) {
        warnings_.push_back(file ? name + ": too large for a description of calls"
                                 : file.GetError().message);
        return;
    }
    Descriptions read;
    read.Add(file->Text());
    for (const auto& [id, call] : read.calls) {
        const auto theirs = kernel.NumberingOf(call.name, id);
        if (theirs.empty() || numbering_.empty() || theirs == numbering_) continue;
        warnings_.push_back(
            FormatText("%s: describes the calls by other numbers (%s) than the "
                       "recording has (%s); it is left aside",
                       name.c_str(), std::string(theirs).c_str(), numbering_.c_str()));
        return;
    }
    descriptions_ = std::move(read);
}

// "M=Name,0 Send par=%u,1 Receive": events of the module from its first number on.
void CallForms::AddModules(const Survey& survey) {
    for (const Module& module : survey.modules) {
        std::string_view text = module.text;
        while (!text.empty()) {
            const auto part = text.substr(0, text.find(','));
            text.remove_prefix(std::min(part.size() + 1, text.size()));
            Descriptions described;
            described.Add(part);
            for (auto& [number, call] : described.calls) {
                const auto id = module.firstId + number;
                if (id >= kFirstOfModules) descriptions_.calls.try_emplace(id, std::move(call));
            }
        }
    }
}

std::string CallForms::MakeName(const Survey& survey, const kernels::SystemViewKernel& kernel,
                                std::uint32_t id) const {
    if (const auto* call = Find(id)) return call->name;
    if (id < kFirstOfModules) {
        const auto known = kernel.CallName(numbering_, id);
        return known.empty() ? FormatText("call %u", id) : std::string(known);
    }
    const Module* owner = nullptr;
    for (const Module& module : survey.modules)
        if (module.firstId <= id && (!owner || module.firstId >= owner->firstId)) owner = &module;
    if (!owner) return FormatText("module %u", id);
    std::string_view name = owner->text;
    if (name.starts_with("M=")) name.remove_prefix(2);
    name = name.substr(0, name.find(','));
    return FormatText("%s + %u", std::string(name).c_str(), id - owner->firstId);
}

const CallDescription* CallForms::Find(std::uint32_t id) const {
    const auto at = descriptions_.calls.find(id);
    return at == descriptions_.calls.end() ? nullptr : &at->second;
}

}  // namespace kvx::formats::systemview
