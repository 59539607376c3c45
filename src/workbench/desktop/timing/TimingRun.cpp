#include "workbench/desktop/timing/TimingRun.h"

#include <chrono>

namespace kvx::desktop {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{20};

std::shared_ptr<const TimingFacts> WorkOut(std::shared_ptr<const service::DecodedRecording> decoded,
                                           const std::string& rules, const std::string& path,
                                           const std::atomic<bool>& abandoned) {
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
    facts->model =
        std::make_unique<timing::Model>(*facts->decoded, facts->rules.EndsFor(contexts.Count()));
    if (abandoned) return nullptr;
    facts->found = timing::FindAll(*facts->model, facts->rules);
    for (const timing::TableEntry& entry : timing::Tables()) {
        if (abandoned) return nullptr;
        facts->tables.push_back(entry.make(facts->Input()));
    }
    return facts;
}

}  // namespace

timing::TableInput TimingFacts::Input() const {
    const auto& clock = decoded->GetRecording().Clock();
    const timing::Span range = model->Range();
    constexpr std::int64_t kSlice = 10'000'000;  // nanoseconds
    const std::int64_t part = (range.end - range.start) / 1000;
    const std::int64_t slice = clock.Known() ? kSlice / clock.NanosecondsPerCount() : part;
    const std::int64_t every = std::max<std::int64_t>({slice, part, 1});
    return {*model, rules, {range, std::nullopt}, {}, every, 10 * every};
}

TimingRun::TimingRun(std::shared_ptr<const service::DecodedRecording> decoded, std::string rules,
                     std::string path, QObject& receiver,
                     std::function<void(std::shared_ptr<const TimingFacts>)> done)
    : thread_([state = state_, decoded = std::move(decoded), rules = std::move(rules),
               path = std::move(path), &receiver, done = std::move(done)]() mutable {
          while (!state->abandoned && !decoded->IsComplete())
              std::this_thread::sleep_for(kBetweenLooks);
          std::shared_ptr<const TimingFacts> facts;
          if (!state->abandoned) facts = WorkOut(std::move(decoded), rules, path, state->abandoned);
          decoded.reset();
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
