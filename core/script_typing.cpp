#include "core/script_typing.h"

#include <algorithm>
#include <string>
#include <utility>

#include "keys/script_tokens.h"
#include "platform/event_pump.h"
#include "platform/notify_icon.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr int kPauseStep = 100;  // milliseconds
constexpr int kTurnStep = 50;    // between two looks at whose turn it is
constexpr int kLongWait = 5000;  // for a turn: the other one may hang

bool holdsLockToken(std::string_view text) {
    return text.find(kNumLockToken) != std::string_view::npos ||
           text.find(kCapsLockToken) != std::string_view::npos;
}

// Whatever has the focus when the turn comes is what is typed into.
class KeyboardTurn {
public:
    explicit KeyboardTurn(const Platform& platform) : keyboard_(platform.keyboard) {
        for (int waited = 0; !keyboard_.takeTurn(); waited += kTurnStep) {
            if (waited == kLongWait)
                platform.icon.notify(
                    "Un autre site saisit depuis un moment : le lot attend son tour."_ansi,
                    LogLevel::kWarning);
            platform.events.waitForEvents(kTurnStep);
        }
    }
    KeyboardTurn(const KeyboardTurn&) = delete;
    KeyboardTurn& operator=(const KeyboardTurn&) = delete;
    ~KeyboardTurn() { keyboard_.giveTurnBack(); }

private:
    KeyboardInput& keyboard_;
};

class ScriptTyping {
public:
    ScriptTyping(const Platform& platform, std::string_view script, ScriptSource source,
                 const TypingNews& news)
        : platform_(platform), script_(script), source_(source), news_(news) {}

    Typing run(int timerPause) {
        try {
            const KeyboardTurn turn(platform_);
            platform_.watch.begin();
            platform_.keyboard.prepareFor(script_);
            if (script_.find(kTimerToken) == std::string_view::npos)
                typeUntimed();
            else
                typeTimed(timerPause);
        } catch (const ProgramEnd&) {
            typing_.stop = TypingStop::kProgramEnds;
        }
        if (typing_.stop == TypingStop::kNone) typing_.typed = script_.size();
        typing_.untyped = platform_.keyboard.takeUntyped();
        return typing_;
    }

private:
    void typeUntimed() {
        const bool replayed = source_ == ScriptSource::kReplayed;
        std::string text(script_);
        // Cutting a token out may join the text around it to another one.
        for (bool due = !replayed || holdsLockToken(text); due && going();
             due = replayed && holdsLockToken(text)) {
            const TokenFreeText first = pressNumLockTokens(platform_.keyboard, text);
            switchCapsLockOffForTokens(platform_.keyboard, first.text());
            const TokenFreeText second(first.text(), kCapsLockToken);
            send(second.text(),
                 [&](std::size_t typed) { return first.before(second.before(typed)); });
            text = second.text();
        }
    }

    // Here the CapsLock tokens stay in the pieces, so that the sender types them too.
    void typeTimed(int timerPause) {
        const std::size_t untyped = source_ == ScriptSource::kReplayed ? 1 : 0;
        for (TimerPieces pieces(script_); pieces.remaining() > untyped && going();) {
            platform_.events.DoEvents();
            const std::string_view piece = pieces.next();
            const auto begin = static_cast<std::size_t>(piece.data() - script_.data());
            const TokenFreeText text = pressNumLockTokens(platform_.keyboard, piece);
            switchCapsLockOffForTokens(platform_.keyboard, text.text());
            send(text.text(), [&](std::size_t typed) { return begin + text.before(typed); });
            if (!going()) return;
            // The pause belongs to what is done: typing goes on behind its token.
            typing_.resumeAt = std::min(begin + piece.size() + kTimerToken.size(), script_.size());
            platform_.events.DoEvents();
            pause(timerPause);
        }
    }

    // In steps, so that a stop does not wait for its end.
    void pause(int milliseconds) {
        for (int left = std::max(milliseconds, 0); left > 0 && going(); left -= kPauseStep) {
            platform_.events.Sleep(std::min(left, kPauseStep));
            platform_.events.answerUser();
            typing_.stop =
                platform_.events.ending() ? TypingStop::kProgramEnds : platform_.watch.look();
        }
    }

    // `place` turns a position in the text into one in the script.
    template <typename Place>
    void send(const std::string& text, const Place& place) {
        TypingNews news;
        news.progress = [&](std::size_t typed) {
            typing_.typed = place(typed);
            if (news_.progress) news_.progress(typing_.typed);
        };
        news.disturbed = [&](std::size_t typed) {
            if (news_.disturbed) news_.disturbed(place(typed));
        };
        Keysend keysend(platform_.keyboard, platform_.events, platform_.watch, std::move(news));
        const Typing piece = keysend.SendKeyScript(text, 0);
        typing_ = {place(piece.typed), piece.stop, place(piece.resumeAt), piece.lead, {}};
    }

    [[nodiscard]] bool going() const { return typing_.stop == TypingStop::kNone; }

    const Platform& platform_;
    std::string_view script_;
    ScriptSource source_;
    const TypingNews& news_;
    Typing typing_;
};

}  // namespace

bool typesAnything(std::string_view script, ScriptSource source) {
    if (source == ScriptSource::kReceived) return !script.empty();
    const std::size_t lastTimer = script.rfind(kTimerToken);
    return lastTimer == std::string_view::npos ? holdsLockToken(script) : lastTimer > 0;
}

Typing typeScript(const Platform& platform, std::string_view script, int timerPause,
                  ScriptSource source, const TypingNews& news) {
    return ScriptTyping(platform, script, source, news).run(timerPause);
}

}  // namespace kalvo
