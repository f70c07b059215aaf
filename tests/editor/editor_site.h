// The settings side of a site of its own: a folder with the shipped key files and an
// empty database, controllers on it, and fakes for what the user sees and the port.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "editor/action_editor.h"
#include "editor/port/serial_config.h"
#include "editor/scenario_editor.h"
#include "settings/application_paths.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "tests/support/site.h"

namespace kalvo::testing {

struct EditorSite : Site {
    CurrentScenario current;
    SerialConfig serial{platform, state};
    ActionEditor actions{platform, state, current};
    ScenarioChoices choices{platform, state, serial, actions};
    ScenarioEditor scenarios{platform, state, current, actions, choices};

    EditorSite() {
        for (const char* name : {"Touche.ini", "Corres.ini", "TouFic.ini"})
            std::filesystem::copy_file(std::filesystem::path(KALVO_SHIPPED_DATA) / name,
                                       folder / name);
    }

    void setPort(std::string_view key, std::string_view value) {
        WriteIniValue(profiles, port_serie::kSection, key, value, portSerieIni(folder.path()));
    }
    [[nodiscard]] std::string portSetting(std::string_view key) {
        return readPortSerie(profiles, folder.path(), key);
    }

    // Chooses rows of the lists of the port's properties, in the order of the window.
    void chooseSettings(int port, int speed, int dataBits, int parity, int stopBits, int flow,
                        int protocol) {
        serial.choosePort(port);
        serial.chooseSpeed(speed);
        serial.chooseDataBits(dataBits);
        serial.chooseParity(parity);
        serial.chooseStopBits(stopBits);
        serial.chooseFlow(flow);
        serial.chooseProtocol(protocol);
    }
    void setPorts(std::initializer_list<std::pair<std::string_view, std::string_view>> values) {
        for (const auto& [key, value] : values) setPort(key, value);
    }

    // A new scenario with these steps, as the user would enter it.
    void addScenario(const std::string& name, int type, const std::vector<std::string>& steps) {
        scenarios.createNew();
        scenarios.form.TxtNomScen = name;
        scenarios.chooseType(type);
        scenarios.save();
        for (const std::string& step : steps) actions.pick(step);
    }

    // The actions of the current scenario as "number:text:place", in their order.
    [[nodiscard]] std::vector<std::string> storedActions() const {
        std::vector<std::string> rows;
        const auto found = state.database->OpenRecordset(
            "SELECT NumAction,Champs,PlaceTrame FROM Actions WHERE NumeroScen=" +
            std::to_string(current.scenarioNumber) + " ORDER BY NumAction");
        for (; !found->Eof(); found->MoveNext())
            rows.push_back(textField(*found, "NumAction") + ":" + textField(*found, "Champs") +
                           ":" + textField(*found, "PlaceTrame"));
        return rows;
    }
};

inline constexpr int kEmulationRow = 0;
inline constexpr int kFileRow = 1;

}  // namespace kalvo::testing
