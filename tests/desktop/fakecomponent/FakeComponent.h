#pragma once
// A small component module that the tests' host loads in place of the real one: it opens windows,
// merges menus, toolbars and keys, and writes down what reaches it.

#include <cstdint>

namespace kvx::test {

// Exported under the names in quotes; found by name, as the entry points are.
// "FakeTakeLog": what happened since the last call, one line each; the text lives until then.
using FakeTakeLogFn = const char* (*)();
// "FakeSet": changes how it behaves; see FakeKnob.
using FakeSetFn = void (*)(int knob, int value);

enum FakeKnob : int {
    kRefuseClose,    // the windows refuse to be closed
    kFailInitialize  // start-up fails
};

}  // namespace kvx::test
