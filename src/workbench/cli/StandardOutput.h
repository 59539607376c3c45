#pragma once
// Standard output that does not let a failure pass: what cannot be written ends the command at
// once.

#include <array>
#include <ostream>
#include <streambuf>
#include <system_error>

namespace kvx::cli {

// Thrown out of whatever writes.
class OutputFailure : public std::system_error {
  public:
    explicit OutputFailure(int error)
        : std::system_error(error, std::generic_category(), "standard output") {}
    // Nobody reads any more, as in "| head".
    bool IsReaderGone() const { return code() == std::errc::broken_pipe; }
};

class StandardOutput : private std::streambuf {
  public:
    // A pipe that its reader closes counts as a failure from now on and sends no signal. Standard
    // descriptors that are closed are taken, so that no file that is opened later stands for them.
    StandardOutput();
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    std::ostream& Stream() { return stream_; }
    // Writes what is still kept.
    void Flush() { stream_.flush(); }

  private:
    int_type overflow(int_type c) override;
    int sync() override;

    std::array<char, 1 << 16> kept_;
    std::ostream stream_;
};

}  // namespace kvx::cli
