#include "workbench/formats/text/LogProbe.h"

#include <algorithm>

#include "workbench/formats/text/TimedLine.h"

namespace kvx::formats {
namespace {
constexpr std::size_t kProbed = std::size_t{256} << 10;
}  // namespace

bool LooksLikeLog(std::string_view text, bool (*isForm)(std::string_view message)) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    text = text.substr(0, kProbed);
    std::size_t lines = 0;
    std::size_t fitting = 0;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        auto line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (IsBlank(line)) continue;
        if (line.ends_with('\r')) line.remove_suffix(1);
        ++lines;
        std::string_view message;
        if (LooksTimed(line, message) && isForm(message)) ++fitting;
    }
    return fitting > 0 && fitting * 4 >= lines;
}

}  // namespace kvx::formats
