#pragma once
// Turns the library's events into kinds and values.

#include <deque>
#include <unordered_map>
#include <vector>

#include "workbench/formats/ctf/EventSink.h"
#include "workbench/formats/ctf/Fields.h"
#include "workbench/formats/ctf/Graph.h"

namespace kvx::formats::ctf {

class EventSource final : public IMessages {
  public:
    explicit EventSource(IEventSink& sink) : sink_(sink) {}

    bool OnEvent(const bt_event* event, std::optional<std::int64_t> nanoseconds) override;
    void OnDiscarded(Discarded what, std::uint64_t count) override {
        sink_.OnDiscarded(what, count);
    }
    bool OnBatch() override { return sink_.OnBatch(); }

  private:
    struct Field {
        FieldPlace place;
        kernels::EventField::Form form;
    };
    struct Kind {
        std::uint32_t number = 0;
        std::vector<Field> fields;
    };

    const Kind& KindOf(const bt_event_class* cls);
    void Take(const Field& field, const bt_field* from);

    IEventSink& sink_;
    std::unordered_map<const bt_event_class*, Kind> kinds_;
    const bt_event_class* latestClass_ = nullptr;
    const Kind* latest_ = nullptr;
    std::vector<Value> values_;
    std::deque<std::string> texts_;  // that values_ points to
};

}  // namespace kvx::formats::ctf
