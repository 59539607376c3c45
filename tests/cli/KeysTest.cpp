// The table of keys: what the view looks up is what the sheet and the documents say.

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "platform/Keys.h"
#include "traceview/model/KeyBindings.h"
#include "workbench/cli/SubCommands.h"

namespace kvx {
namespace {

TEST(Keys, EveryBindingIsFoundByItsKeyAlone) {
    std::map<std::string, int> said;
    for (const KeyBinding& binding : KeyBindings()) {
        EXPECT_EQ(++said[binding.keyText], 1) << binding.keyText;
        if (binding.key) {
            EXPECT_EQ(FindKeyAction(binding.key, binding.control, binding.shift), binding.action);
            EXPECT_FALSE(FindKeyAction(binding.key, !binding.control, binding.shift) ==
                         binding.action);
        }
        if (binding.character) {
            EXPECT_EQ(FindCharacterAction(static_cast<UINT>(binding.character)), binding.action);
        }
    }
    EXPECT_EQ(FindKeyAction(VK_F3, false, true), KeyAction::kSearchPrevious);
    EXPECT_FALSE(FindKeyAction(VK_F12, false, false).has_value());
    EXPECT_FALSE(FindCharacterAction('x').has_value());
}

TEST(Keys, TheDocumentHasALineForEach) {
    std::ostringstream out;
    std::ostringstream error;
    const char* const arguments[] = {"kvxostrace", "keys"};
    EXPECT_EQ(cli::RunSubCommand(2, arguments, {out, error}), cli::kExitDone);
    for (const KeyBinding& binding : KeyBindings()) {
        const std::string line = std::string("| ") + binding.keyText + " | " + binding.meaning;
        EXPECT_NE(out.str().find(line), std::string::npos) << line;
    }
    EXPECT_TRUE(error.str().empty());
}

}  // namespace
}  // namespace kvx
