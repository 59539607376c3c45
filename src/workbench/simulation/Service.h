#pragma once
// A service of the kernel: how the log names it, and what it does. Programs call it by its name:
// co_await wai_sem(1).

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <string_view>

namespace kvx::simulation {

class SimulatedKernel;

// Error codes; a call that succeeds returns E_OK or a positive number.
inline constexpr std::int32_t E_OK = 0;
inline constexpr std::int32_t E_PAR = -17;
inline constexpr std::int32_t E_ILUSE = -28;
inline constexpr std::int32_t E_OBJ = -41;
inline constexpr std::int32_t E_QOVR = -43;
inline constexpr std::int32_t E_RLWAI = -49;
inline constexpr std::int32_t E_TMOUT = -50;

// Time-outs in milliseconds.
inline constexpr std::int32_t TMO_POL = 0;    // do not wait
inline constexpr std::int32_t TMO_FEVR = -1;  // wait for ever

struct CallResult {
    std::int32_t ercd = E_OK;
    std::int32_t value = 0;  // what the call hands out: data, an address, flags
};

inline constexpr std::size_t kMostParameters = 5;
using Arguments = std::array<std::int32_t, kMostParameters>;

struct Parameter {
    std::string_view name;
    bool isAddress = false;  // of a variable of the caller, which the kernel fills in
};

// The log shows addresses of messages in hexadecimal.
constexpr bool IsMessageAddress(std::string_view name) {
    return name == "pk_msg";
}

struct Service {
    std::string_view name;
    std::array<Parameter, kMostParameters> parameters;
    std::uint8_t parameterCount = 0;
    std::string_view returned;  // name of CallResult::value in the log; empty: it has none
    CallResult (*execute)(SimulatedKernel& kernel, const Arguments& arguments);
};

struct ServiceCall {
    const Service* service;
    Arguments arguments;
};

// A service to which the caller gives that many arguments.
template <std::size_t Inputs>
class ServiceOf : public Service {
  public:
    // names: of the parameters in the log, separated by blanks; those with "p_" are addresses.
    consteval ServiceOf(std::string_view serviceName, std::string_view names,
                        CallResult (*function)(SimulatedKernel&, const Arguments&),
                        std::string_view returnedName = {})
        : Service{serviceName, {}, 0, returnedName, function} {
        std::size_t inputs = 0;
        for (std::size_t at = 0; at < names.size();) {
            const auto end = std::min(names.find(' ', at), names.size());
            const auto parameter = names.substr(at, end - at);
            const bool isAddress = parameter.starts_with("p_") || parameter.starts_with("ppk_");
            parameters[parameterCount++] = {parameter, isAddress};
            if (!isAddress) ++inputs;
            at = end + 1;
        }
        if (inputs != Inputs) throw "the names do not fit the number of arguments";
    }

    template <std::convertible_to<std::int32_t>... A>
    requires(sizeof...(A) == Inputs) ServiceCall operator()(A... given) const {
        const std::array<std::int32_t, Inputs> inputs{static_cast<std::int32_t>(given)...};
        ServiceCall call{this, {}};
        for (std::size_t parameter = 0, input = 0; input < Inputs; ++parameter)
            if (!parameters[parameter].isAddress) call.arguments[parameter] = inputs[input++];
        return call;
    }
};

}  // namespace kvx::simulation
