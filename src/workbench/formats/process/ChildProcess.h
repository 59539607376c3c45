#pragma once
// A program that reads a recording for this one, running, and the pipe it writes into. What it
// cannot bear ends only itself.

#include <sys/types.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "workbench/service/Result.h"

namespace kvx::formats {

class ChildProcess {
  public:
    // command: the path of the program, and its arguments.
    static Result<ChildProcess> Start(std::vector<std::string> command);
    // A process that runs already, and the ends of its pipes; all are the object's from now on.
    // errorPipe: -1 for none.
    ChildProcess(pid_t process, int pipe, int errorPipe)
        : process_(process), pipe_(pipe), errorPipe_(errorPipe) {}
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&&) = delete;
    // Ends the program if it still runs.
    ~ChildProcess();

    // The system ends it where it computes longer or takes more memory.
    void Limit(std::uint64_t seconds, std::uint64_t bytes);

    // Bytes read into out; 0: nothing came for a tenth of a second, or, with AtEnd, ever will.
    std::size_t Read(std::span<char> out);
    bool AtEnd() const { return atEnd_; }

    // How it ended: by a signal, or by itself with a status. Both 0: as it should.
    struct End {
        int signal = 0;
        int status = 0;
        explicit operator bool() const { return signal != 0 || status != 0; }
    };
    // Waits for the program; one whose pipe is not at its end is ended.
    End Wait();
    // The beginning of what it wrote to its standard error so far.
    const std::string& Errors() const { return errors_; }

  private:
    void ReadErrors();

    pid_t process_ = -1;
    int pipe_ = -1;
    int errorPipe_ = -1;
    bool atEnd_ = false;
    std::string errors_;
};

// The path of a program that the user has installed; empty: there is none of that name.
std::string FindInstalledProgram(const std::string& name);

}  // namespace kvx::formats
