// What kernels know of calls by their names.

#include <gtest/gtest.h>

#include <string>
#include <tuple>
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
          {"k_sem_take", "4 6"},
          {"k_fifo_get", "6 8"},
          {"fifo_get", "5 7"},
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

TEST(Calls, WhatTheyDoWithTheirObject) {
    using service::CallUse;
    const std::tuple<const service::Kernel&, const char*, CallUse> uses[] = {
        {itron::Kernel(), "twai_sem", CallUse::Takes},
        {itron::Kernel(), "isig_sem", CallUse::Gives},
        {itron::Kernel(), "iact_tsk", CallUse::Starts},
        {itron::Kernel(), "slp_tsk", CallUse::None},
        {zephyr::Kernel(), "sem_take", CallUse::Takes},
        {zephyr::Kernel(), "semaphore_give", CallUse::Gives},
        {zephyr::Kernel(), "mutex_lock", CallUse::Takes},
        {zephyr::Kernel(), "mutex_unlock", CallUse::Gives},
        {zephyr::Kernel(), "mutex_init", CallUse::None},
        {zephyr::Kernel(), "spin_lock", CallUse::None},
    };
    for (const auto& [kernel, call, use] : uses) EXPECT_EQ(kernel.UseOf(call), use) << call;
}

TEST(Calls, ErrorsHaveTheNamesOfTheirKernel) {
    std::string names;
    for (std::int64_t code = 0; code > -70; --code)
        if (const auto name = itron::Kernel().ErrorName(code); name.starts_with("E_"))
            names += std::to_string(code) + " " + name + " ";
    EXPECT_EQ(names,
              "-5 E_SYS -9 E_NOSPT -10 E_RSFN -11 E_RSATR -17 E_PAR -18 E_ID -25 E_CTX -26 E_MACV "
              "-27 E_OACV -28 E_ILUSE -33 E_NOMEM -34 E_NOID -35 E_NORES -41 E_OBJ -42 E_NOEXS -43 "
              "E_QOVR -49 E_RLWAI -50 E_TMOUT -51 E_DLT -52 E_CLS -53 E_RASTER -57 E_WBLK -58 "
              "E_BOVR ");
    const std::pair<std::int64_t, const char*> linux[] = {
        {-1, "-EPERM"}, {-110, "-ETIMEDOUT"}, {-4095, "-4095"}, {-4096, ""}, {0, ""}, {5, ""}};
    for (const auto& [code, name] : linux)
        EXPECT_EQ(linux_kernel::Kernel().ErrorName(code), name) << code;
}

TEST(Calls, NumbersOfZephyrOverSystemView) {
    std::string names;
    for (std::uint32_t number = 0; number < 200; ++number)
        if (const auto name = zephyr::KernelOfSystemView().CallName("", number); !name.empty())
            names += std::to_string(number) + " " + std::string(name) + " ";
    EXPECT_EQ(names,
              "39 k_mutex_lock 42 k_sem_take 50 k_queue_get 57 k_stack_pop 60 k_msgq_put 61 "
              "k_msgq_get 66 k_mbox_put 68 k_mbox_get 73 k_pipe_put 74 k_pipe_get 77 k_heap_alloc "
              "85 k_mem_slab_alloc 95 k_sleep 96 k_msleep 97 k_usleep 104 k_thread_join 112 "
              "k_condvar_wait 150 k_fifo_get 153 k_lifo_get 162 syscall ");
}

TEST(Calls, TheCallThatATextBeginsWithIsFound) {
    EXPECT_EQ(itron::CallPrefix("ena_intintno=2."), "ena_int");
    EXPECT_EQ(itron::CallPrefix("isig_semsemid=1."), "isig_sem");
    EXPECT_EQ(itron::CallPrefix("slp_tsk"), "slp_tsk");
    EXPECT_EQ(itron::CallPrefix("own_callid=1"), "");
    EXPECT_EQ(itron::CallPrefix(""), "");
}

}  // namespace
}  // namespace kvx::kernels
