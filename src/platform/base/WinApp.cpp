#include "platform/base/WinApp.h"

#include "platform/Backend.h"

namespace {
CWinApp* g_app = nullptr;
}

CWinApp::CWinApp() {
    if (!g_app) g_app = this;
}

CWinApp::~CWinApp() {
    if (g_app == this) g_app = nullptr;
}

int CWinApp::Run() {
    kvx::Backend().Windows().Run();
    return ExitInstance();
}

CWinApp* AfxGetApp() {
    return g_app;
}

CWnd* AfxGetMainWnd() {
    if (g_app && g_app->m_pMainWnd) return g_app->m_pMainWnd;
    kvx::IBackend* const backend = kvx::InstalledBackend();
    return backend ? CWnd::FromHandle(backend->Windows().MainWindow()) : nullptr;
}

void AfxSetMainWnd(HWND window) {
    kvx::Backend().Windows().SetMainWindow(window);
}

void PostQuitMessage() {
    kvx::Backend().Windows().Quit();
}

void DispatchWaitingMessages(HWND window) {
    kvx::Backend().Windows().DispatchWaiting(window);
}
