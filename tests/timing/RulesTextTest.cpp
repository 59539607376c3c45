#include "workbench/timing/RulesText.h"

#include <gtest/gtest.h>

namespace kvx::timing {
namespace {

TEST(RulesText, TakesADeadlineAndLeavesTheRest) {
    const std::string text =
        "# limits\n"
        "[task.A]  # the first\n"
        "cet = \"1ms\"\n"
        "deadline = \"9ms\"  # too long\n"
        "[[accept]]\n"
        "kind = \"overrun\"\n"
        "[task.\"two words\"]\n";
    EXPECT_EQ(WithDeadline(text, false, "A", "5ms"),
              "# limits\n"
              "[task.A]  # the first\n"
              "cet = \"1ms\"\n"
              "deadline = \"5ms\"\n"
              "[[accept]]\n"
              "kind = \"overrun\"\n"
              "[task.\"two words\"]\n");
    EXPECT_EQ(WithDeadline(text, false, "two words", "7ms"), text + "deadline = \"7ms\"\n");
    EXPECT_EQ(WithDeadline(text, true, "A", "7us"), text + "\n[handler.A]\ndeadline = \"7us\"\n");
    EXPECT_EQ(WithDeadline("", false, "x\"y", "1s"), "[task.\"x\\\"y\"]\ndeadline = \"1s\"\n");
}

}  // namespace
}  // namespace kvx::timing
