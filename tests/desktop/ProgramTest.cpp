// The program as a user starts it, with the real component.

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

namespace {

struct Outcome {
    int status = -1;
    QByteArray out;
    QByteArray error;
};

class Program : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder_.isValid());
        environment_.remove("QT_QPA_PLATFORM");
        environment_.remove("DISPLAY");
        environment_.remove("WAYLAND_DISPLAY");
        environment_.insert("XDG_CONFIG_HOME", folder_.filePath("config"));
        QFile log(Log());
        ASSERT_TRUE(log.open(QIODevice::WriteOnly));
        for (int i = 0; i < 20; ++i) {
            log.write(QByteArray("[") + QByteArray::number(1000 + i * 100) + "] dispatch to task " +
                      QByteArray::number(i % 3 + 1) + ".\n");
        }
    }
    static QString BinFolder() { return QString::fromLocal8Bit(qgetenv("KVX_BIN_DIR")); }
    QString Log() const { return folder_.filePath("small.log"); }

    Outcome Run(const QStringList& arguments, const QString& folder = BinFolder()) {
        QProcess process;
        process.setProcessEnvironment(environment_);
        process.setWorkingDirectory(folder_.path());
        process.start(folder + "/kvxostrace", arguments);
        if (!process.waitForFinished(60'000)) {
            process.kill();
            ADD_FAILURE() << "hangs: " << arguments.join(' ').toStdString();
            return {};
        }
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << arguments.join(' ').toStdString();
        return {process.exitCode(), process.readAllStandardOutput(),
                process.readAllStandardError()};
    }

    QTemporaryDir folder_;
    QProcessEnvironment environment_ = QProcessEnvironment::systemEnvironment();
};

int Colours(const QImage& image) {
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) colours.insert(image.pixel(x, y));
    }
    return static_cast<int>(colours.size());
}

