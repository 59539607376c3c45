// Writes pictures of both windows of the component over a recording, in whole sessions with the
// test host: what they draw, which must also be what the screen shows.
//
// usage: window_pictures RECORDING FOLDER
//
// Texts are masked out: they take up as many cells of their font as they have characters, and leave
// no ink. What is left is the same on every back-end.

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>

#include "component/ModuleBoxes.h"
#include "component/TestHost.h"
#include "pictures/MaskedBackend.h"
#include "support/DrawnWindow.h"
#include "support/toolkit/Toolkit.h"
#include "workbench/cli/OpenTrace.h"
#include "workbench/picture/Png.h"

namespace kvx::test {
namespace {

constexpr std::uint32_t kOpenOSTrace = 32770;
constexpr std::uint32_t kOpenOSAnalyze = 32773;
constexpr SIZE kSize = {1000, 520};

std::string PngOf(const Surface& picture) {
    const SIZE size = picture.DeviceSize();
    picture::PngWriter png(size, 96);
    for (int y = 0; y < size.cy; ++y) png.Add(picture.Row(y));
    return png.Finish();
}

// Pixels that the window or one in it has drawn, and that the screen shows otherwise.
int CountHidden(const Surface& drawn, const Surface& shown) {
    int count = 0;
    for (int y = 0; y < drawn.DeviceSize().cy; ++y)
        for (int x = 0; x < drawn.DeviceSize().cx; ++x)
            count += drawn.At(x, y) != kNotDrawn && drawn.At(x, y) != shown.At(x, y);
    return count;
}

void TakePicture(const TestHost& host, const std::string& name) {
    const HWND window = host.docking.Docking();
    CWnd::FromHandle(window)->SetWindowPos(nullptr, 0, 0, kSize.cx, kSize.cy, 0);  // to the front
    CWnd::FromHandle(host.docking.Control())->MoveWindow(0, 0, kSize.cx, kSize.cy);
    Settle();
    const Surface drawn = DrawingOf(window);
    const Surface shown = ScreenOf(window);
    ASSERT_EQ(drawn.DeviceSize(), shown.DeviceSize());
    EXPECT_EQ(CountHidden(drawn, shown), 0) << name;
    std::ofstream(name, std::ios::binary) << PngOf(drawn);
}

std::string g_recording;
std::string g_folder;

TEST(WindowPictures, WhatIsDrawnIsShown) {
    cli::TraceOptions options;
    options.path = g_recording;
    int status = 0;
    const auto service = cli::OpenTrace(options, {std::cout, std::cerr, false}, status);
    ASSERT_NE(service, nullptr);
    TestHost host;
    const MaskedBackend masked;
    const ModuleBoxes boxes;
    host.services[host::kOSTraceService] = static_cast<IQOSTraceService*>(service.get());
    host.services[host::kOSTraceAvailability] = static_cast<IQOSTraceAvailability*>(service.get());
    host.docking.main->MoveWindow(0, 0, kSize.cx + 50, kSize.cy + 80);
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    host.Send(host::kEventTraceReady);
    TakePicture(host, g_folder + "/trace.png");
    host.docking.Command(kOpenOSAnalyze);
    TakePicture(host, g_folder + "/analyze.png");
}

}  // namespace
}  // namespace kvx::test

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (count != 3) return std::cerr << "usage: window_pictures RECORDING FOLDER\n", 2;
    kvx::test::g_recording = arguments[1];
    kvx::test::g_folder = arguments[2];
    return RUN_ALL_TESTS();
}
