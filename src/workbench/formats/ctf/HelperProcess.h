#pragma once
// The program that reads CTF with the library, running, and the pipe it writes into.

#include <sys/types.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "workbench/service/Result.h"

namespace kvx::formats::ctf {

class HelperProcess {
  public:
    // folders: absolute paths, each with a file "metadata". seconds: of computing without an
    // event, after which the program ends itself.
    static Result<HelperProcess> Start(const std::vector<std::string>& folders, long seconds);
    HelperProcess(HelperProcess&& other) noexcept;
    HelperProcess& operator=(HelperProcess&&) = delete;
    // Ends the program if it still runs.
    ~HelperProcess();

    // Bytes read into out; 0: nothing came for a tenth of a second, or, with AtEnd, ever will.
    std::size_t Read(std::span<char> out);
    bool AtEnd() const { return atEnd_; }
    // Waits for the program, whose pipe is at its end. Empty: it ended by itself; else how it was
    // ended, for people.
    std::string WhyEnded();

  private:
    HelperProcess(pid_t process, int pipe) : process_(process), pipe_(pipe) {}

    pid_t process_ = -1;
    int pipe_ = -1;
    bool atEnd_ = false;
};

}  // namespace kvx::formats::ctf
