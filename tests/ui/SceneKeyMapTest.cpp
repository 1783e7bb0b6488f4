#include "scene/ui/SceneKeyMap.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

// One key with one set of modifiers means one thing, and every command has a key.
TEST(SceneKeyMap, EveryKeyMeansOneCommandAndEveryCommandHasAKey)
{
    std::set<std::pair<int, int>> seen;
    std::set<SceneCommand> commands;
    for (const SceneKeyBinding &binding : sceneKeyMap()) {
        EXPECT_TRUE(seen.insert({binding.key, int(binding.modifiers)}).second) << "key " << binding.key;
        EXPECT_NE(binding.command, SceneCommand::None);
        commands.insert(binding.command);
    }
    EXPECT_EQ(commands.size(), size_t(SceneCommand::ToggleHelp)); // all but None
}

TEST(SceneKeyMap, ModifiersSelectTheCommandAndWhoSeesTheKeyFirst)
{
    // D alone toggles dimensions, Ctrl+D duplicates, Shift+D does nothing.
    EXPECT_EQ(sceneCommandForKey(Qt::Key_D, Qt::NoModifier), SceneCommand::ToggleDimensions);
    EXPECT_EQ(sceneCommandForKey(Qt::Key_D, Qt::ControlModifier), SceneCommand::Duplicate);
    EXPECT_EQ(sceneCommandForKey(Qt::Key_D, Qt::ShiftModifier), SceneCommand::None);
    EXPECT_EQ(sceneCommandForKey(Qt::Key_V, Qt::NoModifier), SceneCommand::LookThrough);
    EXPECT_EQ(sceneCommandForKey(Qt::Key_V, Qt::ControlModifier), SceneCommand::Paste);
    // Ctrl+Shift+Z redoes, like Ctrl+Y.
    EXPECT_EQ(sceneCommandForKey(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier), SceneCommand::Redo);
    // Keypad and meta modifiers do not change a key's meaning.
    EXPECT_EQ(sceneCommandForKey(Qt::Key_Z, Qt::ControlModifier | Qt::KeypadModifier), SceneCommand::Undo);
    // Escape cancels whatever is held; Delete deletes only on its own.
    EXPECT_EQ(sceneCommandForKey(Qt::Key_Escape, Qt::ShiftModifier | Qt::AltModifier), SceneCommand::Cancel);
    EXPECT_EQ(sceneCommandForKey(Qt::Key_Delete, Qt::ShiftModifier), SceneCommand::None);

    // The view's edit keys win over the window's shortcuts; plain letters do not.
    EXPECT_TRUE(sceneKeyTakesShortcut(Qt::Key_Z, Qt::ControlModifier));
    EXPECT_TRUE(sceneKeyTakesShortcut(Qt::Key_U, Qt::ControlModifier));
    EXPECT_TRUE(sceneKeyTakesShortcut(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier));
    EXPECT_FALSE(sceneKeyTakesShortcut(Qt::Key_Z, Qt::AltModifier));
    EXPECT_FALSE(sceneKeyTakesShortcut(Qt::Key_W, Qt::NoModifier));
    EXPECT_TRUE(sceneKeyTakesShortcut(Qt::Key_Delete, Qt::ShiftModifier));
    EXPECT_TRUE(sceneKeyTakesShortcut(Qt::Key_Escape, Qt::ControlModifier));
    EXPECT_FALSE(sceneKeyTakesShortcut(Qt::Key_S, Qt::ControlModifier));
}
