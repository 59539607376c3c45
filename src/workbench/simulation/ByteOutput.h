#pragma once
// Where the bytes of a log go.

#include <string>
#include <string_view>

namespace kvx::simulation {

class IByteOutput {
  public:
    virtual ~IByteOutput() = default;
    // All of bytes, or false.
    virtual bool Write(std::string_view bytes) = 0;
    // After a Write that failed: what failed and why, for people.
    virtual std::string Failure() const = 0;
};

}  // namespace kvx::simulation
