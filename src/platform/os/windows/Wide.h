#pragma once
// The system's texts are UTF-16, ours UTF-8.

#include <string>
#include <string_view>

namespace kvx::os {

// What is no UTF-8 becomes the replacement character.
std::wstring Wide(std::string_view utf8);
std::string Narrow(std::wstring_view utf16);
// The system's own words for an error of GetLastError, without the full stop and line end.
std::string ErrorText(unsigned long error);

}  // namespace kvx::os
