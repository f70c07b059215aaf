// What the pages of the settings window and the step windows work with.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "editor/action_editor.h"
#include "editor/current_scenario.h"
#include "editor/port/serial_config.h"
#include "editor/scenario_choices.h"
#include "editor/scenario_editor.h"
#include "platform/platform.h"

class QWidget;

namespace kalvo {

// What the program around the windows does for them.
struct SettingsServices {
    // Runs what a control does as an event of the program, which shows its errors.
    std::function<void(const std::function<void()>&)> deliver;
    // Asks for the password; true when the settings may be changed from now on.
    std::function<bool()> unlock = [] { return false; };
    // The device behind port 1, 2, ... as users know it (code page 1252); empty where there is
    // none.
    std::function<std::vector<std::string>()> portDevices;
    // Gets windows of ours out of the way of what is typed; whether an application has the
    // focus then.
    std::function<bool()> targetReady = [] { return true; };
    // Shows the assistant of a new site.
    std::function<void()> showAssistant = [] {};
    // Shows the file transfer with a portable, owned by the given window.
    std::function<void(QWidget* owner)> showPortableTransfer;
};

// The controllers of one opened settings window, and how its parts act on them.
struct SettingsContext {
    Platform platform;
    RunTimeState& state;
    CurrentScenario& current;
    SerialConfig& serial;
    ActionEditor& actions;
    ScenarioChoices& choices;
    ScenarioEditor& scenarios;
    SettingsServices services;
    // Delivers, then shows everywhere what has changed.
    std::function<void(const std::function<void()>&)> act;
    // Says at the foot of the window what was done.
    std::function<void(const std::string& text)> confirm;
    // The terminal type is not stored by the properties: shows where it is.
    std::function<void()> applyStillDue;
    // Closes the settings window, after asking about what is not stored yet.
    std::function<void()> close;
};

}  // namespace kalvo
