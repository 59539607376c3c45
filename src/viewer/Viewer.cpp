#include "viewer/Viewer.h"

#include <deque>
#include <filesystem>

#include "host/CommandIds.h"
#include "platform/base/Text.h"
#include "platform/base/WinApp.h"
#include "platform/dialogs/FileDialog.h"
#include "platform/dialogs/MessageBox.h"
#include "viewer/LossTexts.h"
#include "viewer/OpenProgress.h"
#include "workbench/formats/OpenRecording.h"

namespace kvx::viewer {
namespace {

constexpr const char* kProgramName = "KVX Viewer";
constexpr RECT kFirstPlace = {60, 60, 1300, 760};

// Own commands and registrations.
constexpr std::uint32_t kOpen = 1;
constexpr std::uint32_t kClose = 2;
constexpr std::uint32_t kExit = 3;
constexpr std::uint32_t kAbout = 4;
constexpr std::uint32_t kRecording = 5;
constexpr std::uint32_t kFirstProcessor = 1000;  // and the processor's number
constexpr std::uint32_t kOwnMenu = 0;
constexpr std::uint32_t kProcessorMenu = 0xFFFFFFFF;

constexpr const char* kFilter =
    "Traces|*.log;*.txt;*.html;*.dat;*.btf;*.SVDat;*.svdat;*.trx;*.gz;*.zst|All files|*||";

}  // namespace

Viewer::Viewer(const CString& profile)
    : services_(host_, {}),
      texts_(profile),
      properties_(profile),
      dialogs_(window_),
      component_(host_) {
    services_.Add(host::kWorkspaceStore, static_cast<IQWorkspaceStoreService*>(&texts_));
    services_.Add(host::kPropertyStore, static_cast<IQPropertyStore*>(&properties_));
    services_.Add(host::kDockingHost, static_cast<IQDockingHost*>(&window_.Docking()));
    host_.onEvent = [this] { window_.UpdateSoon(); };
    window_.onDrop = [this](const CString& path) { Open(path); };
    window_.onClose = [this] { Quit(); };
    window_.onUpdate = [this] { ShowRecordingStatus(); };
    window_.Docking().onCloseRefused = [this](const CString& title) {
        window_.MessageBox(title + " cannot be closed now.", kProgramName, MB_ICONWARNING);
    };
    Install(std::make_unique<service::TraceService>());
}

Viewer::~Viewer() {
    component_.Disconnect();
    host_.onEvent = nullptr;
}

CString Viewer::Start(const CString& folder) {
    if (!window_.CreateMain(kFirstPlace)) return "The window could not be made.";
    AfxSetMainWnd(window_.GetSafeHwnd());
    AddOwnMenu();
    CString failure = component_.Load(folder, "KvxOSTrace");
    if (failure.empty()) failure = component_.Connect();
    if (!failure.empty()) return failure;
    window_.Docking().GiveCommand(ids::kOpenOSTrace);
    window_.Docking().GiveCommand(ids::kOpenOSAnalyze);
    window_.ShowWindow(SW_SHOW);
    window_.SetFocus();
    ShowState();
    return {};
}

void Viewer::AddOwnMenu() {
    const MenuNode file[] = {{u"&Open...", nullptr, kOpen},
                             {u"&Close", nullptr, kClose},
                             {u"About This &Recording...", nullptr, kRecording},
                             {},
                             {u"E&xit", nullptr, kExit}};
    const MenuNode help[] = {{u"&About", nullptr, kAbout}};
    const MenuNode popups[] = {{u"&File", nullptr, 0, file, 5}, {u"&Help", nullptr, 0, help, 1}};
    const MenuNode root{nullptr, nullptr, 0, popups, 2};
    window_.Docking().AddMenu(kOwnMenu, nullptr, &root, this);
    const auto control = [](char key, std::uint32_t command) {
        return Accelerator{static_cast<std::uint16_t>(key), 1, 0, 0, command};
    };
    for (const Accelerator& key : {control('O', kOpen), control('W', kClose), control('Q', kExit)})
        window_.keys.push_back({key, this, kOwnMenu});
}

// Only where there is a choice.
void Viewer::AddProcessorMenu() {
    window_.Docking().RemoveRegistrations(kProcessorMenu);
    const service::Recording* const recording = trace_->GetRecording();
    if (!recording || recording->Processors().size() < 2) return;
    std::deque<std::u16string> texts;
    std::vector<MenuNode> nodes;
    for (const std::uint32_t processor : recording->Processors()) {
        const Bstr text("Processor &" + std::to_string(processor));
        texts.emplace_back(text.Get());
        nodes.push_back({texts.back().c_str(), nullptr, kFirstProcessor + processor});
    }
    const MenuNode popup{u"&Processor", nullptr, 0, nodes.data(),
                         static_cast<std::uint32_t>(nodes.size())};
    const MenuNode root{nullptr, nullptr, 0, &popup, 1};
    window_.Docking().AddMenu(kProcessorMenu, nullptr, &root, this);
}

HRESULT Viewer::OnCommand(std::uint32_t command) {
    return Guarded([&] {
        if (command == kOpen) ChooseFile();
        if (command == kClose) Close();
        if (command == kExit) window_.PostMessage(WM_CLOSE);
        if (command == kAbout) ShowAbout();
        if (command == kRecording) ShowLosses();
        if (command >= kFirstProcessor) ShowProcessor(command - kFirstProcessor);
        return S_OK;
    });
}

HRESULT Viewer::OnUpdateCommand(std::uint32_t command, CommandState* state) {
    if (!state) return E_POINTER;
    const bool needsRecording = command == kClose || command == kRecording;
    state->enabled = !needsRecording || trace_->GetRecording() ? 1 : 0;
    if (command >= kFirstProcessor)
        state->checked = trace_->ShownProcessor() == command - kFirstProcessor ? 1 : 0;
    return S_OK;
}

void Viewer::ChooseFile() {
    CFileDialog dialog(true, {}, {}, OFN_FILEMUSTEXIST | OFN_HIDEREADONLY, kFilter, &window_);
    dialog.SetTitle("Open Trace");
    if (dialog.DoModal() == IDOK) Open(dialog.GetPathName());
}

void Viewer::ShowAbout() {
    CString text = kProgramName;
    if (const auto version = component_.Version()) {
        text += FormatText("\n\nComponent: %s, version %d.%d", component_.Name().c_str(),
                           version->first, version->second);
    }
    window_.MessageBox(text, "About", MB_ICONINFORMATION);
}

void Viewer::ShowLosses() {
    const CString details = LossDetails(*trace_);
    window_.MessageBox(details.empty() ? "Nothing was lost." : details, "About This Recording",
                       MB_ICONINFORMATION);
}

bool Viewer::Open(const CString& path) {
    auto opened = [&] {
        OpenProgress progress(window_);
        return formats::OpenRecording(path, {}, &progress);
    }();
    if (!opened) {
        if (!opened.GetError().cancelled)
            window_.MessageBox(opened.GetError().message, "Cannot Open Trace", MB_ICONWARNING);
        return false;
    }
    Close();
    auto trace = std::make_unique<service::TraceService>();
    trace->SetRecording(std::move(*opened));
    Install(std::move(trace));
    host_.Broadcast(host::kEventTargetConnected);
    host_.Broadcast(host::kEventTraceReady);
    ShowState();
    return true;
}

void Viewer::Close() {
    if (!trace_->GetRecording()) return;
    host_.Broadcast(host::kEventTraceCleared);
    host_.Broadcast(host::kEventTargetDisconnected);
    Install(std::make_unique<service::TraceService>());
    ShowState();
}

// Whoever shows events of the processor before lets them go first.
void Viewer::ShowProcessor(std::uint32_t processor) {
    host_.Broadcast(host::kEventTraceCleared);
    trace_->ShowProcessor(processor);
    host_.Broadcast(host::kEventTraceReady);
    ShowState();
}

void Viewer::Quit() {
    component_.Disconnect();
    window_.DestroyWindow();
    PostQuitMessage();
}

// The component asks for the service anew with every operation.
void Viewer::Install(std::unique_ptr<service::TraceService> trace) {
    trace->SetDialogs(&dialogs_);
    host_.AddService(host::kOSTraceService, static_cast<IQOSTraceService*>(trace.get()));
    host_.AddService(host::kOSTraceAvailability, static_cast<IQOSTraceAvailability*>(trace.get()));
    trace_ = std::move(trace);
}

void Viewer::ShowState() {
    const service::Recording* const recording = trace_->GetRecording();
    AddProcessorMenu();
    const std::filesystem::path path = recording ? recording->Path() : std::string();
    const CString name = path.filename().string();
    services_.Project().SetOpen(name, path.parent_path().string());
    window_.SetWindowText(name.empty() ? kProgramName : name + " — " + kProgramName);
    ShowRecordingStatus();
    window_.UpdateSoon();
}

// Losses are counted while the recording is decoded.
void Viewer::ShowRecordingStatus() {
    const service::Recording* const recording = trace_->GetRecording();
    if (!recording) return window_.ShowRecordingStatus({});
    CString text = LossSummary(*trace_);
    if (!text.empty()) text += "   ";
    if (recording->Processors().size() > 1)
        text += "Processor " + std::to_string(trace_->ShownProcessor()) + "   ";
    window_.ShowRecordingStatus(text + recording->FormatName());
}

}  // namespace kvx::viewer
