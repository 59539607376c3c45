#pragma once
// Menu and toolbar resources as the host's plain descriptions. The texts that a description points
// to live in the object that made it.

#include <deque>
#include <string>
#include <vector>

#include "host/DockingHost.h"
#include "platform/base/Resources.h"

namespace kvx {

class HostMenu {
  public:
    // A root node whose children are the menu's items.
    explicit HostMenu(std::span<const MenuItemResource> items);
    const MenuNode* Root() const { return &root_; }

  private:
    void Fill(MenuNode& node, std::span<const MenuItemResource> items);

    MenuNode root_;
    std::deque<std::u16string> texts_;
    std::deque<std::vector<MenuNode>> nodes_;
};

class HostToolbar {
  public:
    explicit HostToolbar(const ToolbarResource& toolbar);
    const ToolbarButton* Buttons() const { return buttons_.data(); }
    std::uint32_t Count() const { return static_cast<std::uint32_t>(buttons_.size()); }

  private:
    std::vector<ToolbarButton> buttons_;
    std::deque<std::u16string> prompts_;
    std::deque<std::vector<std::uint32_t>> images_;
};

}  // namespace kvx
