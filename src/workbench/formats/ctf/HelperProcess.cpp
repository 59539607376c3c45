#include "workbench/formats/ctf/HelperProcess.h"

#include <csignal>
#include <cstring>

#include "platform/base/Text.h"

namespace kvx::formats::ctf {

std::string WhyEnded(const ChildProcess::End& end) {
    if (end.signal == SIGPROF) return "the CTF library computed without an end and was stopped";
    if (end.signal != 0) return FormatText("the CTF library gave up (%s)", strsignal(end.signal));
    return end.status == 0 ? std::string()
                           : FormatText("the CTF library gave up (status %d)", end.status);
}

}  // namespace kvx::formats::ctf
