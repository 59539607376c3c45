#include "workbench/desktop/timing/TimingRun.h"

#include <chrono>

namespace kvx::desktop {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{20};

// False: abandoned.
bool MakeTables(TimingFacts& facts, const std::atomic<bool>& abandoned) {
    for (const timing::TableEntry& entry : timing::Tables()) {
        if (abandoned) return false;
        facts.tables.push_back(entry.make(facts.Input()));
    }
    return true;
}

std::shared_ptr<const TimingFacts> WorkOut(std::shared_ptr<const service::DecodedRecording> decoded,
                                           const std::string& rules, const std::string& path,
                                           const std::atomic<bool>& abandoned) {
    while (!abandoned && !decoded->IsComplete()) std::this_thread::sleep_for(kBetweenLooks);
    if (abandoned) return nullptr;
    auto facts = std::make_shared<TimingFacts>();
    facts->decoded = std::move(decoded);
    const timing::Contexts contexts(*facts->decoded);
    if (!rules.empty()) {
        auto parsed =
            timing::ParseRules(rules, path, contexts, facts->decoded->GetRecording().Clock());
        if (parsed)
            facts->rules = std::move(*parsed);
        else
            facts->failure = parsed.GetError().message;
    }
    facts->model = std::make_shared<const timing::Model>(*facts->decoded,
                                                         facts->rules.EndsFor(contexts.Count()));
    if (abandoned) return nullptr;
    facts->found = timing::FindAll(*facts->model, facts->rules);
    return MakeTables(*facts, abandoned) ? facts : nullptr;
}

}  // namespace

timing::TableInput TimingFacts::Input() const {
    const auto& clock = decoded->GetRecording().Clock();
    const timing::Span whole = model->Range();
    constexpr std::int64_t kSlice = 10'000'000;  // nanoseconds
    const std::int64_t part = (whole.end - whole.start) / 1000;
    const std::int64_t slice = clock.Known() ? kSlice / clock.NanosecondsPerCount() : part;
    const std::int64_t every = std::max<std::int64_t>({slice, part, 1});
    return {*model, rules, {range.value_or(whole), std::nullopt}, {}, every, 10 * every};
}

TimingRun::TimingRun(std::shared_ptr<const service::DecodedRecording> decoded, std::string rules,
                     std::string path, QObject& receiver, Done done)
    : TimingRun(
          [decoded = std::move(decoded), rules = std::move(rules),
           path = std::move(path)](const std::atomic<bool>& abandoned) {
              return WorkOut(decoded, rules, path, abandoned);
          },
          receiver, std::move(done)) {}

TimingRun::TimingRun(std::shared_ptr<const TimingFacts> facts, std::optional<timing::Span> range,
                     QObject& receiver, Done done)
    : TimingRun(
          [facts = std::move(facts),
           range](const std::atomic<bool>& abandoned) -> std::shared_ptr<const TimingFacts> {
              auto limited = std::make_shared<TimingFacts>();
              limited->decoded = facts->decoded;
              limited->rules = facts->rules;
              limited->model = facts->model;
              limited->found = facts->found;
              limited->range = range;
              return MakeTables(*limited, abandoned) ? limited : nullptr;
          },
          receiver, std::move(done)) {}

TimingRun::TimingRun(Work work, QObject& receiver, Done done)
    : thread_(
          [state = state_, work = std::move(work), &receiver, done = std::move(done)]() mutable {
              const std::shared_ptr<const TimingFacts> facts = work(state->abandoned);
              work = nullptr;  // what it holds is not kept until the thread is joined
              if (facts && !state->abandoned) {
                  QMetaObject::invokeMethod(
                      &receiver,
                      [state, facts, done] {
                          if (!state->abandoned) done(facts);
                      },
                      Qt::QueuedConnection);
              }
              state->over = true;
          }) {}

TimingRun::~TimingRun() {
    Abandon();
}

}  // namespace kvx::desktop
