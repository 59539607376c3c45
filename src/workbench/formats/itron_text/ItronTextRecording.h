#pragma once
// An ITRON kernel text log, with its resource file where there is one.

#include "workbench/formats/text/TextLog.h"

namespace kvx::formats::itron_text {

class ItronTextRecording final : public TextLog {
  public:
    explicit ItronTextRecording(OpenedLog log);

    std::string FormatName() const override { return "ITRON kernel text log"; }

  private:
    void TakeOneProcessor();
    void ParseMessage(std::uint32_t number, std::string_view message,
                      service::Record& record) const override;
    std::string ParseDetail(std::string_view message) const override;
    bool IsComplete(std::string_view message) const override;

    const bool isOurs_;  // exported from a recording of another kernel
};

}  // namespace kvx::formats::itron_text
