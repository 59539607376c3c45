#pragma once
// A strip of the whole recording: how busy the processor was, by context, where something was
// found, and what of it the chart shows, as a frame that is dragged and resized.

#include <QWidget>
#include <functional>
#include <optional>

#include "workbench/desktop/timing/OverviewLoad.h"

namespace kvx::desktop {

class Overview final : public QWidget {
  public:
    explicit Overview(QWidget* parent = nullptr);

    // The user wants to see that; counts.
    std::function<void(double start, double end)> onShow;

    void SetRecording(std::shared_ptr<const service::DecodedRecording> decoded,
                      std::size_t timeline);
    // Takes in what was decoded since.
    void Advance();
    // Where something was found; counts.
    void SetFindings(std::vector<std::int64_t> times);
    // What the chart shows; none: it shows nothing.
    void SetDisplay(std::optional<std::pair<double, double>> display);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    enum class Grip { None, Left, Inside, Right };

    double XOf(double time) const;
    double TimeOf(double x) const;
    QRectF Frame() const;
    Grip GripAt(double x) const;
    void Show(double start, double end);
    void DrawLoad(QPainter& painter) const;

    OverviewLoad load_;
    std::vector<std::int64_t> findings_;
    std::optional<std::pair<double, double>> display_;
    Grip grip_ = Grip::None;
    double grabbed_ = 0;  // time under the pointer when the drag began
    std::pair<double, double> before_{};
};

}  // namespace kvx::desktop
