#pragma once
// The lock of the framework: unnamed, taken without time-out, and taken again by the thread that
// holds it.

#include <mutex>

using CMutex = std::recursive_mutex;
