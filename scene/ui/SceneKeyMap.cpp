#include "scene/ui/SceneKeyMap.h"

namespace {

Qt::KeyboardModifiers relevant(Qt::KeyboardModifiers modifiers)
{
    return modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
}

} // namespace

const std::vector<SceneKeyBinding> &sceneKeyMap()
{
    using B = SceneKeyBinding;
    const Qt::KeyboardModifiers none = Qt::NoModifier, ctrl = Qt::ControlModifier;
    // Ctrl+Z and the other edit keys act on the scene, not on the window's document.
    static const std::vector<SceneKeyBinding> map = {
        {Qt::Key_Escape, none, true, SceneCommand::Cancel, B::ViewFirstAnyModifiers},
        {Qt::Key_Z, ctrl, false, SceneCommand::Undo, B::ViewFirst},
        {Qt::Key_Y, ctrl, false, SceneCommand::Redo, B::ViewFirst},
        {Qt::Key_Z, ctrl | Qt::ShiftModifier, false, SceneCommand::Redo, B::ViewFirst},
        {Qt::Key_U, ctrl, false, SceneCommand::Redo, B::ViewFirst},
        {Qt::Key_D, ctrl, false, SceneCommand::Duplicate, B::ViewFirst},
        {Qt::Key_C, ctrl, false, SceneCommand::Copy, B::ViewFirst},
        {Qt::Key_V, ctrl, false, SceneCommand::Paste, B::ViewFirst},
        {Qt::Key_Delete, none, false, SceneCommand::Delete, B::ViewFirstAnyModifiers},
        {Qt::Key_W, none, false, SceneCommand::MoveMode, B::WindowFirst},
        {Qt::Key_E, none, false, SceneCommand::RotateMode, B::WindowFirst},
        {Qt::Key_R, none, false, SceneCommand::ScaleMode, B::WindowFirst},
        {Qt::Key_H, none, false, SceneCommand::ToggleVisible, B::WindowFirst},
        {Qt::Key_D, none, false, SceneCommand::ToggleDimensions, B::WindowFirst},
        {Qt::Key_G, none, false, SceneCommand::ToggleFootprintGrid, B::WindowFirst},
        {Qt::Key_I, none, false, SceneCommand::ToggleFrustum, B::WindowFirst},
        {Qt::Key_X, none, false, SceneCommand::ToggleTransformSpace, B::WindowFirst},
        {Qt::Key_P, none, false, SceneCommand::Perspective, B::WindowFirst},
        {Qt::Key_V, none, false, SceneCommand::LookThrough, B::WindowFirst},
        {Qt::Key_F, none, false, SceneCommand::FrameSelection, B::WindowFirst},
        {Qt::Key_F1, none, false, SceneCommand::ToggleHelp, B::WindowFirst},
    };
    return map;
}

SceneCommand sceneCommandForKey(int key, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers mods = relevant(modifiers);
    for (const SceneKeyBinding &binding : sceneKeyMap()) {
        if (binding.key == key && (binding.anyModifiers || binding.modifiers == mods))
            return binding.command;
    }
    return SceneCommand::None;
}

bool sceneKeyTakesShortcut(int key, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers mods = relevant(modifiers);
    for (const SceneKeyBinding &binding : sceneKeyMap()) {
        if (binding.key != key)
            continue;
        if (binding.shortcuts == SceneKeyBinding::ViewFirstAnyModifiers
            || (binding.shortcuts == SceneKeyBinding::ViewFirst && binding.modifiers == mods))
            return true;
    }
    return false;
}
