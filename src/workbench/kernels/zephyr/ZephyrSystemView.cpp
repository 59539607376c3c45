// Zephyr's calls as its SystemView port numbers them: those of which we know what they wait for.

#include <algorithm>

#include "workbench/kernels/zephyr/Zephyr.h"

namespace kvx::kernels::zephyr {
namespace {

struct Numbered {
    std::uint32_t number;
    std::string_view name;
};

constexpr Numbered kNumbered[] = {
    {39, "k_mutex_lock"},    {42, "k_sem_take"},  {50, "k_queue_get"},  {57, "k_stack_pop"},
    {60, "k_msgq_put"},      {61, "k_msgq_get"},  {66, "k_mbox_put"},   {68, "k_mbox_get"},
    {73, "k_pipe_put"},      {74, "k_pipe_get"},  {77, "k_heap_alloc"}, {85, "k_mem_slab_alloc"},
    {95, "k_sleep"},         {96, "k_msleep"},    {97, "k_usleep"},     {104, "k_thread_join"},
    {112, "k_condvar_wait"}, {150, "k_fifo_get"}, {153, "k_lifo_get"},  {162, "syscall"},
};

class ZephyrOfSystemView final : public SystemViewKernel {
  public:
    std::string_view Name() const override { return "Zephyr"; }
    // By the objects that the calls are about, whichever way the calls are recorded.
    service::CallInfo FindCall(std::string_view name) const override {
        service::CallInfo info = zephyr::Kernel().FindCall(name);
        // States are recorded, as they become.
        info.sleeps = info.yields = false;
        info.suspends = name == "k_thread_suspend";
        return info;
    }
    std::string_view DescriptionFile() const override { return "SYSVIEW_Zephyr.txt"; }
    std::string_view CallName(std::string_view /*numbering*/, std::uint32_t call) const override {
        const auto at = std::ranges::lower_bound(kNumbered, call, {}, &Numbered::number);
        return at != std::end(kNumbered) && at->number == call ? at->name : std::string_view();
    }
    bool RecordsReturns() const override { return true; }
    bool SetsPriority(std::string_view name) const override {
        return name == "k_thread_priority_set";
    }
};

}  // namespace

const SystemViewKernel& KernelOfSystemView() {
    static const ZephyrOfSystemView kernel;
    return kernel;
}

}  // namespace kvx::kernels::zephyr
