#include "toolbar/HostMenu.h"

namespace kvx {
namespace {

std::u16string Wide(const char* text) {
    BSTR wide = ToBstr(text);
    std::u16string out(wide ? wide : u"");
    SysFreeString(wide);
    return out;
}

// The command's "status text\ntool tip" of the string table, or null.
const char16_t* Prompt(UINT command, std::deque<std::u16string>& texts) {
    const char* text = command ? FindString(command) : nullptr;
    return text ? texts.emplace_back(Wide(text)).c_str() : nullptr;
}

// One image of a strip, row by row.
std::vector<std::uint32_t> CutImage(const ToolbarResource& toolbar, std::uint32_t image) {
    const std::size_t pitch = std::size_t{toolbar.width} * toolbar.imageCount;
    std::vector<std::uint32_t> pixels;
    pixels.reserve(std::size_t{toolbar.width} * toolbar.height);
    for (std::size_t y = 0; y < toolbar.height; ++y) {
        const std::uint32_t* row = toolbar.pixels + y * pitch + std::size_t{image} * toolbar.width;
        pixels.insert(pixels.end(), row, row + toolbar.width);
    }
    return pixels;
}

}  // namespace

HostMenu::HostMenu(std::span<const MenuItemResource> items) {
    Fill(root_, items);
}

void HostMenu::Fill(MenuNode& node, std::span<const MenuItemResource> items) {
    std::vector<MenuNode>& children = nodes_.emplace_back(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        const MenuItemResource& item = items[i];
        if (!item.text) continue;
        children[i].text = texts_.emplace_back(Wide(item.text)).c_str();
        children[i].command = item.command;
        children[i].prompt = Prompt(item.command, texts_);
        if (item.childCount) Fill(children[i], {item.children, item.childCount});
    }
    node.children = children.data();
    node.childCount = static_cast<std::uint32_t>(children.size());
}

HostToolbar::HostToolbar(const ToolbarResource& toolbar) {
    std::uint32_t image = 0;
    for (const UINT command : std::span(toolbar.buttons, toolbar.count)) {
        ToolbarButton button;
        button.command = command;
        if (command && image < toolbar.imageCount) {
            button.prompt = Prompt(command, prompts_);
            button.pixels = images_.emplace_back(CutImage(toolbar, image++)).data();
        }
        buttons_.push_back(button);
    }
}

}  // namespace kvx
