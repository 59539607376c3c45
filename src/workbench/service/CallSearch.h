#pragma once
// Whether a text meets the search condition.

#include <string_view>

#include "workbench/service/Dialogs.h"

namespace kvx::service {

// The text contains what is looked for. With wild cards, * stands for any characters and ? for one.
// Without matchCase the letters A to Z are equal to a to z. An empty condition meets nothing.
bool Meets(const SearchCondition& condition, std::string_view text);

}  // namespace kvx::service
