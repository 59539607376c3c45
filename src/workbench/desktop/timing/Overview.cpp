#include "workbench/desktop/timing/Overview.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace kvx::desktop {
namespace {

constexpr int kHeight = 52;   // what other docks need is taken from the chart, not from the strip
constexpr int kTicks = 7;     // height of the row of findings
constexpr double kReach = 5;  // pixels beside an edge of the frame that take hold of it
constexpr double kLeastFrame = 4;  // pixels, as it is drawn

// Neighbours differ; the last colour is that of all others together.
QColor ColourOf(std::size_t context) {
    if (context >= OverviewLoad::kContexts) return Qt::gray;
    return QColor::fromHsv(static_cast<int>(context * 137 % 360), context % 2 ? 150 : 190,
                           context % 3 ? 210 : 170);
}

}  // namespace

Overview::Overview(QWidget* parent) : QWidget(parent) {
    setFixedHeight(kHeight);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void Overview::SetRecording(std::shared_ptr<const service::DecodedRecording> decoded,
                            std::size_t timeline) {
    load_.SetRecording(std::move(decoded), timeline);
    load_.Advance();
    findings_.clear();
    display_.reset();
    grip_ = Grip::None;
    update();
}

void Overview::Advance() {
    if (load_.Advance()) update();
}

void Overview::SetFindings(std::vector<std::int64_t> times) {
    findings_ = std::move(times);
    update();
}

void Overview::SetDisplay(std::optional<std::pair<double, double>> display) {
    if (display == display_) return;
    display_ = display;
    update();
}

double Overview::XOf(double time) const {
    const auto start = static_cast<double>(load_.Start());
    return (time - start) / (static_cast<double>(load_.End()) - start) * width();
}

double Overview::TimeOf(double x) const {
    const auto start = static_cast<double>(load_.Start());
    return start + x / std::max(1, width()) * (static_cast<double>(load_.End()) - start);
}

QRectF Overview::Frame() const {
    if (!display_) return {};
    double left = XOf(display_->first);
    double right = XOf(display_->second);
    if (right - left < kLeastFrame) {
        left = (left + right - kLeastFrame) / 2;
        right = left + kLeastFrame;
    }
    return {left, 0.0, right - left, height() - 1.0};
}

void Overview::DrawLoad(QPainter& painter) const {
    const double base = height();
    const double room = height() - kTicks;
    const double slice = static_cast<double>(width()) / OverviewLoad::kSlices;
    std::vector<double> top(OverviewLoad::kSlices, base);
    for (std::size_t context = 0; context < load_.Shares().size(); ++context) {
        const QColor colour = ColourOf(context);
        for (int i = 0; i < OverviewLoad::kSlices; ++i) {
            const auto at = static_cast<std::size_t>(i);
            const double tall = static_cast<double>(load_.Shares()[context][at]) * room;
            if (tall <= 0) continue;
            top[at] -= tall;
            painter.fillRect(QRectF(i * slice, top[at], slice + 0.5, tall), colour);
        }
    }
}

void Overview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    if (load_.IsEmpty()) return;
    DrawLoad(painter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::red);
    for (const std::int64_t time : findings_) {
        const double x = XOf(static_cast<double>(time));
        const QPointF tick[] = {{x - 3, 0}, {x + 3, 0}, {x, kTicks - 1.0}};
        painter.drawPolygon(tick, 3);
    }
    if (!display_) return;
    QColor shade = palette().color(QPalette::Highlight);
    painter.setPen(QPen(shade, 2));
    shade.setAlpha(50);
    painter.setBrush(shade);
    painter.drawRect(Frame().adjusted(1, 1, -1, 0));
}

Overview::Grip Overview::GripAt(double x) const {
    if (!display_) return Grip::None;
    const QRectF frame = Frame();
    // A frame that is too narrow for edges is moved as a whole.
    const bool hasEdges = frame.width() > 3 * kReach;
    if (hasEdges && std::abs(x - frame.left()) <= kReach) return Grip::Left;
    if (hasEdges && std::abs(x - frame.right()) <= kReach) return Grip::Right;
    return x >= frame.left() && x <= frame.right() ? Grip::Inside : Grip::None;
}

void Overview::Show(double start, double end) {
    const auto first = static_cast<double>(load_.Start());
    const auto last = static_cast<double>(load_.End());
    const double length = std::min(end - start, last - first);
    if (length <= 0 || !onShow) return;
    const double from = std::clamp(start, first, last - length);
    onShow(from, from + length);
}

// Beside the frame: its middle comes there.
void Overview::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !display_) return;
    const double x = event->position().x();
    if (GripAt(x) == Grip::None) {
        const double half = (display_->second - display_->first) / 2;
        Show(TimeOf(x) - half, TimeOf(x) + half);
    }
    grip_ = GripAt(x) == Grip::None ? Grip::Inside : GripAt(x);
    grabbed_ = TimeOf(x);
    before_ = *display_;
}

void Overview::mouseMoveEvent(QMouseEvent* event) {
    const double x = event->position().x();
    if (grip_ == Grip::None || !(event->buttons() & Qt::LeftButton)) {
        const Grip grip = GripAt(x);
        const bool edge = grip == Grip::Left || grip == Grip::Right;
        setCursor(edge ? Qt::SizeHorCursor : Qt::ArrowCursor);
        return;
    }
    const double moved = TimeOf(x) - grabbed_;
    if (grip_ == Grip::Inside) return Show(before_.first + moved, before_.second + moved);
    if (grip_ == Grip::Left && before_.first + moved < before_.second)
        Show(before_.first + moved, before_.second);
    if (grip_ == Grip::Right && before_.second + moved > before_.first)
        Show(before_.first, before_.second + moved);
}

void Overview::mouseReleaseEvent(QMouseEvent*) {
    grip_ = Grip::None;
}

// Left and right move the frame by half of itself, up and down halve and double it.
void Overview::keyPressEvent(QKeyEvent* event) {
    if (!display_) return QWidget::keyPressEvent(event);
    const auto [start, end] = *display_;
    const double half = (end - start) / 2;
    switch (event->key()) {
        case Qt::Key_Left:
            return Show(start - half, end - half);
        case Qt::Key_Right:
            return Show(start + half, end + half);
        case Qt::Key_Up:
            return Show(start + half / 2, end - half / 2);
        case Qt::Key_Down:
            return Show(start - half, end + half);
        case Qt::Key_Escape:
            if (grip_ != Grip::None) Show(before_.first, before_.second);
            grip_ = Grip::None;
            return;
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace kvx::desktop
