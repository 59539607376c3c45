// Work done ahead on threads comes out in order, whoever did it.

#include "workbench/service/ChunksAhead.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

namespace kvx::service {
namespace {

constexpr std::uint32_t kChunks = 200;

TEST(ChunksAhead, AreHandedOutInOrderByAnyNumberOfThreads) {
    for (const unsigned threads : {0u, 1u, 3u}) {
        ChunksAhead<std::vector<std::uint32_t>> chunks(
            kChunks, threads, [](std::uint32_t number, std::vector<std::uint32_t>& chunk) {
                chunk.assign(number % 7 + 1, number);
            });
        for (std::uint32_t number = 0; number < kChunks; ++number)
            ASSERT_EQ(chunks.Next(), std::vector<std::uint32_t>(number % 7 + 1, number));
    }
}

// A chunk that is handed out is left alone until the next is asked for.
TEST(ChunksAhead, AreNotOverwrittenWhileTheyAreRead) {
    std::atomic<std::uint32_t> made = 0;
    ChunksAhead<std::uint32_t> chunks(kChunks, 2, [&](std::uint32_t number, std::uint32_t& chunk) {
        chunk = number;
        ++made;
    });
    const std::uint32_t& first = chunks.Next();
    while (made < 8) std::this_thread::yield();  // as many as are ever made ahead
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(made, 8u);
}

TEST(ChunksAhead, WhatFailsIsThrownAtWhoeverGoesOn) {
    for (const unsigned threads : {0u, 2u}) {
        ChunksAhead<int> chunks(kChunks, threads, [](std::uint32_t number, int&) {
            if (number == 20) throw std::runtime_error("no more");
        });
        EXPECT_THROW(for (std::uint32_t i = 0; i < kChunks; ++i) chunks.Next(), std::runtime_error);
    }
}

}  // namespace
}  // namespace kvx::service
