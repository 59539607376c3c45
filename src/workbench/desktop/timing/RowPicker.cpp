#include "workbench/desktop/timing/RowPicker.h"

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

constexpr std::size_t kBetweenLooks = 64;  // rows that are looked at before the clock is

}  // namespace

void RowPicker::SetAnalysis(const Analysis* analysis) {
    analysis_ = analysis;
    order_ = RowOrder();
    order_.Begin(analysis ? static_cast<std::uint32_t>(analysis->RowCount()) : 0);
    rows_.clear();
    picked_.clear();
    next_ = 0;
    isPicking_ = analysis != nullptr;
}

void RowPicker::SortBy(int column, bool ascending) {
    order_.SortBy(column, ascending);
    picked_.clear();
    next_ = 0;
    isPicking_ = true;
}

void RowPicker::Filter(const QString& text) {
    words_ = text.split(' ', Qt::SkipEmptyParts);
    picked_.clear();
    next_ = 0;
    isPicking_ = true;
}

bool RowPicker::Matches(int row) const {
    QString texts;
    const auto columns = static_cast<int>(analysis_->Form().columns.size());
    for (int column = 0; column < columns; ++column)
        texts += FromUtf8(analysis_->Cell(row, column)) + '\n';
    return std::ranges::all_of(words_, [&texts](const QString& word) {
        return texts.contains(word, Qt::CaseInsensitive);
    });
}

int RowPicker::RowAt(std::size_t place) const {
    const auto& order = order_.Order();
    return static_cast<int>(order.empty() ? place : order[place]);
}

bool RowPicker::Continue(std::chrono::milliseconds time) {
    if (!analysis_) return true;
    const auto deadline = RowOrder::Clock::now() + time;
    if (!order_.Continue(*analysis_, deadline)) return false;
    const auto count = static_cast<std::size_t>(order_.RowCount());
    for (; isPicking_ && next_ < count; ++next_) {
        if (next_ % kBetweenLooks == 0 && RowOrder::Clock::now() >= deadline) return false;
        const int row = RowAt(next_);
        if (words_.isEmpty() || Matches(row)) picked_.push_back(row);
    }
    if (std::exchange(isPicking_, false)) rows_ = std::move(picked_);
    picked_.clear();
    return true;
}

}  // namespace kvx::desktop
