#pragma once
// The calls of a recording by number: their names, and what their values mean.

#include <cstdint>
#include <string>
#include <vector>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/systemview/Descriptions.h"
#include "workbench/formats/systemview/Survey.h"
#include "workbench/kernels/SystemViewKernel.h"

namespace kvx::formats::systemview {

class CallForms {
  public:
    // Looks for the file that describes the kernel's calls in the folder of the options, beside the
    // recording, and in the user's data folder. shown: the numbering that the recording shows, or
    // empty.
    CallForms(const Survey& survey, const kernels::SystemViewKernel& kernel,
              const std::string& path, const OpenOptions& options, std::string_view shown);

    // One sentence each.
    const std::vector<std::string>& Warnings() const { return warnings_; }
    // Empty: there is no such call in the recording.
    std::string_view NameOf(std::uint32_t id) const {
        return id < names_.size() ? std::string_view(names_[id]) : std::string_view();
    }
    // Null: not described.
    const CallDescription* Find(std::uint32_t id) const;
    const Descriptions& All() const { return descriptions_; }

  private:
    void ReadFile(const kernels::SystemViewKernel& kernel, const std::string& path,
                  const OpenOptions& options);
    void AddModules(const Survey& survey);
    std::string MakeName(const Survey& survey, const kernels::SystemViewKernel& kernel,
                         std::uint32_t id) const;

    std::string numbering_;
    Descriptions descriptions_;
    std::vector<std::string> names_;  // by id, of those that occur
    std::vector<std::string> warnings_;
};

}  // namespace kvx::formats::systemview
