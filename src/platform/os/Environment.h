#pragma once
// What the system says of itself, of this process and of who uses it. Paths are UTF-8, without a
// trailing separator; empty where the system has none.

#include <cstdint>
#include <ctime>
#include <string>

namespace kvx::os {

// Directory of the operating system's own files, and of its libraries.
std::string SystemFolder();
std::string SystemLibraryFolder();
// Name of the logged-on user.
std::string UserName();
// Where the user keeps files of his own, and files for programs.
std::string HomeFolder();
std::string UserDataFolder();
// The running program's file.
std::string ProgramFile();
// The path of a program that the user has installed.
std::string FindInstalledProgram(const std::string& name);
bool IsExecutable(const std::string& path);
// A new folder of this process alone, among the temporary ones.
std::string MakeTemporaryFolder();
// Memory that the machine has, in bytes.
std::uint64_t PhysicalMemory();

// The moment in the time zone of the user, and in UTC. Safe in any thread.
std::tm LocalTime(std::time_t moment);
std::tm UtcTime(std::time_t moment);

}  // namespace kvx::os
