#pragma once
// How often jobs of one context took how long: bars over a logarithmic axis, with median, 99th
// percentile and deadline. A click on a bar tells its limits.

#include <QWidget>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "workbench/service/TraceClock.h"

namespace kvx::desktop {

class Histogram final : public QWidget {
  public:
    explicit Histogram(QWidget* parent = nullptr);

    // Values from `from` up to, not including, `to`; counts.
    std::function<void(std::int64_t from, std::int64_t to)> onBin;

    // clock is borrowed until the next call. title: above the bars.
    void Show(std::vector<std::int64_t> values, std::optional<std::int64_t> deadline,
              const service::TraceClock& clock, const QString& title);
    void Clear();
    // For tests: how many values each bar stands for.
    const std::vector<int>& Bins() const { return counts_; }

    QSize sizeHint() const override { return {260, 160}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;

  private:
    QRect Plot() const;
    double XOf(double value) const;
    double LimitOf(std::size_t bin) const;
    std::optional<std::size_t> BinAt(QPoint at) const;
    QString BinText(std::size_t bin) const;
    void DrawMark(QPainter& painter, std::int64_t value, const QString& name, int row) const;

    std::vector<std::int64_t> values_;  // ascending
    std::vector<int> counts_;
    double low_ = 1;  // limits of the axis
    double high_ = 10;
    std::optional<std::int64_t> deadline_;
    const service::TraceClock* clock_ = nullptr;
    QString title_;
};

}  // namespace kvx::desktop
