// What the pages of the settings window and the step windows work with.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

#include "editor/action_editor.h"
#include "editor/editor_state.h"
#include "editor/scenario_editor.h"
#include "editor/serial_config.h"
#include "platform/platform.h"

namespace kalvo {

// What the program around the windows does for them.
struct SettingsServices {
    // Runs what a control does as an event of the program, which shows its errors.
    std::function<void(const std::function<void()>&)> deliver;
    // The device behind port 1, 2, ... as users know it; empty where there is none.
    std::function<std::vector<QString>()> portDevices;
    // Shows the file transfer with a portable, owned by the given window.
    std::function<void(QWidget* owner)> showPortableTransfer;
};

// The controllers of one opened settings window, and how its parts act on them.
struct SettingsContext {
    Platform platform;
    RunTimeState& state;
    EditorState& editor;
    SerialConfig& serial;
    ActionEditor& actions;
    ScenarioEditor& scenarios;
    SettingsServices services;
    // Delivers, then shows everywhere what has changed.
    std::function<void(const std::function<void()>&)> act;
    // Closes the settings window, after asking about what is not stored yet.
    std::function<void()> close;
};

}  // namespace kalvo
