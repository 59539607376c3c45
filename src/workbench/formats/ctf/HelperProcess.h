#pragma once
// The program that reads CTF with the library.

#include <string>
#include <vector>

#include "workbench/formats/process/ChildProcess.h"

namespace kvx::formats::ctf {

// folders: absolute paths, each with a file "metadata". seconds: of computing without an event,
// after which the program ends itself.
Result<ChildProcess> StartHelper(const std::vector<std::string>& folders, long seconds);

// How the program was ended, for people; empty: it ended by itself.
std::string WhyEnded(const ChildProcess::End& end);

}  // namespace kvx::formats::ctf
