#pragma once
// The lock of the framework: unnamed, taken without time-out, and taken again by the thread that
// holds it.

#include <mutex>

class CMutex : public std::recursive_mutex {
  public:
    void Lock() { lock(); }
    void Unlock() { unlock(); }
};
