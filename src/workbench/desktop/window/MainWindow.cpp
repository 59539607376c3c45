#include "workbench/desktop/window/MainWindow.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

constexpr char kProgramName[] = "KVX Workbench";
constexpr char kGeometry[] = "Window/geometry";
constexpr char kFolder[] = "Window/folder";
constexpr char kWorkspaces[] = "KVX workspaces (*.kvxw)";
constexpr QSize kFirstSize(1280, 760);

// The one local file or folder that is dragged, or an empty path.
// None where something is dragged that is no file here.
TraceFiles DraggedFiles(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) paths << url.toLocalFile();
    return paths.contains(QString()) ? TraceFiles() : TraceFiles(paths);
}

}  // namespace

MainWindow::MainWindow(Settings& settings, AppearanceSwitch& appearance)
    : settings_(settings),
      appearance_(appearance),
      recent_(settings),
      startPage_(new StartPage(this)) {
    setDockNestingEnabled(true);
    setAcceptDrops(true);
    setCentralWidget(startPage_);
    startPage_->onOpenTrace = [this] { ChooseTrace(); };
    startPage_->onOpenFolder = [this] { ChooseFolder(); };
    startPage_->onDemonstration = [this] { onDemonstration(); };
    startPage_->onSimulation = [this] { onSimulation(); };
    startPage_->onOpenRecent = [this](const QString& recording) {
        Open(TraceFiles::FromText(recording));
    };
    MakeFileMenu();
    MakeViewMenu();
    MakeTraceMenu();
    MakeHelpMenu();
    MakeStatusLine();
    ShowRecording(nullptr);
    ShowUnsaved(false);
    if (!restoreGeometry(settings_.Get(kGeometry).toByteArray())) resize(kFirstSize);
    FillRecent();
}

void MainWindow::ShowRecording(const service::TraceService* trace) {
    const service::Recording* recording = trace ? trace->GetRecording() : nullptr;
    close_->setEnabled(recording != nullptr);
    export_->setEnabled(recording != nullptr);
    traceMenu_->menuAction()->setVisible(recording && recording->Processors().size() > 1);
    processor_->setVisible(recording && recording->Processors().size() > 1);
    format_->setVisible(recording != nullptr);
    FillRecent();
    if (!recording) return losses_->hide();
    const QFileInfo file(QFile::decodeName(recording->Path().c_str()));
    format_->setText(FromUtf8(recording->FormatName()));
    format_->setToolTip(file.absoluteFilePath());
    FillProcessors(*trace);
    ShowLosses(*trace);
}

void MainWindow::ShowTitle(const QString& recording, const QString& workspace, bool modified) {
    QStringList parts;
    if (!recording.isEmpty()) parts << recording;
    if (!workspace.isEmpty()) parts << workspace + "[*]";
    setWindowTitle((parts << kProgramName).join(" — "));
    setWindowModified(modified);
    recording_ = recording;
    workspace_ = workspace;
    closeWorkspace_->setEnabled(!workspace.isEmpty());
}

void MainWindow::ShowUnsaved(bool unsaved) {
    saveRecording_->setEnabled(unsaved);
    reload_->setEnabled(close_->isEnabled() && !unsaved);
}

void MainWindow::ShowLosses(const service::TraceService& trace) {
    const service::Recording* recording = trace.GetRecording();
    if (recording) losses_->Tell(trace.Losses(), recording->Warnings());
}

void MainWindow::ShowStartPage(bool show) {
    startPage_->setVisible(show);
}

