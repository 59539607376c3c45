// The Workbench's debugger library: the functions that a component looks up by their exact names
// when the debugger is connected. The Workbench's targets are recorded or simulated, so there are
// no registers and no memory to read: counts are 0, lookups and evaluations fail, texts are empty.

#include <cstdint>

#include "platform/base/Types.h"

namespace {

// Number of the service that says whether measuring can be stopped and restarted.
constexpr std::uintptr_t kServiceMeasuring = 1050;
constexpr std::intptr_t kServiceNotAvailable = 1;

constexpr std::intptr_t kFailure = -1;

bool measurementAvailable = false;

}  // namespace

extern "C" {

// For the Workbench alone: whether a target is there whose measurement can be stopped and
// restarted.
KVX_EXPORT void SetMeasurementAvailable(int available) {
    measurementAvailable = available != 0;
}

KVX_EXPORT std::intptr_t IN1_Get_mcu_info() {
    return 0;
}

// service: the service's number; context: the view's target context, not used.
KVX_EXPORT std::intptr_t IN1_Get_service_info(std::uintptr_t service, std::uintptr_t /*context*/) {
    return service == kServiceMeasuring && !measurementAvailable ? kServiceNotAvailable : 0;
}

KVX_EXPORT std::intptr_t IN1_Get_regtbl_num() {
    return 0;
}
KVX_EXPORT std::intptr_t IN1_Get_regtbl_no() {
    return kFailure;
}
KVX_EXPORT const char* IN1_Get_regtbl_name() {
    return "";
}
KVX_EXPORT const char* IN1_Get_regtbl_menu() {
    return "";
}
KVX_EXPORT std::intptr_t IN1_GetMapInfo() {
    return kFailure;
}
KVX_EXPORT std::intptr_t EXP_Eval() {
    return kFailure;
}
KVX_EXPORT std::intptr_t EXP_ASM_Eval() {
    return kFailure;
}
KVX_EXPORT std::intptr_t IN1_Get_rram_area() {
    return kFailure;
}
KVX_EXPORT std::intptr_t IN1_Get_rram_size() {
    return 0;
}
KVX_EXPORT std::intptr_t IN1_Get_XDVersion() {
    return 1;
}
KVX_EXPORT std::intptr_t LOAD_HasAsmInfo() {
    return 0;
}

// Text of the last error; it lives as long as the library.
KVX_EXPORT const char* ERR_GetErrMsg() {
    return "";
}

KVX_EXPORT std::intptr_t IN1_Get_rram() {
    return kFailure;
}
KVX_EXPORT std::intptr_t IN1_Check_RramArea() {
    return 0;
}

}  // extern "C"
