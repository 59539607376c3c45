#include "workbench/service/CallTable.h"

#include <gtest/gtest.h>

#include <string>

namespace kvx::service {
namespace {

std::string Found(std::string_view name) {
    const auto info = FindCall(name);
    return std::to_string(info.cls) + " " + std::to_string(info.waitCode) +
           (info.returns ? "" : " ends");
}

TEST(CallTable, KnowsCallsWithTheirForms) {
    const std::pair<const char*, const char*> kCalls[] = {
        {"act_tsk", "1 0"},        {"iact_tsk", "1 0"},     {"mact_tsk", "1 0"},
        {"imact_tsk", "1 0"},      {"ext_tsk", "1 0 ends"}, {"ext_ker", "12 0 ends"},
        {"ras_tex", "1 0"},        {"slp_tsk", "2 3"},      {"dly_tsk", "2 4"},
        {"irel_wai", "2 0"},       {"twai_flg", "3 5"},     {"iset_flg", "3 0"},
        {"isig_sem", "4 0"},       {"ini_sem", "4 0"},      {"isnd_mbx", "5 0"},
        {"trcv_mbx", "5 7"},       {"tsnd_dtq", "6 8"},     {"ifsnd_dtq", "6 0"},
        {"vtrcv_dtq", "6 9"},      {"rcv_pdq", "6 8"},      {"snd_mbf", "7 11"},
        {"tloc_mtx", "8 12"},      {"get_mpf", "9 10"},     {"get_mpl", "9 13"},
        {"irel_mpf", "9 0"},       {"ena_int", "10 0"},     {"msta_cyc", "11 0"},
        {"imsta_alm", "11 0"},     {"imrot_rdq", "12 0"},   {"xsns_dpn", "12 0"},
        {"semaphore_take", "4 6"}, {"mutex_lock", "8 12"},  {"msgq_get", "6 8"},
        {"heap_alloc", "9 13"},    {"sleep", "2 4"},        {"nanosleep", "2 4"},
        {"futex", "8 12"},         {"read", "7 11"},        {"exit_group", "1 0 ends"},
        {"my_call", "13 0"},       {"i", "13 0"},           {"", "13 0"}};
    for (const auto& [name, expected] : kCalls) EXPECT_EQ(Found(name), expected) << name;
}

TEST(CallTable, TellsFormsOfOneCallFromOtherCalls) {
    EXPECT_TRUE(SameCall("irot_rdq", "imrot_rdq"));
    EXPECT_TRUE(SameCall("act_tsk", "mact_tsk"));
    EXPECT_FALSE(SameCall("wai_sem", "twai_sem"));
    EXPECT_FALSE(SameCall("sig_sem", "wai_sem"));
    EXPECT_TRUE(SameCall("mine", "mine"));
    EXPECT_FALSE(SameCall("imine", "mine"));  // not known: nothing is taken off
}

TEST(CallTable, FindsTheCallThatATextBeginsWith) {
    EXPECT_EQ(CallPrefix("ena_intintno=2."), "ena_int");
    EXPECT_EQ(CallPrefix("isig_semsemid=1."), "isig_sem");
    EXPECT_EQ(CallPrefix("slp_tsk"), "slp_tsk");
    EXPECT_EQ(CallPrefix("own_callid=1"), "");
}

}  // namespace
}  // namespace kvx::service
