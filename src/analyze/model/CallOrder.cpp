#include "analyze/model/CallOrder.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>
#include <utility>

#include "analyze/model/HistoryText.h"
#include "analyze/model/SortKeys.h"
#include "analyze/model/SysCallList.h"
#include "platform/Text.h"

namespace kvx {

namespace {

constexpr std::uint32_t kUnread = 0xFFFFFFFFu;
constexpr auto kUnreadNumber = std::numeric_limits<std::int64_t>::min();
constexpr std::uint32_t kBetweenLooks = 256;  // calls that are read before the clock is looked at

bool IsText(int column) {
    return column == COSSysCallList::Name || column == COSSysCallList::Parameter ||
           column == COSSysCallList::ReturnParameter;
}

HistoryGetter GetterOf(int column) {
    if (column == COSSysCallList::Name) return &IQOSTraceService::GetHistoryName;
    if (column == COSSysCallList::Parameter) return &IQOSTraceService::GetHistoryParameter;
    return &IQOSTraceService::GetHistoryReturnParameter;
}

}  // namespace

void CallOrder::Begin(std::uint32_t first, std::uint32_t count) {
    first_ = first;
    count_ = count;
    order_ = {};
    wanted_ = {};
    next_ = 0;
}

bool CallOrder::Continue(IQOSTraceService& service, Clock::time_point deadline) {
    while (!wanted_.empty()) {
        if (!Read(service, deadline)) return false;
        const Wanted done = wanted_.front();
        if (IsText(done.column)) {
            RankTexts();
            OrderByRank(done.ascending);
        } else if (AreNumbersAscending()) {
            order_.resize(done.ascending ? 0 : count_);
            std::iota(order_.rbegin(), order_.rend(), 0u);
        } else {
            RankNumbers();
            OrderByRank(done.ascending);
        }
        wanted_.erase(wanted_.begin());
        next_ = 0;
    }
    return true;
}

bool CallOrder::Read(IQOSTraceService& service, Clock::time_point deadline) {
    const int column = wanted_.front().column;
    ForgetAnother(service, column);
    for (; next_ < count_; ++next_) {
        if (next_ % kBetweenLooks == 0 && Clock::now() >= deadline) return false;
        IsText(column) ? ReadText(service, first_ + next_) : ReadNumber(service, first_ + next_);
    }
    return true;
}

// Another number of calls in the history is another history: one that is restricted, or one that
// goes on, in which calls may have returned by now.
void CallOrder::ForgetAnother(IQOSTraceService& service, int column) {
    std::uint32_t historyCount = 0;
    service.GetHistoryCount(&historyCount);
    if (column != column_ || historyCount != historyCount_) {
        texts_ = {};
        rankOfText_ = {};
        textOf_ = {};
        numberOf_ = {};
        next_ = 0;
    }
    column_ = column;
    historyCount_ = historyCount;
    const std::size_t end = std::size_t{first_} + count_;
    if (IsText(column)) {
        textOf_.resize(std::max(textOf_.size(), end), kUnread);
    } else {
        numberOf_.resize(std::max(numberOf_.size(), end), kUnreadNumber);
    }
}

void CallOrder::ReadText(IQOSTraceService& service, std::uint32_t history) {
    if (textOf_[history] != kUnread) return;
    const CString text = HistoryText(service, GetterOf(column_), history);
    const auto next = static_cast<std::uint32_t>(texts_.size());
    const auto found = texts_.try_emplace(std::string(Utf8Prefix(text, kMaxKey)), next).first;
    textOf_[history] = found->second;
}

void CallOrder::ReadNumber(IQOSTraceService& service, std::uint32_t history) {
    if (numberOf_[history] != kUnreadNumber) return;
    std::int32_t number = 0;
    std::int64_t time = 0;
    if (column_ == COSSysCallList::No)
        service.GetHistoryNumber(history, &number);
    else
        service.GetHistoryTime(history, &time);
    numberOf_[history] = column_ == COSSysCallList::No ? number : time;
}

void CallOrder::RankTexts() {
    rankCount_ = static_cast<std::uint32_t>(texts_.size());
    if (rankOfText_.size() != texts_.size()) {
        std::vector<const std::string*> byNumber(rankCount_);
        for (const auto& [text, number] : texts_) byNumber[number] = &text;
        SortKeys keys;
        for (const std::string* text : byNumber) keys.Add(*text);
        rankOfText_.resize(rankCount_);
        std::uint32_t rank = 0;
        for (const std::uint32_t number : keys.Order(true)) rankOfText_[number] = rank++;
    }
    ranks_.resize(count_);
    for (std::uint32_t n = 0; n < count_; ++n) ranks_[n] = rankOfText_[textOf_[first_ + n]];
}

bool CallOrder::AreNumbersAscending() const {
    const auto begin = numberOf_.begin() + first_;
    return std::adjacent_find(begin, begin + count_, std::greater_equal<>()) == begin + count_;
}

void CallOrder::RankNumbers() {
    std::vector<std::uint32_t> ascending(count_);
    std::iota(ascending.begin(), ascending.end(), 0u);
    const auto number = [this](std::uint32_t call) { return numberOf_[first_ + call]; };
    const auto isLess = [&](std::uint32_t a, std::uint32_t b) { return number(a) < number(b); };
    if (!std::ranges::is_sorted(ascending, isLess)) std::ranges::sort(ascending, isLess);
    ranks_.resize(count_);
    rankCount_ = 0;
    for (std::uint32_t i = 0; i < count_; ++i) {
        if (i > 0 && number(ascending[i]) != number(ascending[i - 1])) ++rankCount_;
        ranks_[ascending[i]] = rankCount_;
    }
    ++rankCount_;
}

void CallOrder::OrderByRank(bool ascending) {
    std::vector<std::uint32_t> place(std::size_t{rankCount_} + 1);
    const auto at = [this, ascending](std::uint32_t call) {
        return ascending ? ranks_[call] : rankCount_ - 1 - ranks_[call];
    };
    for (std::uint32_t call = 0; call < count_; ++call) ++place[at(call) + 1];
    std::partial_sum(place.begin(), place.end(), place.begin());
    std::vector<std::uint32_t> order(count_);
    for (std::uint32_t i = 0; i < count_; ++i) {
        const std::uint32_t call = order_.empty() ? i : order_[i];
        order[place[at(call)]++] = call;
    }
    order_ = std::move(order);
    ranks_ = {};
}

}  // namespace kvx
