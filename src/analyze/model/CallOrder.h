#pragma once
// The order of the system calls of a range by one column. Each text is read from the service once:
// another range needs those alone that were not read before. The work may be done in pieces.

#include <chrono>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

class IQOSTraceService;

namespace kvx {

class CallOrder {
  public:
    using Clock = std::chrono::steady_clock;

    // The calls first to first + count - 1 of the history, in their own order.
    void Begin(std::uint32_t first, std::uint32_t count);
    // Orders them by a column of COSSysCallList, once Continue has come so far; calls with equal
    // texts or numbers keep the order that they have by then.
    void SortBy(int column, bool ascending) { wanted_.push_back({column, ascending}); }
    bool IsDue() const { return !wanted_.empty(); }
    // Goes on until the deadline; true when nothing is due any more.
    bool Continue(IQOSTraceService& service, Clock::time_point deadline);
    // The calls, counted from first; empty: in their own order.
    const std::vector<std::uint32_t>& Order() const { return order_; }

  private:
    struct Wanted {
        int column;
        bool ascending;
    };

    bool Read(IQOSTraceService& service, Clock::time_point deadline);
    void ForgetAnother(IQOSTraceService& service, int column);
    void ReadText(IQOSTraceService& service, std::uint32_t history);
    void ReadNumber(IQOSTraceService& service, std::uint32_t history);
    void RankTexts();
    void RankNumbers();
    // The calls stand in the order of their numbers, no two of which are equal.
    bool AreNumbersAscending() const;
    void OrderByRank(bool ascending);

    std::uint32_t first_ = 0;
    std::uint32_t count_ = 0;
    std::vector<std::uint32_t> order_;
    std::vector<Wanted> wanted_;  // the first one is at work
    std::uint32_t next_ = 0;      // call that is read next

    // What was read of a column: texts, each once, and which one it is by history index, or numbers
    // by history index.
    int column_ = -1;
    std::uint32_t historyCount_ = 0;  // when they were read
    std::unordered_map<std::string, std::uint32_t> texts_;
    std::vector<std::uint32_t> rankOfText_;
    std::vector<std::uint32_t> textOf_;
    std::vector<std::int64_t> numberOf_;
    std::vector<std::uint32_t> ranks_;  // of the calls; equal ones have the same
    std::uint32_t rankCount_ = 0;
};

}  // namespace kvx
