#pragma once
// Damaged recordings: whatever is cut off or changed, opening answers with a recording or with one
// message that names the file.

#include <gmock/gmock.h>

#include "formats/TraceFiles.h"

namespace kvx::test {

inline void ExpectAnAnswer(const TempFolder& folder, const std::string& name,
                           const std::string& bytes, std::size_t place) {
    auto recording = formats::OpenRecording(folder.Write(name, bytes));
    if (!recording) {
        const auto& message = recording.GetError().message;
        EXPECT_THAT(message, testing::HasSubstr(name)) << place;
        EXPECT_EQ(message.find('\0'), std::string::npos) << place;
        return;
    }
    service::TraceService trace;
    trace.SetRecording(std::move(*recording));
    trace.Summarize();
    EXPECT_EQ(trace.Check(), "") << place;
    Events(trace);
}

// The file cut at every length, and with one byte of it changed, each in turn.
inline void ExpectAnswersToDamage(const std::string& name, const std::string& whole) {
    const TempFolder folder;
    for (std::size_t length = 0; length < whole.size(); ++length)
        ExpectAnAnswer(folder, name, whole.substr(0, length), length);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        auto changed = whole;
        changed[at] = static_cast<char>(changed[at] ^ (at % 2 ? 0xFF : 0x10));
        ExpectAnAnswer(folder, name, changed, at);
    }
}

}  // namespace kvx::test
