// Pictures against the windows that they are of.

#include <unistd.h>

#include <QXmlStreamReader>
#include <filesystem>
#include <sstream>

#include "analyze/AnalyzeView.h"
#include "framework/StatusFrameWnd.h"
#include "platform/Backend.h"
#include "sink/OSAnalyzeInstanceCtrl.h"
#include "sink/OSTraceInstanceCtrl.h"
#include "support/ComponentWindow.h"
#include "support/WindowPicture.h"
#include "traceview/TraceView.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/picture/TablePicture.h"
#include "workbench/picture/TracePicture.h"
#include "workbench/picture/WritePicture.h"
#include "workbench/simulation/Generate.h"

namespace kvx::test {
namespace {

constexpr SIZE kWindow = {900, 420};

// The same log twice: shown by a window, and drawn as a picture.
class Pictures : public ComponentWindow {
  protected:
    Pictures() {
        std::filesystem::create_directories(folder_);
        const std::string log = (folder_ / "generated.log").string();
        EXPECT_EQ(simulation::GenerateFiles({3000, 7}, log), "");
        for (service::TraceService* const each : {&shown_, &drawn_}) {
            auto recording = formats::OpenRecording(log);
            if (recording) each->SetRecording(std::move(*recording));
        }
        host.services[host::kOSTraceService] = static_cast<IQOSTraceService*>(&shown_);
        host.services[host::kOSTraceAvailability] = static_cast<IQOSTraceAvailability*>(&shown_);
        const service::Recording& recording = *drawn_.GetRecording();
        range_.start = recording.FirstTime() + (recording.LastTime() - recording.FirstTime()) / 3;
        range_.end = *range_.start + (recording.LastTime() - recording.FirstTime()) / 40;
    }
    ~Pictures() override { std::filesystem::remove_all(folder_); }

    // Opens the window of the instance with its usual font.
    template <class Instance>
    void Show(Instance& instance) {
        ASSERT_TRUE(
            instance.Create(WS_CHILD | WS_VISIBLE, {0, 0, kWindow.cx, kWindow.cy}, &Main(), 1));
        instance.SetFont(kDefaultFace, kDefaultPoints);
    }
    void Close() override {
        if (trace_) trace_->DestroyWindow();
        if (analyze_) analyze_->DestroyWindow();
    }
    // The client area of a window.
    static QImage ClientOf(HWND window) {
        IWindows& windows = Backend().Windows();
        const POINT corner = windows.ClientOrigin(window);
        const RECT whole = windows.ScreenBounds(window);
        const SIZE size = windows.ClientSize(window);
        return PictureOf(window).copy(corner.x - whole.left, corner.y - whole.top, size.cx,
                                      size.cy);
    }
    static QImage Drawn(picture::PicturePage& page) {
        return QImage::fromData(QByteArray::fromStdString(picture::EncodePng(page, 96)))
            .convertToFormat(QImage::Format_RGB32);
    }
    static int Differences(const QImage& a, const QImage& b) {
        if (a.size() != b.size()) return -1;
        int differences = 0;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x) differences += a.pixel(x, y) != b.pixel(x, y);
        return differences;
    }