TEST_F(Program, SaysWhatItIsAndHowItIsUsed) {
    const Outcome version = Run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(version.out.startsWith("kvxostrace ")) << version.out.toStdString();
    const Outcome help = Run({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* word : {"FILE", "info", "events", "render"}) {
        EXPECT_TRUE(help.out.contains(word)) << word;
    }
    for (const QStringList& wrong : {QStringList{"--no-such-option"}, QStringList{"render", Log()},
                                     QStringList{"render", "-o", "x"}}) {
        const Outcome outcome = Run(wrong);
        EXPECT_EQ(outcome.status, 2) << wrong.join(' ').toStdString();
        EXPECT_FALSE(outcome.error.isEmpty());
    }
}

TEST_F(Program, RendersTheWindowsContentAtTheSizeAskedFor) {
    const QString path = folder_.filePath("a.png");
    const Outcome outcome = Run({"render", Log(), "-o", path, "--size", "700x300"});
    ASSERT_EQ(outcome.status, 0) << outcome.error.toStdString();
    EXPECT_EQ((outcome.out + outcome.error).toStdString(), "") << "nothing to say";
    const QImage whole(path);
    ASSERT_EQ(whole.size(), QSize(700, 300));
    EXPECT_GT(Colours(whole), 5) << "a chart, not a blank page";

    QImage again;
    again.loadFromData(Run({"render", Log(), "-o", "-", "--size", "700x300"}).out);
    EXPECT_TRUE(again == whole) << "the picture depends on nothing else";
    const QString part = folder_.filePath("part.png");
    ASSERT_EQ(
        Run({"render", Log(), "-o", part, "--size", "700x300", "--start", "1500", "--end", "1.7ms"})
            .status,
        0);
    EXPECT_FALSE(QImage(part) == whole);
}

TEST_F(Program, RendersInLogicalPixelsHoweverTheScreenIsScaled) {
    const QStringList render{"render", Log(), "-o", "-", "--size", "700x300"};
    const QByteArray plain = Run(render).out;
    ASSERT_FALSE(plain.isEmpty());
    for (const auto& [name, value] : {std::pair{"QT_SCALE_FACTOR", "1.5"},
                                      {"QT_SCREEN_SCALE_FACTORS", "2"},
                                      {"QT_USE_PHYSICAL_DPI", "1"},
                                      {"QT_FONT_DPI", "144"}}) {
        environment_.insert(name, value);
        EXPECT_TRUE(Run(render).out == plain) << name;
        environment_.remove(name);
    }
}

TEST_F(Program, RefusesWhatItCannotRender) {
    const QString path = folder_.filePath("never.png");
    struct Case {
        QStringList options;
        int status;
        const char* message;
    };
    const Case cases[] = {
        {{"render", Log(), "-o", path, "--size", "700"}, 2, "700"},
        {{"render", Log(), "-o", path, "--size", "0x300"}, 2, "0x300"},
        {{"render", Log(), "-o", path, "--size", "99999x300"}, 2, "99999x300"},
        {{"render", Log(), "-o", path, "--start", "soon"}, 2, "soon"},
        {{"render", Log(), "-o", path, "--start", "1600", "--end", "1500"}, 2, "1600"},
        {{"render", Log(), "-o", path, "--end", "99999"}, 2, "99999"},
        {{"render", folder_.filePath("absent.log"), "-o", path}, 3, "absent.log"},
        {{"render", folder_.path(), "-o", path}, 3, "metadata"},
        {{"render", Log(), "-o", folder_.filePath("no/such/folder.png")}, 1, "no/such/folder.png"},
    };
    for (const Case& c : cases) {
        const Outcome outcome = Run(c.options);
        EXPECT_EQ(outcome.status, c.status) << c.options.join(' ').toStdString();
        EXPECT_TRUE(outcome.error.contains(c.message)) << outcome.error.toStdString();
        EXPECT_EQ(outcome.error.count('\n'), 1) << "one message: " << outcome.error.toStdString();
    }
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(Program, RendersWithoutTheModules) {
    ASSERT_TRUE(QFile::copy(BinFolder() + "/kvxostrace", folder_.filePath("kvxostrace")));
    const Outcome outcome = Run({"render", Log(), "-o", "alone.png"}, folder_.path());
    EXPECT_EQ(outcome.status, 0) << outcome.error.toStdString();
    EXPECT_EQ(QImage(folder_.filePath("alone.png")).size(), QSize(1600, 900));
}

TEST_F(Program, RendersTablesDrawingsAndOtherResolutions) {
    const QString path = folder_.filePath("a.png");
    const auto render = [&](QStringList options) {
        const Outcome outcome = Run(QStringList{"render", Log()} + options);
        EXPECT_EQ(outcome.status, 0) << outcome.error.toStdString();
        return QImage(path);
    };
    const QImage twice = render({"-o", path, "--size", "700x300", "--dpi", "192"});
    EXPECT_EQ(twice.size(), QSize(1400, 600));
    EXPECT_EQ(twice.dotsPerMeterX(), 7559);
    const QImage runTime = render({"-o", path, "--table", "run-time"});
    const QImage calls = render({"-o", path, "--table", "syscalls", "--start", "1500"});
    EXPECT_GT(Colours(runTime), 3);
    EXPECT_FALSE(runTime == calls);
    EXPECT_EQ(render({"-o", path, "--table", "rdy-run", "--size", "300x80"}).size(),
              QSize(300, 80));
    render({"-o", folder_.filePath("a.svg")});
    QFile svg(folder_.filePath("a.svg"));
    ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
    EXPECT_TRUE(svg.readAll().startsWith("<?xml"));
}

TEST_F(Program, WithoutADisplayItLeavesPictureAndSummary) {
    for (const char* display : {"", ":9876"}) {
        environment_.insert("DISPLAY", display);
        const Outcome outcome = Run({Log()});
        ASSERT_EQ(outcome.status, 0) << outcome.error.toStdString();
        const QString picture = folder_.filePath("small.log.png");
        const QString summary = folder_.filePath("small.log.txt");
        EXPECT_TRUE(outcome.out.contains(picture.toLocal8Bit())) << outcome.out.toStdString();
        EXPECT_TRUE(outcome.out.contains(summary.toLocal8Bit())) << outcome.out.toStdString();
        EXPECT_EQ(QImage(picture).size(), QSize(1600, 900));
        QFile text(summary);
        ASSERT_TRUE(text.open(QIODevice::ReadOnly));
        EXPECT_TRUE(text.readAll().contains("dispatches"));
        EXPECT_TRUE(QFile::remove(picture) && QFile::remove(summary));
    }
    const Outcome missing = Run({"absent.log"});
    EXPECT_EQ(missing.status, 3);
    EXPECT_TRUE(missing.error.contains("absent.log"));
}

// What a shell says of the program's end, the program's messages before it.
TEST_F(Program, OutputThatCannotBeWrittenIsNeverASuccess) {
    const auto shell = [&](const QString& script) {
        QProcess process;
        process.setProcessEnvironment(environment_);
        process.start("/bin/sh", {"-c", script, BinFolder() + "/kvxostrace", Log()});
        EXPECT_TRUE(process.waitForFinished(60'000)) << script.toStdString();
        return process.readAllStandardError().toStdString();
    };
    for (const char* command :
         {"keys", "--help", "--version", "events --help", "info \"$1\"", "events \"$1\"",
          "analyze \"$1\" --json", "generate --events 9 -o -", "render \"$1\" -o -"}) {
        const QString run = QString("\"$0\" ") + command;
        const std::string full = shell(run + " > /dev/full; echo $? >&2");
        EXPECT_TRUE(full.ends_with("No space left on device\n1\n")) << command << ": " << full;
        const std::string closed = shell(run + " >&-; echo $? >&2");
        EXPECT_TRUE(closed.ends_with("Bad file descriptor\n1\n")) << command << ": " << closed;
        EXPECT_EQ(shell("(sleep 0.1; " + run + "; echo $? >&2) | true"), "0\n") << command;
    }
    // Files do not get the number of a standard output that is closed.
    const QString script = QString("\"$0\" generate --events 9 -o '%1' >&-; echo $? >&2");
    EXPECT_EQ(shell(script.arg(folder_.filePath("nine.log"))), "0\n");
}

}  // namespace
