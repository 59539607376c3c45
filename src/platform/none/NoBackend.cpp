// In place of a back-end where no toolkit is there: no windows, and colours as they always were.

#include "platform/Backend.h"

namespace kvx {

bool InstallBackend(Screen) {
    return false;
}

const char* WhatWindowsNeed() {
    return "a platform library that has windows";
}

void RemoveBackend() {}

}  // namespace kvx
