#pragma once
// A toolbar of a component's commands that the user may show, hide and rearrange. What the user
// chose is kept in the settings.

#include <QPointer>
#include <QToolBar>
#include <vector>

#include "host/DockingHost.h"
#include "workbench/desktop/Settings.h"
#include "workbench/desktop/docking/CommandSet.h"

namespace kvx::desktop {

class CommandToolbar final : public QToolBar {
  public:
    // name is the key of the toolbar in the settings, which must outlive it.
    CommandToolbar(const QString& name, const QString& title, Settings& settings);

    // Appends the buttons to those that the toolbar offers and shows the user's arrangement.
    void AddButtons(const ToolbarButton* buttons, std::uint32_t count, IQCommandTarget* target,
                    CommandSet& commands);
    // Shows or hides it, and remembers that.
    void SetShown(bool shown);

    // A list of command ids, 0 is a separator.
    using Arrangement = std::vector<std::uint32_t>;
    // As the component offers it.
    const Arrangement& Offered() const { return offered_; }
    Arrangement Current() const;
    void Arrange(const Arrangement& arrangement);
    // The action of an offered command, or null.
    QAction* Find(std::uint32_t command) const;

  private:
    void Show(const Arrangement& arrangement);

    Settings& settings_;
    Arrangement offered_;
    std::vector<QPointer<QAction>> actions_;
};

}  // namespace kvx::desktop
