#include "editor/keys/key_listing.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "keys/key_script.h"
#include "keys/script_tokens.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/field_text.h"

namespace kalvo {

namespace {

struct KeyName {
    std::uint8_t code;
    std::string_view name;
};

constexpr auto kKeyNames = std::to_array<KeyName>({
    {0x08, "Retour arrière"_ansi},
    {0x09, "Tab"},
    {0x0D, "Entrée"_ansi},
    {0x13, "Pause"},
    {0x14, "Verr. Maj"},
    {0x1B, "Échap"_ansi},
    {0x21, "Page précédente"_ansi},
    {0x22, "Page suivante"},
    {0x23, "Fin"},
    {0x24, "Début"_ansi},
    {0x25, "Flèche gauche"_ansi},
    {0x26, "Flèche haut"_ansi},
    {0x27, "Flèche droite"_ansi},
    {0x28, "Flèche bas"_ansi},
    {0x2A, "Imprimer"},
    {0x2C, "Impr. écran"_ansi},
    {0x2D, "Inser"},
    {0x2E, "Suppr"},
    {0x2F, "Aide"},
    {0x91, "Arrêt défil"_ansi},
});

constexpr std::uint8_t kNumpad0 = 0x60;
constexpr std::uint8_t kNumpad9 = 0x69;
constexpr std::uint8_t kF1 = 0x70;
constexpr std::uint8_t kF16 = 0x7F;

std::string namedKey(std::uint8_t code) {
    if (code >= kNumpad0 && code <= kNumpad9)
        return std::string("Pavé num. "_ansi) + std::to_string(code - kNumpad0);
    if (code >= kF1 && code <= kF16) return "F" + std::to_string(code - kF1 + 1);
    const auto* const found = std::find_if(kKeyNames.begin(), kKeyNames.end(),
                                           [&](const KeyName& key) { return key.code == code; });
    return found == kKeyNames.end() ? "Touche " + std::to_string(code) : std::string(found->name);
}

// A control character is the key that produces it; empty for a printable one.
std::string controlKey(std::uint8_t character) {
    switch (character) {
        case '\b':
        case '\t':
        case '\r':
        case 0x1B: return namedKey(character);
        case '\n': return "Ctrl + " + namedKey('\r');
        default: break;
    }
    if (character == 0 || character > 26) return {};
    return std::string("Ctrl + ") + static_cast<char>('A' + character - 1);
}

// A letter as its key shows it.
char upperCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// Collects key events into rows: characters in a row become one text, the same key
// again a count.
class Listing {
public:
    explicit Listing(std::size_t limit) : limit_(limit) {}

    // More than is shown has been seen, or enough to give up counting.
    [[nodiscard]] bool full() const { return rows_.size() > limit_ || events_ > kMostEvents; }

    void row(std::string text) {
        finishRow();
        rows_.push_back(std::move(text));
    }

    void take(const KeyEvent& event) {
        ++events_;
        // What is left of NumLock surrounds the keypad codes and restores itself.
        if (event.action == KeyEvent::Action::kFlipNumLock) return;
        const bool down = event.action == KeyEvent::Action::kDown;
        switch (event.key.kind) {
            case Key::Kind::kShift: shift_ = down; break;
            case Key::Kind::kControl: control_ = down; break;
            case Key::Kind::kAlt:
                if (!down) finishKeypadCode();
                alt_ = down;
                break;
            default:
                if (down) press(event.key);
        }
    }

    std::vector<std::string> finish() {
        finishRow();
        if (full()) {
            rows_.resize(std::min(rows_.size(), limit_));
            rows_.emplace_back("...");
        }
        return std::move(rows_);
    }

private:
    void press(Key key) {
        const bool keypadDigit =
            key.kind == Key::Kind::kNamed && key.code >= kNumpad0 && key.code <= kNumpad9;
        if (alt_ && keypadDigit) {
            keypadCode_ = keypadCode_ * 10 + key.code - kNumpad0;
            return;
        }
        if (key.kind == Key::Kind::kNamed) {
            stroke(modifiers() + namedKey(key.code));
            return;
        }
        const std::string control = controlKey(key.code);
        if (!control.empty())
            stroke(modifiers() + control);
        else if (shift_ || control_ || alt_)
            stroke(modifiers() + upperCase(static_cast<char>(key.code)));
        else
            character(static_cast<char>(key.code));
    }

    // Alt held with a code on the keypad is the character of that code; the script was
    // read with the characters' own codes.
    void finishKeypadCode() {
        if (keypadCode_ != 0) character(static_cast<char>(keypadCode_));
        keypadCode_ = 0;
    }

    [[nodiscard]] std::string modifiers() const {
        std::string text;
        if (control_) text += "Ctrl + ";
        if (alt_) text += "Alt + ";
        if (shift_) text += "Maj + ";
        return text;
    }

    void character(char c) {
        if (!stroke_.empty()) finishRow();
        text_ += c;
    }

    void stroke(const std::string& name) {
        if (name != stroke_) finishRow();
        stroke_ = name;
        ++strokes_;
    }

    void finishRow() {
        if (!text_.empty()) rows_.push_back("Texte : " + text_);
        if (strokes_ == 1) rows_.push_back(stroke_);
        if (strokes_ > 1) rows_.push_back(stroke_ + " x " + std::to_string(strokes_));
        text_.clear();
        stroke_.clear();
        strokes_ = 0;
    }

    static constexpr std::size_t kMostEvents = 100'000;

    std::size_t limit_;
    std::size_t events_ = 0;
    std::vector<std::string> rows_;
    std::string text_;
    std::string stroke_;
    std::size_t strokes_ = 0;
    unsigned keypadCode_ = 0;
    bool shift_ = false;
    bool control_ = false;
    bool alt_ = false;
};

}  // namespace

std::vector<std::string> listKeys(std::string_view script, int timerPause, std::size_t limit) {
    Listing listing(limit);
    TimerPieces pieces(script);
    const bool timed = pieces.remaining() > 1;
    while (pieces.remaining() > 0 && !listing.full()) {
        const std::string_view piece = pieces.next();
        for (std::size_t i = CountSeparators(piece, kNumLockToken); i > 0 && !listing.full(); --i)
            listing.row("Verr. Num");
        std::string keys = TokenFreeText(piece, kNumLockToken).text();
        if (CountSeparators(keys, kCapsLockToken) > 0)
            listing.row(std::string("Verr. Maj : éteint"_ansi));
        if (!timed) keys = TokenFreeText(keys, kCapsLockToken).text();
        KeyScriptReader reader(keys, [](char c) { return static_cast<unsigned char>(c); });
        for (auto event = reader.next(); event && !listing.full(); event = reader.next())
            listing.take(*event);
        if (timed) listing.row("Pause de " + std::to_string(std::max(timerPause, 0)) + " ms");
    }
    return listing.finish();
}

}  // namespace kalvo
