#pragma once
// The host as a whole: the component, the services that it asks for, and the recording that is
// open.

#include <memory>

#include "hosting/ComponentModule.h"
#include "hosting/HostServices.h"
#include "viewer/ViewerDialogs.h"
#include "viewer/ViewerStore.h"
#include "viewer/ViewerWindow.h"
#include "workbench/service/TraceService.h"

namespace kvx::viewer {

class Viewer final : private IQCommandTarget {
  public:
    // profile: the file that settings are kept in; empty: none.
    explicit Viewer(const CString& profile);
    // Takes the component down.
    ~Viewer();
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;

    // Makes the window, loads the component from the folder and opens both of its windows. A text
    // that says what failed, or an empty one.
    CString Start(const CString& folder);
    // Shows the file in place of what is open; when it cannot be read, a message says so and what
    // is open stays.
    bool Open(const CString& path);
    void Close();
    void ShowProcessor(std::uint32_t processor);
    // Takes the component down and ends the message loop.
    void Quit();

    ViewerWindow& Window() { return window_; }
    service::TraceService& Trace() { return *trace_; }

  private:
    HRESULT KVX_CALL OnCommand(std::uint32_t command) override;
    HRESULT KVX_CALL OnUpdateCommand(std::uint32_t command, CommandState* state) override;
    HRESULT KVX_CALL OnCloseRequest() override { return S_FALSE; }
    HRESULT KVX_CALL GetHelpKey(BSTR*) override { return E_NOTIMPL; }

    void AddOwnMenu();
    void AddProcessorMenu();
    void ChooseFile();
    void ShowAbout();
    void ShowLosses();
    void Install(std::unique_ptr<service::TraceService> trace);
    void ShowState();
    void ShowRecordingStatus();

    ViewerWindow window_;
    hosting::HostObject host_;
    hosting::HostServices services_;
    ViewerTexts texts_;
    ViewerProperties properties_;
    ViewerDialogs dialogs_;
    std::unique_ptr<service::TraceService> trace_;
    hosting::ComponentModule component_;
};

}  // namespace kvx::viewer
