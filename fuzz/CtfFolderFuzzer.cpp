// CTF folders. An input is, separated by "====": what the metadata is ("text" or "packets" of what
// follows, "zephyr" or "linux" for one of our own), the metadata, the index of the stream, and the
// stream, which is the rest. An input without separators is a stream of the Zephyr kernel.
//
// The look at the files and everything behind the pipe run in this process; the library, with its
// plug-ins already loaded, in a copy of it for each input that gets that far.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "fuzz/DecodeAll.h"
#include "fuzz/Scratch.h"
#include "workbench/ctf_reader/MessageWriter.h"
#include "workbench/formats/ctf/HelperProcess.h"

namespace {

constexpr std::string_view kSeparator = "====";

constexpr std::string_view kTypes = R"(/* CTF 1.8 */
typealias integer { size = 8; align = 8; signed = false; } := uint8_t;
typealias integer { size = 32; align = 8; signed = false; } := uint32_t;
typealias integer { size = 32; align = 8; signed = true; } := int32_t;
typealias integer { size = 8; align = 8; signed = false; encoding = ASCII; } := name_t;
)";
constexpr std::string_view kZephyr = R"(trace { major = 1; minor = 8; byte_order = le; };
stream { event.header := struct { uint32_t timestamp; uint8_t id; }; };
event { name = thread_switched_out; id = 1; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = thread_switched_in; id = 2; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = isr_enter; id = 3; };
event { name = isr_exit; id = 4; };
event { name = idle; id = 5; };
event { name = sem_take_enter; id = 6; fields := struct { uint32_t id; }; };
event { name = sem_take_blocking; id = 7; fields := struct { uint32_t id; }; };
event { name = sem_take_exit; id = 8; fields := struct { uint32_t id; int32_t ret; }; };
event { name = sem_give_enter; id = 9; fields := struct { uint32_t id; string note; }; };
event { name = thread_suspend; id = 10; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = thread_resume; id = 11; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = thread_create; id = 12; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = thread_abort; id = 13; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = thread_sched_ready; id = 14; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = k_sleep_enter; id = 15; fields := struct { uint32_t timeout; }; };
event { name = k_sleep_exit; id = 16; fields := struct { uint32_t timeout; int32_t ret; }; };
event { name = timer_expiry_enter; id = 17; fields := struct { uint32_t id; }; };
event { name = timer_expiry_exit; id = 18; fields := struct { uint32_t id; }; };
)";
constexpr std::string_view kLinux = R"(trace { major = 1; minor = 8; byte_order = le;
  packet.header := struct { uint32_t magic; uint32_t stream_id; }; };
struct context { uint32_t content_size; uint32_t packet_size; uint8_t cpu_id; };
stream { id = 0; packet.context := struct context;
  event.header := struct { uint8_t id; uint32_t timestamp; }; };
event { name = sched_switch; id = 1; stream_id = 0; fields := struct { name_t prev_comm[4];
  uint8_t prev_tid; uint8_t prev_state; name_t next_comm[4]; uint8_t next_tid; }; };
event { name = sched_wakeup; id = 2; stream_id = 0; fields := struct { uint8_t tid; uint8_t target_cpu; }; };
event { name = sched_migrate_task; id = 3; stream_id = 0; fields := struct { uint8_t tid; uint8_t dest_cpu; }; };
event { name = irq_handler_entry; id = 4; stream_id = 0; fields := struct { uint8_t irq; }; };
event { name = irq_handler_exit; id = 5; stream_id = 0; fields := struct { uint8_t irq; }; };
event { name = syscall_entry_read; id = 6; stream_id = 0; fields := struct { uint8_t n; uint8_t buf[n]; }; };
event { name = syscall_exit_read; id = 7; stream_id = 0; fields := struct { int32_t ret; }; };
)";

const kvx::ctf_reader::Plugins& LoadedPlugins() {
    static const kvx::ctf_reader::Plugins plugins;
    return plugins;
}

std::string InPackets(std::string_view text) {
    std::string packed;
    const auto number = [&](std::size_t value) {
        for (int i = 0; i < 4; ++i) packed += static_cast<char>(value >> 8 * i);
    };
    while (!text.empty()) {
        const auto piece = text.substr(0, 512);
        text.remove_prefix(piece.size());
        packed += "\x57\x1D\xD1\x75" + std::string(20, '\0');
        number(8 * (37 + piece.size()));
        number(8 * (37 + piece.size()));
        packed += std::string("\0\0\0\1\x08", 5).append(piece);
    }
    return packed;
}

std::string MetadataOf(std::string_view what, std::string_view given) {
    if (what == "text" || what == "raw") return std::string(given);
    if (what == "packets") return InPackets(given);
    return std::string(kTypes).append(what == "linux" ? kLinux : kZephyr);
}

}  // namespace

namespace kvx::formats::ctf {

Result<os::ChildProcess> StartHelper(const std::vector<std::string>& folders, long seconds) {
    const auto& plugins = LoadedPlugins();
    int ends[2];
    if (pipe(ends) != 0) std::abort();
    const int process = fork();
    if (process < 0) std::abort();
    if (process > 0) {
        close(ends[1]);
        return os::ChildProcess(process, ends[0], -1);
    }
    for (const int fatal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL}) std::signal(fatal, SIG_DFL);
    close(STDERR_FILENO);
    alarm(static_cast<unsigned>(seconds));
    ctf_reader::BlockWriter out(ends[1]);
    ctf_reader::MessageWriter events(out, [] {});
    events.End(ctf_reader::RunGraph(plugins, folders, events));
    std::_Exit(0);
}

}  // namespace kvx::formats::ctf

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kvx::fuzz::Scratch scratch;
    auto rest = kvx::fuzz::AsText(data, size);
    std::string_view what = "zephyr";
    std::string_view metadata;
    std::string_view index;
    if (rest.find(kSeparator) != std::string_view::npos) {
        what = kvx::fuzz::TakePart(rest, kSeparator);
        metadata = kvx::fuzz::TakePart(rest, kSeparator);
        index = kvx::fuzz::TakePart(rest, kSeparator);
    }
    scratch.Write("trace/metadata", MetadataOf(what, metadata));
    scratch.Write("trace/channel0", rest);
    if (index.empty())
        scratch.Remove("trace/index");
    else
        scratch.Write("trace/index/channel0.idx", index);
    kvx::fuzz::DecodeAll(scratch.Path("trace"));
    return 0;
}
