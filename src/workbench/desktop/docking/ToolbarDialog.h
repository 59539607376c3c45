#pragma once
// "Customize toolbar": which of the commands stand on the toolbar, and in which order.

#include <QDialog>
#include <QListWidget>

#include "workbench/desktop/docking/CommandToolbar.h"

namespace kvx::desktop {

class ToolbarDialog final : public QDialog {
  public:
    ToolbarDialog(CommandToolbar& toolbar, QWidget* parent);

    // Arranges the toolbar as chosen.
    void accept() override;

  private:
    QListWidgetItem* MakeItem(std::uint32_t command) const;
    void Fill(const CommandToolbar::Arrangement& shown);
    void Add();
    void Remove();
    void Move(int by);
    CommandToolbar::Arrangement Chosen() const;

    CommandToolbar& toolbar_;
    QListWidget* available_;
    QListWidget* shown_;
};

}  // namespace kvx::desktop
