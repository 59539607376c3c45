#include "platform/os/windows/Wide.h"

#include <windows.h>

namespace kvx::os {

std::wstring Wide(std::string_view utf8) {
    const int size = static_cast<int>(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), length);
    return wide;
}

std::string Narrow(std::wstring_view utf16) {
    const int size = static_cast<int>(utf16.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

std::string ErrorText(unsigned long error) {
    wchar_t text[512];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, error, 0, text, 512, nullptr);
    std::wstring_view words(text, length);
    while (!words.empty() && (words.back() <= L' ' || words.back() == L'.')) words.remove_suffix(1);
    return words.empty() ? "error " + std::to_string(error) : Narrow(words);
}

}  // namespace kvx::os
