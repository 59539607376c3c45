#include "platform/base/Environment.h"

#include <pwd.h>
#include <unistd.h>

#include <array>

CString GetWindowsDirectory() {
    return "/usr";
}

CString GetSystemDirectory() {
    return "/usr/lib";
}

CString GetUserName() {
    std::array<char, 4096> texts;
    passwd entry;
    passwd* found = nullptr;
    const int error = getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found);
    return error == 0 && found ? CString(found->pw_name) : CString();
}
