// Which hook each report of a step leads to.

#include "component/SteppingClient.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kvx::test {
namespace {

using ::testing::ElementsAre;

class Recorder final : public CSteppingClient {
  public:
    HRESULT KVX_CALL QueryInterface(const GUID&, void**) override { return E_NOINTERFACE; }
    std::vector<std::string> Take() { return std::exchange(hooks_, {}); }

  protected:
    void OnStep() override { hooks_.emplace_back("step"); }
    void OnStop() override { hooks_.emplace_back("stop"); }
    void OnSteppingFinished() override { hooks_.emplace_back("finished"); }
    void OnCompleted() override { hooks_.emplace_back("completed"); }

  private:
    std::vector<std::string> hooks_;
};

TEST(SteppingClient, ReportsLeadToHooks) {
    Recorder client;
    EXPECT_EQ(client.StepBegin(0, 1), S_OK);
    EXPECT_THAT(client.Take(), ElementsAre("finished"));
    EXPECT_EQ(client.StepBegin(1, 6), S_OK);
    EXPECT_THAT(client.Take(), ElementsAre());
    EXPECT_EQ(client.StepDone(), S_OK);
    EXPECT_THAT(client.Take(), ElementsAre("step", "completed"));
    EXPECT_EQ(client.StepEnd(), S_OK);
    EXPECT_THAT(client.Take(), ElementsAre("step"));
    EXPECT_EQ(client.StepEnd(), S_OK);
    EXPECT_THAT(client.Take(), ElementsAre("stop")) << "the count is forgotten";

    client.StepBegin(2, 7);
    client.StepDone();
    EXPECT_THAT(client.Take(), ElementsAre("completed")) << "reason 7 is no step";
    client.StepBegin(2, 1);
    client.StepDone();
    EXPECT_THAT(client.Take(), ElementsAre("completed")) << "until the end";
    client.StepEnd();
    client.Take();
    client.StepDone();
    EXPECT_THAT(client.Take(), ElementsAre("step", "completed"));
}

}  // namespace
}  // namespace kvx::test
