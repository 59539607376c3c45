#pragma once
// Where the operating system lives, and who uses it.

#include "platform/base/Types.h"

// Directory of the operating system's own files, without a trailing separator.
CString GetWindowsDirectory();
// Directory of its libraries.
CString GetSystemDirectory();
// Name of the logged-on user; empty when the system has none for the process.
CString GetUserName();
