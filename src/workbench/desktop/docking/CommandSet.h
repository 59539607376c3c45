#pragma once
// The commands that a component registered under one identifier. Each is one action, shared by its
// menu items, its toolbar buttons and its keys, so that all of them agree.

#include <QAction>
#include <QObject>
#include <functional>
#include <map>
#include <vector>

#include "host/DockingHost.h"

namespace kvx::desktop {

class CommandSet {
  public:
    using Run = std::function<void(IQCommandTarget*, std::uint32_t command)>;

    // run is called when the user gives a command.
    explicit CommandSet(Run run) : run_(std::move(run)) {}
    // Takes the actions out of every menu and toolbar.
    ~CommandSet();
    CommandSet(const CommandSet&) = delete;
    CommandSet& operator=(const CommandSet&) = delete;

    // The action of the command, made on first use. It is the set's.
    QAction* Action(IQCommandTarget* target, std::uint32_t command);
    // Who carries the command out; null when it is not in the set.
    IQCommandTarget* TargetOf(std::uint32_t command) const;
    // A new separator, the set's.
    QAction* Separator();

    // Asks the targets and shows their answers. A command that nobody handles is disabled.
    void Update();

  private:
    std::map<std::pair<IQCommandTarget*, std::uint32_t>, QAction*> actions_;
    std::vector<QAction*> separators_;
    Run run_;
};

// Gives the action the two halves of a prompt, "status text\ntool tip"; null changes nothing.
void SetPrompt(QAction& action, const char16_t* prompt);

}  // namespace kvx::desktop
