#pragma once
// A program that reads a recording for this one, running, and the pipe it writes into. What it
// cannot bear ends only itself.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kvx::os {

class ChildProcess {
  public:
    // command: the path of the program, and its arguments. None: reason says why.
    static std::optional<ChildProcess> Start(std::vector<std::string> command, std::string& reason);
    // A process that runs already, and the ends of its pipes; all are the object's from now on.
    // errorPipe: -1 for none.
    ChildProcess(int process, int pipe, int errorPipe)
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
        // The words for the signal, and whether it is that of Limit's seconds.
        std::string SignalText() const;
        bool IsOutOfTime() const;
        explicit operator bool() const { return signal != 0 || status != 0; }
    };
    // Waits for the program; one whose pipe is not at its end is ended.
    End Wait();
    // The beginning of what it wrote to its standard error so far.
    const std::string& Errors() const { return errors_; }

  private:
    void ReadErrors();

    int process_ = -1;
    int pipe_ = -1;
    int errorPipe_ = -1;
    bool atEnd_ = false;
    std::string errors_;
};

}  // namespace kvx::os
