#pragma once
// The program that reads CTF with the library.

#include <string>
#include <vector>

#include "platform/os/ChildProcess.h"
#include "workbench/service/Result.h"

namespace kvx::formats::ctf {

// folders: absolute paths, each with a file "metadata". seconds: of computing without an event,
// after which the program ends itself.
Result<os::ChildProcess> StartHelper(const std::vector<std::string>& folders, long seconds);

// How the program was ended, for people; empty: it ended by itself.
std::string WhyEnded(const os::ChildProcess::End& end);

}  // namespace kvx::formats::ctf
