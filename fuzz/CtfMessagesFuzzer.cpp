// What the program that reads CTF might say if a trace had got the better of it.

#include <cstdlib>

#include "fuzz/Scratch.h"
#include "workbench/formats/ctf/MessageParser.h"
#include "workbench/formats/events/EventRecording.h"
#include "workbench/service/TraceService.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kvx::formats;
    EventTrace trace;
    EventLoader loader(trace, size + 1, nullptr);
    ctf::MessageParser(loader).Take(kvx::fuzz::AsText(data, size));
    if (trace.records.Count() == 0) return 0;
    loader.Finish();
    kvx::service::TraceService service;
    service.SetRecording(std::make_unique<EventRecording>("x", std::move(trace), EventDamage()));
    service.Summarize();
    if (!service.Check().empty()) std::abort();
    std::uint32_t events = 0;
    service.GetEventCount(&events);
    for (std::uint32_t event = 0; event < events; ++event) service.EventDetail(event);
    return 0;
}