void MainWindow::ShowError(const QString& title, const QString& message) {
    QMessageBox box(QMessageBox::Warning, title, message, QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.exec();
}

void MainWindow::MakeFileMenu() {
    QMenu* menu = menuBar()->addMenu("&File");
    menu->addAction("&Open Trace…", QKeySequence::Open, this, [this] { ChooseTrace(); });
    menu->addAction("Open CTF &Folder…", QKeySequence("Ctrl+Shift+O"), this,
                    [this] { ChooseFolder(); });
    recentMenu_ = menu->addMenu("Open &Recent");
    saveRecording_ =
        menu->addAction("Save Recordin&g As…", this, [this] { ChooseSavedRecording(); });
    reload_ = menu->addAction("Re&load", QKeySequence("Ctrl+R"), this, [this] { onReload(); });
    menu->addAction("Rea&ding of Recordings…", this, [this] { onReading(); });
    close_ = menu->addAction("&Close", QKeySequence("Ctrl+W"), this, [this] { onClose(); });
    export_ = menu->addAction("&Export…", QKeySequence("Ctrl+E"), this, [this] { onExport(); });
    menu->addAction("Load R&ules…", this, [this] { ChooseRules(); });
    menu->addAction("Sa&ve Rules As…", this, [this] {
        const QString path = ChooseSaved("Save Rules As", "rules.toml", "Rules (*.toml)");
        if (!path.isEmpty()) onSaveRules(path);
    });
    menu->addSeparator();
    menu->addAction("Open &Workspace…", QKeySequence("Ctrl+Alt+O"), this,
                    [this] { ChooseWorkspace(); });
    menu->addAction("&Save Workspace", QKeySequence::Save, this, [this] {
        workspace_.isEmpty() ? ChooseSavedWorkspace() : onSaveWorkspace({});
    });
    menu->addAction("Save Workspace &As…", QKeySequence("Ctrl+Shift+S"), this,
                    [this] { ChooseSavedWorkspace(); });
    closeWorkspace_ = menu->addAction("Close Wor&kspace", this, [this] { onCloseWorkspace(); });
    menu->addSeparator();
    menu->addAction("&Quit", QKeySequence("Ctrl+Q"), this, [this] { close(); });
}

void MainWindow::MakeViewMenu() {
    QMenu* view = menuBar()->addMenu("&View");
    viewMenu_ = view;
    view->addAction("&Format…", this, [this] { onFormat(); });
    showAllLines_ = view->addAction("Show All &Lines", this, [this] { onShowAllLines(); });
    connect(view, &QMenu::aboutToShow, this,
            [this] { showAllLines_->setEnabled(isAnyLineHidden()); });
    QMenu* menu = view->addMenu("&Appearance");
    auto* group = new QActionGroup(menu);
    const auto add = [&](const QString& text, Appearance appearance) {
        QAction* action = menu->addAction(text, this, [this, appearance] {
            appearance_.Set(appearance);
            settings_.Set("Window/appearance", NameOf(appearance));
        });
        action->setCheckable(true);
        action->setChecked(appearance_.Get() == appearance);
        group->addAction(action);
    };
    add("Like the &System", Appearance::System);
    add("&Light", Appearance::Light);
    add("&Dark", Appearance::Dark);
    view->addSeparator();
}

void MainWindow::MakeTraceMenu() {
    traceMenu_ = menuBar()->addMenu("&Trace");
    processorMenu_ = traceMenu_->addMenu("&Processor");
}

void MainWindow::MakeHelpMenu() {
    helpMenu_ = menuBar()->addMenu("&Help");
    helpMenu_->addAction("&Help for This Window", QKeySequence("F1"), this,
                         [this] { onHelp(true); });
    helpMenu_->addAction("&Contents", this, [this] { onHelp(false); });
    helpMenu_->addSeparator();
    helpMenu_->addAction("Show &Demonstration", this, [this] { onDemonstration(); });
    helpMenu_->addSeparator();
    helpMenu_->addAction("&About KVX Workbench", this, [this] { onAbout(); });
}

void MainWindow::MakeStatusLine() {
    processor_ = new QLabel;
    format_ = new QLabel;
    losses_ = new LossIndicator;
    statusBar()->addPermanentWidget(losses_);
    statusBar()->addPermanentWidget(processor_);
    statusBar()->addPermanentWidget(format_);
}

void MainWindow::FillRecent() {
    const QStringList recordings = recent_.List();
    startPage_->SetRecent(recordings);
    recentMenu_->clear();
    recentMenu_->setEnabled(!recordings.isEmpty());
    int number = 1;
    for (const QString& recording : recordings) {
        const QString key = number < 10 ? QStringLiteral("&%1 ").arg(number) : QString();
        const TraceFiles files = TraceFiles::FromText(recording);
        QString shown = QFileInfo(files.First()).path() + '/' + files.Name();
        recentMenu_->addAction(key + shown.replace('&', "&&"), this,
                               [this, files] { Open(files); });
        ++number;
    }
    recentMenu_->addSeparator();
    recentMenu_->addAction("&Clear List", this, [this] {
        recent_.Clear();
        FillRecent();
    });
}

void MainWindow::FillProcessors(const service::TraceService& trace) {
    processor_->setText(QStringLiteral("Processor %1").arg(trace.ShownProcessor()));
    processorMenu_->clear();
    auto* group = new QActionGroup(processorMenu_);
    for (const std::uint32_t processor : trace.GetRecording()->Processors()) {
        QAction* action =
            processorMenu_->addAction(QStringLiteral("Processor &%1").arg(processor), this,
                                      [this, processor] { onProcessor(processor); });
        action->setCheckable(true);
        action->setChecked(processor == trace.ShownProcessor());
        group->addAction(action);
    }
}

QString MainWindow::LastFolder() const {
    const QString folder = settings_.Get(kFolder).toString();
    return folder.isEmpty() ? QDir::homePath() : folder;
}

void MainWindow::RememberFolderOf(const QString& path) {
    const QString folder = QFileInfo(path).absolutePath();
    if (QDir(folder).exists()) settings_.Set(kFolder, folder);
}

void MainWindow::ChooseTrace() {
    const QStringList paths = QFileDialog::getOpenFileNames(
        this, "Open Trace", LastFolder(),
        "Traces (*.log *.txt *.html *.dat *.btf *.SVDat *.svdat *.trx *.gz *.zst *.kvxw);;All "
        "files (*)");
    if (!paths.isEmpty()) Open(TraceFiles(paths));
}

void MainWindow::ChooseWorkspace() {
    const QString path =
        QFileDialog::getOpenFileName(this, "Open Workspace", LastFolder(), kWorkspaces);
    if (path.isEmpty()) return;
    RememberFolderOf(path);
    onOpenWorkspace(path);
}

void MainWindow::ChooseSavedWorkspace() {
    const QString name = recording_.isEmpty() ? "workspace" : recording_;
    const QString path =
        ChooseSaved("Save Workspace As", QFileInfo(name).completeBaseName() + ".kvxw", kWorkspaces);
    if (!path.isEmpty()) onSaveWorkspace(path);
}

void MainWindow::ChooseRules() {
    const QString path = QFileDialog::getOpenFileName(this, "Load Rules", LastFolder(),
                                                      "Rules (*.toml);;All files (*)");
    if (!path.isEmpty()) onLoadRules(path);
}

void MainWindow::ChooseSavedRecording() {
    const QString path =
        ChooseSaved("Save Recording As", recording_ + ".log", "Kernel logs (*.log)");
    if (!path.isEmpty()) onSaveRecording(path);
}

// The name's ending is the one that is added where the user gives none.
QString MainWindow::ChooseSaved(const QString& title, const QString& name, const QString& filter) {
    QFileDialog dialog(this, title, LastFolder(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QFileInfo(name).suffix());
    dialog.selectFile(name);
    if (dialog.exec() != QDialog::Accepted) return {};
    const QString path = dialog.selectedFiles().front();
    RememberFolderOf(path);
    return path;
}

void MainWindow::ChooseFolder() {
    const QString path = QFileDialog::getExistingDirectory(this, "Open CTF Folder", LastFolder());
    if (!path.isEmpty()) Open(path);
}

void MainWindow::Open(const TraceFiles& files) {
    RememberFolderOf(files.First());
    onOpen(files);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!onQuit()) return event->ignore();
    settings_.Set(kGeometry, saveGeometry());
    QMainWindow::closeEvent(event);
    QApplication::quit();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!DraggedFiles(*event->mimeData()).IsEmpty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const TraceFiles files = DraggedFiles(*event->mimeData());
    if (files.IsEmpty()) return;
    event->acceptProposedAction();
    // The sender of the drop is not kept waiting while the trace is read.
    QMetaObject::invokeMethod(
        this, [this, files] { Open(files); }, Qt::QueuedConnection);
}

}  // namespace kvx::desktop
