#include "workbench/desktop/timing/Histogram.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "workbench/desktop/QtText.h"
#include "workbench/timing/Statistics.h"
#include "workbench/timing/Times.h"

namespace kvx::desktop {
namespace {

constexpr int kBins = 24;
constexpr int kMargin = 6;
constexpr int kMarkRows = 3;  // of texts above the bars

}  // namespace

Histogram::Histogram(QWidget* parent) : QWidget(parent) {
    setMinimumSize(160, 110);
}

void Histogram::Clear() {
    values_.clear();
    counts_.clear();
    clock_ = nullptr;
    title_.clear();
    update();
}

void Histogram::Show(std::vector<std::int64_t> values, std::optional<std::int64_t> deadline,
                     const service::TraceClock& clock, const QString& title) {
    values_ = std::move(values);
    std::ranges::sort(values_);
    deadline_ = deadline;
    clock_ = &clock;
    title_ = title;
    counts_.assign(kBins, 0);
    if (!values_.empty()) {
        // A value of nothing stands in the first bar.
        low_ = std::max<double>(1.0, static_cast<double>(values_.front()));
        high_ = std::max({low_ * 1.5, static_cast<double>(values_.back()) * 1.001,
                          deadline ? static_cast<double>(*deadline) * 1.001 : 0.0});
        for (const std::int64_t value : values_) {
            const double place =
                std::log(std::max<double>(1.0, static_cast<double>(value)) / low_) /
                std::log(high_ / low_) * kBins;
            const int bin = std::clamp(static_cast<int>(place), 0, kBins - 1);
            ++counts_[static_cast<std::size_t>(bin)];
        }
    }
    update();
}

QRect Histogram::Plot() const {
    const int line = fontMetrics().height();
    return rect().adjusted(kMargin, kMargin + (kMarkRows + 1) * line, -kMargin, -kMargin - line);
}

double Histogram::XOf(double value) const {
    const QRect plot = Plot();
    const double share = std::log(std::max(1.0, value) / low_) / std::log(high_ / low_);
    return plot.left() + share * plot.width();
}

double Histogram::LimitOf(std::size_t bin) const {
    return low_ * std::pow(high_ / low_, static_cast<double>(bin) / kBins);
}

void Histogram::DrawMark(QPainter& painter, std::int64_t value, const QString& name,
                         int row) const {
    const QRect plot = Plot();
    const int line = fontMetrics().height();
    const auto x = static_cast<int>(XOf(static_cast<double>(value)));
    const QString text = name + " " + FromUtf8(timing::TimeText(value, *clock_));
    const int width = fontMetrics().horizontalAdvance(text);
    const int top = kMargin + (row + 1) * line;
    painter.drawLine(x, top + line, x, plot.bottom());
    const int left =
        std::clamp(x - width / 2, plot.left(), std::max(plot.left(), plot.right() - width));
    painter.drawText(left, top + fontMetrics().ascent(), text);
}

void Histogram::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    if (!clock_ || values_.empty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         clock_ ? title_ + "\nno complete job" : "Select a row of the table");
        return;
    }
    const QRect plot = Plot();
    const int most = std::max(1, *std::ranges::max_element(counts_));
    const double width = static_cast<double>(plot.width()) / kBins;
    for (int bin = 0; bin < kBins; ++bin) {
        const int count = counts_[static_cast<std::size_t>(bin)];
        if (count == 0) continue;
        const int height = std::max(1, count * plot.height() / most);
        painter.fillRect(QRectF(plot.left() + bin * width + 0.5, plot.bottom() + 1 - height,
                                std::max(1.0, width - 1), height),
                         palette().highlight());
    }
    painter.setPen(palette().color(QPalette::Text));
    painter.drawLine(plot.bottomLeft(), plot.bottomRight());
    const int line = fontMetrics().height();
    painter.drawText(rect().adjusted(kMargin, kMargin, -kMargin, 0), Qt::AlignLeft | Qt::AlignTop,
                     fontMetrics().elidedText(title_, Qt::ElideRight, plot.width()));
    const QRect axis(plot.left(), plot.bottom() + 2, plot.width(), line);
    painter.drawText(axis, Qt::AlignLeft,
                     FromUtf8(timing::TimeText(static_cast<std::int64_t>(low_), *clock_)));
    painter.drawText(axis, Qt::AlignRight,
                     FromUtf8(timing::TimeText(static_cast<std::int64_t>(high_), *clock_)));
    DrawMark(painter, timing::Percentile(values_, 50), "median", 0);
    DrawMark(painter, timing::Percentile(values_, 99), "p99", 1);
    if (deadline_) {
        painter.setPen(QPen(Qt::red, 2));
        DrawMark(painter, *deadline_, "deadline", 2);
    }
}

std::optional<std::size_t> Histogram::BinAt(QPoint at) const {
    const QRect plot = Plot();
    if (values_.empty() || at.x() < plot.left() || at.x() > plot.right()) return std::nullopt;
    const auto bin =
        static_cast<std::size_t>((at.x() - plot.left()) * kBins / std::max(1, plot.width()));
    return std::min<std::size_t>(bin, kBins - 1);
}

QString Histogram::BinText(std::size_t bin) const {
    return QStringLiteral("%L1 from %2 to %3")
        .arg(counts_[bin])
        .arg(FromUtf8(timing::TimeText(static_cast<std::int64_t>(LimitOf(bin)), *clock_)),
             FromUtf8(timing::TimeText(static_cast<std::int64_t>(LimitOf(bin + 1)), *clock_)));
}

void Histogram::mousePressEvent(QMouseEvent* event) {
    const auto bin = BinAt(event->position().toPoint());
    if (!bin || counts_[*bin] == 0 || !onBin) return;
    const std::int64_t from = *bin == 0 ? 0 : static_cast<std::int64_t>(std::ceil(LimitOf(*bin)));
    const std::int64_t to = *bin == kBins - 1
                                ? std::numeric_limits<std::int64_t>::max()
                                : static_cast<std::int64_t>(std::ceil(LimitOf(*bin + 1)));
    onBin(from, to);
}

bool Histogram::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto bin = BinAt(help->pos());
    bin ? QToolTip::showText(help->globalPos(), BinText(*bin), this) : QToolTip::hideText();
    return true;
}

}  // namespace kvx::desktop
