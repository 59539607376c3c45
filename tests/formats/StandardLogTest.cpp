// ITRON logs in the standard form: what becomes a context, what a cut line costs, how calls are
// told from their parameters.

#include <gmock/gmock.h>

#include "formats/TraceFiles.h"
#include "workbench/formats/itron_standard/Statement.h"

namespace kvx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

std::vector<std::string> NamesIn(std::string_view log) {
    const TempFolder folder;
    const auto trace = Show(folder.Write("x.log", log));
    std::vector<std::string> names;
    if (!trace) return names;
    for (const auto& context : trace->GetRecording()->Contexts()) names.push_back(context.name);
    return names;
}

TEST(StandardLog, OnlyWhatRunsOrWaitsIsAContext) {
    EXPECT_THAT(NamesIn("[1]A.dispatch()\n[2]SEM.count=1\n[3]Q.applog_state=7\n[4]B.state=WAITING\n"
                        "[5]C.suspend()\n[6]D.resume()\n[7]TICK.enter()\n[8]TICK.leave()\n"
                        "[9]CurrentContext.state=RUNNING\n[9]CurrentContext.dispatch()\n"),
                ElementsAre("A", "B", "C", "D", "TICK"));
}

TEST(StandardLog, WhatTheResourceFileDoesNotNameIsNumberedBehindIt) {
    const TempFolder folder;
    folder.Write("x.res", R"({"TimeScale": "us", "Resources": {
        "A": {"Type": "Task", "Attributes": {"id": 5}}}})");
    const auto trace = Show(folder.Write("x.log", "[1]A.dispatch()\n[2]B.dispatch()\n"));
    ASSERT_TRUE(trace);
    const auto& contexts = trace->GetRecording()->Contexts();
    ASSERT_EQ(contexts.size(), 2u);
    EXPECT_EQ(contexts[1].name, "B");
    EXPECT_EQ(contexts[1].key.id, 6u);
}

// Lines of several processors are interleaved, so that their times step back.
TEST(StandardLog, StepsBackAreToldOfOneProcessorOnly) {
    const std::string log = "[5]A.dispatch()\n\n   \n[3]A.state=RUNNING\n[9]A.state=RUNNING\n";
    EXPECT_THAT(LossesOfLog(log, true), Contains("time_steps_back 1"));
    const TempFolder folder;
    folder.Write("x.res", R"({"TimeScale": "us", "Resources": {
        "A": {"Type": "Task", "Attributes": {"id": 1, "prcId": 1}},
        "B": {"Type": "Task", "Attributes": {"id": 2, "prcId": 2}}}})");
    const auto trace = Show(folder.Write("x.log", log));
    ASSERT_TRUE(trace);
    EXPECT_EQ(trace->Summarize().losses.Get(service::Loss::TimeStepsBack), 0u);
}

TEST(TextLog, LinesThatSayMoreThanTheirFormAreNotRead) {
    EXPECT_THAT(LossesOfLog("[1] dispatch to task 1.\n[2] task 1 migrates from processor 1 to "
                            "processor 2 now.\n[3] dispatch from task 1.\n"),
                ElementsAre("unreadable_records 1"));
    EXPECT_THAT(EventsOfLog("[1] dispatch to task 1.\n   \n[2] enter to wai_sem semid=1.\n[3] "
                            "enter to sig_sem and more.\n\n[4] enter to slp_tsk.\n"),
                ElementsAre("1 run Unknown: task 1", "2 call task 1: wai_sem(semid=1)",
                            "4 call task 1: slp_tsk()"));
}

