#pragma once
// Whether windows can be shown where the program runs.

namespace kvx::desktop {

// True when the toolkit was told which platform to use, or a display server answers.
bool IsDisplayThere();

}  // namespace kvx::desktop
