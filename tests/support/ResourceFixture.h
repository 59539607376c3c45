#pragma once
// Dialogs and texts of the component in a test: the real back-end and the resource library, a
// scripted host whose debugger is connected, and no other window.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "host/CommandIds.h"
#include "platform/Backend.h"
#include "support/ScriptedHost.h"
#include "support/UnexpectedBoxes.h"
#include "utils/DllResource.h"
#include "utils/ErrorMessage.h"
#include "utils/Path.h"

namespace kvx::test {

class ResourceFixture : public testing::Test {
  protected:
    ResourceFixture() { OpenErrorRecord(&host); }
    ~ResourceFixture() override { CloseErrorRecord(&host); }

    void SetUp() override {
        InstallBackend();
        CString message;
        const char* bin = std::getenv("KVX_BIN_DIR");
        resources_ =
            CDllResource::Load(JoinPath(bin ? bin : "bin", "KvxOSTraceExtRes.dll"), message);
        ASSERT_NE(resources_, nullptr) << message;
    }
    void TearDown() override { RemoveBackend(); }

    // Presses a button, or gives a command of a dialog.
    static void Click(CDialog& dialog, UINT id) { dialog.SendMessage(WM_COMMAND, MakeCommand(id)); }
    static bool IsShown(const CDialog& dialog, UINT id) {
        const CWnd* const item = dialog.GetDlgItem(id);
        return item && item->IsWindowVisible();
    }

    ScriptedTraceService service;
    ScriptedHost host{service};
    UnexpectedBoxes boxes;

  private:
    std::unique_ptr<CDllResource> resources_;
};

}  // namespace kvx::test
