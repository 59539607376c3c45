#include "workbench/desktop/WindowCommand.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>
#include <fstream>

#include "hosting/ModuleFolder.h"
#include "workbench/cli/OpenTrace.h"
#include "workbench/cli/SubCommands.h"
#include "workbench/desktop/Display.h"
#include "workbench/desktop/QtText.h"
#include "workbench/desktop/ToolkitMessages.h"
#include "workbench/desktop/Workbench.h"
#include "workbench/desktop/window/ApplicationIcon.h"
#include "workbench/desktop/window/ReadingDialog.h"
#include "workbench/picture/RenderCommand.h"
#include "workbench/simulation/Generate.h"

namespace kvx::desktop {
namespace {

int RunWindow(const TraceFiles& files) {
    // While the window comes up, the files are read already.
    Settings settings(Settings::UserPath());
    std::unique_ptr<BackgroundRead> reading = files.IsEmpty() || IsWorkspaceName(files.First())
                                                  ? nullptr
                                                  : StartReading(files, ReadingOptions(settings));
    int count = 1;
    char name[] = "kvxostrace";
    char* arguments[] = {name, nullptr};
    QApplication application(count, arguments);
    QApplication::setApplicationName("kvxostrace");
    QApplication::setDesktopFileName("kvxostrace");
    QApplication::setWindowIcon(ApplicationIcon());
    Workbench workbench(settings);
    const QString failure = workbench.Start(FromUtf8(hosting::ModuleFolder()));
    workbench.Window().show();
    QTimer::singleShot(0, &application, [&] {
        if (!failure.isEmpty()) workbench.Window().ShowError("Cannot Start Component", failure);
        if (reading) {
            workbench.Open(files, std::move(reading));
        } else if (!files.IsEmpty()) {
            workbench.OpenWorkspace(files.First());
        } else {
            workbench.OpenDemonstration();
        }
    });
    return QApplication::exec();
}

// Where results go: the current folder, or the temporary one when nothing can be written there.
QString ResultFolder() {
    return QFileInfo(QDir::currentPath()).isWritable() ? QDir::currentPath() : QDir::tempPath();
}

int WriteSummary(const std::vector<std::string>& files, const std::string& path,
                 const cli::Streams& streams) {
    std::ofstream summary(path);
    if (!summary) {
        streams.error << "kvxostrace: " << path << ": cannot be written\n";
        return cli::kExitFailed;
    }
    std::vector<const char*> arguments = {"kvxostrace", "info"};
    for (const std::string& file : files) arguments.push_back(file.c_str());
    const int status = cli::RunSubCommand(static_cast<int>(arguments.size()), arguments.data(),
                                          {summary, streams.error, false});
    if (status != cli::kExitDone || summary.flush()) return status;
    streams.error << "kvxostrace: " << path << ": cannot be written\n";
    return cli::kExitFailed;
}

int WriteResults(const std::vector<std::string>& files, const cli::Streams& streams) {
    const QString first = QDir::cleanPath(QFile::decodeName(files.front().c_str()));
    const QString base = ResultFolder() + "/" + QFileInfo(first).fileName();
    const std::string image = QFile::encodeName(base + ".png").toStdString();
    const std::string summary = QFile::encodeName(base + ".txt").toStdString();
    if (const int failed = WriteSummary(files, summary, streams)) return failed;
    picture::RenderOptions options;
    options.trace.path = files.front();
    options.trace.open.moreFiles.assign(files.begin() + 1, files.end());
    options.output = image;
    if (const int failed = picture::RunRender(options, streams)) return failed;
    streams.out << "There is no display to open a window on.\nPicture: " << image
                << "\nSummary: " << summary << "\n";
    return cli::kExitDone;
}

int WriteDemonstrationResults(const cli::Streams& streams) {
    const QTemporaryDir folder;
    const std::string path = QFile::encodeName(folder.filePath("demonstration.log")).toStdString();
    const std::string failure = simulation::WriteDemonstration(path);
    if (failure.empty()) return WriteResults({path}, streams);
    streams.error << "kvxostrace: " << failure << "\n";
    return cli::kExitFailed;
}

}  // namespace

void PrepareToolkit() {
    FilterToolkitMessages();
}

int RunWorkbench(const std::vector<std::string>& files, const cli::Streams& streams) {
    QStringList paths;
    for (const std::string& file : files) paths << QFile::decodeName(file.c_str());
    if (IsDisplayThere()) return RunWindow(TraceFiles(paths));
    if (!files.empty() && IsWorkspaceName(paths.front())) {
        streams.error << "kvxostrace: " << files.front()
                      << ": a workspace opens in a window, and there is no display\n";
        return cli::kExitFailed;
    }
    return files.empty() ? WriteDemonstrationResults(streams) : WriteResults(files, streams);
}

}  // namespace kvx::desktop
