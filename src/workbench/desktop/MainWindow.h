#pragma once
// The program's main window: menus, status line, start page, drop of traces. What the user asks for
// goes to the owner through the callbacks, which must be set before the window is shown.

#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <functional>

#include "workbench/desktop/Appearance.h"
#include "workbench/desktop/LossIndicator.h"
#include "workbench/desktop/RecentFiles.h"
#include "workbench/desktop/StartPage.h"
#include "workbench/service/TraceService.h"

namespace kvx::desktop {

class MainWindow final : public QMainWindow {
  public:
    // settings and appearance must outlive the window.
    MainWindow(Settings& settings, AppearanceSwitch& appearance);

    std::function<void(const QString& path)> onOpen;
    std::function<void()> onClose;
    std::function<void(std::uint32_t processor)> onProcessor;
    std::function<void()> onDemonstration;
    std::function<void()> onAbout;

    // Shows what is open: title, format, processors, losses. trace must have a recording, or be
    // null when none is open.
    void ShowRecording(const service::TraceService* trace);
    // Losses grow while the recording is decoded.
    void ShowLosses(const service::TraceService& trace);
    // The start page stands in for the docking windows while there are none to see.
    void ShowStartPage(bool show);

    // A message box over the window.
    void ShowError(const QString& title, const QString& message);

    // Menus of components stand before this one.
    QAction* HelpMenu() const { return helpMenu_->menuAction(); }
    RecentFiles& Recent() { return recent_; }

    void SaveLayout();

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
    void RestoreLayout();
    void FillRecent();
    void FillProcessors(const service::TraceService& trace);
    void ChooseTrace();
    void ChooseFolder();
    QString LastFolder() const;
    void Open(const QString& path);

    Settings& settings_;
    AppearanceSwitch& appearance_;
    RecentFiles recent_;
    StartPage* startPage_;
    QMenu* recentMenu_ = nullptr;
    QMenu* traceMenu_ = nullptr;
    QMenu* processorMenu_ = nullptr;
    QMenu* helpMenu_ = nullptr;
    QAction* close_ = nullptr;
    QLabel* processor_ = nullptr;
    QLabel* format_ = nullptr;
    LossIndicator* losses_ = nullptr;
};

}  // namespace kvx::desktop
