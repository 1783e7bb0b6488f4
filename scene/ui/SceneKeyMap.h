#pragma once

#include <Qt>

#include <vector>

// What a key does in the 3D view.
enum class SceneCommand {
    None,
    Cancel,
    Undo,
    Redo,
    Duplicate,
    Copy,
    Paste,
    Delete,
    MoveMode,
    RotateMode,
    ScaleMode,
    ToggleVisible,
    ToggleDimensions,
    ToggleFootprintGrid,
    ToggleFrustum,
    ToggleTransformSpace,
    Perspective,
    LookThrough,
    FrameSelection,
    ToggleHelp,
};

// One row of the view's key map.
struct SceneKeyBinding {
    enum Shortcuts {
        WindowFirst,          // window shortcuts see the key first
        ViewFirst,            // the view takes it before window shortcuts
        ViewFirstAnyModifiers // ... whatever modifiers are held
    };
    int key;
    Qt::KeyboardModifiers modifiers; // exactly these of Ctrl, Alt and Shift
    bool anyModifiers;               // the command runs whatever modifiers are held
    SceneCommand command;
    Shortcuts shortcuts;
};

// The whole key map of the 3D view, in one table.
const std::vector<SceneKeyBinding> &sceneKeyMap();
// The command of a key press; None when the view leaves the key alone.
SceneCommand sceneCommandForKey(int key, Qt::KeyboardModifiers modifiers);
// Whether the view takes the key before the window's shortcuts and menus.
bool sceneKeyTakesShortcut(int key, Qt::KeyboardModifiers modifiers);
