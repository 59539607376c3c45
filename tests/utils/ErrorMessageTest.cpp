// What a failure says: in the error record of the host's connection, and to the user.

#include "utils/ErrorMessage.h"

#include <gtest/gtest.h>

#include "host/CommandIds.h"
#include "host/DebuggerFunctions.h"
#include "host/NoRefCount.h"
#include "platform/base/Resources.h"
#include "support/FakeBackend.h"
#include "support/ScriptedHost.h"
#include "support/UnexpectedBoxes.h"

namespace kvx::test {
namespace {

// Performs ERR_GetErrMsg alone.
class Debugger final : public host::NoRefCount<IQDebuggerCalls> {
  public:
    const char* message = nullptr;
    HRESULT KVX_CALL QueryInterface(const GUID&, void**) override { return E_NOINTERFACE; }
    std::intptr_t KVX_CALL Call(const char* function, const std::uintptr_t*,
                                std::uint32_t) override {
        const bool asked = std::string_view(function) == "ERR_GetErrMsg";
        return asked ? reinterpret_cast<std::intptr_t>(message) : 0;
    }
};

constexpr StringResource kStrings[] = {{1, "Grid time is out of range."},
                                       {2, "Can not open file(%s)."}};

class ErrorMessage : public testing::Test {
  protected:
    ErrorMessage() {
        table_.strings = kStrings;
        table_.stringCount = 2;
        SetResourceTable(&table_);
        host_.services[host::kDebuggerCalls] = static_cast<IQDebuggerCalls*>(&debugger_);
    }
    ~ErrorMessage() override {
        host::ClearDebuggerFunctions(nullptr);
        SetResourceTable(nullptr);
    }

    FakeBackend backend_;
    UnexpectedBoxes boxes_;
    ScriptedHost host_;
    Debugger debugger_;

  private:
    ResourceTable table_;
};

TEST_F(ErrorMessage, IsShownOnceInABoxOfTheMainWindow) {
    OpenErrorRecord(&host_);
    boxes_.ExpectMessage("ERROR: Grid time is out of range.");
    ShowErrorMessage(1);
    EXPECT_EQ(boxes_.LastMessage().text, "ERROR: Grid time is out of range.");
    EXPECT_EQ(boxes_.LastMessage().caption, "Error");
    EXPECT_EQ(boxes_.LastMessage().type, MB_OK | MB_ICONEXCLAMATION);
    boxes_.ExpectMessage("ERROR: Can not open file(/tmp/100%s.csv).");
    ShowErrorMessage(2, "/tmp/100%s.csv");

    // Nothing is pending any more: what is left to say is the debugger's.
    boxes_.ExpectMessage("ERROR: ???");
    ShowPendingError();
    EXPECT_FALSE(CloseErrorRecord(&host_));
}

TEST_F(ErrorMessage, OfTheDebuggerWhereNothingIsPending) {
    host::ResolveDebuggerFunctions(&host_, [](const char*) {});
    OpenErrorRecord(&host_);
    for (const auto& [said, shown] : {std::pair{"Target lost", "ERROR: Target lost"},
                                      {"", "ERROR: ???"},
                                      {static_cast<const char*>(nullptr), "ERROR: ???"}}) {
        debugger_.message = said;
        boxes_.ExpectMessage(shown);
        ShowPendingError();
        EXPECT_EQ(boxes_.LastMessage().text, shown);
    }
    CloseErrorRecord(&host_);
}

TEST_F(ErrorMessage, NeedsTheRecordOfTheHost) {
    ShowErrorMessage(1);
    ShowPendingError();
    IQHost* const other = nullptr;
    OpenErrorRecord(other);
    ShowErrorMessage(1);
    EXPECT_FALSE(CloseErrorRecord(other));
    OpenErrorRecord(&host_);
    OpenErrorRecord(&host_);
    EXPECT_TRUE(CloseErrorRecord(&host_)) << "a second object still has it";
    boxes_.ExpectMessage("ERROR: Grid time");
    ShowErrorMessage(1);
    EXPECT_FALSE(CloseErrorRecord(&host_));
    EXPECT_FALSE(CloseErrorRecord(&host_));
    ShowErrorMessage(1);
}

}  // namespace
}  // namespace kvx::test