    const std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / ("kvx_pictures_" + std::to_string(getpid()));
    service::TraceService shown_;
    service::TraceService drawn_;
    picture::PictureRange range_;
    std::ostringstream words_;
    const cli::Streams streams_{words_, words_, false};
    std::unique_ptr<CKvxOSTraceInstanceCtrl> trace_;
    std::unique_ptr<CKvxOSAnalyzeInstanceCtrl> analyze_;
};

TEST_F(Pictures, AreTheOSTraceWindowToThePixel) {
    trace_ = std::make_unique<CKvxOSTraceInstanceCtrl>(&host, nullptr, data);
    Show(*trace_);
    COSTraceView& view = *trace_->Frame().TraceView();
    view.OnUpdate(&view, kHintTraceReady, nullptr);
    ASSERT_EQ(view.Display()->SetDisplayRange(static_cast<double>(*range_.start),
                                              static_cast<double>(*range_.end)),
              S_OK);
    view.RefreshStatus();
    view.UpdateWindow();
    const QImage window = ClientOf(view.m_hWnd);

    picture::TracePicture page(drawn_, streams_);
    const SIZE size = {window.width(), window.height() + page.StatusHeight()};
    ASSERT_EQ(page.LayOut(size, range_), "");
    const QImage picture = Drawn(page);
    ASSERT_EQ(picture.height(), size.cy);
    EXPECT_EQ(Differences(picture.copy(0, page.StatusHeight(), size.cx, window.height()), window),
              0);
    // The status bar has its grip at the right end.
    const QImage status =
        ClientOf(Backend().Windows().Child(trace_->Frame().m_hWnd, kStatusBarPane));
    ASSERT_EQ(status.height(), page.StatusHeight());
    const int texts = size.cx - 40;
    EXPECT_EQ(Differences(picture.copy(0, 0, texts, status.height()),
                          status.copy(0, 0, texts, status.height())),
              0);
}

TEST_F(Pictures, AreTheTablesToThePixel) {
    ASSERT_EQ(data.engine.Open(nullptr), 1);
    int advanced = 0;
    data.engine.AnalyzeUpTo(nullptr, 1e18, &advanced);
    data.contexts.Load();
    data.markers.MoveStartIntoDisplay(nullptr, static_cast<double>(*range_.start));
    data.markers.MoveEndIntoDisplay(nullptr, static_cast<double>(*range_.end));
    analyze_ = std::make_unique<CKvxOSAnalyzeInstanceCtrl>(&host, nullptr, data);
    Show(*analyze_);
    COSAnalyzeView& view = *analyze_->Frame().AnalyzeView();
    for (const auto& [mode, table] : {std::pair{ids::kRunTime, EAnalysis::RunTime},
                                      {ids::kRdyToRun, EAnalysis::RdyToRun},
                                      {ids::kSystemCall, EAnalysis::SysCall}}) {
        analyze_->OnCommand(mode);
        view.UpdateWindow();
        const QImage window = ClientOf(view.m_hWnd);
        picture::TablePicture page(drawn_, streams_, table);
        const SIZE size = {window.width(), window.height() + page.StatusHeight()};
        ASSERT_EQ(page.LayOut(size, {}, range_), "");
        EXPECT_EQ(
            Differences(Drawn(page).copy(0, page.StatusHeight(), size.cx, window.height()), window),
            0)
            << COSTraceData::kForms[static_cast<std::size_t>(table)]->name;
        // Without a size there is room for all of it.
        ASSERT_EQ(page.LayOut(std::nullopt, {16384, 16384}, range_), "");
        EXPECT_GT(page.Size().cx, 300);
        EXPECT_GT(page.Size().cy, 100);
    }
}

// Every bar and mark of the chart stands in a group of its line, with its tip for a title.
TEST_F(Pictures, AsSvgSayWhatEachElementIs) {
    picture::TracePicture page(drawn_, streams_);
    ASSERT_EQ(page.LayOut(kWindow, range_), "");
    const QByteArray text = QByteArray::fromStdString(page.Svg());
    QXmlStreamReader xml(text);
    int titles = 0;
    int depth = 0;
    QSet<QString> names;
    QSet<QString> texts;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            ++depth;
            if (xml.name() == u"title") {
                ++titles;
                EXPECT_FALSE(xml.readElementText().isEmpty());
                --depth;
                EXPECT_EQ(depth, 4) << "svg, body, group of the line, group of the element";
            } else if (xml.name() == u"text") {
                texts << xml.readElementText();
                --depth;
            }
            if (xml.attributes().hasAttribute("data-name"))
                names << xml.attributes().value("data-name").toString();
        } else if (xml.isEndElement()) {
            --depth;
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_EQ(depth, 0);
    EXPECT_GT(titles, 10);
    EXPECT_GT(names.size(), 2);
    EXPECT_TRUE(texts.contains("VEC"));
    for (const QString& name : names) EXPECT_FALSE(name.isEmpty());
}

}  // namespace
}  // namespace kvx::test
