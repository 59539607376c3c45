// What kernels know of calls by their names.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workbench/kernels/itron/Itron.h"
#include "workbench/kernels/linux_kernel/LinuxKernel.h"
#include "workbench/kernels/zephyr/Zephyr.h"

namespace kvx::kernels {
namespace {

std::string Found(const service::Kernel& kernel, std::string_view name) {
    const auto info = kernel.FindCall(name);
    return std::to_string(info.cls) + " " + std::to_string(info.waitCode) +
           (info.returns ? "" : " ends") + (info.sleeps ? " sleeps" : "") +
           (info.yields ? " yields" : "");
}

TEST(Calls, EachKernelKnowsItsOwn) {
    struct Row {
        const service::Kernel& kernel;
        std::vector<std::pair<const char*, const char*>> calls;
    };
    const Row kRows[] = {
        {itron::Kernel(), {{"act_tsk", "1 0"},    {"iact_tsk", "1 0"},     {"mact_tsk", "1 0"},
                           {"imact_tsk", "1 0"},  {"ext_tsk", "1 0 ends"}, {"ext_ker", "12 0 ends"},
                           {"ras_tex", "1 0"},    {"slp_tsk", "2 3"},      {"dly_tsk", "2 4"},
                           {"irel_wai", "2 0"},   {"twai_flg", "3 5"},     {"iset_flg", "3 0"},
                           {"isig_sem", "4 0"},   {"ini_sem", "4 0"},      {"isnd_mbx", "5 0"},
                           {"trcv_mbx", "5 7"},   {"tsnd_dtq", "6 8"},     {"ifsnd_dtq", "6 0"},
                           {"vtrcv_dtq", "6 9"},  {"rcv_pdq", "6 8"},      {"snd_mbf", "7 11"},
                           {"tloc_mtx", "8 12"},  {"get_mpf", "9 10"},     {"get_mpl", "9 13"},
                           {"irel_mpf", "9 0"},   {"ena_int", "10 0"},     {"msta_cyc", "11 0"},
                           {"imsta_alm", "11 0"}, {"imrot_rdq", "12 0"},   {"xsns_dpn", "12 0"},
                           {"my_call", "13 0"},   {"i", "13 0"},           {"", "13 0"},
                           {"exit", "13 0"},      {"read", "13 0"},        {"eventlog", "13 0"},
                           {"mutex_lock", "13 0"}}},
        {zephyr::Kernel(),
         {{"semaphore_take", "4 6"},
          {"mutex_lock", "8 12"},
          {"msgq_get", "6 8"},
          {"heap_alloc", "9 13"},
          {"k_sleep", "2 4 sleeps"},
          {"thread_msleep", "2 4 sleeps"},
          {"thread_yield", "2 0 yields"},
          {"thread_join", "1 3"},
          {"named_event", "13 0"},
          {"wai_sem", "13 0"}}},
        {linux_kernel::Kernel(),
         {{"nanosleep", "2 4"},
          {"futex", "8 12"},
          {"read", "7 11"},
          {"exit_group", "1 0 ends"},
          {"mutex_lock", "13 0"}}}};
    for (const auto& [kernel, calls] : kRows)
        for (const auto& [name, expected] : calls)
            EXPECT_EQ(Found(kernel, name), expected) << kernel.Name() << " " << name;
    EXPECT_EQ(Found(service::UnknownKernel(), "read"), "13 0");
}

TEST(Calls, FormsOfOneCallAreToldFromOtherCalls) {
    const auto& kernel = itron::Kernel();
    EXPECT_TRUE(kernel.SameCall("irot_rdq", "imrot_rdq"));
    EXPECT_TRUE(kernel.SameCall("act_tsk", "mact_tsk"));
    EXPECT_FALSE(kernel.SameCall("wai_sem", "twai_sem"));
    EXPECT_FALSE(kernel.SameCall("sig_sem", "wai_sem"));
    EXPECT_TRUE(kernel.SameCall("mine", "mine"));
    EXPECT_FALSE(kernel.SameCall("imine", "mine"));  // not known: nothing is taken off
    EXPECT_FALSE(linux_kernel::Kernel().SameCall("mread", "read"));
}

TEST(Calls, TheCallThatATextBeginsWithIsFound) {
    EXPECT_EQ(itron::CallPrefix("ena_intintno=2."), "ena_int");
    EXPECT_EQ(itron::CallPrefix("isig_semsemid=1."), "isig_sem");
    EXPECT_EQ(itron::CallPrefix("slp_tsk"), "slp_tsk");
    EXPECT_EQ(itron::CallPrefix("own_callid=1"), "");
}

}  // namespace
}  // namespace kvx::kernels
