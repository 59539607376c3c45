#pragma once
// What a test needs that is not part of the project: recordings, programs, devices. Where they are
// missing the test skips; where KVX_MUST_RUN is set, as it is before a change lands, it fails.

#include <gtest/gtest.h>

#include <cstdlib>

// Ends the test.
#define KVX_SKIP(reason)                                     \
    do {                                                     \
        if (std::getenv("KVX_MUST_RUN")) FAIL() << (reason); \
        GTEST_SKIP() << (reason);                            \
    } while (false)
