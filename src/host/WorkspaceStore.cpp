#include "host/WorkspaceStore.h"

#include <charconv>

#include "platform/base/Text.h"

void IWorkspaceStore::WriteNumber(const CString& key, std::int32_t number) {
    WriteText(key, std::to_string(number));
}

std::int32_t IWorkspaceStore::ReadNumber(const CString& key, std::int32_t fallback) {
    const CString stored = ReadText(key, std::to_string(fallback));
    std::string_view text = kvx::TrimLeft(stored);
    if (text.starts_with('+')) text.remove_prefix(1);
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} ? number : fallback;
}
