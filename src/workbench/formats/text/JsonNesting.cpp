#include "workbench/formats/text/JsonNesting.h"

namespace kvx::formats {

bool IsNestedTooDeep(std::string_view json) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (inString) {
            if (c == '\\') ++i;
            inString = c != '"';
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > kDeepestJson) return true;
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

}  // namespace kvx::formats
