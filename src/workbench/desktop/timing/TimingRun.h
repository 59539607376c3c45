#pragma once
// Works out jobs, locks, findings and tables of a recording on a thread of its own, once it is
// decoded.

#include <QObject>
#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "workbench/timing/Findings.h"
#include "workbench/timing/Table.h"

namespace kvx::desktop {

// All of it stays as it is.
struct TimingFacts {
    std::shared_ptr<const service::DecodedRecording> decoded;
    timing::Rules rules;
    std::unique_ptr<timing::Model> model;
    timing::FindingList found;
    // Of the tables' index, in its order.
    std::vector<std::shared_ptr<const timing::Table>> tables;
    std::string failure;  // of the rules; empty: none

    // What the tables, and those that a dock makes, are made of.
    timing::TableInput Input() const;
};

class TimingRun {
  public:
    // rules: text of a rules file, or empty; path is for its errors. done is called from the event
    // loop of receiver's thread, unless the run was abandoned or the receiver has gone.
    TimingRun(std::shared_ptr<const service::DecodedRecording> decoded, std::string rules,
              std::string path, QObject& receiver,
              std::function<void(std::shared_ptr<const TimingFacts>)> done);
    // Waits for the thread, which ends soon where it is abandoned before everything is decoded.
    ~TimingRun();
    TimingRun(const TimingRun&) = delete;
    TimingRun& operator=(const TimingRun&) = delete;

    // Its result is of no use any more.
    void Abandon() { state_->abandoned = true; }
    bool IsOver() const { return state_->over; }

  private:
    struct State {
        std::atomic<bool> abandoned = false;
        std::atomic<bool> over = false;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
    std::jthread thread_;
};

}  // namespace kvx::desktop
