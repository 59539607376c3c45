#pragma once
// The application object of a program or module, the main window, and the message loop.

#include "platform/base/Resources.h"
#include "platform/windows/Cursor.h"
#include "platform/windows/Wnd.h"

class CWinApp : public CObject {
  public:
    CWinApp();
    ~CWinApp() override;
    virtual bool InitInstance() { return true; }
    virtual int ExitInstance() { return 0; }
    // Dispatches messages until the toolkit's loop ends (PostQuitMessage), then ExitInstance.
    virtual int Run();

    CWnd* m_pMainWnd = nullptr;
};

// The first application object of the process; null while there is none.
CWinApp* AfxGetApp();
// The application's main window, wherever it was made: the host's, seen from a module. Null if
// none.
CWnd* AfxGetMainWnd();
// Names the main window of the process; a window of any toolkit class.
void AfxSetMainWnd(HWND window);

// Ends the message loop, once what waits is done.
void PostQuitMessage();

// Dispatches every message that waits for the window and its children, without waiting, and paints
// them; messages of other windows stay queued. Null: everything that waits. The window may be
// destroyed meanwhile.
void DispatchWaitingMessages(HWND window);
