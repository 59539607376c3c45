#include "traceview/model/KeyLines.h"

#include <algorithm>

#include "host/CommandIds.h"
#include "platform/base/Keys.h"
#include "platform/base/Resources.h"
#include "traceview/model/KeyBindings.h"

namespace kvx {
namespace {

CString KeyText(const AcceleratorResource& key) {
    CString text;
    if (key.control) text += "Ctrl+";
    if (key.shift) text += "Shift+";
    if (key.alt) text += "Alt+";
    if (key.key == VK_ADD) return text + "+";
    if (key.key == VK_SUBTRACT) return text + "-";
    if (key.key >= VK_F1) return text + "F" + std::to_string(key.key - VK_F1 + 1);
    return text + static_cast<char>(key.key);
}

}  // namespace

std::vector<KeyLine> AcceleratorLines(UINT table) {
    std::vector<KeyLine> lines;
    for (const AcceleratorResource& key : FindAccelerators(table)) {
        const CString prompt = LoadString(key.command);
        lines.push_back({KeyText(key), prompt.substr(0, prompt.find('\n'))});
    }
    return lines;
}

std::vector<KeyLine> TraceKeyLines() {
    std::vector<KeyLine> lines;
    for (const KeyBinding& binding : KeyBindings()) {
        lines.push_back({binding.keyText, binding.meaning});
    }
    // Some keys of the view are commands too.
    for (KeyLine& line : AcceleratorLines(ids::kMenuOSTrace)) {
        if (std::ranges::find(lines, line.keyText, &KeyLine::keyText) == lines.end()) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

}  // namespace kvx
