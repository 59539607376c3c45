#pragma once
// Messages of the toolkit on standard error.

namespace kvx::desktop {

// Leaves out those that tell a user nothing: what the offscreen platform cannot do, and that a
// folder of the desktop session is missing.
void FilterToolkitMessages();

}  // namespace kvx::desktop
