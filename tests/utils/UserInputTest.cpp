// The placeholder that asks the user, with its real dialog.

#include <gtest/gtest.h>

#include <cstdlib>

#include "host/CommandIds.h"
#include "platform/Backend.h"
#include "support/UnexpectedBoxes.h"
#include "utils/DllResource.h"
#include "utils/Path.h"
#include "utils/PlaceholderExpander.h"

namespace kvx::test {
namespace {

TEST(UserInput, IsAskedForAndInserted) {
    InstallBackend();
    {
        const char* bin = std::getenv("KVX_BIN_DIR");
        CString message;
        const auto resources =
            CDllResource::Load(JoinPath(bin ? bin : "bin", "KvxOSTraceExtRes.dll"), message);
        ASSERT_NE(resources, nullptr) << message;
        UnexpectedBoxes boxes;
        const CPlaceholderExpander expander(nullptr);
        boxes.ExpectDialog([](CDialog& dialog) {
            EXPECT_EQ(dialog.GetDlgItemText(ids::kUserInputLabel), "Value of USERINPUTTitle:");
            dialog.SetDlgItemText(ids::kUserInputEdit, "$(typed)");
            dialog.SendMessage(WM_COMMAND, MakeCommand(IDOK));
        });
        EXPECT_EQ(expander.Expand("<$(USERINPUTTitle)>"), "<$(typed)>");
        boxes.ExpectDialog([](CDialog& dialog) {
            dialog.SetDlgItemText(ids::kUserInputEdit, "typed");
            dialog.SendMessage(WM_COMMAND, MakeCommand(IDCANCEL));
        });
        EXPECT_EQ(expander.Expand("<$(uixyz)>"), "<>");
    }
    RemoveBackend();
}

}  // namespace
}  // namespace kvx::test
