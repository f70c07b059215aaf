// listen: the run-time side without windows.
#include <memory>
#include <string>
#include <utility>

#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/listen_status.h"
#include "app/process/end_signals.h"
#include "app/process/service_report.h"
#include "app/reconnecting_keyboard.h"
#include "app/run_journal.h"
#include "app/run_log.h"
#include "app/running_site.h"
#include "app/sites.h"
#include "core/batch_typing.h"
#include "core/frame_dispatch.h"
#include "core/reception/serial_reception.h"
#include "core/start_up.h"
#include "settings/serial_settings.h"
#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

int showStatus(const SystemBindings& bindings) {
    const auto state = RunningSite::stateOf(bindings.applicationFolder);
    if (!state) {
        writeErrorLine("Aucune écoute n'est en cours dans ce dossier."_ansi);
        return kExitFailure;
    }
    writeOutput(*state);
    return kExitSuccess;
}

class Listening {
public:
    Listening(SystemBindings& bindings, CommandContext& context, RunningSite& site)
        : bindings_(bindings),
          context_(context),
          said_(context.output.said()),
          status_(site, context.events),
          run_(said_, bindings.applicationFolder, "Écoute"_ansi),
          canType_(connectDevices()),
          journal_(bindings, context.events,
                   [this](std::string_view text) { said_.write(LogLevel::kWarning, text); }),
          platform_(context.platform()),
          reception_(platform_, context.state, journal_.batches(), [this] { dispatch(); }) {
        context.output.log().onEntry(
            [this](LogLevel level, std::string_view text) { status_.logged(level, text); });
        platform_.port.onLineChange([this](bool lost) {
            said_.write(lost ? LogLevel::kWarning : LogLevel::kInformation,
                        lost && !met_ ? awaitedText() : lineChangeText(platform_.port, lost));
            met_ = met_ || !lost;
            status_.port(platform_.port, lost);
        });
    }

    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
    ~Listening() { context_.output.log().onEntry(nullptr); }

    // Until somebody asks for the end; the exit code.
    int run(EndSignals& signals) {
        const bool open = begin();
        journal_.begin();
        if (!open) return kExitFailure;
        if (!canType_ && !context_.state.scenario.active.FileMode)
            said_.write(LogLevel::kWarning, std::string("Clavier indisponible ("_ansi)
                                                    .append(keyboardProblem(platform_.keyboard)) +
                                                ") : les lots attendront dans le journal");
        signals.start([this] { context_.events.requestEnd(); },
                      [this] { context_.events.post([this] { reception_.transfer(); }); },
                      [this] { context_.events.postAtRest([this] { reload(); }); });
        reportToServiceManager("READY=1");
        context_.events.run();
        signals.stop();
        reportToServiceManager("STOPPING=1");
        closePort();
        return kExitSuccess;
    }

private:
    bool connectDevices() {
        auto keyboard = std::make_unique<ReconnectingKeyboard>(
            [&kind = bindings_.keyboard] { return connectKeyboard(kind); });
        context_.useKeyboard(std::move(keyboard), LeaveAnswer::kLater);
        context_.openSerialPort();
        return context_.platform().keyboard.connected();
    }

    // Settings, scenario and port, as the files have them now. False without a port that is
    // open or awaited.
    bool begin() {
        const PortStart start = startUp(
            platform_, context_.state, reception_, [] {}, [] {}, AwayPort::kNothing);
        met_ = start != PortStart::kAway;
        if (!met_) await();
        const bool open = platform_.port.PortOpen();
        status_.scenario(context_.state.scenario.active.ScenarioName);
        status_.port(platform_.port, !met_);
        if (!open)
            said_.write(LogLevel::kError,
                        "Aucun port n'est ouvert (section Port_série de PortSerie.ini)"_ansi);
        return open;
    }

    // A device that is not there yet is as good as one that was lost.
    void await() {
        const std::string wanted =
            readPortSerie(platform_.profiles, bindings_.applicationFolder, port_serie::kPort);
        if (platform_.port.CommPort() != integerPart(wanted)) return;
        resumeNext([this] { platform_.port.reopen(); });
    }

    [[nodiscard]] std::string awaitedText() const {
        return "Port COM " + std::to_string(platform_.port.CommPort()) + " : en attente de " +
               platform_.port.deviceName();
    }

    void reload() {
        reportToServiceManager("RELOADING=1");
        said_.write(LogLevel::kInformation, "Réglages et scénario relus"_ansi);
        closePort();
        begin();
        reportToServiceManager("READY=1");
    }

    void dispatch() {
        const BatchReport report = TraiteEmul(platform_, context_.state, journal_.batches());
        status_.batchDone();
        journal_.forgetDaily();
        if (report.outcome == BatchReport::Outcome::kInterrupted && report.batch != 0)
            said_.write(LogLevel::kWarning, "Pour reprendre : kalvo-horizon journal resend " +
                                                std::to_string(report.batch) + " --from " +
                                                std::to_string(report.passesDone + 1));
    }

    void closePort() {
        resumeNext([this] {
            if (platform_.port.PortOpen()) platform_.port.setPortOpen(false);
        });
    }

    SystemBindings& bindings_;
    CommandContext& context_;
    Log& said_;
    ListenStatus status_;
    RunLog run_;
    bool canType_;
    bool met_ = true;  // the port's device has been there
    RunJournal journal_;
    Platform platform_;
    SerialReception reception_;
};

}  // namespace

int runListen(const CommandLine& line, SystemBindings& bindings) {
    if (line.status) return showStatus(bindings);
    // Before any thread starts, so that the signals go where they are waited for.
    EndSignals signals;
    RunningSite site(bindings.applicationFolder, "Écoute"_ansi, localNow());
    if (!site.alone()) {
        const std::string other =
            fromUtf8(RunningSite::stateOf(bindings.applicationFolder).value_or(""));
        writeErrorLine(std::string("Un programme travaille déjà dans ce dossier : "_ansi) +
                       other.substr(0, other.find('\n')));
        return kExitFailure;
    }
    rememberSite(*bindings.profiles, knownSitesFile(), bindings.applicationFolder);
    CommandContext context(bindings, CommandLog::kEverything);
    return Listening(bindings, context, site).run(signals);
}

}  // namespace kalvo