// Tasks that change their processor are met before they run.
TEST(StandardLog, AProcessorIsTheTasksFromItsLineOn) {
    const std::string log =
        "[1]A.state=RUNNABLE\n[2]A.dispatch()\n[5]A.prcId=2\n[6]A.dispatch()\n[9]SEM.prcId=2\n";
    const std::string resources =
        R"({"TimeScale": "us", "Resources": {
            "A": {"Type": "Task", "Attributes": {"id": 1, "prcId": 1}},
            "B": {"Type": "Task", "Attributes": {"id": 2, "prcId": 2}}}})";
    EXPECT_THAT(EventsOfLog(log, resources, 1), Contains("2 run Unknown: A"));
    EXPECT_THAT(EventsOfLog(log, resources, 1), Not(Contains("6 run Unknown: A")));
    EXPECT_THAT(EventsOfLog(log, resources, 2), Contains("6 run Unknown: A"));
}

TEST(StandardLog, ALineThatIsCutCostsItself) {
    const std::string log = "[1]A.dispatch()\n[2]A.state=RUNNING\n[3]";
    EXPECT_THAT(LossesOfLog(log + "A.state=DORMANT"), IsEmpty());
    for (const char* cut : {"A.state=DORM", "A.state=", "A.exit(", "A.ex", "A."})
        EXPECT_THAT(LossesOfLog(log + cut), ElementsAre("cut_record 1")) << cut;
}

TEST(StandardLog, StatementsAreWholeOrNone) {
    using formats::itron_standard::ParseStatement;
    for (const char* text : {"", "A", "A.", ".x()", "A.x", "A.x(", "A.x(1", "A x()", "A.x{}"})
        EXPECT_FALSE(ParseStatement(text)) << text;
    const auto call = ParseStatement("A.enterSVC(f(1),x)");
    ASSERT_TRUE(call);
    EXPECT_EQ(call->object, "A");
    EXPECT_EQ(call->verb, "enterSVC");
    EXPECT_EQ(call->arguments, "f(1),x");
    EXPECT_FALSE(call->isAttribute);
    const auto state = ParseStatement("A.state=RUNNING");
    ASSERT_TRUE(state);
    EXPECT_TRUE(state->isAttribute);
    EXPECT_EQ(state->arguments, "RUNNING");
}

TEST(StandardLog, CallsAreToldFromTheirParameters) {
    using formats::itron_standard::ParseServiceCall;
    const std::tuple<const char*, const char*, const char*> calls[] = {
        {"act_tsk,tskid=2.", "act_tsk", "tskid=2."},
        {"act_tsktskid=2.", "act_tsk", "tskid=2."},
        {"slp_tsk", "slp_tsk", ""},
        {"slp_tsk,", "slp_tsk", ""},
        {"snd_dtqdtqid=1,data=-5.", "snd_dtqdtqid=1", "data=-5."},
        {"own_call", "own_call", ""},
    };
    for (const auto& [text, name, arguments] : calls) {
        const auto call = ParseServiceCall(text);
        EXPECT_EQ(call.name, name) << text;
        EXPECT_EQ(call.arguments, arguments) << text;
    }
}

TEST(StandardLog, ParametersAreShownHoweverShort) {
    EXPECT_THAT(EventsOfLog("[1]A.dispatch()\n[2]A.enterSVC(own_call,1,x)\n"),
                Contains("2 call A: own_call(1, x)"));
}

// Of lines with one time a return stays behind its own call only.
TEST(StandardLog, AReturnBelongsToItsCall) {
    using formats::itron_standard::ReturnStaysBehindCall;
    EXPECT_TRUE(ReturnStaysBehindCall("A.leaveSVC(act_tsk,ercd=0)", "A.enterSVC(act_tsk,tskid=1)"));
    EXPECT_TRUE(ReturnStaysBehindCall("A.leaveSVC(iact_tsk,x)", "A.enterSVC(act_tsk,tskid=1)"));
    EXPECT_FALSE(ReturnStaysBehindCall("A.leaveSVC(act_tsk,ercd=0)", "A.enterSVC(slp_tsk)"));
    EXPECT_FALSE(ReturnStaysBehindCall("A.leaveSVC(act_tsk,ercd=0)", "A.dispatch()"));
    EXPECT_FALSE(ReturnStaysBehindCall("A.dispatch()", "A.dispatch()"));
}

}  // namespace
}  // namespace kvx::test
