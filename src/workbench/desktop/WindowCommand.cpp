#include "workbench/desktop/WindowCommand.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>
#include <fstream>

#include "workbench/cli/SubCommands.h"
#include "workbench/desktop/Display.h"
#include "workbench/desktop/SavePicture.h"
#include "workbench/desktop/ToolkitMessages.h"
#include "workbench/desktop/Workbench.h"
#include "workbench/formats/OpenRecording.h"

namespace kvx::desktop {
namespace {

int RunWindow(const std::string& file) {
    FilterToolkitMessages();
    int count = 1;
    char name[] = "kvxostrace";
    char* arguments[] = {name, nullptr};
    QApplication application(count, arguments);
    QApplication::setApplicationName("kvxostrace");
    QApplication::setDesktopFileName("kvxostrace");
    Settings settings(Settings::UserPath());
    Workbench workbench(settings);
    const QString failure = workbench.Start(ModuleDirectory());
    workbench.Window().show();
    QTimer::singleShot(0, &application, [&] {
        if (!failure.isEmpty()) workbench.Window().ShowError("Cannot Start Component", failure);
        if (!file.empty()) workbench.Open(QFile::decodeName(file.c_str()));
    });
    return QApplication::exec();
}

// Where results go: the current folder, or the temporary one when nothing can be written there.
QString ResultFolder() {
    return QFileInfo(QDir::currentPath()).isWritable() ? QDir::currentPath() : QDir::tempPath();
}

int WriteSummary(const std::string& file, const std::string& path, const cli::Streams& streams) {
    std::ofstream summary(path);
    if (!summary) {
        streams.error << "kvxostrace: " << path << ": cannot be written\n";
        return cli::kExitFailed;
    }
    const char* arguments[] = {"kvxostrace", "info", file.c_str()};
    return cli::RunSubCommand(3, arguments, {summary, streams.error, false});
}

int WriteResults(const std::string& file, const cli::Streams& streams) {
    auto recording = formats::OpenRecording(file);
    if (!recording) {
        streams.error << "kvxostrace: " << recording.GetError().message << "\n";
        return cli::kExitUnreadable;
    }
    const QString base = ResultFolder() + "/" +
                         QFileInfo(QDir::cleanPath(QFile::decodeName(file.c_str()))).fileName();
    const std::string picture = QFile::encodeName(base + ".png").toStdString();
    const std::string summary = QFile::encodeName(base + ".txt").toStdString();
    if (const int status = WriteSummary(file, summary, streams)) return status;
    if (const int status = SavePicture(std::move(*recording), {}, picture, streams)) return status;
    streams.out << "There is no display to open a window on.\nPicture: " << picture
                << "\nSummary: " << summary << "\n";
    return cli::kExitDone;
}

}  // namespace

int RunWorkbench(const std::string& file, const cli::Streams& streams) {
    return IsDisplayThere() ? RunWindow(file) : WriteResults(file, streams);
}

}  // namespace kvx::desktop
