#pragma once
// Descriptors of files and of the standard streams, for bytes that go out as they are.

#include <cstddef>
#include <string>

namespace kvx::os {

inline constexpr int kStandardOutput = 1;
inline constexpr int kStandardError = 2;

// Opens a file for writing, and empties one that is there. Negative: errno says why.
int OpenForWriting(const std::string& path);
// How many bytes went out; negative: errno says why.
std::ptrdiff_t WriteBytes(int file, const char* data, std::size_t size);
// False: errno says why.
bool CloseDescriptor(int file);
// An ordinary file, no device and no pipe.
bool IsRegularFile(int file);
bool IsTerminal(int file);
// Standard output takes bytes unchanged, a pipe that its reader closes is a failure and no signal,
// and standard descriptors that are closed are taken, so that no file that is opened later stands
// for them.
void PrepareStandardStreams();

}  // namespace kvx::os
