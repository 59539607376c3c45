#include "workbench/desktop/picture/Picture.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <algorithm>

#include "host/OSTraceRange.h"
#include "workbench/desktop/ToolkitMessages.h"
#include "workbench/desktop/Workbench.h"

namespace kvx::desktop {
namespace {

constexpr int kPollMilliseconds = 50;

// Answers message boxes that nobody sees, and keeps their texts.
class UnseenBoxes {
  public:
    UnseenBoxes() {
        QObject::connect(&poll_, &QTimer::timeout, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            if (!texts_.isEmpty()) texts_ += "\n";
            texts_ += box->text();
            box->close();
        });
        poll_.start(kPollMilliseconds);
    }
    std::string Texts() const { return texts_.toStdString(); }

  private:
    QTimer poll_;
    QString texts_;
};

// The content of a docking window on its own, at an exact size.
class TakenOut {
  public:
    TakenOut(DockingWindow& window, QSize size) : window_(window) {
        window.Area().setParent(nullptr);
        window.Area().resize(size);
        window.Area().show();
    }
    ~TakenOut() { window_.Area().setParent(window_.widget()); }
    TakenOut(const TakenOut&) = delete;
    TakenOut& operator=(const TakenOut&) = delete;

  private:
    DockingWindow& window_;
};

// Empty: done.
std::string ShowRange(Workbench& workbench, const PictureRequest& request) {
    service::TraceService& trace = workbench.Trace();
    std::int32_t first = 0;
    std::int32_t last = 0;
    std::int64_t start = 0;
    std::int64_t end = 0;
    if (Failed(trace.GetRecordRange(&first, &last, &start, &end)) ||
        Failed(trace.GetEventTime(0, &start))) {
        return {};  // nothing to choose a range from
    }
    // The recording may begin before its first event.
    start = std::max(start, request.start.value_or(start));
    end = std::min(end, request.end.value_or(end));
    if (start >= end) return {};
    auto* range = host::Service<host::IQOSTraceRange>(&workbench.Host(), host::kOSTraceRange);
    if (range &&
        Succeeded(range->SetDisplayRange(static_cast<double>(start), static_cast<double>(end)))) {
        return {};
    }
    return "the range could not be shown";
}

Result<Picture> Paint(Workbench& workbench, std::unique_ptr<service::TraceService> trace,
                      const PictureRequest& request) {
    workbench.OpenTraceWindow();
    if (workbench.Docking().Windows().All().empty()) {
        return Error{"the component opened no window"};
    }
    DockingWindow& window = *workbench.Docking().Windows().All().front();
    const TakenOut content(window, request.size);
    if (!workbench.Show(std::move(trace))) return Error{"the component is not there"};
    if (std::string failure = ShowRange(workbench, request); !failure.empty()) {
        return Error{failure};
    }
    QApplication::processEvents();
    return Picture{window.Area().grab().toImage(), workbench.Trace().Losses()};
}

}  // namespace

void PrepareOffscreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // One pixel of the picture is one logical pixel of the window, however the screen is scaled.
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    qunsetenv("QT_FONT_DPI");
    qunsetenv("QT_SCALE_FACTOR");
    qunsetenv("QT_SCREEN_SCALE_FACTORS");
    FilterToolkitMessages();
}

Result<Picture> MakePicture(std::unique_ptr<service::TraceService> trace,
                            const PictureRequest& request) {
    Settings settings;
    settings.Set("Window/appearance", NameOf(Appearance::Light));
    const UnseenBoxes boxes;
    Workbench workbench(settings);
    if (const QString failure = workbench.Start(ModuleDirectory()); !failure.isEmpty()) {
        const std::string shown = boxes.Texts();
        return Error{failure.toStdString() + (shown.empty() ? "" : "\n" + shown)};
    }
    Result<Picture> picture = Paint(workbench, std::move(trace), request);
    if (!picture && !boxes.Texts().empty()) {
        return Error{picture.GetError().message + "\n" + boxes.Texts()};
    }
    return picture;
}

}  // namespace kvx::desktop
