// The table of keys: what the view looks up is what the sheet and the documents say.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "host/CommandIds.h"
#include "platform/base/Keys.h"
#include "resources/Tables.h"
#include "traceview/model/KeyBindings.h"
#include "traceview/model/KeyLines.h"
#include "workbench/cli/SubCommands.h"

namespace kvx {
namespace {

TEST(Keys, EveryBindingIsFoundByItsKeyAlone) {
    std::map<std::string, int> said;
    for (const KeyBinding& binding : KeyBindings()) {
        EXPECT_EQ(++said[binding.keyText], 1) << binding.keyText;
        if (binding.key) {
            EXPECT_EQ(FindKeyAction(binding.key, binding.modifiers), binding.action);
            const bool scrolls = binding.action <= KeyAction::kTimeRight;
            KeyModifiers others = binding.modifiers;
            others.control = !others.control;
            EXPECT_EQ(FindKeyAction(binding.key, others) == binding.action, scrolls)
                << binding.keyText;
        }
        if (binding.character) {
            EXPECT_EQ(FindCharacterAction(static_cast<UINT>(binding.character)), binding.action);
        }
    }
    EXPECT_EQ(FindKeyAction(VK_F3, {.shift = true}), KeyAction::kSearchPrevious);
    EXPECT_FALSE(FindKeyAction(VK_F12, {}).has_value());
    EXPECT_EQ(FindKeyAction(VK_LEFT, {.shift = true}), KeyAction::kTimeLeft);
    EXPECT_EQ(FindKeyAction(VK_LEFT, {.alt = true}), KeyAction::kDisplayBack);
    EXPECT_FALSE(FindCharacterAction('x').has_value());
}

// Files, clipboard, undoing and leaving are any host's, F1 and F5 to F12 a debugger's, and Alt
// opens menus.
bool BelongsToHost(const AcceleratorResource& key) {
    constexpr std::string_view kOfHost = "OSWQNPZYXCV";
    const bool letter = key.key < VK_F1 && key.control;
    const bool function = key.key == VK_F1 || key.key > VK_F3 + 1;
    return key.alt || function || (letter && kOfHost.find(char(key.key)) != kOfHost.npos);
}

bool InMenu(std::span<const MenuItemResource> items, UINT command) {
    return std::ranges::any_of(items, [&](const MenuItemResource& item) {
        return item.command == command || InMenu({item.children, item.childCount}, command);
    });
}

// A key that the view acts on by itself means the same there.
bool ViewAgrees(const AcceleratorResource& key) {
    static const std::map<KeyAction, UINT> kCommands = {
        {KeyAction::kAdjust, ids::kAdjust},
        {KeyAction::kExpand, ids::kExpand},
        {KeyAction::kReduce, ids::kReduce},
        {KeyAction::kSearch, ids::kSearch},
        {KeyAction::kSearchNext, ids::kSearchNext},
        {KeyAction::kSearchPrevious, ids::kSearchPrevious}};
    const bool plus = key.key == VK_ADD;
    const bool minus = key.key == VK_SUBTRACT;
    const auto action = plus || minus ? FindCharacterAction(plus ? '+' : '-')
                                      : FindKeyAction(key.key, {key.control, key.shift});
    return !action || (kCommands.contains(*action) && kCommands.at(*action) == key.command);
}

TEST(Keys, AcceleratorsMeetNoOtherKeyAndHaveACommandInTheirMenu) {
    SetResourceTable(&resources::Table());
    for (const AcceleratorTableResource& table : resources::Accelerators()) {
        std::set<std::tuple<UINT, bool, bool, bool>> seen;
        for (const AcceleratorResource& key : std::span(table.keys, table.count)) {
            EXPECT_TRUE(seen.insert({key.key, key.control, key.shift, key.alt}).second);
            EXPECT_FALSE(BelongsToHost(key)) << key.command;
            EXPECT_TRUE(InMenu(FindMenu(table.id), key.command)) << key.command;
            EXPECT_TRUE(table.id != ids::kMenuOSTrace || ViewAgrees(key)) << key.command;
        }
    }
    std::set<CString> texts;
    for (const KeyLine& line : TraceKeyLines()) EXPECT_TRUE(texts.insert(line.keyText).second);
    EXPECT_EQ(texts.size(), KeyBindings().size() + 8) << "each once";
    // The sheet has room for all of them: a line is eight dialog units high.
    const DialogResource* const sheet = FindDialog(ids::kDialogKeys);
    for (std::size_t i = 0; i < sheet->count; ++i) {
        const ControlResource& control = sheet->controls[i];
        if (control.id == ids::kKeysColumn || control.id == ids::kMeaningsColumn) {
            EXPECT_GE(control.height, 8 * static_cast<int>(texts.size()));
        }
    }
    SetResourceTable(nullptr);
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
    for (const char* line : {"| V | Set value |", "| P | Extract specified system calls"}) {
        EXPECT_NE(out.str().find(line), std::string::npos) << line;
    }
    EXPECT_TRUE(error.str().empty());
}

}  // namespace
}  // namespace kvx
