#include "workbench/formats/ctf/HelperProcess.h"

#include <csignal>
#include <cstring>

#include "platform/base/Text.h"

namespace kvx::formats::ctf {

std::string WhyEnded(const os::ChildProcess::End& end) {
    if (end.IsOutOfTime()) return "the CTF library computed without an end and was stopped";
    if (end.signal != 0)
        return FormatText("the CTF library gave up (%s)", end.SignalText().c_str());
    return end.status == 0 ? std::string()
                           : FormatText("the CTF library gave up (status %d)", end.status);
}

}  // namespace kvx::formats::ctf
