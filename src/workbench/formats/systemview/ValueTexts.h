#pragma once
// The values of a packet as people read them.

#include <string>

#include "workbench/formats/systemview/CallForms.h"

namespace kvx::formats::systemview {

class ValueTexts {
  public:
    // Both are borrowed.
    ValueTexts(const Survey& survey, const CallForms& forms) : survey_(survey), forms_(forms) {}

    // "name=value, name=value" of a call.
    std::string Parameters(const Packet& packet) const;
    // What the call returned; empty where no value is recorded.
    std::string Result(const Packet& endOfCall) const;
    // What the application printed.
    std::string Print(const Packet& packet) const;
    // A marker, or the name of one.
    std::string Extended(const Packet& packet) const;
    // What became of a task that stopped being ready.
    std::string StopCause(const Packet& packet) const;
    std::string TaskName(std::uint32_t id) const;

  private:
    std::string Value(const ValueForm& form, PacketCursor& values) const;
    std::string Named(const std::string& type, std::uint32_t value) const;
    std::string ObjectName(std::uint32_t id) const;

    const Survey& survey_;
    const CallForms& forms_;
};

}  // namespace kvx::formats::systemview
