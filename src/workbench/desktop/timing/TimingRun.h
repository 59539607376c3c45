#pragma once
// Works out jobs, locks, findings and tables of a recording, or the tables of a range of it, on a
// thread of its own, once it is decoded.

#include <QObject>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "workbench/timing/Findings.h"
#include "workbench/timing/Table.h"

namespace kvx::desktop {

// All of it stays as it is. Facts about a range share the model with those about the whole.
struct TimingFacts {
    std::shared_ptr<const service::DecodedRecording> decoded;
    timing::Rules rules;
    std::shared_ptr<const timing::Model> model;
    timing::FindingList found;          // in the whole recording
    std::optional<timing::Span> range;  // that the tables are limited to
    // Of the tables' index, in its order.
    std::vector<std::shared_ptr<const timing::Table>> tables;
    std::string failure;  // of the rules; empty: none

    // What the tables, and the figures beside them, are made of.
    timing::TableInput Input() const;
};

class TimingRun {
  public:
    using Done = std::function<void(std::shared_ptr<const TimingFacts>)>;

    // rules: text of a rules file, or empty; path is for its errors. done is called from the event
    // loop of receiver's thread, unless the run was abandoned or the receiver has gone.
    TimingRun(std::shared_ptr<const service::DecodedRecording> decoded, std::string rules,
              std::string path, QObject& receiver, Done done);
    // The tables anew: of the range, or of the whole. Nothing else of the facts changes.
    TimingRun(std::shared_ptr<const TimingFacts> facts, std::optional<timing::Span> range,
              QObject& receiver, Done done);
    // Waits for the thread, which ends soon where it is abandoned before everything is decoded.
    ~TimingRun();
    TimingRun(const TimingRun&) = delete;
    TimingRun& operator=(const TimingRun&) = delete;

    // Its result is of no use any more.
    void Abandon() { state_->abandoned = true; }
    bool IsOver() const { return state_->over; }

  private:
    // Null: abandoned.
    using Work = std::function<std::shared_ptr<const TimingFacts>(const std::atomic<bool>&)>;
    TimingRun(Work work, QObject& receiver, Done done);

    struct State {
        std::atomic<bool> abandoned = false;
        std::atomic<bool> over = false;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
    std::jthread thread_;
};

}  // namespace kvx::desktop
