#pragma once
// Where a sub-command writes, and what its exit status means.

#include <ostream>

namespace kvx::cli {

enum ExitStatus : int {
    kExitDone = 0,
    kExitFailed = 1,      // anything that no other status names
    kExitUsage = 2,       // wrong usage
    kExitUnreadable = 3,  // the file cannot be read
    kExitLosses = 4,      // read, but with losses, and --strict was given
    kExitViolated = 5     // a rule or a condition is violated
};

struct Streams {
    std::ostream& out;
    std::ostream& error;
    bool terminal = false;  // error is a terminal: progress may be shown there
};

}  // namespace kvx::cli
