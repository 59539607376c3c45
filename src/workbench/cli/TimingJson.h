#pragma once
// Jobs, their parts and findings as JSON.

#include <nlohmann/json.hpp>

#include "workbench/timing/Explanation.h"
#include "workbench/timing/Findings.h"

namespace kvx::cli {

using Json = nlohmann::ordered_json;

// Null for none.
template <class T>
Json JsonOf(const std::optional<T>& value) {
    return value ? Json(*value) : Json(nullptr);
}
// The name of a context; null for nobody.
Json JsonOfContext(const timing::Model& model, timing::ContextId id);
Json JsonOfParts(const timing::Model& model, const timing::Explanation& explanation);
// {context, call, job}; null where it is not known.
Json JsonOfStarter(const timing::Model& model, const timing::Job& job);
Json JsonOfFinding(const timing::Model& model, const timing::Finding& finding);

// For people and scripts alike: what is no UTF-8 is replaced.
std::string Dump(const Json& json, int indent = 2);

}  // namespace kvx::cli
