// One walk on a real display, with a real mouse and real keys. Skips where there is no Xvfb.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QThread>
#include <cstdio>

#include "platform/Backend.h"
#include "support/Needs.h"

namespace {

constexpr int kPatience = 20000;  // milliseconds; a busy machine is slow

class SmokeTest : public testing::Test {
  protected:
    void SetUp() override {
        kvx::InstallBackend();
        for (const char* tool : {"Xvfb", "xdotool"})
            if (QStandardPaths::findExecutable(tool).isEmpty())
                KVX_SKIP(tool + std::string(" is not installed: no real display to walk on"));
        server_.start("Xvfb",
                      {"-displayfd", "1", "-screen", "0", "1024x768x24", "-nolisten", "tcp"});
        ASSERT_TRUE(server_.waitForStarted());
        ASSERT_TRUE(server_.waitForReadyRead(kPatience)) << "Xvfb names no display";
        environment_ = QProcessEnvironment::systemEnvironment();
        environment_.insert("DISPLAY", ":" + server_.readLine().trimmed());
        environment_.insert("QT_QPA_PLATFORM", "xcb");
        program_.setProcessEnvironment(environment_);
        program_.start(qEnvironmentVariable("KVX_BIN_DIR", "bin") + "/platform_smoke_program", {});
        ASSERT_TRUE(program_.waitForStarted());
    }
    void TearDown() override {
        End(program_);
        End(server_);
    }
    static void End(QProcess& process) {
        if (process.state() == QProcess::NotRunning) return;
        process.terminate();
        if (!process.waitForFinished(5000)) process.kill();
        process.waitForFinished(5000);
    }
    // Reads on to a line that begins so; the rest of it.
    QByteArray Await(const QByteArray& beginning) {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < kPatience) {
            while (program_.canReadLine()) {
                const QByteArray line = program_.readLine().trimmed();
                seen_ += line + "\n";
                if (line.startsWith(beginning)) return line.mid(beginning.size()).trimmed();
            }
            program_.waitForReadyRead(100);
        }
        ADD_FAILURE() << "no line \"" << beginning.toStdString() << "\" after:\n"
                      << seen_.toStdString() << program_.readAllStandardError().toStdString();
        return {};
    }
    void User(const QStringList& arguments) {
        QProcess tool;
        tool.setProcessEnvironment(environment_);
        tool.start("xdotool", arguments);
        ASSERT_TRUE(tool.waitForFinished(kPatience));
        ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
    }
    void MoveTo(int x, int y) { User({"mousemove", QString::number(x), QString::number(y)}); }
    void ClickAt(const QByteArray& place) {
        const auto numbers = place.split(' ');
        ASSERT_GE(numbers.size(), 2);
        MoveTo(numbers[0].toInt(), numbers[1].toInt());
        User({"click", "1"});
    }
    // Of a line that begins with a colour, 0x00BBGGRR.
    static bool IsBlue(const QByteArray& line) {
        const unsigned pixel = line.left(6).toUInt(nullptr, 16);
        return (pixel >> 16 & 255u) > (pixel & 255u) + 40u;
    }
    QProcess server_;
    QProcess program_;
    QProcessEnvironment environment_;
    QByteArray seen_;
};

TEST_F(SmokeTest, MouseKeysDialogsAndLongWork) {
    const auto ready = Await("ready at").split(' ');  // its surface is on the screen
    ASSERT_EQ(ready.size(), 4);
    const int left = ready[0].toInt();
    const int top = ready[1].toInt();
    const int width = ready[3].toInt();

    MoveTo(left + 50, top + 60);
    User({"mousedown", "1"});
    EXPECT_EQ(Await("down"), "50 60");
    MoveTo(left + 450, top + 70);  // outside the window: the mouse is captured
    EXPECT_EQ(Await("drag"), "450 70");
    User({"mouseup", "1"});
    EXPECT_EQ(Await("up"), "450 70");
    MoveTo(left + 20, top + 20);
    User({"click", "--repeat", "2", "--delay", "50", "1"});
    Await("twice");
    User({"click", "5"});
    EXPECT_EQ(Await("wheel"), "-120");
    MoveTo(left + width + 8, top + 292);  // the scroll bar's lower arrow
    User({"click", "1"});
    EXPECT_EQ(Await("scroll"), "1");

    User({"key", "Page_Down"});
    EXPECT_EQ(Await("key"), "34");
    User({"key", "d"});
    ClickAt(Await("dialog at"));
    EXPECT_EQ(Await("dialog"), "1");

    User({"key", "s"});
    QByteArray bar = Await("bar");
    while (!bar.isEmpty() && !IsBlue(bar)) bar = Await("bar");
    EXPECT_TRUE(IsBlue(bar)) << "the full bar is on the screen while work goes on";
    ClickAt(bar.mid(bar.indexOf("at") + 3));
    EXPECT_EQ(Await("work"), "stopped, view waited");
    User({"key", "q"});
    Await("ended");
    EXPECT_TRUE(program_.waitForFinished(kPatience));
    EXPECT_EQ(program_.exitCode(), 0);
}

}  // namespace
