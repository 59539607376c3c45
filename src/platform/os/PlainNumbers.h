#pragma once
// Toolkits and hosts set the locale of the process: while this lives, the thread has that of "C".

namespace kvx::os {

class PlainNumbers {
  public:
    PlainNumbers();
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;
    ~PlainNumbers();

  private:
    struct Before;
    Before* before_;  // what the system needs to go back
};

}  // namespace kvx::os
