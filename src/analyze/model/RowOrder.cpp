#include "analyze/model/RowOrder.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>
#include <utility>

#include "analyze/model/SortKeys.h"
#include "platform/base/Text.h"

namespace kvx {

namespace {

constexpr std::uint32_t kUnread = 0xFFFFFFFFu;
constexpr auto kUnreadNumber = std::numeric_limits<std::int64_t>::min();
constexpr std::uint32_t kBetweenLooks = 256;  // rows that are read before the clock is looked at

}  // namespace

void RowOrder::Begin(std::uint32_t rows) {
    count_ = rows;
    order_ = {};
    wanted_ = {};
    next_ = 0;
}

bool RowOrder::Continue(const Analysis& analysis, Clock::time_point deadline) {
    while (!wanted_.empty()) {
        if (!Read(analysis, deadline)) return false;
        const Wanted done = wanted_.front();
        if (isText_) {
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

bool RowOrder::Read(const Analysis& analysis, Clock::time_point deadline) {
    ForgetAnother(analysis, wanted_.front().column);
    for (; next_ < count_; ++next_) {
        if (next_ % kBetweenLooks == 0 && Clock::now() >= deadline) return false;
        isText_ ? ReadText(analysis, next_) : ReadNumber(analysis, next_);
    }
    return true;
}

void RowOrder::ForgetAnother(const Analysis& analysis, int column) {
    const std::uint64_t revision = analysis.Revision();
    if (column != column_ || revision != revision_) {
        texts_ = {};
        rankOfText_ = {};
        textOf_ = {};
        numberOf_ = {};
        next_ = 0;
    }
    column_ = column;
    revision_ = revision;
    first_ = analysis.FirstId();
    isText_ = analysis.Form().columns[static_cast<std::size_t>(column)].kind == ValueKind::Text;
    const std::size_t end = std::size_t{first_} + count_;
    if (isText_) {
        textOf_.resize(std::max(textOf_.size(), end), kUnread);
    } else {
        numberOf_.resize(std::max(numberOf_.size(), end), kUnreadNumber);
    }
}

void RowOrder::ReadText(const Analysis& analysis, std::uint32_t row) {
    if (textOf_[first_ + row] != kUnread) return;
    const CString text = analysis.SortText(static_cast<int>(row), column_);
    const auto next = static_cast<std::uint32_t>(texts_.size());
    const auto found = texts_.try_emplace(std::string(Utf8Prefix(text, kMaxSortText)), next).first;
    textOf_[first_ + row] = found->second;
}

void RowOrder::ReadNumber(const Analysis& analysis, std::uint32_t row) {
    if (numberOf_[first_ + row] != kUnreadNumber) return;
    numberOf_[first_ + row] = analysis.SortNumber(static_cast<int>(row), column_);
}

void RowOrder::RankTexts() {
    rankCount_ = static_cast<std::uint32_t>(texts_.size());
    if (rankOfText_.size() != texts_.size()) {
        std::vector<const std::string*> byNumber(rankCount_);
        for (const auto& [text, number] : texts_) byNumber[number] = &text;
        SortKeys keys;
        for (const std::string* text : byNumber) keys.Add(*text);
        rankOfText_.resize(rankCount_);
        std::uint32_t rank = 0;
        for (const std::uint32_t number : keys.Order()) rankOfText_[number] = rank++;
    }
    ranks_.resize(count_);
    for (std::uint32_t n = 0; n < count_; ++n) ranks_[n] = rankOfText_[textOf_[first_ + n]];
}

bool RowOrder::AreNumbersAscending() const {
    const auto begin = numberOf_.begin() + static_cast<std::ptrdiff_t>(first_);
    const auto end = begin + static_cast<std::ptrdiff_t>(count_);
    return std::adjacent_find(begin, end, std::greater_equal<>()) == end;
}

void RowOrder::RankNumbers() {
    std::vector<std::uint32_t> ascending(count_);
    std::iota(ascending.begin(), ascending.end(), 0u);
    const auto number = [this](std::uint32_t row) { return numberOf_[first_ + row]; };
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

void RowOrder::OrderByRank(bool ascending) {
    std::vector<std::uint32_t> place(std::size_t{rankCount_} + 1);
    const auto at = [this, ascending](std::uint32_t row) {
        return ascending ? ranks_[row] : rankCount_ - 1 - ranks_[row];
    };
    for (std::uint32_t row = 0; row < count_; ++row) ++place[at(row) + 1];
    std::partial_sum(place.begin(), place.end(), place.begin());
    std::vector<std::uint32_t> order(count_);
    for (std::uint32_t i = 0; i < count_; ++i) {
        const std::uint32_t row = order_.empty() ? i : order_[i];
        order[place[at(row)]++] = row;
    }
    order_ = std::move(order);
    ranks_ = {};
}

}  // namespace kvx
