#pragma once
// A log in the ITRON tools' standard format, with its resource file where there is one.

#include <vector>

#include "workbench/formats/itron_standard/Objects.h"
#include "workbench/formats/text/TextLog.h"

namespace kvx::formats::itron_standard {

class StandardRecording final : public TextLog {
  public:
    explicit StandardRecording(OpenedLog log);

    std::string FormatName() const override { return "ITRON standard-format log"; }
    const std::vector<service::DeclaredContext>& Contexts() const override { return contexts_; }

  private:
    void ParseMessage(std::uint32_t number, std::string_view message,
                      service::Record& record) const override;
    std::string ParseDetail(std::string_view message) const override;
    bool IsComplete(std::string_view message) const override;
    void MeetObjects();
    void NoteProcessors();

    Objects objects_;
    std::vector<service::DeclaredContext> contexts_;
};

}  // namespace kvx::formats::itron_standard
