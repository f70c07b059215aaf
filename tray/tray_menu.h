// The command menu of the tray icon (frmIn), without its window.
#pragma once

#include <array>
#include <functional>
#include <string_view>

#include "core/reception/serial_reception.h"
#include "core/run_time_state.h"
#include "platform/platform.h"
#include "text/ansi_text.h"
#include "transfer/file_replay.h"

namespace kalvo {

// The entries in the order in which the menu shows them.
enum class MenuEntry { kSettings, kAbout, kTransfer, kOrder, kQuit, kReplay };

// The captions are code page 1252; their leading blanks part them from the pictures.
inline constexpr std::array<std::string_view, 6> kMenuCaptions = {
    "   Paramétrage"_ansi, "   Kalvo", "   Transfert", "   Commande", "   Quitter", "   Fichier"};

class TrayMenu {
public:
    // What the entries open; endProgram leads to the event loop's end.
    struct Windows {
        std::function<void()> showSettings;
        std::function<void()> showAbout;
        std::function<void()> showReplay;
        std::function<void()> endProgram;
        ReplayTurn replayTurn = replayAtOnce;
    };

    TrayMenu(const Platform& platform, RunTimeState& state, SerialReception& reception,
             Windows windows);

    // Whether an entry would do anything now: nothing is asked of terminals that send by
    // themselves.
    [[nodiscard]] bool useful(MenuEntry entry) const;

    // Does what an entry stands for; the menu's window is closed by now. RuntimeErrors
    // of the port and of the dispatch.
    void choose(MenuEntry entry);

private:
    void showSettings();
    void activateOrderScenario();
    void quit();
    void replay();
    void say(std::string_view text);

    Platform platform_;
    RunTimeState& state_;
    SerialReception& reception_;
    Windows windows_;
};

// Which entry is highlighted.
class MenuHighlight {
public:
    static constexpr int kNone = -1;

    [[nodiscard]] int index() const { return index_; }
    void over(int entry) { index_ = entry; }
    void overBackground() { index_ = kNone; }
    // The arrow keys; they go round.
    void down() { index_ = (index_ + 1) % kCount; }
    void up() { index_ = index_ <= 0 ? kCount - 1 : index_ - 1; }

private:
    static constexpr int kCount = static_cast<int>(kMenuCaptions.size());
    int index_ = kNone;
};

}  // namespace kalvo
