#pragma once
// What is decoded of one processor: its contexts and events, and what was lost of it.

#include <cstdint>

#include "workbench/service/ContextTable.h"
#include "workbench/service/EventStore.h"
#include "workbench/service/EventWriter.h"
#include "workbench/service/Loss.h"

namespace kvx::service {

struct Timeline {
    // moment is borrowed. most: see EventStore.
    Timeline(std::uint32_t number, const Moment& moment, std::uint32_t most)
        : processor(number), events(most), writer(moment, contexts, events) {}

    const std::uint32_t processor;
    ContextTable contexts;
    EventStore events;
    LossCounters losses;

    // For the thread that decodes.
    EventWriter writer;
    bool started = false;  // a record of the processor was decoded
};

}  // namespace kvx::service
