// Runs the tests on a real X display of their own. Without Xvfb they skip.

#include <gtest/gtest.h>

#include <QProcess>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QProcess server;
    server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
    if (server.waitForStarted() && server.waitForReadyRead(20000)) {
        qputenv("DISPLAY", ":" + server.readLine().trimmed());
        qputenv("QT_QPA_PLATFORM", "xcb");
    } else {
        qputenv("DISPLAY", "");
    }
    const int result = RUN_ALL_TESTS();
    server.terminate();
    server.waitForFinished(5000);
    return result;
}
