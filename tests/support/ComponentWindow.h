#pragma once
// Windows of the component in a test: on the real back-end, offscreen, over a scripted trace. The
// test program links kvx_sink and kvx_platform_qt.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "framework/UpdateHints.h"
#include "host/CommandIds.h"
#include "host/DebuggerFunctions.h"
#include "platform/Backend.h"
#include "platform/base/Keys.h"
#include "support/ScriptedHost.h"
#include "support/UnexpectedBoxes.h"
#include "trace/HostTraceSource.h"
#include "trace/TraceData.h"
#include "utils/DllResource.h"
#include "utils/ErrorMessage.h"
#include "utils/Path.h"

namespace kvx::test {

// Sets up back-end, resource library, debugger and a main window, in which a derived test creates
// its windows.
class ComponentWindow : public testing::Test {
  protected:
    ComponentWindow() : host(service) { OpenErrorRecord(&host); }
    ~ComponentWindow() override { CloseErrorRecord(&host); }

    void SetUp() override {
        InstallBackend();
        CString message;
        const char* bin = std::getenv("KVX_BIN_DIR");
        resources_ =
            CDllResource::Load(JoinPath(bin ? bin : "bin", "KvxOSTraceExtRes.dll"), message);
        ASSERT_NE(resources_, nullptr) << message;
        host::ResolveDebuggerFunctions(&host, [](const char* name) { ADD_FAILURE() << name; });
        ASSERT_TRUE(main_.Create(WS_OVERLAPPED | WS_VISIBLE, {0, 0, 900, 600}, HWND{}, 0));
    }
    void TearDown() override {
        Close();
        main_.DestroyWindow();
        host::ClearDebuggerFunctions(nullptr);
        RemoveBackend();
    }
    // Destroys what the test has created.
    virtual void Close() = 0;

    CWnd& Main() { return main_; }
    static void Press(CWnd& view, CPoint at) {
        view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MakePointParam(at.x, at.y));
    }
    static void Move(CWnd& view, CPoint at) {
        view.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MakePointParam(at.x, at.y));
    }
    static void Release(CWnd& view, CPoint at) {
        view.SendMessage(WM_LBUTTONUP, 0, MakePointParam(at.x, at.y));
    }
    static void Click(CWnd& view, CPoint at) {
        Press(view, at);
        Release(view, at);
    }
    static void Drag(CWnd& view, CPoint from, CPoint to) {
        Press(view, from);
        Move(view, to);
        Release(view, to);
    }

    ScriptedTraceService service;
    ScriptedHost host;
    HostTraceSource source;
    COSTraceData data{source};
    UnexpectedBoxes boxes;

  private:
    std::unique_ptr<CDllResource> resources_;
    CWnd main_;
};

}  // namespace kvx::test
