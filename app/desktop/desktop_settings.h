// The settings side of the desktop program: which of its windows is open when.
#pragma once

#include <QPointer>
#include <functional>
#include <string>
#include <vector>

#include "app/bindings/system_bindings.h"
#include "core/reception/serial_reception.h"
#include "core/run_time_state.h"
#include "core/start_up.h"
#include "editor/access_lock.h"
#include "editor/erase_question.h"
#include "editor/windows/erase_window.h"
#include "editor/windows/first_site_window.h"
#include "editor/windows/settings_window.h"
#include "platform/platform.h"
#include "platform/qt/qt_event_pump.h"

namespace kalvo {

class DesktopSettings {
public:
    // Everything given here outlives it. `targetReady` gets every window of the program out of
    // the way; whether an application has the focus then.
    DesktopSettings(const Platform& platform, RunTimeState& state, SerialReception& reception,
                    QtEventPump& events, SystemBindings& bindings,
                    std::function<bool()> targetReady);
    DesktopSettings(const DesktopSettings&) = delete;
    DesktopSettings& operator=(const DesktopSettings&) = delete;

    // The settings window, behind its password unless that has been given.
    void ask();
    // The same without password: port and connection can be used. One window at a time;
    // it forgets the access level when it closes. RuntimeErrors of the database.
    void show();
    // Closes the settings window; false when the user wants to store something first.
    bool close();
    // Closes it without asking: the program ends.
    void end();

    // After the port could not be opened: another one may be named until one opens, or the
    // settings that it does not take are shown. Nothing where neither would help.
    void offerWayOut(PortStart port);

    // The serial settings were exchanged: the port is closed and opened as they say, with the
    // same ways out.
    void reopenPort();

    // After the first start of a site: shows the assistant if nothing is set up there.
    void offerAssistant();

    // Whether the terminal may forget what it has sent. Asked once the program has come to
    // rest.
    void askForErase();
    // Something is about to be typed.
    void makeWay() { eraseWindow_.hide(); }

private:
    void showPortableTransfer(QWidget* owner);
    void showAssistant();
    void siteSetUp(bool portOpen);
    [[nodiscard]] PortStart openPort();
    void offerOtherPort();
    void showRefusedLine();
    [[nodiscard]] SettingsServices services();
    [[nodiscard]] std::vector<std::string> portDevices();

    Platform platform_;
    RunTimeState& state_;
    SerialReception& reception_;
    QtEventPump& events_;
    SystemBindings& bindings_;
    std::function<bool()> targetReady_;
    AccessLock lock_;
    EraseQuestion eraseQuestion_;
    EraseWindow eraseWindow_;
    QPointer<SettingsWindow> window_;
    QPointer<FirstSiteWindow> assistant_;
};

}  // namespace kalvo
