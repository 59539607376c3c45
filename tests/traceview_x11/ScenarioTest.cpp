// One long scenario in the OS Trace window with a real mouse and real keys: tips, markers, columns,
// lines, wheel, keys, the dialog that is stopped.

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <functional>

#include "support/Needs.h"
#include "traceview/TraceWindow.h"

namespace kvx::test {
namespace {

constexpr int kPatience = 15000;  // milliseconds; a busy machine is slow

class RealUser : public TraceWindow {
  protected:
    void SetUp() override {
        if (qEnvironmentVariableIsEmpty("DISPLAY") ||
            QStandardPaths::findExecutable("xdotool").isEmpty()) {
            KVX_SKIP("Xvfb or xdotool is not installed: no real display to work on");
        }
        TraceWindow::SetUp();
    }
    void TearDown() override {
        if (!qEnvironmentVariableIsEmpty("DISPLAY")) TraceWindow::TearDown();
    }

    // Lets the window system and the window work until the condition holds.
    static bool Until(const std::function<bool()>& condition) {
        QElapsedTimer timer;
        timer.start();
        while (!condition() && timer.elapsed() < kPatience) {
            QApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return condition();
    }
    static void User(const QStringList& arguments) {
        QProcess tool;
        tool.start("xdotool", arguments);
        ASSERT_TRUE(Until([&] { return tool.state() == QProcess::NotRunning; }));
        ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
    }
    void MouseTo(CPoint point) {
        CPoint screen = point;
        view->ClientToScreen(&screen);
        User({"mousemove", QString::number(screen.x), QString::number(screen.y)});
    }
    void DragTo(CPoint from, CPoint to) {
        MouseTo(from);
        User({"mousedown", "1"});
        MouseTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
        MouseTo(to);
    }
    void Key(const char* key) { User({"key", key}); }
};

TEST_F(RealUser, ADayInTheChart) {
    Open(PeriodicTrace(3000));
    ASSERT_TRUE(Until([this] { return view->IsWindowVisible(); }));

    // The pointer rests on a bar: a tip; it leaves: none.
    MouseTo({Geometry().X(330.0), Geometry().LineCentre(2)});
    EXPECT_TRUE(Until([this] { return view->IsTipShown(); }));
    MouseTo({Geometry().X(330.0), Geometry().LinesBottom() + 30});
    EXPECT_TRUE(Until([this] { return !view->IsTipShown(); }));

    // The end marker is dragged and dropped; a second drag is taken back with Esc.
    DragTo(InChart(MarkerTime(kMarkerEnd)), InChart(2110));
    User({"mouseup", "1"});
    EXPECT_TRUE(Until([this] { return !data.markers.IsAnyDragging(); }));
    const double end = MarkerTime(kMarkerEnd);
    EXPECT_NEAR(end, 2110.0, 60.0);
    DragTo(InChart(end), InChart(1110));
    EXPECT_TRUE(Until([&] { return MarkerTime(kMarkerEnd) < end; }));
    Key("Escape");
    EXPECT_TRUE(Until([&] { return MarkerTime(kMarkerEnd) == end; }));
    User({"mouseup", "1"});
    EXPECT_EQ(MarkerTime(kMarkerEnd), end);

    // The name column is made wider by its edge.
    const int left = Geometry().left;
    DragTo({left, 5}, {left + 60, 5});
    User({"mouseup", "1"});
    EXPECT_TRUE(Until([&] { return Geometry().left > left + 40; }));

    // A line is clicked, and another one carried to the top.
    MouseTo(Cell(1));
    User({"click", "1"});
    EXPECT_TRUE(Until([this] { return Enabled(ids::kHideLine); }));
    const CString carried = NameOf(2);
    DragTo(Cell(2), Cell(0));
    User({"mouseup", "1"});
    EXPECT_TRUE(Until([&] { return NameOf(0) == carried; }));

    // Wheel and keys.
    MouseTo(InChart(1500));
    const double scale = Geometry().scale;
    User({"keydown", "ctrl", "click", "4", "keyup", "ctrl"});
    EXPECT_TRUE(Until([&] { return Geometry().scale > scale; }));
    Key("minus");
    EXPECT_TRUE(Until([&] { return Geometry().scale <= scale * 1.001; }));
    Key("f");
    EXPECT_TRUE(Until([&] { return Geometry().displayEnd == end; }));
    Key("Right");
    EXPECT_TRUE(Until([&] { return Geometry().displayEnd > end; }));
    CString meanings;
    boxes.ExpectDialog(
        [&](CDialog& sheet) { meanings = sheet.GetDlgItemText(ids::kMeaningsColumn); });
    Key("question");
    EXPECT_TRUE(Until([&] { return meanings.find("Expand") != CString::npos; }));

    // Decoding the rest is stopped, then done.
    const double before = Geometry().displayStart;
    StopAfter(2);
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    EXPECT_EQ(Geometry().displayStart, before);
    service.onCall = nullptr;
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    EXPECT_EQ(service.Decoded(), service.Trace().Count());
}

}  // namespace
}  // namespace kvx::test
