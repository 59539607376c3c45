// Reads CTF traces with the library and writes their events into standard output
// (workbench/formats/ctf/Wire.h). A program of its own, because the library ends its process, or
// never comes back, on some traces: the one that started it then has what was read before.
//
// usage: kvxostrace-ctf SECONDS FOLDER...
// SECONDS of computing without a block of events end it.

#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "workbench/ctf_reader/MessageWriter.h"

namespace {

using kvx::ctf_reader::BlockWriter;

constexpr rlim_t kMostMemory = rlim_t{384} << 20;

BlockWriter* g_writer = nullptr;
itimerval g_patience{};

void RestartPatience() {
    setitimer(ITIMER_PROF, &g_patience, nullptr);
}

void OnFatalSignal(int signal) {
    std::signal(signal, SIG_DFL);
    g_writer->Rescue();
    raise(signal);
}

void LimitItself(long seconds) {
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    const rlimit memory{kMostMemory, kMostMemory};
    setrlimit(RLIMIT_DATA, &memory);
#endif
    for (const int fatal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGPROF})
        std::signal(fatal, OnFatalSignal);
    std::signal(SIGPIPE, SIG_IGN);
    g_patience.it_value.tv_sec = seconds;
    RestartPatience();
}

}  // namespace

int main(int argc, char** argv) {
    const long seconds = argc > 2 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (seconds <= 0 || isatty(STDOUT_FILENO)) {
        std::fputs("kvxostrace starts this program to read CTF traces.\n", stderr);
        return 2;
    }
    BlockWriter out(STDOUT_FILENO);
    g_writer = &out;
    LimitItself(seconds);
    kvx::ctf_reader::MessageWriter events(out, RestartPatience);
    const kvx::ctf_reader::Plugins plugins;
    events.End(kvx::ctf_reader::RunGraph(plugins, {argv + 2, argv + argc}, events));
    std::_Exit(0);  // nothing of the library has to be put away
}
