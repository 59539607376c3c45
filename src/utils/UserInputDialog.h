#pragma once
// Asks the user for the value of a placeholder.

#include <string_view>

#include "platform/base/Types.h"

// Shows a modal dialog that names the placeholder. Empty when the user cancels.
CString AskUserInput(std::string_view name);
