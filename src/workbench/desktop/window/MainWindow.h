#pragma once
// The program's main window: menus, status line, start page, drop of traces. What the user asks for
// goes to the owner through the callbacks, which must be set before the window is shown.

#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <functional>

#include "workbench/desktop/window/Appearance.h"
#include "workbench/desktop/window/LossIndicator.h"
#include "workbench/desktop/window/RecentFiles.h"
#include "workbench/desktop/window/StartPage.h"
#include "workbench/service/TraceService.h"

namespace kvx::desktop {

class MainWindow final : public QMainWindow {
  public:
    // settings and appearance must outlive the window.
    MainWindow(Settings& settings, AppearanceSwitch& appearance);

    std::function<void(const TraceFiles& files)> onOpen;
    std::function<void()> onReload;
    std::function<void()> onReading;
    std::function<void()> onClose;
    std::function<void(std::uint32_t processor)> onProcessor;
    std::function<void(const QString& path)> onSaveRecording;
    std::function<void(const QString& path)> onOpenWorkspace;
    std::function<void(const QString& path)> onSaveWorkspace;  // empty: where it is already
    std::function<void()> onCloseWorkspace;
    std::function<void()> onExport;
    std::function<void(const QString& path)> onLoadRules;
    std::function<void(const QString& path)> onSaveRules;
    std::function<void()> onFormat;
    std::function<void()> onShowAllLines;
    std::function<bool()> isAnyLineHidden;
    std::function<void(bool ofWindow)> onHelp;  // of the active window, or the first page
    std::function<void()> onDemonstration;
    std::function<void()> onSimulation;
    std::function<void()> onAbout;
    // False keeps the program running.
    std::function<bool()> onQuit;

    // Shows what is open: format, processors, losses.
    void ShowRecording(const service::TraceService* trace);
    // Names of what is open, empty where nothing is.
    void ShowTitle(const QString& recording, const QString& workspace, bool modified);
    // Whether it is in no file yet that stays; one that is can be read anew.
    void ShowUnsaved(bool unsaved);
    // Losses grow while the recording is decoded.
    void ShowLosses(const service::TraceService& trace);
    // The start page stands in for the docking windows while there are none to see.
    void ShowStartPage(bool show);

    // A message box over the window.
    void ShowError(const QString& title, const QString& message);

    // Menus of components stand before this one.
    QAction* HelpMenu() const { return helpMenu_->menuAction(); }
    // Docks of the Workbench have their items at its end.
    QMenu& ViewMenu() const { return *viewMenu_; }
    RecentFiles& Recent() { return recent_; }
    // The folder of the file that was opened or saved last; the home folder at first.
    QString LastFolder() const;
    void RememberFolderOf(const QString& path);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    QMenu* createPopupMenu() override { return nullptr; }

  private:
    void MakeFileMenu();
    void MakeViewMenu();
    void MakeTraceMenu();
    void MakeHelpMenu();
    void MakeStatusLine();
    void FillRecent();
    void FillProcessors(const service::TraceService& trace);
    void ChooseTrace();
    void ChooseFolder();
    void ChooseWorkspace();
    void ChooseSavedWorkspace();
    void ChooseSavedRecording();
    void ChooseRules();
    QString ChooseSaved(const QString& title, const QString& name, const QString& filter);
    void Open(const TraceFiles& files);

    Settings& settings_;
    AppearanceSwitch& appearance_;
    RecentFiles recent_;
    StartPage* startPage_;
    QMenu* recentMenu_ = nullptr;
    QMenu* viewMenu_ = nullptr;
    QMenu* traceMenu_ = nullptr;
    QMenu* processorMenu_ = nullptr;
    QMenu* helpMenu_ = nullptr;
    QAction* showAllLines_ = nullptr;
    QAction* reload_ = nullptr;
    QAction* close_ = nullptr;
    QAction* saveRecording_ = nullptr;
    QAction* export_ = nullptr;
    QAction* saveWorkspace_ = nullptr;
    QAction* closeWorkspace_ = nullptr;
    // Names of what is open.
    QString recording_;
    QString workspace_;
    QLabel* processor_ = nullptr;
    QLabel* format_ = nullptr;
    LossIndicator* losses_ = nullptr;
};

}  // namespace kvx::desktop
