#pragma once
// The module's table of debugger functions. It has entries from kEventDebuggerConnected until
// kEventDebuggerDisconnected; that it has them is how the component knows of a debugger
// (IsDebuggerLoaded).
//
// Every entry is a dispatch function: it passes its arguments on, unchanged, to the function that
// the debugger library of the current host exports, or, when it exports none, to the host's
// debugger service. A function may be called with more integer arguments than it takes, so those of
// the library are called by the convention where the caller clears the stack.

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <type_traits>

#include "host/Services.h"

namespace kvx::host {

using DebuggerArguments = std::array<std::uintptr_t, 6>;
using DebuggerFunction = std::intptr_t (*)(std::uintptr_t, std::uintptr_t, std::uintptr_t,
                                           std::uintptr_t, std::uintptr_t, std::uintptr_t);

inline constexpr std::array<const char*, 70> kDebuggerFunctionNames = {"IN1_Get_mcu_info",
                                                                       "IN1_Get_service_info",
                                                                       "IN1_Get_PC",
                                                                       "IN1_Get_reg",
                                                                       "IN1_Put_reg",
                                                                       "IN1_Get_regtbl_num",
                                                                       "IN1_Get_regtbl_no",
                                                                       "IN1_Get_regtbl_name",
                                                                       "IN1_Get_regtbl_menu",
                                                                       "IN1_Get_Mem_Endian",
                                                                       "IN1_Get_Mem_Endian2",
                                                                       "IN1_Get_Mem_Endian4",
                                                                       "IN1_Get_Mem_EndianNC",
                                                                       "IN1_Get_Mem_Endian2NC",
                                                                       "IN1_Get_Mem_Endian4NC",
                                                                       "IN1_Get_Mem",
                                                                       "IN1_Get_Mem2",
                                                                       "IN1_Get_Mem4",
                                                                       "IN1_Get_MemNC",
                                                                       "IN1_Get_Mem2NC",
                                                                       "IN1_Get_Mem4NC",
                                                                       "IN1_Put_Mem_Endian",
                                                                       "IN1_Put_Mem_Endian2",
                                                                       "IN1_Put_Mem_Endian4",
                                                                       "IN1_Put_Mem",
                                                                       "IN1_Put_Mem2",
                                                                       "IN1_Put_Mem4",
                                                                       "IN1_Fill",
                                                                       "IN1_Move",
                                                                       "IN1_Move2",
                                                                       "IN1_Move4",
                                                                       "IN1_GetMapInfo",
                                                                       "IN1_Check_Map",
                                                                       "IN1_Check_run",
                                                                       "IN1_Check_running",
                                                                       "IN1_IsStep",
                                                                       "IN1_Set_BP",
                                                                       "IN1_Reset_BP",
                                                                       "IN1_All_Reset_BP",
                                                                       "IN1_Disable_BP",
                                                                       "IN1_All_Disable_BP",
                                                                       "IN1_All_Enable_BP",
                                                                       "IN1_Search_BP",
                                                                       "IN1_Get_BP",
                                                                       "IN1_Get_rram",
                                                                       "IN1_Check_RramArea",
                                                                       "IN1_Get_rram_area",
                                                                       "IN1_Get_rram_size",
                                                                       "IN1_Get_XDVersion",
                                                                       "EXP_Eval",
                                                                       "EXP_ASM_Eval",
                                                                       "ERR_GetErrMsg",
                                                                       "LOAD_HasAsmInfo",
                                                                       "LOAD_ChkSrcInfo",
                                                                       "LOAD_GetSRCname",
                                                                       "LOAD_GetSRCname2",
                                                                       "LOAD_GetOBJname",
                                                                       "LOAD_GetNowObj",
                                                                       "LOAD_ValToSym",
                                                                       "LOAD_SymToVal",
                                                                       "LOAD_BitToVal",
                                                                       "LOAD_GlobalSymToVal",
                                                                       "LOAD_LocalSymToVal",
                                                                       "LOAD_GlobalBitToVal",
                                                                       "LOAD_LocalBitToVal",
                                                                       "EVT_Happen",
                                                                       "EVT_ChkLoadfile",
                                                                       "ENV_Get_LANG",
                                                                       "Mangle::demangle",
                                                                       "GetCppDB"};

// Functions taken directly from the debugger library, in the order in which they are looked up.
inline constexpr std::array<const char*, 16> kDirectFunctionNames = {
    "IN1_Get_mcu_info",    "IN1_Get_service_info", "IN1_Get_regtbl_num", "IN1_Get_regtbl_no",
    "IN1_Get_regtbl_name", "IN1_Get_regtbl_menu",  "IN1_GetMapInfo",     "EXP_Eval",
    "EXP_ASM_Eval",        "IN1_Get_rram_area",    "IN1_Get_rram_size",  "IN1_Get_XDVersion",
    "LOAD_HasAsmInfo",     "ERR_GetErrMsg",        "IN1_Get_rram",       "IN1_Check_RramArea"};

// Position of a name in the table; a name that is not there does not compile.
consteval std::size_t DebuggerIndex(std::string_view name) {
    for (std::size_t i = 0; i < kDebuggerFunctionNames.size(); ++i) {
        if (name == kDebuggerFunctionNames[i]) return i;
    }
    throw "unknown debugger function";
}

// Looks up the direct functions of this host's debugger library and fills the table; the host
// becomes the module-wide host. A name that the library does not export goes to missing, once, and
// leaves the table empty. Without a debugger library the direct functions stay empty and every call
// goes to the host's debugger service.
void ResolveDebuggerFunctions(IQHost* host, const std::function<void(const char* name)>& missing);

// Forgets this host (null: all hosts). The table is emptied with the last one; while another host's
// debugger is connected, that host becomes the module-wide one.
void ClearDebuggerFunctions(IQHost* host);

// The entry, or null while no debugger is connected.
DebuggerFunction GetDebuggerFunction(std::size_t index);

// A debugger is connected.
bool IsDebuggerLoaded();

// A number or a pointer as it stands in an argument.
template <class Value>
std::uintptr_t ToArgument(Value value) {
    if constexpr (std::is_pointer_v<Value>) {
        return reinterpret_cast<std::uintptr_t>(value);
    } else {
        return static_cast<std::uintptr_t>(value);
    }
}

// Calls the entry with up to six arguments; 0 while it is empty.
template <class... Arguments>
std::intptr_t CallDebugger(std::size_t index, Arguments... arguments) {
    static_assert(sizeof...(Arguments) <= 6);
    const DebuggerFunction entry = GetDebuggerFunction(index);
    if (!entry) return 0;
    const DebuggerArguments a = {ToArgument(arguments)...};
    return entry(a[0], a[1], a[2], a[3], a[4], a[5]);
}

// Texts of the debugger-library service: directory and base name of the debugger's files. Empty
// when the service or its answer is missing.
CString GetDebuggerDirectory(IQHost* host);
CString GetDebuggerBaseName(IQHost* host);

}  // namespace kvx::host
