#pragma once
// Changes to the text of a rules file that leave the rest of it as its author wrote it.

#include <string>
#include <string_view>

namespace kvx::timing {

// The text with the deadline of a task or handler set to what is given, for example "5ms"; a
// section that is not there yet is added at the end.
std::string WithDeadline(std::string_view text, bool isHandler, std::string_view name,
                         std::string_view deadline);

}  // namespace kvx::timing
