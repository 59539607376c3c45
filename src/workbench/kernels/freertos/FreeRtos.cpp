#include "workbench/kernels/freertos/FreeRtos.h"

#include <algorithm>
#include <span>

#include "workbench/kernels/CallTable.h"

namespace kvx::kernels::freertos {
namespace {

using host::CallClass;
using host::StateCode;

constexpr CallGroup kCalls[] = {
    {CallClass::TaskSynchronization, StateCode::Delay,
     "vTaskDelay vTaskDelayUntil xTaskDelayUntil"},
    {CallClass::TaskSynchronization, StateCode::Sleeping,
     "ulTaskNotifyTake ulTaskGenericNotifyTake xTaskNotifyWait xTaskGenericNotifyWait "
     "vTaskSuspend"},
    {CallClass::TaskSynchronization, std::nullopt,
     "vTaskResume xTaskResumeFromISR xTaskGenericNotify xTaskGenericNotifyFromISR "
     "vTaskNotifyGiveFromISR vTaskGenericNotifyGiveFromISR xTaskNotifyStateClear vTaskSuspendAll "
     "xTaskResumeAll"},
    {CallClass::TaskManagement, std::nullopt,
     "xTaskGenericCreate xTaskCreate vTaskDelete vTaskPrioritySet uxTaskPriorityGet "
     "uxTaskPriorityGetFromISR vTaskPriorityInherit xTaskPriorityInherit xTaskPriorityDisinherit "
     "eTaskGetState"},
    {CallClass::EventFlags, StateCode::EventFlag, "xEventGroupWaitBits xEventGroupSync"},
    {CallClass::EventFlags, std::nullopt,
     "xEventGroupCreate xEventGroupSetBits xEventGroupSetBitsFromISR xEventGroupClearBits "
     "xEventGroupClearBitsFromISR xEventGroupGetBitsFromISR vEventGroupDelete"},
    {CallClass::DataQueues, StateCode::DataQueue,
     "xQueueGenericReceive xQueueGenericSend xQueueReceive xQueueSend xQueuePeek "
     "xQueueSemaphoreTake xQueueSelectFromSet"},
    {CallClass::DataQueues, std::nullopt,
     "xQueueGenericCreate vQueueDelete xQueuePeekFromISR xQueueReceiveFromISR vQueueAddToRegistry "
     "vQueueUnregisterQueue xQueueGenericSendFromISR xQueueGiveFromISR xQueueGenericReset "
     "xQueueCreateSet xQueueAddToSet xQueueRemoveFromSet uxQueueMessagesWaiting "
     "uxQueueSpacesAvailable"},
    {CallClass::Mutexes, StateCode::Mutex, "xQueueTakeMutexRecursive"},
    {CallClass::Mutexes, std::nullopt,
     "xQueueCreateMutex xQueueGiveMutexRecursive xQueueGetMutexHolder"},
    {CallClass::Semaphores, std::nullopt, "xQueueCreateCountingSemaphore"},
    {CallClass::MessageBuffers, StateCode::MessageBuffer, "xStreamBufferSend xStreamBufferReceive"},
    {CallClass::MessageBuffers, std::nullopt,
     "xStreamBufferCreate vStreamBufferDelete xStreamBufferReset xStreamBufferSendFromISR "
     "xStreamBufferReceiveFromISR"},
    {CallClass::TimerManagement, std::nullopt,
     "xTimerCreate xTimerGenericCommand xTimerPendFunctionCall xTimerPendFunctionCallFromISR "
     "pvTimerGetTimerID xTimerIsTimerActive xTaskGetTickCount xTaskGetTickCountFromISR"},
};

constexpr std::string_view kNeverReturn[] = {"vTaskDelete"};
// Recorded in front of what they do.
constexpr std::string_view kRecordedFirst[] = {"vTaskDelay", "vTaskDelayUntil", "xTaskDelayUntil",
                                               "vTaskSuspend"};

struct Numbered {
    std::uint32_t number;
    std::string_view name;
};

constexpr Numbered kEspressif[] = {
    {33, "vTaskDelete"},
    {34, "vTaskDelay"},
    {35, "vTaskDelayUntil"},
    {36, "vTaskSuspend"},
    {37, "ulTaskNotifyTake"},
    {38, "vTaskNotifyGiveFromISR"},
    {39, "vTaskPriorityInherit"},
    {40, "vTaskResume"},
    {42, "xTaskPriorityDisinherit"},
    {43, "xTaskResumeFromISR"},
    {44, "xTaskGenericNotify"},
    {45, "xTaskGenericNotifyFromISR"},
    {46, "xTaskNotifyWait"},
    {47, "xQueueGenericCreate"},
    {48, "vQueueDelete"},
    {49, "xQueueGenericReceive"},
    {50, "xQueuePeekFromISR"},
    {51, "xQueueReceiveFromISR"},
    {52, "vQueueAddToRegistry"},
    {53, "xQueueGenericSend"},
    {54, "xQueueGenericSendFromISR"},
    {55, "vTaskPrioritySet"},
    {61, "xQueueGiveFromISR"},
    {194, "xEventGroupCreate"},
    {195, "xEventGroupWaitBits"},
    {196, "xEventGroupClearBits"},
    {197, "xEventGroupSetBits"},
    {198, "xEventGroupSync"},
};

constexpr Numbered kSegger[] = {
    {34, "vTaskDelete"},
    {35, "vTaskDelay"},
    {36, "vTaskDelayUntil"},
    {41, "vTaskSuspend"},
    {42, "vTaskResume"},
    {62, "xTaskGenericNotify"},
    {64, "xTaskNotifyWait"},
    {65, "vTaskNotifyGiveFromISR"},
    {66, "ulTaskNotifyTake"},
    {80, "xTimerCreate"},
    {90, "xQueueGenericSend"},
    {92, "xQueueGenericReceive"},
    {96, "xQueueGenericSendFromISR"},
    {97, "xQueueGiveFromISR"},
    {98, "xQueueReceiveFromISR"},
    {113, "vQueueAddToRegistry"},
    {115, "xQueueGenericCreate"},
    {128, "xEventGroupWaitBits"},
    {133, "xEventGroupSync"},
    {140, "xStreamBufferSend"},
    {142, "xStreamBufferReceive"},
};

std::string_view NameIn(std::span<const Numbered> calls, std::uint32_t number) {
    const auto at = std::ranges::lower_bound(calls, number, {}, &Numbered::number);
    return at != calls.end() && at->number == number ? at->name : std::string_view();
}

class FreeRtos final : public SystemViewKernel {
  public:
    std::string_view Name() const override { return "FreeRTOS"; }
    bool LargerIsMoreUrgent() const override { return true; }
    bool RecordsCallsAfterWaits() const override { return true; }
    service::CallInfo FindCall(std::string_view name) const override {
        static const CallTable table(kCalls, kNeverReturn);
        const auto* known = table.Find(name);
        service::CallInfo info = known ? *known : service::CallInfo();
        info.recordedFirst = std::ranges::find(kRecordedFirst, name) != std::end(kRecordedFirst);
        info.suspends = name == "vTaskSuspend";
        return info;
    }
    std::string_view DescriptionFile() const override { return "SYSVIEW_FreeRTOS.txt"; }
    std::string_view CallName(std::string_view numbering, std::uint32_t call) const override {
        if (numbering == "espressif") return NameIn(kEspressif, call);
        return numbering == "segger" ? NameIn(kSegger, call) : std::string_view();
    }
    std::string_view NumberingOf(std::string_view name, std::uint32_t call) const override {
        if (name != "vTaskDelay") return {};
        return call == 34 ? "espressif" : call == 35 ? "segger" : "";
    }
    bool SetsPriority(std::string_view name) const override { return name == "vTaskPrioritySet"; }
};

}  // namespace

const SystemViewKernel& Kernel() {
    static const FreeRtos kernel;
    return kernel;
}

}  // namespace kvx::kernels::freertos
