#pragma once
// Reads the lines of a BTF file and hands on what each does to its task, interrupt or call.

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/formats/btf/Columns.h"
#include "workbench/formats/btf/Header.h"
#include "workbench/formats/btf/Processes.h"
#include "workbench/formats/events/EventLoader.h"

namespace kvx::formats::btf {

class BtfReader {
  public:
    // text is the whole file. isDialect: it is written as the writer for FreeRTOS does. trace is
    // the one that the loader fills. All are borrowed.
    BtfReader(std::string_view text, bool isDialect, EventTrace& trace, EventLoader& loader)
        : text_(text), isDialect_(isDialect), trace_(trace), loader_(loader) {}

    // False: progress stopped it.
    bool ReadAll(IOpenProgress* progress);

  private:
    // Who gets a core in the moment in which somebody loses it.
    struct Successor {
        bool isInterrupt = false;
        std::string_view task;  // empty: none, or an interrupt
    };
    struct Core {
        std::string interrupted;  // task that gave the core to an interrupt
        int depth = 0;            // of interrupts that run nested
    };

    void OnLine(std::string_view line, bool isLast);
    void LearnIdle(const Columns& line);
    void OnTask(Columns line);
    void OnInterrupt(const Columns& line);
    void OnActivate(const Columns& line, bool isPlaced, Process& task);
    void OnRun(const Columns& line, Process& task);
    void OnStop(const Columns& line, Process& task);
    bool TakePlace(Columns& line, Process& task);
    void OnSystem(const Columns& line, bool isPlaced, Process& task);
    void OnRunnable(const Columns& line);
    void OnSemaphore(const Columns& line);
    void OnStimulus(const Columns& line);
    static std::string StateAfter(const Columns& line, const Process& task);
    std::uint16_t FirstCoreOf(const Columns& line);
    void ResumeInterrupted(const Columns& line, std::uint16_t core);

    Successor SuccessorOn(const Columns& line, std::uint16_t core) const;
    std::optional<Columns> Columned(std::string_view line) const;
    std::uint16_t CoreOf(const Columns& line, const Process& process);

    // What the loader is told. kind: see kernels::osek.
    struct Told {
        std::uint16_t core = 0;
        const Process* process = nullptr;
        const Process* next = nullptr;  // who gets the core
        std::string_view call = {};
        std::string_view detail = {};
        std::int64_t priority = -1;  // -1: not told
    };
    void Tell(std::string_view kind, const Told& told);
    void TellNothing() { Tell("nothing", {}); }
    std::uint32_t KindOf(std::string_view kind);

    const std::string_view text_;
    const bool isDialect_;
    EventTrace& trace_;
    EventLoader& loader_;
    Header header_;
    Processes processes_;
    std::unordered_map<std::uint16_t, Core> cores_;
    std::map<std::string, std::uint32_t, std::less<>> kinds_;
    std::size_t next_ = 0;   // where the line behind the one at hand begins
    std::int64_t time_ = 0;  // of the line at hand, in nanoseconds
    std::string buffer_;
};

}  // namespace kvx::formats::btf
